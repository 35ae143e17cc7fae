#!/usr/bin/env bash
# Checks the documentation as far as a script can: that every file and picture it refers to exists,
# that every picture kept for it is used, that the texts in bold in the user guide are texts of the
# program, and that the guide lists every shortcut of the main window.

set -euo pipefail
export LC_ALL=C.UTF-8

cd "$(dirname "${BASH_SOURCE[0]}")/.."
guide=docs/user-guide.md
faults=0

fault() {
    printf '%s\n' "$*"
    faults=$((faults + 1))
}

# Prints the headings of a file as the anchors used in links.
anchors() {
    sed -nE 's/^#+ +//p' "$1" | tr '[:upper:]' '[:lower:]' | sed -E 's/[^a-z0-9 _-]//g; s/ /-/g'
}

check_links() {
    local text target file anchor
    for text in ./*.md docs/*.md docs/*/*.md packaging/*.md; do
        while read -r target; do
            file="${target%%#*}"
            file="${file:+$(dirname "$text")/$file}"
            file="${file:-$text}"
            if [[ ! -e "$file" ]]; then
                fault "$text: $target does not exist"
            elif [[ "$target" == *'#'* ]]; then
                anchor="${target#*#}"
                anchors "$file" | grep -qxF -- "$anchor" || fault "$text: no heading for $target"
            fi
        done < <(grep -oE '\]\([^) ]+\)' "$text" | sed -E 's/^\]\(//; s/\)$//' |
            grep -vE '^[a-z]+:' || true)
    done
}

check_pictures_are_used() {
    local picture
    for picture in docs/images/*; do
        grep -qF "images/${picture##*/})" README.md docs/*.md || fault "$picture is shown nowhere"
    done
}

# Prints all texts of the forms and sources on one line, with adjacent literals joined.
program_texts() {
    find src demo \( -name '*.ui' -o -name '*.cpp' -o -name '*.cb' \) -exec cat {} + | tr '\n' ' ' |
        sed -E 's/"[[:space:]]+"//g; s/&lt;/</g; s/&gt;/>/g; s/&amp;/\&/g; s/&([A-Za-z])/\1/g'
}

# Sentences in bold end with a full stop; they are not texts of the program.
check_quoted_texts() {
    local texts quoted count=0
    texts="$(program_texts)"
    while read -r quoted; do
        count=$((count + 1))
        [[ "$texts" == *"\"$quoted\""* || "$texts" == *"<string>$quoted</string>"* ]] ||
            fault "$guide: the program shows no \"$quoted\""
    done < <(tr '\n' ' ' <"$guide" | grep -oE '\*\*[^*]+\*\*' | sed -E 's/^\*\*//; s/\*\*$//' |
        grep -vE '[^.]\.$' | sed -E 's/ > (.)/\n\1/g' | sort -u)
    ((count > 0)) || fault "$guide: nothing is in bold"
}

check_shortcuts() {
    local key
    while read -r key; do
        grep -qF "\`$key\`" "$guide" || fault "$guide: the key $key is missing"
    done < <(sed -nE 's|.*name="shortcut"><string>([^<]+)<.*|\1|p' src/mainwindow.ui)
}

check_links
check_pictures_are_used
check_quoted_texts
check_shortcuts
if ((faults > 0)); then
    exit 1
fi
echo "The documentation is in order."
