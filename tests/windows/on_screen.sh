# shellcheck shell=bash
# A virtual screen, a program on it under Wine, and a user's hands. Sourced by bash after wine.sh;
# $work is a folder for what is made, $main_window the program's first window.
# shellcheck disable=SC2154

# Where the buttons are: points of the main window in thousandths of its width and height.
# shellcheck disable=SC2034 # For the scripts that source this.
start_button='832 175' answers_top=808 answers_left=60 answers_step=93
# shellcheck disable=SC2034
composer_title='Composizione|Melodie'
trace=$work/trace.txt
screen_pids=()
program_pid=''

# A display may be named by CANTAVISTA_WINDOWS_DISPLAY, else the first free one is taken.
screen_up() {
    local number=$work/display wanted=("${CANTAVISTA_WINDOWS_DISPLAY:--displayfd}")
    [[ ${wanted[0]} != -displayfd ]] || wanted+=(3)
    : >"$number"
    Xvfb "${wanted[@]}" -screen 0 1366x768x24 -nolisten tcp 3>"$number" >/dev/null 2>&1 &
    screen_pids+=($!)
    if [[ ${wanted[0]} == -displayfd ]]; then
        wait_for 10 test -s "$number"
        DISPLAY=:$(<"$number")
    else
        DISPLAY=${wanted[0]}
    fi
    export DISPLAY
    wait_for 10 screen_answers
    openbox --sm-disable >/dev/null 2>&1 &
    screen_pids+=($!)
}

screen_answers() {
    timeout 5 xdpyinfo >/dev/null 2>&1
}

screen_down() {
    local pid
    for pid in "${screen_pids[@]}"; do
        kill "$pid" 2>/dev/null || true
    done
}

# Seconds, then a command; whether it succeeded in time.
wait_for() {
    local until=$((SECONDS + $1))
    shift
    while ((SECONDS < until)); do
        "$@" && return
        sleep 0.2
    done
    return 1
}

# The words of the multimedia calls go to $trace. There its text is Latin.
start_program() {
    (
        cd "$(dirname "$1")" || exit
        WINEDEBUG=-all,trace+mci,trace+winmm exec wine "$@" >"$trace" 2>&1
    ) &
    program_pid=$!
}

program_ended() {
    ! kill -0 "$program_pid" 2>/dev/null
}

program_down() {
    [[ -z $program_pid ]] || kill "$program_pid" 2>/dev/null || true
    program_pid=''
}

windows() {
    timeout 10 xdotool search --onlyvisible --name "$1" 2>/dev/null || true
}

window() {
    windows "$1" | head -n 1
}

has_window() {
    [[ -n $(windows "$1") ]]
}

has_no_window() {
    ! has_window "$1"
}

# Whether so many windows of the program's title are open.
windows_are() {
    [[ $(windows '^Cantavista$' | wc -l) -eq $1 ]]
}

focus() {
    timeout 10 xdotool windowactivate --sync "$1" 2>/dev/null || true
    sleep 0.3
}

keys() {
    local key
    for key in "$@"; do
        timeout 10 xdotool key --clearmodifiers "$key"
        sleep 0.3
    done
}

type_text() {
    timeout 20 xdotool type --delay 60 "$1"
}

# A point of the main window in thousandths.
click() {
    local WIDTH HEIGHT x=$1 y=$2
    eval "$(timeout 10 xdotool getwindowgeometry --shell "$main_window" | grep -E '^(WIDTH|HEIGHT)=')"
    timeout 10 xdotool mousemove --window "$main_window" $((WIDTH * x / 1000)) $((HEIGHT * y / 1000))
    sleep 0.1
    timeout 10 xdotool click 1
    sleep 0.4
}

click_button() {
    # shellcheck disable=SC2086 # Two numbers.
    click $1
}

# The answers stand in a row, "Do" is 0.
click_answer() {
    click $((answers_left + $1 * answers_step)) "$answers_top"
}

picture() {
    timeout 30 import -silent -window "$1" "png:$2" || true
}

# The font that stands for the system's own, with smooth edges; set anew when this file changes.
use_fonts() {
    local name
    [[ ! $1/fonts -nt ${BASH_SOURCE[0]} ]] || return 0
    registry add 'HKCU\Software\Wine' /v Version /d win10 /f
    registry add 'HKCU\Control Panel\Desktop' /v FontSmoothing /d 2 /f
    registry add 'HKCU\Control Panel\Desktop' /v FontSmoothingType /t REG_DWORD /d 1 /f
    for name in 'MS Shell Dlg' 'MS Shell Dlg 2' 'Segoe UI' 'Tahoma'; do
        registry add 'HKCU\Software\Wine\Fonts\Replacements' /v "$name" /d 'Open Sans' /f
        registry add 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes' \
            /v "$name" /d 'Open Sans' /f
    done
    end_wine
    touch "$1/fonts"
}
