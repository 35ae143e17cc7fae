#!/usr/bin/env bash
# Sets the machine up, builds the editor and starts it on the demo installation.
#
#   ./run.sh [ARGUMENT...]     arguments are the editor's own; "-f" opens only the firmware tool
#   ./run.sh --tour            drives the editor and the simulated charger through the whole main job
#                              and leaves a page of pictures, build/screenshots/index.html
#
# On a machine without a display it always makes the tour.

set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

has_display() {
    case "$(uname -s)" in
        Darwin | MINGW* | MSYS*) return 0 ;;
    esac
    [[ -n "${DISPLAY:-}" || -n "${WAYLAND_DISPLAY:-}" ]]
}

scripts/install-dependencies.sh --for run
configure dev

if [[ "${1:-}" != --tour ]]; then
    if has_display; then
        build dev KelvaronProfileEditor demo-installation
        progress "Starting the editor"
        exec build/dev/bin/KelvaronProfileEditor "$@"
    fi
    progress "No display here (DISPLAY and WAYLAND_DISPLAY are empty): making a tour instead"
fi

# The tour uses a separate display if there is a virtual one, so that its windows stay out of the
# way.
display=()
if command -v xvfb-run >/dev/null; then
    export QT_QPA_PLATFORM=xcb
    display=(xvfb-run --auto-servernum --server-args="-dpi 96 -screen 0 1280x900x24 -nolisten tcp")
elif ! has_display; then
    echo "run.sh: xvfb-run is missing: there is no display to make the tour on" >&2
    exit 1
fi
build dev kelvaron_tour demo-installation

pictures=build/screenshots
mkdir -p "$pictures"
rm -f "$pictures"/*.png "$pictures/index.html"

# A tour takes seconds; the limit ends one that waits for a dialog for ever.
limit=()
if command -v timeout >/dev/null; then
    limit=(timeout --kill-after=10 180)
fi

status=0
${display[@]+"${display[@]}"} ${limit[@]+"${limit[@]}"} \
    build/dev/bin/kelvaron_tour --output "$pictures" </dev/null || status=$?

if ((status != 0)); then
    progress "The tour failed (status $status)"
fi
find "$pictures" -name '*.png' | sort
if [[ -f "$pictures/index.html" ]]; then
    progress "All on one page: $pictures/index.html"
fi
exit "$status"
