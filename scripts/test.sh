#!/usr/bin/env bash
# Sets up, builds and runs every test. CI calls this and nothing else.
#
#   scripts/test.sh          everything
#   scripts/test.sh quick    the unit tests in a release build only
set -euo pipefail
cd "$(dirname "$0")/.."
mode="${1:-all}"

step() { printf '\n== %s\n' "$*"; }

scripts/setup.sh
jobs=$(nproc)

step "layers"
python3 scripts/check_layers.py

build() {  # preset
    cmake --preset "$1" >"build-$1.log" 2>&1 || { cat "build-$1.log"; exit 1; }
    cmake --build --preset "$1" -j "$jobs" >"build-$1.log" 2>&1 || { grep -E 'error|warning|FAILED' -A5 "build-$1.log" | head -n 80; exit 1; }
    rm -f "build-$1.log"
}

step "release build (GCC)"
build release
step "release tests"
ctest --preset release -j "$jobs" --no-tests=error
[ "$mode" = quick ] && exit 0

step "static reading"
scripts/lint.sh

step "the same bits from every compiler and processor"
scripts/check_bits.sh

step "debug build under AddressSanitizer and UndefinedBehaviorSanitizer"
build san
step "sanitizer tests"
ctest --preset san -j "$jobs" --no-tests=error

step "threads under ThreadSanitizer"
scripts/tsan.sh
