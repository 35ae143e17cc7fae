#!/usr/bin/env bash
# Installs the .deb in a bare Debian and performs the main task with it as an ordinary user.
#
#   packaging/try-in-clean-root.sh [DEB]      DEB is by default the one of build/package/packages
#
# The script operates the editor's windows on a separate display and saves pictures in
# build/package/pictures. Everything else is removed afterwards. It must run as root and needs
# debootstrap, xvfb, openbox, xdotool and imagemagick; scripts/check-packages.sh builds the .deb.

set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
work="$PWD/build/package"
deb="${1:-$(echo "$work"/packages/*.deb)}"

# The trial has its own namespaces; its mounts and processes end with them.
if [[ "${IN_NAMESPACE:-}" != yes ]]; then
    for tool in debootstrap Xvfb openbox xdotool import unshare; do
        command -v "$tool" >/dev/null || {
            echo "try-in-clean-root.sh: $tool is missing (Debian: apt-get install debootstrap" \
                "xvfb openbox xdotool imagemagick)" >&2
            exit 1
        }
    done
    IN_NAMESPACE=yes exec unshare --mount --pid --fork --kill-child --mount-proc "$0" "$deb"
fi

pictures="$work/pictures"
root="$(mktemp -d "$work/root.XXXXXX")"
lock=
# shellcheck disable=SC2317 # called at the end
clean_up() {
    local folder
    for folder in proc dev tmp/.X11-unix mnt; do
        umount --recursive --lazy "$root/$folder" 2>/dev/null || true
    done
    rm -rf --one-file-system "$root"
    rm -f "$lock"
}
trap clean_up EXIT
rm -rf "$pictures"
mkdir -p "$pictures"
number=0
failures=0

step() { printf '==> %s\n' "$*"; }

expect() {
    local what="$1"
    shift
    if "$@"; then
        printf '    ok: %s\n' "$what"
    else
        printf '    FAILED: %s\n' "$what"
        failures=$((failures + 1))
    fi
}

# --- the root

make_root() {
    local site suite
    if [[ ! -f "$work/clean-root.tar" ]]; then
        # The mirror that this machine itself installs from.
        # shellcheck disable=SC2016 # the variables are apt's
        read -r site suite < <(apt-get indextargets --format '$(SITE) $(CODENAME)' \
            'Created-By: Packages' 'Component: main')
        step "Making a bare Debian ($suite)"
        debootstrap --variant=minbase "$suite" "$root" "$site" >"$work/debootstrap.log"
        tar -C "$root" -cf "$work/clean-root.tar" .
    else
        step "Unpacking a bare Debian (delete $work/clean-root.tar to create it again)"
        tar -C "$root" -xf "$work/clean-root.tar"
    fi
    chmod 755 "$root"
    rm -rf "$root/etc/apt"
    cp -aL /etc/apt "$root/etc/apt"
    cp -L /etc/resolv.conf "$root/etc/resolv.conf"
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
    mkdir -p "$root/tmp/.X11-unix" /tmp/.X11-unix
    mount -t tmpfs -o mode=1777 tmpfs /tmp/.X11-unix # this namespace's alone
    mount --bind /tmp/.X11-unix "$root/tmp/.X11-unix"
}

in_root() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 "$@"; }

install_deb() {
    cp "$1" "$root/kelvaron.deb"
    # A desktop has fonts; a bare Debian has none.
    in_root DEBIAN_FRONTEND=noninteractive sh -c 'apt-get -qq update &&
        apt-get -qq install --yes --no-install-recommends /kelvaron.deb fonts-dejavu-core' \
        >"$work/install.log" 2>&1 || { tail "$work/install.log"; exit 1; }
}

# --- the user

home="/home/Anna Müller"
data="$root$home/.local/share/kelvaron-profile-editor"

as_user() {
    chroot --userspec=anna:anna "$root" env -i HOME="$home" USER=anna DISPLAY="$DISPLAY" \
        PATH="$home/.local/bin:/usr/local/bin:/usr/bin:/bin" LC_ALL=C.UTF-8 \
        XDG_RUNTIME_DIR=/run/user/anna "$@"
}

# --- the screen

