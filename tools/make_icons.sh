#!/usr/bin/env bash
# Makes the icons' pictures from their drawings, after a drawing has changed. Needs librsvg2-bin.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../assets/icons"

for icon in cantavista melody; do
    for size in 16 24 32 48 64 128 256; do
        rsvg-convert -w "$size" -h "$size" "$icon.svg" -o "$icon-$size.png"
    done
done
