#!/usr/bin/env bash
# Runs every effect on a sample picture and lays the results out as docs/effects.png, each with its
# name. The picture is made small first, so that effects of a few pixels show.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
# shellcheck source=scripts/quietly.sh
source scripts/quietly.sh

scripts/setup.sh --check
use_ccache
quietly build/logs/sheet-configure.log cmake --preset release
quietly build/logs/sheet-build.log cmake --build --preset release --target zqfx
zqfx=build/release/tools/zqfx
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# A curve file that sends each place to that of its square: 0 stays 0, 255 stays 255.
square=""
for ((i = 0; i < 256; ++i)); do
    square+="$((i * i / 255)),"
done

# Effects whose defaults leave a picture as it is get parameters that show what they do.
declare -A shown=(
    [user-filter]="cells=-1,-1,-1,-1,0,-1,-1,-1,0,1,-1,-1,0,1,1,-1,0,1,1,1,0,1,1,1,1 bias=128"
    [magic-mirror]="mapping=radial curve=${square%,}"
    [tone-adjustment]="highlight=60 shadow=-80"
)

convert host/samples/coffee.png -resize 225x150 "$scratch/coffee.png"
convert host/samples/camera.png -resize 150x150 "$scratch/camera.png"
tiles=()
while read -r id name _; do
    picture=$scratch/coffee.png
    if [[ $name == edge-fade ]]; then
        picture=$scratch/camera.png # it takes no colour
    fi
    tile=$scratch/$id.png
    # shellcheck disable=SC2086 # parameters are words
    "$zqfx" run "$name" "$picture" "$tile" ${shown[$name]:-}
    tiles+=(-label "$id $name" "$tile")
done < <("$zqfx" list)

montage -font Liberation-Sans -pointsize 15 "${tiles[@]}" \
    -geometry 225x150+5+4 -tile 6x -background white "$scratch/sheet.png"
convert "$scratch/sheet.png" -strip -colors 256 "png8:$scratch/effects.png"
mv "$scratch/effects.png" docs/effects.png
echo "docs/effects.png: $((${#tiles[@]} / 3)) effects"
