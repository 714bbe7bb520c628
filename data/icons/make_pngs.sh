#!/bin/sh
# Draws the PNG files from the SVG files beside this script. Needs rsvg-convert (Debian: librsvg2-bin).
set -eu
cd "$(dirname "$0")"
for size in 16 24 32 48 64 128 256; do
    rsvg-convert --width "$size" --height "$size" quillon.svg --output "quillon-$size.png"
done
rsvg-convert --width 960 --height 480 splash.svg --output splash.png
