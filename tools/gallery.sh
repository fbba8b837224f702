#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Renders all pictures of docs/GALLERY.md and docs/commands/:  tools/gallery.sh [kvgamut]
#
# The default program is that of the release or the dev build. The printer profile is part of the package
# libgs-common.
set -euo pipefail

root=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
kvgamut=${1:+$(realpath "$1")}
if [[ -z $kvgamut ]]; then
    for build in release dev; do
        [[ -n $kvgamut || ! -x $root/build/$build/bin/kvgamut ]] || kvgamut="$root/build/$build/bin/kvgamut"
    done
fi
if [[ -z $kvgamut ]]; then
    echo "kvgamut is not built; run ./run.sh first or pass its path: tools/gallery.sh path/to/kvgamut" >&2
    exit 1
fi
printer=/usr/share/color/icc/ghostscript/default_cmyk.icc
patches="$root/docs/data/patches.csv"
ring="$root/docs/data/ring.csv"

draw() {
    local name=$1
    shift
    "$kvgamut" render --size 640x480 --output "$root/docs/gallery/$name.png" "$@"
    echo "$name"
}

mkdir -p "$root/docs/gallery"
draw surface sRGB
draw pure-colours sRGB --ambient 1
draw flat sRGB --mode flat --color '#3b7dd8'
draw wireframe sRGB --mode wireframe --no-grid
draw translucent-over-opaque sRGB DisplayP3
draw printer-in-screen "$printer" sRGB --intent relative
draw crossing "$printer" sRGB --intent relative --alpha 0.6,0.4 --camera 160,330,-280 --frame all
draw projection sRGB DisplayP3 Rec2020 --no-surface
draw primaries sRGB --no-surface --primaries
draw section sRGB --clip 50
draw section-printer "$printer" --clip 50 --plane --intent relative
draw section-lids "$printer" sRGB --clip 60 --intent relative --style paper
draw section-inside sRGB --alpha 0.4 --section-at 50 --style dark
draw plane sRGB --plane
draw markers-sphere sRGB --alpha 0.25 --markers "$patches" --marker-size 9
draw markers-cube sRGB --alpha 0.25 --markers "$patches" --marker-type cube --marker-size 12
draw markers-star sRGB --alpha 0.25 --markers "$patches" --marker-type star --marker-size 12
draw points sRGB --no-surface --points "$patches" --point-size 9
draw line sRGB --no-surface --line "$ring" --line-width 6
draw top sRGB --view top
draw bottom sRGB --view bottom
draw oblique ProPhoto --camera 250,-420,-400 --frame all
draw perspective AdobeRGB --angle 60 --camera 130,120,-230 --frame all
draw orthogonal AdobeRGB --angle 60 --camera 130,120,-230 --frame all --orthogonal
draw no-background sRGB DisplayP3 --no-background
draw light sRGB --light 60,250,-250 --light-color '#ffd9a0' --ambient 0.2
draw inside-out ProPhoto AdobeRGB "$printer" --intent relative
draw lines DisplayP3 --look lines
draw loss sRGB --loss "$printer" --intent relative
draw body-outside "$printer" sRGB --body outside --intent relative --view back
draw body-common sRGB "$printer" --body intersection --intent relative
draw section-hue sRGB --alpha 0.4 --section-hue 310
draw points-distance sRGB --alpha 0.35 --points "$ring" --point-colors distance --point-size 5
draw loss-dark AdobeRGB --loss sRGB --metric de76 --style dark
draw paper "$printer" sRGB --intent relative --style paper --caption 'Relative colorimetric'
draw slide sRGB DisplayP3 --style slide
draw dark AdobeRGB sRGB --style dark
draw plain sRGB DisplayP3 --annotate none
draw mixed-modes "$printer" sRGB --mode smooth,wireframe --alpha 1,0.6 --grid 9 --intent relative

# The pages of the commands use a short file name for the printer profile.
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cp "$printer" "$scratch/printer.icc"
cd "$scratch"
pictures="$root/docs/pictures"
"$kvgamut" slice sRGB DisplayP3 printer.icc --lightness 60 --size 640x480 -o "$pictures/slice-lightness.png"
"$kvgamut" slice sRGB DisplayP3 printer.icc --hue 300 --size 640x480 -o "$pictures/slice-hue.png"
"$kvgamut" slice sRGB printer.icc --lightness 50 --fill colors --points "$patches" --points-within 5 --size 640x480 \
    -o "$pictures/slice-colors.png"
"$kvgamut" slice sRGB printer.icc --rings --size 640x480 -o "$pictures/slice-rings.png"

# The page of `kvgamut export`, photographed in a browser.
if command -v chromium >/dev/null; then
    "$kvgamut" export sRGB DisplayP3 -o page.html
    chromium --headless --no-sandbox --user-data-dir="$scratch/browser" --use-angle=swiftshader --enable-unsafe-swiftshader \
        --force-color-profile=srgb --hide-scrollbars --window-size=1300,1120 --virtual-time-budget=5000 \
        --screenshot="$pictures/page.png" "file://$scratch/page.html" 2>/dev/null
else
    echo "Chromium is not installed: docs/pictures/page.png stays as it is"
fi