# An unused number: servers in other namespaces would consider our lock stale.
start_display() {
    local i number="$((1000 + RANDOM))"
    export DISPLAY=":$number"
    lock="/tmp/.X$number-lock"
    Xvfb "$DISPLAY" -screen 0 1000x700x24 -nolisten tcp -ac >"$work/display.log" 2>&1 &
    for ((i = 0; i < 100; ++i)); do
        xdotool getdisplaygeometry >/dev/null 2>&1 && break
        sleep 0.1
    done
    openbox >>"$work/display.log" 2>&1 &
    for ((i = 0; i < 100; ++i)); do
        xdotool get_num_desktops >/dev/null 2>&1 && return 0
        sleep 0.1
    done
    echo "try-in-clean-root.sh: no display, see $work/display.log" >&2
    exit 1
}

window() { xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -1; }

wait_for() {
    local i
    for ((i = 0; i < 300; ++i)); do
        if [[ -n "$(window "$1")" ]]; then
            timeout 5 xdotool windowactivate --sync "$(window "$1")" 2>/dev/null || true
            sleep 0.4 # drawn, and ready for keys
            return 0
        fi
        sleep 0.1
    done
    echo "try-in-clean-root.sh: no window \"$1\" appeared" >&2
    picture "missing"
    return 1
}

wait_gone() {
    local i
    for ((i = 0; i < 300; ++i)); do
        [[ -z "$(window "$1")" ]] && return 0
        sleep 0.1
    done
    echo "try-in-clean-root.sh: the window \"$1\" stays" >&2
    picture "staying"
    return 1
}

press() {
    xdotool key --clearmodifiers "$@"
    sleep 0.3
}

picture() {
    number=$((number + 1))
    import -window root "$(printf '%s/%02d-%s.png' "$pictures" "$number" "$1")"
}

main_window='Kelvaron Profile Editor FOR FIRMWARE'

to_main() { wait_for "$main_window"; }

quit() {
    to_main
    press ctrl+q
    wait_gone "$main_window"
}

# make_profile CHEMISTRY: the number of the chemistry in the wizard's list, counted from 0.
make_profile() {
    local i
    to_main
    press ctrl+n
    wait_for 'Profile Wizard'
    for ((i = 0; i < $1; ++i)); do press Down; done
    picture "wizard"
    press Return
    sleep 0.3
    press Return
    wait_gone 'Profile Wizard'
}

save() {
    to_main
    press ctrl+s
    wait_for 'Select XML File'
    xdotool type --delay 20 "$1"
    sleep 0.3
    picture "save"
    press Return
    wait_for 'Export to XML'
    picture "saved"
    press Return
    wait_gone 'Export to XML'
}

delete_all() {
    to_main
    press ctrl+shift+Delete
    sleep 0.7
    picture "delete-all"
    press Tab Return
    to_main
}

num_profiles() { grep -c '<profile' "$1"; }

# --- the trial

make_root
step "Installing $(basename "$deb")"
install_deb "$deb"
in_root useradd --create-home --home-dir "$home" anna
in_root install -d -o anna -m 700 /run/user/anna

start_display

step "First start: the charger's files are not there"
as_user kelvaron-profile-editor 2>"$work/editor.log" &
wait_for '^Kelvaron Profile Editor$'
picture "first-start"
press Return # Try the Demo
to_main
picture "demo"
demo="$data/demo/KelvaronProfileEditorFiles"
expect "the user owns the folder" test "$(stat -c %U "$demo")" != root
expect "nothing was written to the installed folder" \
    test -z "$(find "$root/usr/lib/kelvaron-profile-editor" -newer "$work/install.log")"

expect "the command-line companion finds nothing wrong with the demo's bundle" \
    as_user kelvaron-profiles check "${demo#"$root"}/v1.0.0.kelvaron"

step "Making profiles"
make_profile 0
make_profile 1
picture "two-profiles"

step "Saving, deleting and loading them"
save mine.xml
expect "two different profiles are saved" test "$(num_profiles "$demo/saved_profiles/mine.xml")" = 2
delete_all
picture "deleted"
press ctrl+o
wait_for 'Select XML File'
xdotool type --delay 20 mine.xml
press Return
wait_gone 'Select XML File'
sleep 1
picture "loaded"

