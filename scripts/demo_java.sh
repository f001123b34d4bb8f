#!/usr/bin/env bash
# Draws one picture through the Java interface, in a desktop Java VM, and the same one with qxrender, and compares them
# pixel by pixel.
#
#   scripts/demo_java.sh [BUILD [OUT]]     a finished build (default build/demo) and where the pictures go (default out)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "${1:-$root/build/demo}" && pwd)
out=${2:-$root/out}
mkdir -p "$out"

library="$build/src/bridge/libQxEffect.fonteffect.zorvane.so"
if [ ! -e "$library" ]; then
    echo "demo_java: $build has no Java bridge; was a JDK there when it was configured?" >&2
    exit 1
fi
java=java
[ -n "${JAVA_HOME:-}" ] && java="$JAVA_HOME/bin/java"
demo() {
    "$java" -Dqx.library="$library" -Dqx.host.library="$build/java/libqx_host.so" \
        -cp "$build/java/qx_java_demo:$build/java/qx_java_sdk:$build/java/qx_java_host" qx.demo.Demo "$@"
}

font=$(fc-list --format '%{file}\n' | grep '/Roboto-Black\.ttf$' | head -n 1)
picture=("Same pixels from Java" --font "$font" --size 84 --width 640 --color "#ffffff"
         --effect "linear-gradient angle=90 scale=1 opacity=1 stops=#d7263d@0,#f46036@0.5,#ffd23f@1"
         --effect "stroke width=3 color=#2e294e opacity=1 position=outside"
         --effect "inner-shadow angle=120 distance=3 size=4 color=#000000 opacity=0.5"
         --effect "outer-shadow angle=135 distance=8 size=10 color=#1b1b3a opacity=0.7")

# The library logs to standard error; of interest only when something fails.
log=$(mktemp)
trap 'rm -f "$log"' EXIT
demo "${picture[@]}" -o "$out/java.png" 2>"$log" || { cat "$log" >&2; exit 1; }
"$build/tools/qxrender/qxrender" "${picture[@]}" -o "$out/java-qxrender.png"
echo "java: $(demo --compare "$out/java.png" "$out/java-qxrender.png") ($out/java.png, $out/java-qxrender.png)"
