# shellcheck shell=bash
# Shared by the commands of the project: what is installed, what is built. Sourced by bash.

die() {
    echo "$*" >&2
    exit 1
}

# Prints the packages of the given sections of the list.
packages_of() {
    awk -v wanted=" $* " '
        /^\[/ { section = substr($1, 2, length($1) - 2); next }
        NF && !/^#/ && index(wanted, " " section " ") { print $1 }
    ' packaging/packages.txt
}

# Installs what is missing of the given sections. Nothing missing: no root, no network.
need() {
    local wanted missing
    mapfile -t wanted < <(packages_of "$@")
    if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
        command -v cmake >/dev/null && command -v ninja >/dev/null && return
        die "This system has no apt. Install the equivalents of these packages by hand:" \
            "${wanted[*]}"
    fi
    mapfile -t missing < <(
        { dpkg-query -W -f '${db:Status-Status} ${Package}\n' "${wanted[@]}" 2>/dev/null || true; } |
            sed -n 's/^installed //p' | sort -u | comm -13 - <(printf '%s\n' "${wanted[@]}" | sort -u))
    [[ ${#missing[@]} -eq 0 ]] || install_packages "${missing[@]}"
}

install_packages() {
    local install=(apt-get -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0) as_root=(env)
    if [[ $EUID -ne 0 ]]; then
        command -v sudo >/dev/null || die "Missing packages. As root:" \
            "apt-get install --no-install-recommends $*"
        as_root=(sudo env)
    fi
    as_root+=(DEBIAN_FRONTEND=noninteractive)
    echo "Installing: $*" >&2
    "${as_root[@]}" "${install[@]}" -qq update >&2 || die "The list of packages cannot be fetched."
    "${as_root[@]}" "${install[@]}" -qq -y install --no-install-recommends "$@" </dev/null >&2 ||
        die "These packages could not be installed: $*"
}

# Prints how many compilations this machine can run at once; each may take most of a gigabyte.
jobs_here() {
    local cores memory
    cores=$(nproc)
    memory=$(awk '/^MemAvailable/ { print int($2 / 800000) }' /proc/meminfo)
    [[ $memory -ge 1 ]] || memory=1
    echo $((cores < memory ? cores : memory))
}

# Configures a preset if needed, and builds the given targets of it (or all).
build() {
    local preset=$1 ninja_file=build/$1/build.ninja
    shift
    if [[ ! -f $ninja_file || CMakePresets.json -nt $ninja_file ]]; then
        cmake --preset "$preset"
    fi
    CMAKE_BUILD_PARALLEL_LEVEL=${CMAKE_BUILD_PARALLEL_LEVEL:-$(jobs_here)} \
        cmake --build "build/$preset" ${1:+--target "$@"}
}
