#!/bin/sh
# runshard.sh PROGRAM: runs the program's share of its tests (GTEST_SHARD_INDEX) from a folder of its own,
# because the main window works in the folder beside its executable.

set -eu

folder="$1.shards/$GTEST_SHARD_INDEX"
mkdir -p "$folder"
ln -f "$1" "$folder/" 2>/dev/null || cp "$1" "$folder/"
exec "$folder/$(basename "$1")"
