#!/usr/bin/env bash
# Renders the icon's PNG sizes from dq480.svg (needs rsvg-convert, package librsvg2-bin). Run it
# after changing the SVG and commit the PNGs with it.
set -euo pipefail
cd "$(dirname "$0")"
for size in 16 22 24 32 48 64 128 256; do
    mkdir -p "hicolor/${size}x${size}"
    rsvg-convert -w "$size" -h "$size" dq480.svg -o "hicolor/${size}x${size}/dq480.png"
done
