#!/usr/bin/env bash
# Makes the pictures of the documentation anew: takes the tour and keeps those of its pictures that
# the texts show, by name. Look at them before you commit them.
#
# It needs ImageMagick (Debian: imagemagick), and a virtual display, so that the pictures do not
# depend on your desktop (xvfb).

set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

for tool in convert xvfb-run; do
    if ! command -v "$tool" >/dev/null; then
        echo "make-guide-pictures.sh: $tool is missing (Debian: apt-get install imagemagick xvfb)" >&2
        exit 1
    fi
done

LC_ALL=C.UTF-8 ./run.sh --tour >/dev/null

mapfile -t names < <(grep -hoE 'images/[a-z0-9-]+\.png' README.md docs/*.md | sort -u)
rm -f docs/images/*.png
for name in "${names[@]#images/}"; do
    # Some steps come more than once; their first picture will do.
    found=(build/screenshots/[0-9]*-"$name")
    if [[ ! -f "${found[0]}" ]]; then
        echo "make-guide-pictures.sh: the tour takes no picture called $name" >&2
        exit 1
    fi
    convert "${found[0]}" -strip +dither -colors 256 -define png:compression-level=9 \
        -define png:exclude-chunks=date,time "PNG8:docs/images/$name"
    printf '%s\n' "docs/images/$name"
done
