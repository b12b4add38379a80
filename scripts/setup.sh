#!/usr/bin/env bash
# Installs what is missing to build zqUi on Debian 12; with --check, also what ./check needs, with
# --long what ./check --long does, and with --windows what the build for Windows needs alone.
# Where nothing is missing it needs neither network nor rights.
set -euo pipefail

build_packages=(
    g++ cmake ninja-build
    qt6-base-dev libx11-dev libxi-dev
    binutils-mingw-w64-i686
    libpng-dev libjpeg-dev libhwy-dev
    libgtest-dev
    fontconfig fonts-liberation
)
check_packages=(
    clang-format clang-tidy
    xvfb xdotool imagemagick
    doxygen pkg-config dpkg-dev file
)
windows_packages=(
    g++-mingw-w64-i686-posix cmake ninja-build
    libhwy-dev libgtest-dev
    xvfb xauth
)
long_packages=(
    clang-14 libclang-rt-14-dev
)

fail() {
    echo "setup: $*" >&2
    exit 1
}

packages=("${build_packages[@]}")
case "${1:-}" in
    "") ;;
    --check) packages+=("${check_packages[@]}") ;;
    --long) packages+=("${check_packages[@]}" "${long_packages[@]}") ;;
    --windows) packages=("${windows_packages[@]}") ;;
    *) fail "usage: scripts/setup.sh [--check|--long|--windows]" ;;
esac

if ! command -v dpkg-query >/dev/null; then
    echo "setup: this is not Debian; please see that these are there: ${packages[*]}" >&2
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [[ $status == installed ]] || missing+=("$package")
done
if ((${#missing[@]} == 0)); then
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    command -v sudo >/dev/null || fail "please install as root: ${missing[*]}"
    as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# Given on the command line: sudo does not hand the environment on.
apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -y -q)
if ! { "${apt[@]}" update && "${apt[@]}" install --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1; then
    tail -n 30 "$log" >&2
    fail "apt-get could not install these packages"
fi