step "Writing them to the charger and reading them back"
to_main
press ctrl+shift+w
wait_for 'Profile Writer'
picture "write"
press Return
wait_for 'Stay in Bootloader'
picture "written"
press Return
wait_gone 'Profile Writer'
expect "the charger holds something" \
    grep -q -a -P '[^\xff\x00]' "$demo/charger-memory.bin"
delete_all
press ctrl+shift+r
wait_for 'Profile Reader'
press Return
wait_for 'Stay in Bootloader'
picture "read"
press Return
wait_gone 'Profile Reader'
to_main
picture "read-back"
save again.xml
expect "what was read is what was written" \
    diff "$demo/saved_profiles/mine.xml" "$demo/saved_profiles/again.xml"
quit

step "Upgrade: a newer package"
newer="$root/tmp/newer"
dpkg-deb --raw-extract "$deb" "$newer"
sed -i 's/^Version: .*/&.1/' "$newer/DEBIAN/control"
printf newer >>"$newer/usr/lib/kelvaron-profile-editor/KelvaronProfileEditor"
(cd "$newer" && find usr -type f -exec md5sum {} + >DEBIAN/md5sums)
dpkg-deb --root-owner-group --build "$newer" "$root/tmp/newer.deb" >/dev/null
sums="$(md5sum "$demo"/saved_profiles/* "$demo"/charger-memory.bin "$demo"/*.kelvaron)"
install_deb "$root/tmp/newer.deb"
as_user kelvaron-profile-editor --demo 2>>"$work/editor.log" &
to_main
expect "the user has the newer editor" \
    cmp "$data/demo/KelvaronProfileEditor" "$root/usr/lib/kelvaron-profile-editor/KelvaronProfileEditor"
expect "profiles, charger and bundle are as they were" \
    test "$sums" = "$(md5sum "$demo"/saved_profiles/* "$demo"/charger-memory.bin "$demo"/*.kelvaron)"
press ctrl+o
wait_for 'Select XML File'
picture "upgraded"
press Escape
quit

step "Start with the charger's files put in place"
files="$(as_user kelvaron-profile-editor --folder)"
# shellcheck disable=SC2016 # the variables are the inner shell's
as_user sh -c 'cp "$1"/*.kelvaron "$1"/supl.mac "$2"' sh \
    "$home/.local/share/kelvaron-profile-editor/demo/KelvaronProfileEditorFiles" "$files"
as_user kelvaron-profile-editor 2>>"$work/editor.log" &
to_main
picture "own-files"
quit

step "Homes that cannot be used"
for kind in full read-only no-programs; do
    case "$kind" in
        full) mount -t tmpfs -o size=300k,mode=777 tmpfs "$root/mnt" ;;
        read-only) mount -t tmpfs -o ro tmpfs "$root/mnt" ;;
        no-programs) mount -t tmpfs -o noexec,mode=777 tmpfs "$root/mnt" ;;
    esac
    as_user env XDG_DATA_HOME=/mnt kelvaron-profile-editor --demo 2>>"$work/editor.log" &
    wait_for '^Kelvaron Profile Editor$'
    picture "home-$kind"
    press Return
    status=0
    wait $! || status=$?
    expect "the start on a $kind home ends with 1" test "$status" = 1
    umount "$root/mnt"
done

step "Removing the package"
in_root dpkg --purge kelvaron-profile-editor >/dev/null
expect "nothing installed is left" test ! -e "$root/usr/lib/kelvaron-profile-editor"
expect "the user's files are" test -f "$demo/saved_profiles/mine.xml"

step "The archive, unpacked by the user"
cp "${deb%/*}"/*.tar.gz "$root/tmp/archive.tar.gz"
as_user sh -c 'mkdir -p ~/.local && tar -xzf /tmp/archive.tar.gz -C ~/.local --strip-components=1'
as_user kelvaron-profile-editor --demo 2>>"$work/editor.log" &
to_main
picture "archive"
quit
expect "the editor has the archive's" \
    cmp "$data/demo/KelvaronProfileEditor" "$root$home/.local/lib/kelvaron-profile-editor/KelvaronProfileEditor"

step "What the editor and the launcher said on standard error"
cat "$work/editor.log"
printf '==> %d pictures in %s, %d failures\n' "$number" "$pictures" "$failures"
exit "$((failures > 0))"
