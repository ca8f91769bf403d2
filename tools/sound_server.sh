# shellcheck shell=bash
# Sound systems of the benchmarks' own. Sourced by bash after screen.sh, whose children they are:
# what screen_up made, screen_down ends and removes.

# shellcheck disable=SC2154 # screen_folder and screen_children are of screen.sh

# Starts PulseAudio with a null sink in the folder of the private screen, for this script alone.
pulse_up() {
    local folder=$screen_folder/pulse
    mkdir -m 700 "$folder"
    export XDG_RUNTIME_DIR=$folder PULSE_SERVER=unix:$folder/socket PULSE_COOKIE=$folder/cookie
    helper pulseaudio -n --daemonize=no --exit-idle-time=-1 --use-pid-file=no --disable-shm=yes \
        -L "module-null-sink sink_name=null rate=44100 channels=2 norewinds=1" \
        -L "module-native-protocol-unix auth-anonymous=1 socket=$folder/socket"
    wait_until "PulseAudio" "${screen_children[-1]}" pulse_answers
    pactl set-default-sink null
}

pulse_answers() {
    pactl info >/dev/null
}

# Starts a JACK server without a device, under a name that no other program asks for.
jack_up() {
    export JACK_DEFAULT_SERVER=cantavista-bench-$$
    helper jackd -d dummy -r 48000 -p 128
    jack_child=${screen_children[-1]}
    wait_until "JACK" "$jack_child" jack_answers
}

# Ends it, if it runs.
jack_down() {
    [[ -n ${jack_child:-} ]] || return 0
    kill "$jack_child" 2>/dev/null || true
    wait "$jack_child" 2>/dev/null || true
    jack_child=
}

jack_answers() {
    jack_lsp >/dev/null
}
