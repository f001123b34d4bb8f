#!/usr/bin/env bash
# Builds the tests that use threads under ThreadSanitizer into build/tsan and runs them.
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/tsan
mkdir -p "$build"
log="$build/build.log"

for test in $(grep -rl 'std::thread' tests --include='*_test.cpp'); do
    if ! grep -qF "../${test#tests/}" tests/threads/CMakeLists.txt; then
        echo "tsan: $test uses threads and is not in tests/threads/CMakeLists.txt" >&2
        exit 1
    fi
done

# As many debug symbols as a report needs, and no more optimisation than makes the tests quick.
if ! { cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE= -DCMAKE_CXX_FLAGS="-O1 -g1" -DQX_SANITIZE=thread \
        -DQX_WERROR=ON -DQX_BUILD_TOOLS=OFF -DQX_BUILD_BENCH=OFF -DQX_BUILD_JAVA=OFF -DQX_BUILD_CHECKSUMS=OFF &&
        cmake --build "$build" -j "$(nproc)" --target qx_thread_tests; } >"$log" 2>&1; then
    echo "tsan: the build failed; the end of $log:" >&2
    tail -n 30 "$log" >&2
    exit 1
fi

program="$build/tests/threads/qx_thread_tests"
status=0
count=0
# One process a test, so that each finds the library unused.
while read -r name; do
    count=$((count + 1))
    if ! TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1" "$program" --gtest_filter="$name" >"$build/run.log" 2>&1
    then
        status=1
        echo "tsan: $name" >&2
        cat "$build/run.log" >&2
    fi
done < <("$program" --gtest_list_tests | awk '/^[^ ]/ { suite = $1; next } { print suite $1 }' |
         grep Thread)
[ "$count" -gt 0 ] || { echo "tsan: no test with threads found" >&2; exit 1; }
[ "$status" -ne 0 ] || echo "tsan: $count tests with threads, no race"
exit "$status"
