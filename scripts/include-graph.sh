#!/usr/bin/env bash
# Prints which folder of src/ includes which, from the top to the bottom.
#
#   scripts/include-graph.sh           prints the graph
#   scripts/include-graph.sh --check   fails when an arrow runs up, or when docs/architecture.md shows
#                                      another graph than this one

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# From the top to the bottom: a folder includes only what comes after it. Files outside folders
# count as folders, except main.cpp.
floors=(
    mainwindow window
    firmware transfer updatecheck
    installation schemareview xmlformat HEXGeneratorParser profileimport
    profiles settingsui
    filedialogs rescue messagedialogs serialports look input
    IntelHexFile KelvaronBundle CBGenerator applicationglobalmap versionstring base
)
# The one circle: the list asks the pane whether a profile is being edited, the pane asks a row for its
# flags, and both show the same model of a profile.
circle='settingsui -> profiles'

# One line "FROM TO" for each pair, in no order.
arrows() {
    grep -rEo --include='*.h' --include='*.cpp' '^#include "[A-Za-z]+[/.][^"]+"' src |
        sed -E 's|^src/([^:]+):#include "([^"]+)"|\1 \2|; s|\.(h\|cpp)\>||g' |
        awk '
            function folder(file) { return file ~ "/" ? substr(file, 1, index(file, "/") - 1) : file }
            {
                from = folder($1); to = folder($2)
                if (from == "main") from = "mainwindow"
                if (from != to && to !~ /^ui_/) print from, to
            }' |
        sort -u
}

graph="$(arrows | awk -v order="${floors[*]}" -v circle="$circle" '
    BEGIN { count = split(order, floor, " "); for (i = 1; i <= count; ++i) rank[floor[i]] = i }
    {
        if (!($1 in rank) || !($2 in rank)) {
            print "include-graph.sh: not a known floor: " $1 " or " $2 > "/dev/stderr"; failed = 1
        } else if (rank[$2] < rank[$1] && $1 " -> " $2 != circle) {
            print "include-graph.sh: this arrow runs up: " $1 " -> " $2 > "/dev/stderr"; failed = 1
        }
        has[$1, $2] = 1
    }
    END {
        for (i = 1; i <= count; ++i) {
            line = floor[i] " ->"
            for (j = 1; j <= count; ++j) if ((floor[i], floor[j]) in has) line = line " " floor[j]
            print line
        }
        exit failed
    }')"

if [[ "${1:-}" != --check ]]; then
    printf '%s\n' "$graph"
elif [[ "$(sed -n '/^mainwindow ->/,/^base ->/p' docs/architecture.md)" != "$graph" ]]; then
    printf 'include-graph.sh: docs/architecture.md shows another graph than this one:\n%s\n' "$graph" >&2
    exit 1
fi
