#!/usr/bin/env bash
# Makes the packages for this system and has the distribution's own checkers look at them.
#
# The packages are left in build/package/packages.

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
set -euo pipefail
export LC_ALL=C.UTF-8

packages=build/package/packages
unpacked="$(mktemp -d)"
trap 'rm -rf "$unpacked"' EXIT
status=0

# check WHAT COMMAND...: runs all checks, also after one that failed.
check() {
    local what="$1"
    shift
    progress "Checking $what"
    if ! "$@" >"$unpacked/output" 2>&1; then
        cat "$unpacked/output" >&2
        echo "check-packages.sh: $what: failed" >&2
        status=1
    fi
}

# shellcheck disable=SC2317 # called through check
man_page_is_clean() {
    local complaints
    complaints="$(man --warnings --encoding=UTF-8 --local-file -Tutf8 -Z "$1" 2>&1 >/dev/null)"
    printf '%s' "$complaints"
    [[ -z "$complaints" ]] && mandoc -T lint -W warning "$1"
}

scripts/install-dependencies.sh --for package
configure package
build package
rm -rf "$packages"
progress "Making the packages"
(cd build/package && cpack >cpack.log 2>&1) || {
    cat build/package/cpack.log >&2
    exit 1
}

deb=("$packages"/*.deb)
archive=("$packages"/*.tar.gz)
dpkg-deb --extract "${deb[0]}" "$unpacked/deb"
tar --extract --gzip --file "${archive[0]}" --directory "$unpacked" --strip-components=1 \
    --one-top-level=archive

# The first entry of Debian's change log has to close a report in Debian's own tracker only for a
# package that enters its archive.
check "the .deb" lintian --allow-root --fail-on error,warning \
    --suppress-tags initial-upload-closes-no-bugs "${deb[0]}"
check "the desktop file" desktop-file-validate "$unpacked"/deb/usr/share/applications/*.desktop
check "the AppStream data" appstreamcli validate --no-net "$unpacked"/deb/usr/share/metainfo/*.xml
for page in "$unpacked"/deb/usr/share/man/man1/*; do
    check "the manual page ${page##*/}" man_page_is_clean "$page"
done
check "that the .deb and the archive hold the same programs" diff \
    <(cd "$unpacked/deb/usr" && find bin lib -type f | sort) \
    <(cd "$unpacked/archive" && find bin lib -type f | sort)
check "that the archive's program starts" "$unpacked/archive/bin/kelvaron-profile-editor" --version
check "the pictures" scripts/render-images.sh --check

if ((status == 0)); then
    progress "The packages:"
    ls -l "${deb[0]}" "${archive[0]}"
fi
exit "$status"
