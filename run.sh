#!/usr/bin/env bash
# Sets the machine up, builds the editor and starts it on the demo installation.
#
#   ./run.sh [ARGUMENT...]     arguments are the editor's own; "-f" opens only the firmware tool
#
# On a machine without a display it takes pictures of a tour through the editor instead and leaves
# them in build/screenshots.

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

if has_display; then
    build dev KelvaronProfileEditor demo-installation
    progress "Starting the editor"
    exec build/dev/bin/KelvaronProfileEditor "$@"
fi

progress "No display here (DISPLAY and WAYLAND_DISPLAY are empty): taking pictures of a tour instead"
build dev kelvaron_tour demo-installation
if ! command -v xvfb-run >/dev/null; then
    echo "run.sh: xvfb-run is missing: there is no display to start the editor on" >&2
    exit 1
fi

pictures=build/screenshots
mkdir -p "$pictures"
rm -f "$pictures"/*.png

# A tour takes seconds; one that waits for a dialog for ever must not.
limit=()
if command -v timeout >/dev/null; then
    limit=(timeout --kill-after=10 180)
fi

status=0
QT_QPA_PLATFORM=xcb xvfb-run --auto-servernum --server-args="-screen 0 1280x900x24 -nolisten tcp" \
    "${limit[@]}" build/dev/bin/kelvaron_tour --output "$pictures" </dev/null || status=$?

progress "Pictures in $pictures:"
find "$pictures" -name '*.png' | sort
if ((status != 0)); then
    progress "The tour failed (status $status)"
fi
exit "$status"
