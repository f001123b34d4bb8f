#!/usr/bin/env bash
# Builds the tests that use threads under ThreadSanitizer into build/tsan and runs them.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/tsan
mkdir -p "$build"
log="$build/build.log"
programs=(base_tests qx_font_tests qx_text_tests qx_skia_tests qx_minikin_tests)

if ! { cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQX_SANITIZE=thread -DQX_WERROR=ON \
        -DQX_BUILD_TOOLS=OFF -DQX_BUILD_BENCH=OFF -DQX_BUILD_JAVA=OFF -DQX_BUILD_CHECKSUMS=OFF &&
        cmake --build "$build" -j "$(nproc)" --target "${programs[@]}"; } >"$log" 2>&1; then
    echo "tsan: the build failed; the end of $log:" >&2
    tail -n 30 "$log" >&2
    exit 1
fi

status=0
count=0
for program in "${programs[@]}"; do
    path=$(find "$build/tests" -name "$program" -type f)
    # One process a test, so that each finds the library unused.
    while read -r name; do
        count=$((count + 1))
        if ! TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1" "$path" --gtest_filter="$name" >"$build/run.log" 2>&1
        then
            status=1
            echo "tsan: $name" >&2
            cat "$build/run.log" >&2
        fi
    done < <("$path" --gtest_list_tests | awk '/^[^ ]/ { suite = $1; next } { print suite $1 }' |
             grep -E 'Threads?[A-Z.]')
done
[ "$count" -gt 0 ] || { echo "tsan: no test with threads found" >&2; exit 1; }
[ "$status" -ne 0 ] || echo "tsan: $count tests with threads, no race"
exit "$status"
