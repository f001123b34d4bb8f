#!/usr/bin/env bash
# Draws the pictures of docs/effects.md anew and refreshes what else of docs/ comes from the tool: the tables of
# parameters and the schema of style files.
#
#   scripts/docs_pictures.sh [BUILD]     BUILD: a build tree with qxrender in it, else one is made
set -euo pipefail
cd "$(dirname "$0")/.."
build="${1:-}"
if [ -z "$build" ]; then
    build=build/demo
    cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DQX_BUILD_TESTS=OFF -DQX_BUILD_BENCH=OFF >/dev/null
    cmake --build "$build" --target qxrender contactsheet -j "$(nproc)" >/dev/null
fi
qxrender="$build/tools/qxrender/qxrender"
contactsheet="$build/tools/contactsheet/contactsheet"
# shellcheck source=scripts/gallery.sh
source scripts/gallery.sh

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

trimmed() { sed -e 's/^ *//' -e 's/ *$//' <<<"$1"; }

variant() {  # output, colour, ground, mode, effects
    local options=() effects effect
    IFS=';' read -ra effects <<<"$5"
    for effect in "${effects[@]}"; do options+=(--effect "$effect"); done
    "$qxrender" Rag --family Roboto --weight 700 --size 72 --color "$2" --background "$3" --mode "$4" --trim 12 \
        "${options[@]}" -o "$1"
}

count=0
while IFS='|' read -r picture color ground mode effects; do
    case "$picture" in '#'* | '') continue ;; esac
    count=$((count + 1))
    picture=$(trimmed "$picture")
    file="$work/$picture.$(printf %03d "$count").png"
    variant "$file" "$(trimmed "$color")" "$(trimmed "$ground")" "$(trimmed "$mode")" "$(trimmed "$effects")"
    echo "$(trimmed "$ground")" >"$work/$picture.ground"
done <docs/gallery/pictures.txt

for ground in "$work"/*.ground; do
    picture=$(basename "$ground" .ground)
    "$contactsheet" -o "docs/gallery/$picture.png" --columns 4 --cell 190x130 --gap 6 "$work/$picture".*.png
    echo "docs/gallery/$picture.png"
done

styles=()
for style in styles/*.json; do
    render_style "$qxrender" "$style" "$work/$(basename "$style" .json).png" 72
    styles+=("$work/$(basename "$style" .json).png")
done
"$contactsheet" -o docs/gallery/styles.png --columns 3 --cell 280x90 --gap 8 "${styles[@]}"
echo docs/gallery/styles.png

"$qxrender" --style-schema >docs/style.schema.json
# Each table stands between two marks that name its effect.
"$qxrender" --effect-tables | awk -v docs=docs/effects.md '
    /^\|/ { table[name] = table[name] $0 "\n"; next }
    NF { name = $1 }
    END {
        while ((getline line < docs) > 0) {
            if (line ~ /^<!-- end of parameters -->$/) inside = 0
            if (!inside) print line
            if (line ~ /^<!-- parameters: .* -->$/) {
                split(line, word, " ")
                printf "%s", table[word[3]]
                inside = 1
            }
        }
    }' >"$work/effects.md"
cp "$work/effects.md" docs/effects.md
echo docs/effects.md
