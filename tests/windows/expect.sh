# shellcheck shell=bash
# Says of each thing that is looked at whether it was so. Sourced by bash; $failed tells the end.

failed=no

ok() {
    echo "ok      $*"
}

fail() {
    echo "FAILED  $*"
    # shellcheck disable=SC2034 # For the scripts that source this.
    failed=yes
}

# What is looked at, then a command that must succeed.
expect() {
    local what=$1
    shift
    if "$@"; then ok "$what"; else fail "$what"; fi
}
