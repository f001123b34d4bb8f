#!/usr/bin/env bash
# Fuzzes: builds the targets of tests/fuzz with Clang's libFuzzer under AddressSanitizer and UndefinedBehaviorSanitizer
# into build/fuzz and runs each until it has used some processor time, as many at once as there are processors.
#
#   scripts/fuzz.sh SECONDS              every target, SECONDS each
#   scripts/fuzz.sh SECONDS TARGET...    these only, such as stack_fuzz
#
# Inputs that reach new code are kept in build/fuzz/found/TARGET, inputs that fail in build/fuzz/failed. A fault that is
# mended leaves its input in tests/fuzz/corpus/TARGET, where every test run replays it.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-}"
if ! [[ "$seconds" =~ ^[1-9][0-9]*$ ]]; then
    sed -n '2,9s/^# \{0,1\}//p' "$0" >&2
    exit 2
fi
shift
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(list_fuzz string_fuzz stack_fuzz font_fuzz style_fuzz options_fuzz)

build=build/fuzz
mkdir -p "$build/failed"
log="$build/build.log"
# fuzzer-no-link lets the fuzzer see which code an input reaches, in the library too.
if ! { cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=clang++ \
        -DQX_BUILD_FUZZ=ON -DQX_SANITIZE=address,undefined,fuzzer-no-link -DQX_WERROR=ON \
        -DQX_BUILD_TESTS=OFF -DQX_BUILD_BENCH=OFF -DQX_BUILD_JAVA=OFF -DQX_BUILD_CHECKSUMS=OFF &&
        cmake --build "$build" -j "$(nproc)" --target "${targets[@]}"; } >"$log" 2>&1; then
    echo "fuzz: the build failed; the end of $log:" >&2
    tail -n 30 "$log" >&2
    exit 1
fi

# The fuzzer counts seconds of the clock, which on a busy machine are far more than it gets to work: it is started again,
# with what it has found, until it has worked for as long as it should.
run() {  # target
    local found="$build/found/$1" output="$build/$1.log" options=() status=0 used=0
    mkdir -p "$found"
    if [ -f "tests/fuzz/dictionary/$1.dict" ]; then options+=("-dict=tests/fuzz/dictionary/$1.dict"); fi
    local TIMEFORMAT='processor seconds: %U %S'
    : >"$output"
    while [ "$used" -lt "$seconds" ] && [ "$status" -eq 0 ]; do
        local left=$((seconds - used))
        { time "$build/tests/fuzz/$1" "$found" "tests/fuzz/corpus/$1" "${options[@]}" -timeout=20 \
            -max_total_time=$((left > 15 ? left : 15)) -print_final_stats=1 -artifact_prefix="$build/failed/$1-"; } \
            >>"$output" 2>&1 || status=$?
        used=$(awk '/^processor seconds:/ { used += $3 + $4 } END { printf "%d", used }' "$output")
    done
    awk -v target="$1" -v used="$used" -v status="$status" '
        /^stat::number_of_executed_units/ { runs += $2 }
        /^stat::new_units_added/ { added += $2 }
        / cov: / { for (i = 1; i < NF; ++i) if ($i == "cov:") covered = $(i + 1) }
        END { printf "%-14s %11d executions in %5d s of processor time, %6d edges reached, %5d inputs kept: %s\n",
                     target, runs, used, covered, added, status == 0 ? "nothing failed" : "FAILED" }' "$output"
    if [ "$status" -ne 0 ]; then
        echo "  see $output and $build/failed"
    fi
    return "$status"
}
export -f run
export build seconds

printf '%s\n' "${targets[@]}" | xargs -P "$(nproc)" -I{} bash -c 'run {}'
