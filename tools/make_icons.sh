#!/usr/bin/env bash
# Makes the icon's pictures from its drawing, after the drawing has changed. Needs librsvg2-bin.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../assets/icons"

for size in 16 24 32 48 64 128 256; do
    rsvg-convert -w "$size" -h "$size" cantavista.svg -o "cantavista-$size.png"
done
