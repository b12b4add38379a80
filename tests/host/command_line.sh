#!/usr/bin/env bash
# What zqhost answers on its command line where nobody looks at a screen.
set -uo pipefail

zqhost=$1
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
unset DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
failures=0

# expect STATUS TEXT ARGUMENT...: the exit status, and a piece of what is printed.
expect() {
    local status=$1 text=$2 printed found=0
    shift 2
    printed=$("$zqhost" "$@" 2>&1) || found=$?
    if ((found != status)) || [[ $printed != *"$text"* ]]; then
        echo "zqhost $*: status $found instead of $status, or not '$text' in: $printed"
        failures=$((failures + 1))
    fi
}

echo "hello" >"$folder/text.png"
printf 'BM' >"$folder/short.bmp"

expect 0 "usage: zqhost" --help
expect 2 "unknown option '--nonsense'" --nonsense
expect 2 "--shots needs a value" --shots
expect 2 "--effect needs a value" --effect
expect 2 "no dialog of effect '3'" --effect 3
expect 2 "no dialog of effect '1x'" --effect 1x
expect 2 "more than one file" one.png two.png
expect 2 "there is no display"
expect 2 "there is no such file" --shots "$folder/shots" "$folder/nothing.png"
expect 2 "not a picture that this program knows" --shots "$folder/shots" "$folder/text.png"
expect 2 "ends before the picture does" --shots "$folder/shots" -- "$folder/short.bmp"
expect 1 "the folder cannot be made" --shots "$folder/text.png/shots"

exit $((failures != 0))
