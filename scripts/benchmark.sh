#!/usr/bin/env bash
# Measures how fast the editor is and prints one table, each row next to its floor in the same run.
#
#   scripts/benchmark.sh [--idle] [--benchmark_filter=REGEX]
#
#   --idle   measure an idle minute as well, which takes two more minutes
#
# Run it on an otherwise idle machine. docs/speed.md explains the rows.

set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

scripts/install-dependencies.sh --for benchmark
cmake --preset release >&2 # finds packages that were just installed
build release editor_benchmarks

processor="$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo 2>/dev/null | head -n 1)"
echo "${processor:-$(uname -m)}, $(processors) processors, $(uname -sr), load $(cut -d' ' -f1 /proc/loadavg 2>/dev/null)"
echo
# The editor's own output is not part of the table.
export LC_ALL=C.UTF-8
QT_QPA_PLATFORM=xcb xvfb-run --auto-servernum --server-args="-dpi 96 -screen 0 1280x900x24 -nolisten tcp" \
    build/release/bin/editor_benchmarks "$@" </dev/null | grep '^|'
