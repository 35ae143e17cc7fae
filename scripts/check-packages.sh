#!/usr/bin/env bash
# Builds the packages for this system and runs the distribution's own checkers on them.
#
# The packages are left in build/package/packages.

# shellcheck source=scripts/common.sh
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"
set -euo pipefail
export LC_ALL=C.UTF-8

packages=build/package/packages
made=build/package/packaging # what is configured with the version
unpacked="$(mktemp -d)"
trap 'rm -rf "$unpacked"' EXIT
status=0

# check WHAT COMMAND...: runs a check and continues after a failure.
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

# The checks of the other systems' packages that are possible on this system.

# shellcheck disable=SC2317 # called through check
windows_resources_compile() {
    (cd "$made/windows" && x86_64-w64-mingw32-windres --preprocessor=gcc --preprocessor-arg=-E \
        --preprocessor-arg=-xc --preprocessor-arg=-DRC_INVOKED kelvaron-profile-editor.rc \
        -O coff -o "$unpacked/resources.o") &&
        x86_64-w64-mingw32-objdump -h "$unpacked/resources.o" | grep -q '\.rsrc' &&
        xmllint --noout "$made/windows/kelvaron-profile-editor.manifest"
}

# shellcheck disable=SC2317 # called through check
windows_installer_compiles() {
    local folder="$unpacked/windows"
    mkdir -p "$folder/KelvaronProfileEditorFiles" "$folder/demo" "$folder/platforms"
    touch "$folder"/{KelvaronProfileEditor.exe,Qt5Core.dll,platforms/qwindows.dll} \
        "$folder"/{KelvaronProfileEditorFiles/supl.exe,demo/supl.exe}
    (cd "$made/windows" && makensis -V2 "-DSOURCE=$folder" \
        "-DOUTPUT=$unpacked/kelvaron-profile-editor-setup.exe" installer.nsi)
}

# shellcheck disable=SC2317 # called through check
mac_files_are_sound() {
    plistutil -i packaging/macos/Info.plist.in -o "$unpacked/plist" -f bin &&
        icns2png --list packaging/icons/kelvaron-profile-editor.icns &&
        icotool --list packaging/icons/kelvaron-profile-editor.ico
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

# Only a package for Debian's archive has to close a report in Debian's bug tracker with the first
# entry of its change log.
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
check "the resources for Windows" windows_resources_compile
check "the installer for Windows" windows_installer_compiles
check "the property list and icons for macOS and Windows" mac_files_are_sound
check "the pictures" scripts/render-images.sh --check

if ((status == 0)); then
    progress "The packages:"
    ls -l "${deb[0]}" "${archive[0]}"
fi
exit "$status"
