#!/usr/bin/env bash
# What zqfx answers and leaves behind: arguments, exit status, message, files.
set -uo pipefail

zqfx=$1
samples=$2
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cd "$folder" || exit 1
failures=0

fail() {
    echo "$*"
    failures=$((failures + 1))
}

# expect STATUS TEXT ARGUMENT...: the exit status, a piece of what is printed, one line at most when
# it is a complaint, and out.png there if and only if a run went well.
expect() {
    local status=$1 text=$2 found=0 printed
    shift 2
    rm -f out.png
    printed=$("$zqfx" "$@" 2>&1) || found=$?
    if ((found != status)) || [[ $printed != *"$text"* ]]; then
        fail "zqfx $*: status $found instead of $status, or not '$text' in: $printed"
    fi
    if ((status != 0)) && (($(wc -l <<<"$printed") != 1)); then
        fail "zqfx $*: more than one line: $printed"
    fi
    if [[ ${1:-} == run && $* == *out.png* && $* != *--help* ]] &&
        { { ((status == 0)) && [[ ! -s out.png ]]; } || { ((status != 0)) && [[ -e out.png ]]; }; }; then
        fail "zqfx $*: out.png is there after status $status, or not"
    fi
}

same() {
    cmp -s "$1" "$2" || fail "$1 and $2 differ${3:+: $3}"
}

color=$samples/coffee.png
gray=$samples/camera.png
head -c 5000 "$color" >cut.png
head -c 5000 "$samples/rocket.jpg" >cut.jpg
echo hello >text.png
"$zqfx" run negative "$color" color.bmp || fail "no BMP was written"
head -c 5000 color.bmp >cut.bmp
ln -s /dev/full full.png
mkdir folder.png

# Help and lists.
expect 2 "usage: zqfx"
expect 0 "usage: zqfx" --help
expect 0 "usage: zqfx" run --help
expect 0 "zqfx 0." --version
expect 0 "70  white-point" list
expect 0 "direction=top-left|top" run emboss --help
expect 0 "It takes 24-bit" run 6 --help out.png
(($("$zqfx" list | wc -l) == 45)) || fail "zqfx list does not show 45 effects"

# Wrong usage.
expect 2 "there is no command 'lsit'" lsit
expect 2 "takes no more words" list emboss
expect 2 "usage: zqfx run" run emboss "$color"
expect 2 "did you mean gaussian-blur?" run gausian-blur "$color" out.png
expect 2 "no parameter 'foo'; it has direction, mode, depth and backColor" run emboss "$color" out.png foo=1
expect 2 "from 1 to 10" run emboss "$color" out.png depth=11
expect 2 "not of the form name=value" run emboss "$color" out.png depth
expect 2 "unknown option '--masc'" run emboss "$color" out.png --masc m.png
expect 2 "--mask needs a value" run emboss "$color" out.png --mask
expect 2 "given twice" run emboss "$color" out.png --record 00 --record 00
expect 2 "exclude each other" run emboss "$color" out.png depth=1 --record 00
expect 2 "has 16 bytes, not 1" run emboss "$color" out.png --record 00
expect 2 "--mask-out needs --mask" run mosaic "$color" out.png --mask-out m.png

# Files.
expect 2 "nothing.png: there is no such file" run negative nothing.png out.png
for cut in cut.png cut.jpg cut.bmp; do
    expect 2 "$cut: the file ends before the picture does" run negative "$cut" out.png
done
expect 2 "not a picture that this program knows" run negative text.png out.png
expect 2 "not an ordinary file" run negative folder.png out.png
expect 2 "does not end in" run negative "$color" out.gif
expect 2 "/dev/full: the name does not end in" run negative "$color" /dev/full
expect 2 "full.png: this is not an ordinary file" run negative "$color" full.png
expect 2 "no such file or folder" run negative "$color" nowhere/out.png
expect 2 "not a readable curve file" run 56 "$color" out.png curve=text.png
expect 2 "the mask has 512 x 512 pixels, the picture 600 x 400" run mosaic "$color" out.png --mask "$gray"
"$zqfx" list >/dev/full 2>message
[[ $? == 2 && $(<message) == *"cannot write"* ]] || fail "a full disk behind 'zqfx list' is not told"

