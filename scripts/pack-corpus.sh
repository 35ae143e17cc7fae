#!/usr/bin/env bash
# Packs the seeds of a fuzz target, as they are in the build folder, into fuzz/corpus/TARGET.tar.xz.
# The archive depends only on the seeds' names and contents.

set -euo pipefail

if (($# != 1)); then
    echo "Usage: scripts/pack-corpus.sh TARGET" >&2
    exit 2
fi
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export LC_ALL=C
find "build/fuzz/fuzz/seeds/$1" -type f -printf '%P\0' | sort --zero-terminated |
    tar --create --xz --file "fuzz/corpus/$1.tar.xz" --directory "build/fuzz/fuzz/seeds/$1" \
        --mtime=@0 --mode=0644 --owner=0 --group=0 --numeric-owner \
        --null --verbatim-files-from --files-from=-
