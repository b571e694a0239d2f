#!/usr/bin/env bash
# Copies pictures with few colours and no metadata: shrink.sh <from> <to>. Needs ImageMagick.
set -euo pipefail
for picture in "$1"/*.png; do
    convert "$picture" +dither -colors 128 -strip -define png:compression-level=9 \
        -define png:compression-filter=0 "PNG8:$2/${picture##*/}"
done