# Effects that give no picture.
expect 1 "edge-fade takes grey and 8-bit palette pictures" run edge-fade "$color" out.png
expect 1 "these parameters change nothing" run 1 "$color" out.png brightness=0 contrast=0
expect 1 "levels is 129, but it must be" run 4 "$color" out.png --record 0000000081000000

# Pictures.
expect 0 "" run emboss "$color" out.png direction=top-left depth=3
cp out.png named.png
expect 0 "" run Emboss "$color" out.png --record=01000000030000000300000000000000
same named.png out.png "a record and its names"
expect 0 "" run 68 "$gray" -- out.png radius=5
cp color.bmp twice.bmp
"$zqfx" run negative twice.bmp twice.bmp && "$zqfx" run negative twice.bmp twice.bmp
same color.bmp twice.bmp "a negative of a negative, in place"
cp color.bmp kept.bmp
"$zqfx" run edge-fade kept.bmp kept.bmp 2>/dev/null
same color.bmp kept.bmp "a picture that the effect refuses to overwrite"

# The file of a curve: head, then 256 bytes of 255.
{
    printf 'RUCC\0\1\1\0\10\0\0\1\0\0\0\0\0\0'
    head -c 256 /dev/zero | tr '\0' '\377'
} >flat.mmc
expect 0 "" run magic-mirror "$color" out.png curve=flat.mmc
cp out.png flat.png
expect 0 "" run magic-mirror "$color" out.png mapping=vertical curve="$(printf '255,%.0s' {1..255})255"
same flat.png out.png "a curve and its file"

# Masks: all white changes nothing, the new one is kept, and the picture stays where it is 0.
"$zqfx" run white-point "$gray" black.png gain=0
"$zqfx" run negative black.png white.png
"$zqfx" run mosaic "$gray" plain.png width=9
expect 0 "" run mosaic "$gray" out.png width=9 --mask white.png --mask-out newmask.png
same plain.png out.png "under a white mask"
same white.png newmask.png "a white mask"
expect 0 "" run mosaic "$gray" out.png width=9 --mask black.png
same black.png out.png "under a black mask"

# A disk without room, and a stop: neither leaves anything.
mkdir empty
(
    ulimit -f 8
    "$zqfx" run negative color.bmp empty/out.bmp 2>message
)
[[ $? == 2 && $(<message) == *"empty/out.bmp: "* ]] || fail "no room on the disk: $(<message)"

side=4000
row=$((side * 3))
# An upright BMP of zeros. Its head: file size and offset, then the picture's sizes.
long() { printf '%b' "$(printf '\\x%02x' $(($1 & 255)) $(($1 >> 8 & 255)) $(($1 >> 16 & 255)) $(($1 >> 24)))"; }
{
    printf BM
    for value in $((54 + row * side)) 0 54 40 $side $side $((1 + (24 << 16))) 0 0 0 0 0 0; do
        long "$value"
    done
} >large.bmp
truncate -s $((54 + row * side)) large.bmp
# Whether zqfx runs there and has its handlers of SIGINT and SIGTERM in place. The shell that is to
# become zqfx has handlers of its own until then, and a signal would make it clean up in our name.
catches_signals() {
    local caught
    [[ /proc/$1/exe -ef $zqfx ]] || return 1
    caught=$(sed -n 's/^SigCgt:\t*//p' "/proc/$1/status" 2>/dev/null)
    (((16#${caught:-0} & 0x4002) == 0x4002))
}
for signal in INT TERM; do
    "$zqfx" run oil-painting large.bmp empty/out.bmp intensity=100 2>message &
    running=$!
    until catches_signals $running || ! kill -0 $running 2>/dev/null; do sleep 0.01; done
    kill -$signal $running
    wait $running
    status=$?
    [[ $status == 130 && $(<message) == "zqfx: stopped" ]] || fail "SIG$signal: status $status, $(<message)"
done
[[ -z $(ls -A empty) ]] || fail "left behind: $(ls -A empty)"

exit $((failures != 0))
