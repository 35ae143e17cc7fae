#!/usr/bin/env bash
# Draws the pictures of src/images and packaging/icons from their sources in src/images/source. With
# --check it only checks that they are up to date.
#
# The drawn pictures are kept in the repository, so the build does not need this script. Run it
# after a change to a source. It needs rsvg-convert (Debian: librsvg2-bin), and for the icons of
# Windows and macOS icotool and png2icns (Debian: icoutils, icnsutils).

set -euo pipefail
export LC_ALL=C

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)"
sources="$root/src/images/source"
target="$root"
if [[ "${1:-}" == --check ]]; then
    target="$(mktemp -d)"
    trap 'rm -rf "$target"' EXIT
fi
images="$target/src/images"
icons="$target/packaging/icons"
mkdir -p "$images" "$icons"

for tool in rsvg-convert icotool png2icns; do
    if ! command -v "$tool" >/dev/null; then
        echo "render-images.sh: $tool is missing" \
            "(Debian: apt-get install librsvg2-bin icoutils icnsutils)" >&2
        exit 1
    fi
done

# draw SOURCE PICTURE: draws at the source's own size and, under the names that Qt expects for
# high-resolution screens, at twice and three times that size.
draw() {
    local zoom name
    for zoom in 1 2 3; do
        name="$2"
        if ((zoom > 1)); then
            name="${2%.*}@${zoom}x.${2##*.}"
        fi
        rsvg-convert --zoom "$zoom" --output "$images/$name" "$sources/$1"
        printf '%s\n' "src/images/$name"
    done
}

# draw_icon SOURCE SIZE
draw_icon() {
    rsvg-convert --width "$2" --height "$2" --output "$icons/$2.png" "$sources/$1"
    printf '%s\n' "packaging/icons/$2.png"
}

draw upload.svg upload.png
draw download.svg download.png
draw tovo_logo.svg tovo_logo.png
draw nolight.svg nolight.PNG
draw greenlight.svg greenlight.PNG
draw greenlight2.svg greenlight2.PNG
draw upload_download.svg upload_download.png

for size in 16 22 24; do
    draw_icon upload_download_small.svg "$size"
done
for size in 32 48 64 128 256 512; do
    draw_icon upload_download.svg "$size"
done
(
    cd "$icons"
    icotool --create --output kelvaron-profile-editor.ico 16.png 24.png 32.png 48.png 64.png \
        --raw=256.png
    png2icns kelvaron-profile-editor.icns 16.png 32.png 48.png 128.png 256.png 512.png >/dev/null
)
printf '%s\n' packaging/icons/kelvaron-profile-editor.{ico,icns}

if [[ "$target" != "$root" ]]; then
    for folder in src/images packaging/icons; do
        (cd "$target/$folder" && find . -type f) | while read -r picture; do
            cmp "$target/$folder/$picture" "$root/$folder/$picture"
        done
    done
    exit
fi

# A test compares these checksums, so that no source is changed without its pictures.
(cd "$images" && sha256sum source/*.svg ./*.png ./*.PNG) | sed 's| \./| |' >"$images/drawn.sha256"
