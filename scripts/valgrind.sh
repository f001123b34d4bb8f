#!/usr/bin/env bash
# Runs the unit tests and replays the kept fuzz inputs under valgrind's memcheck, which sees what the sanitizers of the
# test build do not: decisions taken on memory that was never written. Takes some minutes; not part of CI.
#
#   scripts/valgrind.sh              every program
#   scripts/valgrind.sh PROGRAM...   these only, such as effect_tests or font_fuzz
#
# The tests that refuse allocations bring their own malloc and run under AddressSanitizer only.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v valgrind >/dev/null || { echo "valgrind: not installed (Debian: valgrind)" >&2; exit 1; }
tests=(base_tests pixel_tests effect_tests qx_skia_tests qx_minikin_tests qx_font_tests qx_text_tests)
replays=(list_fuzz string_fuzz stack_fuzz font_fuzz style_fuzz options_fuzz)
programs=("$@")
[ ${#programs[@]} -gt 0 ] || programs=("${tests[@]}" "${replays[@]}")
# Millions of numbers through a formula, without memory to check.
left_out='GaussWeights.AgreeWithTheCLibraryForEveryRadiusInUse:GaussQuotient.DividesEverySumOfEveryRadius'

build=build/valgrind
mkdir -p "$build"
log="$build/build.log"
if ! { cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DQX_BUILD_BENCH=OFF -DQX_BUILD_JAVA=OFF \
        -DQX_BUILD_CHECKSUMS=OFF && cmake --build "$build" -j "$(nproc)" --target "${programs[@]}"; } >"$log" 2>&1; then
    echo "valgrind: the build failed; the end of $log:" >&2
    tail -n 30 "$log" >&2
    exit 1
fi

run() {  # program, then how to run it
    local program="$1" path log="$build/$1.log" started=$SECONDS
    shift
    path=$(find "$build/tests" -name "$program" -type f)
    if valgrind --quiet --error-exitcode=9 --leak-check=full --errors-for-leak-kinds=definite \
            --suppressions=scripts/valgrind.supp "$path" "$@" >"$log" 2>&1; then
        echo "valgrind: $program: $(sed -nE 's/^\[  PASSED  \] ([0-9]+ tests?)\..*/\1/p; s/^replayed //p' "$log"), no error" \
             "($((SECONDS - started)) s)"
    else
        echo "valgrind: $program failed, see $log" >&2
        return 1
    fi
}

status=0
for program in "${programs[@]}"; do
    case "$program" in
        *_fuzz) run "$program" "tests/fuzz/corpus/$program" || status=1 ;;
        *)      run "$program" --gtest_brief=1 --gtest_filter="-$left_out" || status=1 ;;
    esac
done
exit "$status"
