#!/usr/bin/env bash
# Sets up, builds, and renders sample pictures of real text into out/. With arguments it passes them to qxrender:
#
#   scripts/demo.sh --text Hello --size 96 --effect "outer-shadow distance=8 size=12" -o hello.png
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

"$root/scripts/setup.sh" demo

configure=(cmake -S "$root" -B "$root/build/demo" -G Ninja -DCMAKE_BUILD_TYPE=Release
           -DQX_BUILD_TESTS=OFF -DQX_BUILD_BENCH=OFF)
mkdir -p "$root/build"
log="$root/build/demo.log"
targets=(qxrender contactsheet)
# Without arguments one picture is drawn through Java too.
[ $# -eq 0 ] && targets+=(qxeffect_jni qx_host qx_java_demo)
if ! { "${configure[@]}" && cmake --build "$root/build/demo" --target "${targets[@]}" -j "$(nproc)"; } >"$log" 2>&1; then
    echo "demo: the build failed; the end of $log:" >&2
    tail -n 30 "$log" >&2
    exit 1
fi
qxrender="$root/build/demo/tools/qxrender/qxrender"

if [ $# -gt 0 ]; then
    exec "$qxrender" "$@"
fi

contactsheet="$root/build/demo/tools/contactsheet/contactsheet"
# shellcheck source=scripts/gallery.sh
source "$root/scripts/gallery.sh"

out="$root/out"
mkdir -p "$out/samples" "$out/styles"
made=()

sample() {  # name, then what qxrender is to draw
    local file="$out/samples/$1.png"
    shift
    "$qxrender" "$@" --trim 14 -o "$file"
    made+=("$file")
    echo "$file"
}

shadow='outer-shadow angle=120 distance=5 size=8 color=#90000000'
sunset='linear-gradient angle=90 stops=#d7263d@0,#f46036@0.5,#ffd166@1'
rim='stroke width=4 color=#ffffff'

sample latin-plain "Hamburgefonts" --size 96 --background '#fff'
sample latin "Hamburgefonts" --size 96 --weight 700 --effect "$shadow" --effect "$sunset" --background '#fff'
sample latin-italic "Quiet affairs" --size 96 --italic --color '#234e70' --effect "$shadow" --background '#fff'
sample latin-pattern "Patterned" --size 110 --weight 900 --background '#fff' \
    --effect "$shadow" --effect "stroke width=3 color=#8a1538" \
    --effect "pattern file=$root/styles/candy-stripes.png scale=0.75"
sample arabic "مرحبا بالعالم" --size 96 --weight 700 --color '#0b6e4f' --effect "$shadow" --background '#fff'
sample arabic-lines "النص العربي يكتب من اليمين إلى اليسار، ويمكن أن يحتوي على English أيضًا." --size 48 \
    --width 520 --effect "outer-glow size=10 color=#ffd166" --background '#264653' --color '#ffffff'
sample devanagari "नमस्ते दुनिया" --size 96 --weight 700 --color '#6a0572' --effect "$shadow" \
    --effect "bevel size=60 technique=chisel depth=6" --background '#fff'
sample han "天地玄黃 宇宙洪荒" --size 80 --effect "$sunset" --effect "emboss size=6 shadow-opacity=0.5" --background '#eef0f2'
sample han-lines "吾輩は猫である。名前はまだ無い。どこで生れたかとんと見当がつかぬ。" --size 48 --lang ja --width 480 \
    --color '#1d3557' --effect "$shadow" --background '#fff'
sample hangul "안녕하세요 세계" --size 96 --color '#e63946' --effect "$rim" --effect "$shadow" --background '#a8dadc'
sample emoji "🚀 🐘 ❤ 🎉 ✈" --size 96 --color '#5f0f40' --effect "$shadow" --effect "inner-shadow size=4" \
    --background '#fff'
sample lines-plain --text 'One line,\nthen another,\nand a last one.' --size 56 --align center --background '#fff'
sample lines --text 'Several lines,\ncentred, with\na ground of their own' --size 56 --weight 700 --align center \
    --padding 16 --color '#ffffff' --line-background '#264653' --effect "$shadow" --background '#e9c46a'
sample opacity "Half there" --size 110 --weight 700 --opacity 0.5 --color '#1d3557' --effect "$shadow" \
    --effect "$rim" --background '#f4a261'
sample mixed "Latin, العربية, देवनागरी, 漢字, 한글 🦋" --size 56 --effect "$shadow" --color '#22333b' \
    --background '#fff'

"$contactsheet" -o "$out/samples.png" --columns 2 --cell 620x200 --gap 16 --background '#e6e8eb' "${made[@]}"

html_text() {
    sed -e 's/&/\&amp;/g' -e 's/</\&lt;/g' -e 's/>/\&gt;/g'
}

page="$out/index.html"
cat >"$page" <<'HTML'
<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<title>Text styles</title>
<style>
body { font: 16px/1.5 sans-serif; max-width: 60em; margin: 2em auto; padding: 0 1em; background: #e6e8eb; color: #222; }
img { max-width: 100%; border-radius: 6px; }
pre { background: #fff; padding: 1em; overflow: auto; border-radius: 6px; }
section { margin: 3em 0; }
summary { cursor: pointer; }
</style>
<h1>Text styles</h1>
HTML

made=()
for style in "$root"/styles/*.json; do
    id=$(basename "$style" .json)
    file="$out/styles/$id.png"
    render_style "$qxrender" "$style" "$file" 120
    made+=("$file")
    echo "$file"
    {
        echo "<section><h2>$(style_name "$style" | html_text)</h2>"
        echo "<p>$(sed -n 's/^  "description": "\(.*\)",$/\1/p' "$style" | html_text)</p>"
        echo "<img src=\"styles/$id.png\" alt=\"$(style_name "$style" | html_text)\">"
        echo "<details><summary><code>styles/$id.json</code></summary><pre>$(html_text <"$style")</pre></details>"
        echo "</section>"
    } >>"$page"
done
{
    echo "<section><h2>Samples</h2>"
    echo "<img src=\"samples.png\" alt=\"Texts in several scripts\"></section>"
    echo "</html>"
} >>"$page"

"$contactsheet" -o "$out/styles.png" --columns 2 --cell 620x160 --gap 16 --background '#e6e8eb' "${made[@]}"
printf '%s\n' "$out/samples.png" "$out/styles.png" "$page"
"$root/scripts/demo_java.sh" "$root/build/demo" "$out"
