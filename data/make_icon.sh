#!/usr/bin/env bash
# Draws tarnwick.png: two prompts of a take, with the cut in the pause between them. Needs
# ImageMagick; the result is committed.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")

# Reads a bar per line, "x top bottom", in pixels of a 256 x 256 square.
bars() {
    while read -r x top bottom; do
        printf 'roundrectangle %d,%d %d,%d 6,6 ' "$x" "$top" $((x + 12)) "$bottom"
    done
}
first=$(bars <<<$'32 104 152\n52 72 184\n72 52 204\n92 88 168')
second=$(bars <<<$'152 92 164\n172 60 196\n192 80 176\n212 108 148')
cut=$(for top in 32 64 96 140 172 204; do
    printf 'roundrectangle 125,%d 131,%d 3,3 ' "$top" $((top + 20))
done)

convert -size 256x256 xc:none -stroke none \
    -fill '#16324a' -draw 'roundrectangle 8,8 247,247 44,44' \
    -fill '#7b93a6' -draw 'roundrectangle 108,125 148,131 3,3' \
    -fill '#7fd1c7' -draw "$first" \
    -fill '#f2b34c' -draw "$second" \
    -fill white -draw "$cut" \
    -resize 128x128 -strip "PNG32:$here/tarnwick.png"
