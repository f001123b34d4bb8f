#!/usr/bin/env bash
# Builds qxbench and measures: one table of every effect, kernel and blender routine, then the text path and memory.
#
#   scripts/bench.sh                     the library alone
#   scripts/bench.sh --plain             and the plain loops of the tests, with the ratio
#   scripts/bench.sh --peers             and the same work with OpenCV and pixman, in turns, with the ratio
#   scripts/bench.sh --filter="shadow M" only rows whose name contains this
#   scripts/bench.sh --json=FILE         the figures in a file as well; --help lists the rest
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)

set_of_packages=bench
peers=OFF
for argument in "$@"; do
    if [ "$argument" = --peers ]; then
        set_of_packages=peers
        peers=ON
    fi
done
"$root/scripts/setup.sh" "$set_of_packages"

build="$root/build/bench"
mkdir -p "$build"
log="$root/build/bench.log"
configure=(cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release
           -DQX_BUILD_TESTS=OFF -DQX_BUILD_TOOLS=OFF -DQX_BUILD_JAVA=OFF -DQX_BENCH_PEERS="$peers")
if ! { "${configure[@]}" && cmake --build "$build" -j "$(nproc)" --target qxbench; } >"$log" 2>&1; then
    echo "bench: the build failed; the end of $log:" >&2
    tail -n 30 "$log" >&2
    exit 1
fi
exec "$build/bench/qxbench" "$@"
