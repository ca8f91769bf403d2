# shellcheck shell=bash
# The private virtual screen of ./run. Sourced by bash after lib.sh.
#
# Everything it starts is a child of the script and is ended with it; everything it writes is
# in one temporary folder. Only the script's own user gets at the screen: the X server asks for
# a cookie, the browser's address carries a password made for this run.

screen_folder=''
screen_children=()
screen_program=''

# Ends the program and the helpers, last started first, and removes the folder.
screen_down() {
    local status=$? i
    trap '' INT TERM HUP
    for ((i = ${#screen_children[@]} - 1; i >= 0; i--)); do
        end_child "${screen_children[i]}"
    done
    [[ -z $screen_folder ]] || rm -rf "$screen_folder"
    exit "$status"
}

# Asks a child to end, insists after five seconds.
end_child() {
    kill -TERM "$1" 2>/dev/null || return 0
    wait_gone "$1" || kill -KILL "$1" 2>/dev/null || true
    wait "$1" 2>/dev/null || true
}

# Waits up to five seconds for a child to end.
wait_gone() {
    local tries
    for ((tries = 0; tries < 100; tries++)); do
        kill -0 "$1" 2>/dev/null || return 0
        sleep 0.05
    done
    return 1
}

# Starts a helper in the background, its words kept in the log.
helper() {
    "$@" >>"$screen_folder/log" 2>&1 </dev/null &
    screen_children+=($!)
}

# Waits up to ten seconds until a command succeeds; what must stay alive meanwhile is $2.
wait_until() {
    local what=$1 pid=$2 tries
    shift 2
    for ((tries = 0; tries < 200; tries++)); do
        "$@" 2>/dev/null && return
        kill -0 "$pid" 2>/dev/null || break
        sleep 0.05
    done
    tail -n 5 "$screen_folder/log" >&2
    die "$what did not start."
}

# Opens a screen of the given size with its window manager, and sets DISPLAY to it.
screen_up() {
    trap screen_down EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM
    trap 'exit 129' HUP
    screen_folder=$(mktemp -d)
    export XAUTHORITY=$screen_folder/authority
    local cookie number=$screen_folder/display
    cookie=$(od -An -N16 -tx1 /dev/urandom | tr -d ' \n')
    # The server takes any entry of the file, the programs look for the number it chose.
    xauth -q -f "$XAUTHORITY" add :0 . "$cookie" 2>/dev/null
    helper Xvfb -displayfd 3 -screen 0 "${1}x24" -nolisten tcp -auth "$XAUTHORITY" 3>"$number"
    wait_until "The virtual screen" "${screen_children[-1]}" test -s "$number"
    DISPLAY=:$(<"$number")
    export DISPLAY
    unset WAYLAND_DISPLAY
    xauth -q -f "$XAUTHORITY" add "$DISPLAY" . "$cookie"
    helper openbox --sm-disable
    wait_until "The window manager" "${screen_children[-1]}" has_manager
    if [[ -z ${XDG_RUNTIME_DIR:-} ]]; then
        export XDG_RUNTIME_DIR=$screen_folder/runtime
        mkdir -m 700 "$XDG_RUNTIME_DIR"
    fi
}

has_manager() {
    wmctrl -m >/dev/null
}

start_program() {
    QT_QPA_PLATFORM=xcb "$@" </dev/null &
    screen_program=$!
    screen_children+=("$screen_program")
}

# Runs a program on a screen that a browser on this machine shows: size, program, arguments.
screen_serve() {
    local size=$1 password status=0
    shift
    screen_up "$size"
    password=$(od -An -N4 -tx1 /dev/urandom | tr -d ' \n')
    echo "$password" >"$screen_folder/password"
    helper x11vnc -display "$DISPLAY" -auth "$XAUTHORITY" -localhost -no6 -autoport 5900 \
        -passwdfile "$screen_folder/password" -forever -shared -norc -flag "$screen_folder/vnc"
    wait_until "The screen's server" "${screen_children[-1]}" grep -q PORT= "$screen_folder/vnc"
    local vnc_port port
    vnc_port=$(sed -n 's/^PORT=//p' "$screen_folder/vnc")
    port=$(free_port)
    helper websockify --web /usr/share/novnc "127.0.0.1:$port" "127.0.0.1:$vnc_port"
    wait_until "The browser's server" "${screen_children[-1]}" listens "$port"
    echo "Cantavista is at http://127.0.0.1:$port/vnc.html#autoconnect=1&resize=scale&password=$password"
    start_program "$@"
    wait "$screen_program" || status=$?
    exit "$status"
}

listens() {
    (: <>"/dev/tcp/127.0.0.1/$1") 2>/dev/null
}

free_port() {
    local port
    for ((port = 6080; port < 6180; port++)); do
        listens "$port" || break
    done
    echo "$port"
}

# Writes a picture of a program's main window: file, size of the window or '', program, arguments.
screen_picture() {
    local file=$1 size=$2 window
    shift 2
    screen_up 3840x2400
    start_program "$@"
    wait_until "The window" "$screen_program" has_main_window
    window=$(first_window no)
    [[ -z $size ]] || wmctrl -i -r "$window" -e "0,-1,-1,${size/x/,}"
    settle "$window"
    import -silent -window "$window" "png:$file" || die "The picture cannot be written: $file"
    wmctrl -i -c "$window"
    wait_gone "$screen_program" || die "The program does not end when its window is closed."
    wait "$screen_program" || die "The program ended with status $?."
    echo "Written: $file" >&2
    exit 0
}

# Prints the first window of the program that is a dialog (yes) or is not (no), if there is one.
first_window() {
    local dialog=$1 id kind
    while read -r id; do
        kind=no
        ! xprop -id "$id" _NET_WM_WINDOW_TYPE 2>/dev/null | grep -q TYPE_DIALOG || kind=yes
        [[ $kind != "$dialog" ]] || echo "$id"
    done < <(wmctrl -l -p 2>/dev/null | awk -v pid="$screen_program" '$3 == pid { print $1 }') |
        sed -n 1p
}

has_main_window() {
    [[ -n $(first_window no) ]]
}

# Waits until a window's picture has stayed the same for longer than the program's start-up
# pause (2.2 s), at most 20 s. Message boxes in front of it are closed.
settle() {
    local window=$1 now before='' since=$SECONDS dialog limit=$((SECONDS + 20))
    while ((SECONDS - since < 4 && SECONDS < limit)); do
        kill -0 "$screen_program" 2>/dev/null || die "The program ended too early."
        dialog=$(first_window yes)
        if [[ -n $dialog ]]; then
            echo "Closing a message box to take the picture." >&2
            wmctrl -i -c "$dialog"
        fi
        now=$(import -silent -window "$window" rgb:- | md5sum)
        [[ $now == "$before" && -z $dialog ]] || since=$SECONDS
        before=$now
        sleep 0.2
    done
}
