#!/usr/bin/env bash
# Renews the pictures of the documentation: runs the tour and keeps the pictures that the texts use,
# by name. Look at them before you commit them.
#
# It needs ImageMagick (Debian: imagemagick), and a virtual display, so that the pictures do not
# depend on your desktop (xvfb). Chromium shows the pages; without it, the pictures of pages are not
# renewed.

set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

for tool in convert xvfb-run; do
    if ! command -v "$tool" >/dev/null; then
        echo "make-guide-pictures.sh: $tool is missing (Debian: apt-get install imagemagick xvfb)" >&2
        exit 1
    fi
done

# FILE NAME: saves the picture NAME of the documentation, compressed.
keep() {
    convert "$1" -strip +dither -colors 256 -define png:compression-level=9 \
        -define png:exclude-chunks=date,time "PNG8:docs/images/$2"
    printf '%s\n' "docs/images/$2"
}

# HTML NAME WIDTH: saves a picture of a page, without the empty space below it.
keep_page() {
    local picture="$folder/$2"
    # Without its sandbox, which needs permissions that a container may not have: the page is our
    # own.
    "$browser" --headless --no-sandbox --disable-gpu --hide-scrollbars --force-device-scale-factor=1 \
        --user-data-dir="$folder/browser" --window-size="$3,2000" --screenshot="$picture" \
        "file://$1" >"$folder/browser.log" 2>&1
    convert "$picture" -trim +repage -bordercolor white -border 20 "$picture"
    keep "$picture" "$2"
}

# Saves the companion's pages of the list from the tour, and of the list before a change.
keep_pages() {
    local profiles="$PWD/build/dev/bin/kelvaron-profiles" status=0
    folder="$(mktemp -d)"
    trap 'rm -rf "$folder"' EXIT
    cp build/screenshots/profiles.xml "$folder"
    sed 's|<charge_current>2.5<|<charge_current>2<|; s|<charge_timeout>240<|<charge_timeout>300<|' \
        "$folder/profiles.xml" >"$folder/before.xml"
    (cd "$folder" && "$profiles" show --html profiles.xml >show.html)
    (cd "$folder" && "$profiles" diff --html before.xml profiles.xml >diff.html) || status=$?
    if ((status != 1)); then
        echo "make-guide-pictures.sh: the compared lists do not differ (status $status)" >&2
        exit 1
    fi
    keep_page "$folder/show.html" page-profiles.png 1100
    keep_page "$folder/diff.html" page-comparison.png 800
}

LC_ALL=C.UTF-8 ./run.sh --tour >/dev/null
build dev kelvaron-profiles

mapfile -t names < <(grep -hoE 'images/[a-z0-9-]+\.png' README.md docs/*.md | grep -v /page- | sort -u)
find docs/images -name '*.png' -not -name 'page-*' -delete
for name in "${names[@]#images/}"; do
    # Some steps occur more than once; their first picture is used.
    found=(build/screenshots/[0-9]*-"$name")
    if [[ ! -f "${found[0]}" ]]; then
        echo "make-guide-pictures.sh: the tour takes no picture called $name" >&2
        exit 1
    fi
    keep "${found[0]}" "$name"
done
if browser="$(command -v chromium || command -v google-chrome)"; then
    keep_pages
else
    echo "make-guide-pictures.sh: no Chromium here: docs/images/page-*.png stay as they are" >&2
fi
