#!/usr/bin/env bash
# Works the hosts as a person does, with keyboard and mouse on a screen of their own. In zqhost two
# effects are chosen from the menu, dragged, accepted and undone, and one is cancelled; the minimal
# host shows its one dialog.
# Exit status 77: no screen could be started here.
set -euo pipefail

zqhost=$1
minimal=$2
picture=$3
work=$(mktemp -d)

fail() {
    echo "end_to_end: $*" >&2
    cat "$work/host.log" >&2 || true
    exit 1
}

# shellcheck source=tests/support/screen.sh
source "$(dirname "${BASH_SOURCE[0]}")/../support/screen.sh"

# look WIDTH HEIGHT LEFT TOP: a sign of what that part of the window shows.
look() {
    import -window root -crop "$1x$2+$((X + $3))+$((Y + $4))" +repage "$work/look.png"
    convert "$work/look.png" -format '%#' info:
}
before_pane() { look 90 90 20 18; }
after_pane() { look 90 90 20 166; }
shown_picture() { look 600 400 100 90; }
open_menu() { look 200 40 122 22; }

shows() { [[ $("$1") == "$2" ]]; }
shows_other() { [[ $("$1") != "$2" ]]; }

# settled PART: its sign once it stays the same for longer than the panes' clock takes.
settled() {
    local first second=none
    until [[ ${first:-} == "$second" ]]; do
        first=$("$1")
        sleep 1.2
        second=$("$1")
    done
    echo "$second"
}

# drag FROM TO TOP: a scroll bar's thumb, in small steps.
drag() {
    local x
    xdotool mousemove $((X + $1)) $((Y + $3)) mousedown 1
    for x in 1 2 3 4 5 6; do
        xdotool mousemove $((X + $1 + ($2 - $1) * x / 6)) $((Y + $3))
        sleep 0.05
    done
    xdotool mouseup 1
}

# open_effect LETTER NAME: from the menu of colour effects, by keyboard.
open_effect() {
    window "$main"
    local closed
    closed=$(open_menu)
    xdotool key alt+c
    wait_for "the menu" shows_other open_menu "$closed"
    xdotool key c key "$1"
    window "^$2\$"
    before=$(settled before_pane)
    after=$(settled after_pane)
}

# drag_and_see FROM TO TOP: the After pane follows the bar, and the Before pane stays.
drag_and_see() {
    drag "$@"
    wait_for "another picture in the After pane" shows_other after_pane "$after"
    shows before_pane "$before" || fail "the Before pane changed"
}

expect_picture() {
    window "$main"
    wait_for "$3" "$1" shown_picture "$2"
}

undo() {
    window "$main"
    xdotool key ctrl+z
}

start_screen
export QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$work

"$zqhost" "$picture" >"$work/host.log" 2>&1 &
host=$!
main="^$(basename "$picture") "
window "$main"
original=$(settled shown_picture)

open_effect b "Brightness and Contrast"
drag_and_see 246 300 48
xdotool mousemove $((X + 190)) $((Y + 266)) click 1
wait_for "the dialog's end after OK" is_gone "^Brightness and Contrast\$"
expect_picture shows_other "$original" "a brighter picture"
brighter=$(shown_picture)

open_effect c "Color Reduction"
drag_and_see 174 150 86
xdotool key Return
wait_for "the dialog's end after Return" is_gone "^Color Reduction\$"
expect_picture shows_other "$brighter" "a picture of fewer colours"

undo
expect_picture shows "$brighter" "the picture before the second effect"
undo
expect_picture shows "$original" "the picture before both effects"

open_effect b "Brightness and Contrast"
drag_and_see 246 200 106
xdotool key Escape
wait_for "the dialog's end after Escape" is_gone "^Brightness and Contrast\$"
expect_picture shows "$original" "the same picture after Cancel"

window "$main"
xdotool key ctrl+q
wait "$host" || fail "zqhost ended with $?"

"$minimal" >"$work/host.log" 2>&1 &
host=$!
window "^Brightness and Contrast\$"
drag 246 300 48
xdotool key Return
wait "$host" || fail "minimal ended with $?"
host=
grep -qE '^channel 0, brightness [1-9][0-9]*, contrast 0$' "$work/host.log" || fail "not that record"
echo "end_to_end: all as expected"
