# shellcheck shell=bash
# The program and its tests under Wine.

# shellcheck disable=SC2154 # $work and $program_bin come from the scripts that source this one.
stage_check() {
    local report=$work/report.txt
    {
        echo "Cantavista under $(wine --version), $(date -u +%Y-%m-%d)"
        echo
        check_platform
        tests/windows/program_check "$program_bin" "$work/check" "$repository" \
            "${windows_tests[@]}" || echo "FAILED  Not everything passed"
    } | tee "$report"
    ! grep -q '^FAILED' "$report" || die "The check failed; see $report"
}

check_platform() {
    local words
    if words=$(tests/windows/check "$work/check/platform" 2>&1); then
        echo "ok      The platform folder alone, compiled with warnings as errors"
    else
        echo "FAILED  The platform folder alone: $words"
    fi
}
