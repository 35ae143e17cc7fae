#!/usr/bin/env bash
# Sets the machine up, builds everything and runs the tests. Needs no display.

set -euo pipefail

usage() {
    cat <<'USAGE'
Usage: ./test.sh [--thorough] [--sanitize | --coverage] [--filter REGEX]
       ./test.sh --fuzz SECONDS [--filter REGEX]
       ./test.sh --long-life
       ./test.sh --packages

  --thorough       run each test in a process of its own, and those that take many seconds, too
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
thorough=
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
        --thorough)
            thorough=yes
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

# list_failed: prints the tests that failed in the last run, one per line, with the command that
# runs each alone from the project's root.
list_failed() {
    local folder="build/$preset/Testing/Temporary" test
    echo "Failed; each line runs one of them alone:"
    {
        sed -nE 's/^\[  FAILED  \] ([^ ,]+)( \(.*|,.*)?$/\1/p' "$folder/LastTest.log"
        sed -E 's/^[0-9]+://; /\.Shard[0-9]+$/d' "$folder/LastTestsFailed.log"
    } | sort -u | while read -r test; do
        printf "  ctest --preset %s -R '^%s$'\n" "$preset" "${test//./\\.}"
    done
}

export QT_QPA_PLATFORM=offscreen
# One locale for every program, so that file names and texts are UTF-8 everywhere.
export LC_ALL=C.UTF-8
# The C library overwrites memory that is freed, so that its use does not pass by luck.
export MALLOC_PERTURB_=165

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
    exec scripts/fuzz.sh "$seconds" "$filter"
fi

scripts/install-dependencies.sh --for test
if [[ "$preset" == dev && -z "$filter" ]]; then
    scripts/check-format.sh
fi
configure "$preset"
build "$preset"

if [[ "$preset" == coverage ]]; then
    find build/coverage -name '*.gcda' -delete
fi

progress "Running the tests of build/$preset"
arguments=(--preset "$preset" --output-on-failure --no-tests=error)
if [[ -n "$thorough$filter" || "$preset" == sanitize ]]; then
    export KELVARON_THOROUGH=1 # see tests/support/thorough.h
fi
jobs="$(processors)"
if [[ -n "$filter" ]]; then
    arguments+=(-R "$filter" -LE shard)
elif [[ -n "$thorough" && "$preset" != sanitize ]]; then
    arguments+=(-LE shard)
elif [[ "$preset" == sanitize ]]; then
    arguments+=(-LE single)
else
    arguments+=(-LE single)
    jobs=$((3 * jobs)) # most of the time they wait for a process or a timer
fi
failed="build/$preset/Testing/Temporary/LastTestsFailed.log"
rm -f "$failed"
if ! ctest "${arguments[@]}" -j "$jobs"; then
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
