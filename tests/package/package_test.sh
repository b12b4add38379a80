#!/usr/bin/env bash
# Installs the package, moves it, and builds what its guide shows from nothing else, by CMake and by
# pkg-config. The hosts that come of it run on a screen of their own, where somebody presses OK.
#   package_test.sh BUILD     from a build folder
#   package_test.sh --system  with the package that is installed on the system
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

work=$(mktemp -d)
fail() {
    echo "package_test: $*" >&2
    cat "$work/host.log" >&2 || true
    exit 1
}
# shellcheck source=tests/support/screen.sh
source tests/support/screen.sh

prefix=/usr
if [[ $1 != --system ]]; then
    cmake --install "$1" --prefix "$work/installed" >"$work/install.log"
    prefix=$work/moved
    mv "$work/installed" "$prefix"
    export CMAKE_PREFIX_PATH=$prefix LD_LIBRARY_PATH=$prefix/lib PKG_CONFIG_PATH=$prefix/lib/pkgconfig
fi
guide=$prefix/share/doc/zqui/host-guide.md

# block LANGUAGE WORD: the guide's block of that language that holds the word.
block() {
    awk -v fence="\`\`\`$1" -v word="$2" '
        $0 == "```" && inside { if (index(text, word)) printf "%s", text; inside = 0 }
        inside { text = text $0 "\n" }
        $0 == fence { inside = 1; text = "" }' "$guide"
}

# build_host NAME: by both ways of the guide, in a folder with its source and nothing else.
build_host() {
    block cmake find_package | sed "s/host/$1/g" >CMakeLists.txt
    {
        echo "set -e"
        block sh "cc host.c" | sed "s/host/$1/g"
    } >build.sh
    bash build.sh >build.log 2>&1 || fail "$1: $(cat build.log)"
}

# run_host PROGRAM TITLE ANSWER: its dialog gets an OK.
run_host() {
    "$1" >"$work/host.log" 2>&1 &
    host=$!
    window "^$2\$"
    xdotool key Return
    wait "$host" || fail "$1 ended with $?"
    host=
    [[ $(cat "$work/host.log") == "$3" ]] || fail "$1 did not say '$3'"
}

mkdir "$work/minimal" "$work/host"
cp "$prefix/share/doc/zqui/examples/minimal.c" "$work/minimal"
block c "int main" >"$work/host/host.c"
for name in minimal host; do
    cd "$work/$name"
    build_host "$name"
done

start_screen
export QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR=$work
for folder in . build; do
    run_host "$work/minimal/$folder/minimal" "Brightness and Contrast" "channel 0, brightness 0, contrast 0"
    run_host "$work/host/$folder/host" "Gaussian Blur" "size 3: blurred"
done

"$prefix/bin/zqfx" run negative "$prefix/share/zqui/samples/camera.png" "$work/negative.png"
"$prefix/bin/zqhost" --shots "$work/shots" --effect 17 >"$work/host.log" 2>&1 || fail "zqhost ended with $?"
