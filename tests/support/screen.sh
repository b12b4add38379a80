# shellcheck shell=bash
# Sourced by tests that work programs on a screen of their own. They set $work, a scratch folder, and
# $host, the program that is running; they have a function `fail`.

patience=30 # seconds for whatever is waited for

clean_up() {
    [[ -z ${host:-} ]] || kill "$host" 2>/dev/null || true
    [[ -z ${screen:-} ]] || kill "$screen" 2>/dev/null || true
    rm -rf "$work"
}
trap clean_up EXIT

start_screen() {
    mkfifo "$work/display"
    # It stays as it is when a program goes: while it starts afresh, it refuses the next one.
    Xvfb -displayfd 3 -noreset -screen 0 1024x768x24 -nolisten tcp \
        3<>"$work/display" 2>"$work/screen.log" &
    screen=$!
    local number
    if ! read -r -t "$patience" number <>"$work/display"; then
        echo "no screen: $(cat "$work/screen.log")"
        exit 77
    fi
    export DISPLAY=:$number
}

# wait_for TEXT COMMAND...: until the command succeeds.
wait_for() {
    local what=$1 end=$((SECONDS + patience))
    shift
    until "$@"; do
        ((SECONDS < end)) || fail "waited in vain for $what"
        sleep 0.1
    done
}

is_there() { xdotool search --onlyvisible --name "$1" >"$work/found" 2>/dev/null && [[ -s $work/found ]]; }
is_gone() { ! is_there "$1"; }

# window NAME: waits for a window, puts its id in $window and its place in $X and $Y, and gives it
# the keyboard.
window() {
    wait_for "the window '$1'" is_there "$1"
    window=$(head -n 1 "$work/found")
    eval "$(xdotool getwindowgeometry --shell "$window" | grep -E '^[XY]=')"
    xdotool windowfocus "$window"
}
