#!/usr/bin/env bash
# Fails when a source is not formatted as .clang-format says, and prints the command that formats it.

set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

clang_format="$(command -v clang-format-14 || command -v clang-format || true)"
if [[ -z "$clang_format" ]]; then
    progress "clang-format is not installed: formatting not checked"
    exit 0
fi
# Versions format the same rules differently, so only this one is used.
major="$("$clang_format" --version | sed -E 's/.*version ([0-9]+).*/\1/')"
if [[ "$major" != 14 ]]; then
    progress "clang-format is version $major, only version 14 is used: formatting not checked"
    exit 0
fi
progress "Checking the formatting"
if ! report="$(find src tests tools demo benchmarks fuzz \( -name '*.h' -o -name '*.cpp' \) -print0 |
    xargs -0 "$clang_format" --dry-run -Werror 2>&1)"; then
    sed -nE 's/^([^ :]+):[0-9]+:[0-9]+: error:.*/\1/p' <<<"$report" | sort -u | {
        mapfile -t files
        if ((${#files[@]} == 0)); then
            printf '%s\n' "$report"
        else
            printf 'Not formatted: %d files. This command formats them:\n' "${#files[@]}"
            printf '  %s -i %s\n' "$clang_format" "${files[*]}"
        fi
    } >&2
    exit 1
fi
