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
if ! { "${configure[@]}" && cmake --build "$root/build/demo" -j "$(nproc)"; } >"$log" 2>&1; then
    echo "demo: the build failed; the end of $log:" >&2
    tail -n 30 "$log" >&2
    exit 1
fi
qxrender="$root/build/demo/tools/qxrender/qxrender"

if [ $# -gt 0 ]; then
    exec "$qxrender" "$@"
fi

out="$root/out"
mkdir -p "$out"
