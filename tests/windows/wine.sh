# shellcheck shell=bash
# Wine for the checks, without the parts of it that ask or show anything. Sourced by bash.

# shellcheck disable=SC2034 # For the scripts that source this.
cross=x86_64-w64-mingw32-g++-posix
driver=winecantavista

# Every use has a folder of its own for Wine's idea of a disk; made if it is not there.
use_prefix() {
    export WINEPREFIX=$1 WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
    export WINEDLLOVERRIDES='mscoree=;mshtml='
    [[ -f $WINEPREFIX/made ]] && return
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    timeout 180 wineboot --init >/dev/null 2>&1
    timeout 60 wineserver -w
    touch "$WINEPREFIX/made"
}

# Seconds, program, arguments. The timeout's own process group would keep Wine from its terminal.
in_wine() {
    local seconds=$1
    shift
    timeout --foreground --kill-after=5 "$seconds" wine "$@"
}

registry() {
    in_wine 60 reg "$@" >/dev/null 2>&1
}

use_no_output() {
    registry add 'HKCU\Software\Wine\Drivers' /v Audio /d '' /f
    end_wine
}

use_test_output() {
    cp "$1" "$WINEPREFIX/drive_c/windows/system32/"
    registry add 'HKCU\Software\Wine\Drivers' /v Audio /d "${driver#wine}" /f
    end_wine
}

end_wine() {
    timeout 30 wineserver -k 2>/dev/null || true
    timeout 30 wineserver -w 2>/dev/null || true
}
