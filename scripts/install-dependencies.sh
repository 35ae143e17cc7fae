#!/usr/bin/env bash
# Installs what is missing on this machine for building, testing or checking the editor.
#
# Debian and Ubuntu: with apt-get (through sudo when not root). Does nothing, and prints nothing, if
# everything is installed. On other systems it only checks whether the tools are present; if not, it
# prints a list and exits with status 1.

set -euo pipefail

usage() {
    cat <<'USAGE'
Usage: scripts/install-dependencies.sh [--for run|test|fuzz|lint|package|benchmark]

  --for run    what building and starting the editor needs (the default);
               adds a virtual display on a machine that has no display
  --for test   what building and running the tests needs
  --for fuzz   what building and running the fuzz targets needs: also Clang
  --for lint   what checking the sources needs: also clang-format, clang-tidy and shellcheck
  --for package
               what making and checking packages needs: also lintian
  --for benchmark
               what measuring speed needs: also Google Benchmark and a virtual display
USAGE
}

say() { printf '%s\n' "$*" >&2; }

purpose=run
while (($# > 0)); do
    case "$1" in
        --for)
            purpose="${2:-}"
            shift $(($# > 1 ? 2 : 1))
            ;;
        --for=*)
            purpose="${1#--for=}"
            shift
            ;;
        -h | --help)
            usage
            exit 0
            ;;
        *)
            say "install-dependencies.sh: unknown option: $1"
            usage >&2
            exit 2
            ;;
    esac
done

# CMake configures the tests, too, so their dependencies are needed for every purpose.
packages=(g++ cmake ninja-build ccache qtbase5-dev libqt5serialport5-dev libgtest-dev libxml2-utils)
case "$purpose" in
    run)
        if [[ -z "${DISPLAY:-}" && -z "${WAYLAND_DISPLAY:-}" ]]; then
            packages+=(xvfb xauth fonts-dejavu-core)
        elif [[ -z "${DISPLAY:-}" ]]; then
            packages+=(qtwayland5)
        fi
        ;;
    test)
        packages+=(fonts-dejavu-core srecord desktop-file-utils appstream mandoc man-db
            xvfb openbox xdotool qt5ct)
        ;;
    fuzz)
        packages+=(fonts-dejavu-core clang libclang-rt-dev)
        ;;
    lint)
        packages+=(clang-format clang-tidy shellcheck)
        ;;
    package)
        packages+=(dpkg-dev lintian man-db desktop-file-utils appstream mandoc librsvg2-bin
            icoutils icnsutils binutils-mingw-w64-x86-64 nsis libplist-utils)
        ;;
    benchmark)
        packages+=(libbenchmark-dev xvfb xauth fonts-dejavu-core)
        ;;
    *)
        say "install-dependencies.sh: --for takes run, test, fuzz, lint, package or benchmark, not \"$purpose\""
        exit 2
        ;;
esac

# Prints the names of the packages that are not installed.
missing_packages() {
    local package
    for package in "${packages[@]}"; do
        if [[ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" != installed ]]; then
            printf '%s\n' "$package"
        fi
    done
}

has_qt5() {
    # A user who passes the Qt folder to CMake has Qt.
    [[ -n "${Qt5_DIR:-}${CMAKE_PREFIX_PATH:-}" ]] && return 0
    if command -v pkg-config >/dev/null && pkg-config --exists Qt5Widgets Qt5SerialPort; then
        return 0
    fi
    local qmake
    for qmake in qmake qmake-qt5 qmake5; do
        if command -v "$qmake" >/dev/null && [[ "$("$qmake" -query QT_VERSION)" == 5.* ]]; then
            return 0
        fi
    done
    return 1
}

# Prints a list and exits with status 1 if a tool required by the build is missing.
require_tools() {
    local absent=()
    command -v cmake >/dev/null || absent+=("CMake 3.21 or newer")
    command -v c++ >/dev/null || command -v g++ >/dev/null || command -v clang++ >/dev/null ||
        absent+=("a C++17 compiler")
    command -v ninja >/dev/null || command -v ninja-build >/dev/null || absent+=("Ninja")
    has_qt5 || absent+=("Qt 5.15 for development, with Qt SerialPort")
    if ((${#absent[@]} == 0)); then
        return 0
    fi
    say "$1"
    say "Please install by hand:"
    printf '  - %s\n' "${absent[@]}" >&2
    say "  - and GoogleTest and xmllint, when they are missing too"
    say "On Debian and Ubuntu these are the packages: ${packages[*]}"
    exit 1
}

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    require_tools "This system has no apt-get, so nothing can be installed automatically."
    exit 0
fi

mapfile -t missing < <(missing_packages)
if ((${#missing[@]} == 0)); then
    exit 0
fi

as_root=()
if ((EUID != 0)); then
    if ! command -v sudo >/dev/null; then
        require_tools "Installing ${missing[*]} needs root rights, and there is no sudo."
        exit 0
    fi
    as_root=(sudo)
fi

apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get -qq -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 "$@" </dev/null
}

say "Installing: ${missing[*]}"
log="$(mktemp)"
trap 'rm -f "$log"' EXIT
# An update may fail for one of several sources; all that matters is whether the packages are
# available.
apt update >"$log" 2>&1 || true
if ! apt install --yes --no-install-recommends "${missing[@]}" >>"$log" 2>&1; then
    cat "$log" >&2
    say "install-dependencies.sh: apt-get could not install: ${missing[*]}"
    exit 1
fi
