#!/usr/bin/env bash
# Renders the icon's PNG sizes and the Windows icon from dq480.svg (needs rsvg-convert, package
# librsvg2-bin, and ImageMagick). Run it after changing the SVG and commit the PNGs with it.
set -euo pipefail
cd "$(dirname "$0")"
for size in 16 22 24 32 48 64 128 256; do
    mkdir -p "hicolor/${size}x${size}"
    rsvg-convert -w "$size" -h "$size" dq480.svg -o "hicolor/${size}x${size}/dq480.png"
done
# The Windows program's icon holds the same sizes (needs ImageMagick).
convert hicolor/{16x16,24x24,32x32,48x48,64x64,128x128,256x256}/dq480.png dq480.ico
