#!/usr/bin/env bash
# Sets the machine up, builds everything and runs the tests. Needs no display.

set -euo pipefail

usage() {
    cat <<'USAGE'
Usage: ./test.sh [--sanitize | --coverage] [--filter REGEX]
       ./test.sh --fuzz SECONDS [--filter REGEX]
       ./test.sh --long-life
       ./test.sh --packages

  --sanitize       build with the address and undefined-behaviour sanitizers (build/sanitize)
  --coverage       build with coverage counters (build/coverage) and sum them up with gcovr
                   when that is installed
  --fuzz SECONDS   build the fuzz targets (build/fuzz, with Clang) and let each of them, one after
                   the other, search for SECONDS seconds; new inputs are kept in build/fuzz/corpus,
                   findings in build/fuzz/findings
  --long-life      1000 transfers, 1000 replaced lists and 200 reloaded bundles in one run, as the
                   program is and under the leak checker, with the memory held; takes half an hour
  --packages       make the packages and run the distribution's checkers on them
  --filter REGEX   run only the tests, or fuzz targets, whose names match
  --help           show this

Without any of these the formatting of the sources is checked first.
USAGE
}

preset=dev
filter=
seconds=
long_life=
while (($# > 0)); do
    case "$1" in
        --sanitize | --coverage | --fuzz)
            if [[ "$preset" != dev && "$preset" != "${1#--}" ]]; then
                echo "test.sh: --sanitize, --coverage and --fuzz are separate builds" >&2
                exit 2
            fi
            preset="${1#--}"
            shift
            if [[ "$preset" == fuzz ]]; then
                if [[ ! "${1:-}" =~ ^[1-9][0-9]*$ ]]; then
                    echo "test.sh: --fuzz needs a number of seconds" >&2
                    exit 2
                fi
                seconds="$1"
                shift
            fi
            ;;
        --long-life)
            long_life=yes
            shift
            ;;
        --packages)
            exec "$(dirname "${BASH_SOURCE[0]}")/scripts/check-packages.sh"
            ;;
        --filter)
            if (($# < 2)); then
                echo "test.sh: --filter needs an expression" >&2
                exit 2
            fi
            filter="$2"
            shift 2
            ;;
        --filter=*)
            filter="${1#--filter=}"
            shift
            ;;
        -h | --help)
            usage
            exit 0
            ;;
        *)
            echo "test.sh: unknown option: $1" >&2
            usage >&2
            exit 2
            ;;
    esac
done

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/scripts/common.sh"

check_formatting() {
    local clang_format major folder folders=()
    clang_format="$(command -v clang-format-14 || command -v clang-format || true)"
    if [[ -z "$clang_format" ]]; then
        progress "clang-format is not installed: formatting not checked"
        return 0
    fi
    # Versions format the same rules differently, so only this one is used.
    major="$("$clang_format" --version | sed -E 's/.*version ([0-9]+).*/\1/')"
    if [[ "$major" != 14 ]]; then
        progress "clang-format is version $major, the judge is version 14: formatting not checked"
        return 0
    fi
    for folder in src tests tools demo benchmarks fuzz; do
        if [[ -d "$folder" ]]; then
            folders+=("$folder")
        fi
    done
    progress "Checking the formatting"
    local report
    if ! report="$(find "${folders[@]}" \( -name '*.h' -o -name '*.cpp' \) -print0 |
        xargs -0 "$clang_format" --dry-run -Werror 2>&1)"; then
        sed -nE 's/^([^ :]+):[0-9]+:[0-9]+: error:.*/\1/p' <<<"$report" | sort -u | {
            mapfile -t files
            if ((${#files[@]} == 0)); then
                printf '%s\n' "$report"
            else
                printf 'Not formatted: %d files. This mends it:\n' "${#files[@]}"
                printf '  %s -i %s\n' "$clang_format" "${files[*]}"
            fi
        } >&2
        return 1
    fi
}

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
    echo "test.sh: fuzz target $target: finding, see $log" >&2
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
        echo "test.sh: no fuzz target's name matches \"$filter\"" >&2
        return 1
    fi
    return "$status"
}

# list_failed: prints the tests that failed in the last run, one per line, with the command that
# runs each alone from the project's root.
list_failed() {
    local test
    echo "Failed; each line runs one of them alone:"
    while IFS=: read -r _ test; do
        printf "  ctest --preset %s -R '^%s$'\n" "$preset" "${test//./\\.}"
    done <"$failed"
}

export QT_QPA_PLATFORM=offscreen
# One locale for every program, so that file names and texts are UTF-8 everywhere.
export LC_ALL=C.UTF-8

if [[ -n "$long_life" ]]; then
    scripts/install-dependencies.sh --for test
    for preset in dev sanitize; do
        configure "$preset"
        build "$preset" long_life
        progress "A long life in build/$preset"
        "build/$preset/longlife/long_life" >/dev/null
    done
    exit
fi

if [[ "$preset" == fuzz ]]; then
    scripts/install-dependencies.sh --for fuzz
    configure fuzz
    build fuzz
    fuzz_all
    exit
fi

scripts/install-dependencies.sh --for test
if [[ "$preset" == dev && -z "$filter" ]]; then
    check_formatting
fi
configure "$preset"
build "$preset"

if [[ "$preset" == coverage ]]; then
    find build/coverage -name '*.gcda' -delete
fi

progress "Running the tests of build/$preset"
arguments=(--preset "$preset" --output-on-failure --no-tests=error -j "$(processors)")
if [[ -n "$filter" ]]; then
    arguments+=(-R "$filter" -LE shard)
elif [[ "$preset" == sanitize ]]; then
    arguments+=(-LE single)
fi
failed="build/$preset/Testing/Temporary/LastTestsFailed.log"
rm -f "$failed"
if ! ctest "${arguments[@]}"; then
    if [[ -s "$failed" ]]; then
        list_failed >&2
    fi
    exit 1
fi

if [[ "$preset" == coverage ]]; then
    if command -v gcovr >/dev/null; then
        gcovr --root . --filter src/ --print-summary --txt build/coverage/coverage.txt build/coverage
        progress "Line by file: build/coverage/coverage.txt"
    else
        progress "Counters are in build/coverage; install gcovr to have them summed up"
    fi
fi
