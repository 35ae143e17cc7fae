#!/usr/bin/env bash
# Draws the pictures of src/images from their sources in src/images/source.
#
# The drawn pictures are kept in the repository, so building needs none of this. Run it after a
# change to a source. It needs rsvg-convert (Debian: librsvg2-bin).

set -euo pipefail

images="$(cd "$(dirname "${BASH_SOURCE[0]}")/../src/images" && pwd)"

if ! command -v rsvg-convert >/dev/null; then
    echo "render-images.sh: rsvg-convert is missing (Debian: apt-get install librsvg2-bin)" >&2
    exit 1
fi

# draw SOURCE PICTURE ZOOM: the source's own width and height times ZOOM are the picture's.
draw() {
    rsvg-convert --zoom "$3" --output "$images/$2" "$images/source/$1"
    printf '%s\n' "src/images/$2"
}

# At normal size and, under the name that Qt looks for on dense screens, at twice that size.
draw_both() {
    draw "$1" "$2" 1
    draw "$1" "${2%.*}@2x.${2##*.}" 2
}

draw_both upload.svg upload.png
draw_both download.svg download.png
draw_both tovo_logo.svg tovo_logo.png
draw_both nolight.svg nolight.PNG
draw_both greenlight.svg greenlight.PNG
draw_both greenlight2.svg greenlight2.PNG
draw upload_download.svg upload_download.png 1
