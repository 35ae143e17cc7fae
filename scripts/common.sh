# shellcheck shell=bash
# What run.sh and test.sh share. To be sourced; leaves the working folder at the project's root.

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

# Progress is written to standard error; standard output is left to the program.
progress() { printf '==> %s\n' "$*" >&2; }

processors() { nproc 2>/dev/null || sysctl -n hw.ncpu 2>/dev/null || echo 2; }

# configure PRESET: configures the build unless this has been done and the presets have not changed
# since. The build itself notices changes of a CMakeLists.txt.
configure() {
    local ninja_file="build/$1/build.ninja"
    if [[ -f "$ninja_file" && ! CMakePresets.json -nt "$ninja_file" ]]; then
        return 0
    fi
    progress "Configuring build/$1"
    cmake --preset "$1" >&2
}

# build PRESET [TARGET...]: prints only the commands' own messages.
build() {
    local preset="$1"
    shift
    progress "Building in build/$preset"
    cmake --build --preset "$preset" ${1+--target "$@"} -- --quiet >&2
}
