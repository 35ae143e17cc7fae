#!/usr/bin/env bash
# fuzz.sh SECONDS [REGEX]: builds the fuzz targets and lets each of those whose names match search for so
# many seconds. Called by ./test.sh --fuzz.

set -euo pipefail

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

seconds="$1"
filter="${2:-}"

# fuzz TARGET: searches for the given time and fails if something was found. The paths are absolute,
# because a target may change its working folder.
fuzz() {
    local target="$1" folder seeds=() options=()
    local corpus="$PWD/build/fuzz/corpus/$target" log="$PWD/build/fuzz/logs/$target.log"
    mkdir -p "$corpus" build/fuzz/findings build/fuzz/logs
    for folder in "$PWD/build/fuzz/fuzz/seeds/$target" "$PWD/fuzz/regressions/$target"; do
        if [[ -d "$folder" ]]; then
            seeds+=("$folder")
        fi
    done
    if [[ -f "fuzz/dictionaries/$target.dict" ]]; then
        options+=(-dict="$PWD/fuzz/dictionaries/$target.dict")
    fi
    progress "Fuzzing $target for $seconds seconds"
    if "build/fuzz/fuzz/bin/fuzz_$target" -max_total_time="$seconds" -timeout=30 -rss_limit_mb=2048 \
        -max_len=20480 -close_fd_mask=1 -print_final_stats=1 "${options[@]}" \
        -artifact_prefix="$PWD/build/fuzz/findings/$target-" "$corpus" "${seeds[@]}" >"$log" 2>&1; then
        grep -E '(DONE|number_of_executed_units)' "$log"
        return 0
    fi
    tail -n 40 "$log" >&2
    echo "fuzz.sh: fuzz target $target: finding, see $log" >&2
    return 1
}

fuzz_all() {
    local binary target searched=0 status=0
    if [[ -z "${TMPDIR:-}" && -w /dev/shm ]]; then
        export TMPDIR=/dev/shm # inputs are written and read again: no need to wait for a disk
    fi
    for binary in build/fuzz/fuzz/bin/fuzz_*; do
        target="${binary##*/fuzz_}"
        if [[ -z "$filter" || "$target" =~ $filter ]]; then
            fuzz "$target" || status=1
            searched=$((searched + 1))
        fi
    done
    if ((searched == 0)); then
        echo "fuzz.sh: no fuzz target's name matches \"$filter\"" >&2
        return 1
    fi
    return "$status"
}

scripts/install-dependencies.sh --for fuzz
configure fuzz
build fuzz
fuzz_all
