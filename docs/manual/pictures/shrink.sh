#!/usr/bin/env bash
# shrink.sh <from> <to>: copies the pictures, reduced to 128 colours and without metadata. Needs
# ImageMagick.
set -euo pipefail
for picture in "$1"/*.png; do
    convert "$picture" +dither -colors 128 -strip -define png:compression-level=9 \
        -define png:compression-filter=0 "PNG8:$2/${picture##*/}"
done
