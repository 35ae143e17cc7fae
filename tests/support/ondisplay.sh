#!/usr/bin/env bash
# ondisplay.sh COMMAND [ARGUMENT...]: runs a command on an X display of its own with a window manager,
# and ends with its status.
#
# KELVARON_SCREEN, WIDTHxHEIGHT, is the size of the screen in pixels. KELVARON_THEME_WINDOW and
# KELVARON_THEME_TEXT, RRGGBB, are the colours of a desktop theme, which Qt applications get from the
# qt5ct program.

set -euo pipefail

for argument in "$@"; do
    if [[ "$argument" == --gtest_list_tests ]]; then
        exec "$@" # needs no display
    fi
done

folder="$(mktemp -d)"
server=
manager=
finish() {
    kill $manager $server 2>/dev/null || true
    wait
    rm -rf "$folder"
}
trap finish EXIT

mkfifo "$folder/display" "$folder/ready"
exec 5<>"$folder/display" 6<>"$folder/ready" # opened for both, so that no side waits for the other
Xvfb -displayfd 5 -dpi 96 -screen 0 "${KELVARON_SCREEN:-1920x1080}x24" -nolisten tcp -noreset \
    >"$folder/server.log" 2>&1 6>&- &
server=$!
if ! read -r -t 60 -u 5 number; then
    cat "$folder/server.log" >&2
    echo "ondisplay.sh: the X server did not start" >&2
    exit 1
fi
export DISPLAY=":$number"
# A configuration of the user's own would have its own keys and places.
HOME="$folder" XDG_CONFIG_HOME="$folder" openbox --sm-disable --startup "sh -c 'echo ready >$folder/ready'" \
    >"$folder/manager.log" 2>&1 5>&- &
manager=$!
if ! read -r -t 60 -u 6; then
    cat "$folder/manager.log" >&2
    echo "ondisplay.sh: the window manager did not start" >&2
    exit 1
fi
# The first key of a new device changes the server's keyboard, and the manager then takes the focus away
# for a moment: that is over before the first window is shown.
xdotool key Shift_L
# The platform loads a library that leaves 128 bytes and is gone when the leak checker looks, so that
# no suppression can name it. The same windows are checked for leaks in memory.
export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0"
unset WAYLAND_DISPLAY XDG_SESSION_TYPE XDG_CURRENT_DESKTOP
export QT_QPA_PLATFORM=xcb
if [[ -n "${KELVARON_THEME_WINDOW:-}" ]]; then
    mkdir "$folder/qt5ct"
    templates="$(dirname "${BASH_SOURCE[0]}")/../display/themes"
    for file in qt5ct.conf colors.conf; do
        sed -e "s|@folder@|$folder/qt5ct|g" -e "s|@w@|#ff$KELVARON_THEME_WINDOW|g" \
            -e "s|@t@|#ff$KELVARON_THEME_TEXT|g" "$templates/$file.in" >"$folder/qt5ct/$file"
    done
    export XDG_CONFIG_DIRS="$folder" QT_QPA_PLATFORMTHEME=qt5ct
fi
"$@" 5>&- 6>&-
