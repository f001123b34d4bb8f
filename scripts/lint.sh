#!/usr/bin/env bash
# Reads the code without running it: clang-tidy with the checks of .clang-tidy, and cppcheck but for what
# scripts/cppcheck.txt leaves out, over src, platform/portable, tools and java. Fails on any finding.
#
# What was found clean is not read again until it, a header of ours that it includes, its flags or the checks change;
# build/lint remembers that and may be removed.
set -euo pipefail
cd "$(dirname "$0")/.."
export build=build/lint
mkdir -p "$build/clean" "$build/cppcheck"
if ! cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=clang++ \
        -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DQX_BUILD_TESTS=OFF -DQX_BUILD_BENCH=OFF -DQX_BUILD_CHECKSUMS=OFF \
        >"$build/configure.log" 2>&1; then
    tail -n 30 "$build/configure.log" >&2
    exit 1
fi

tidy() {  # stamp and source, with a tab between
    local stamp="${1%%$'\t'*}" source="${1#*$'\t'}" findings
    if findings=$(clang-tidy -p "$build" --quiet "$source" 2>/dev/null); then
        : >"$stamp"
    else
        # In one go, so that the findings of several sources do not mix.
        printf '%s\n' "${findings:-lint: clang-tidy gave up on $source}"
        return 1
    fi
}
export -f tidy

status=0
due=$(python3 scripts/lint_due.py "$build")
if [ -n "$due" ]; then
    xargs -P "$(nproc)" -d '\n' -I{} bash -c 'tidy "$1"' _ {} <<<"$due" >&2 || status=1
fi
echo "lint: clang-tidy read $(grep -c . <<<"$due") changed of $(find src platform/portable tools java -name '*.cpp' | wc -l) sources$([ "$status" -eq 0 ] || echo ' and found something')"

# Its build folder remembers what it has read.
if cppcheck --project="$build/compile_commands.json" --enable=warning,performance,portability --inline-suppr \
        --suppressions-list=scripts/cppcheck.txt --cppcheck-build-dir="$build/cppcheck" --error-exitcode=1 --quiet \
        -j "$(nproc)"; then
    echo "lint: cppcheck found nothing"
else
    echo "lint: cppcheck found something" >&2
    status=1
fi
exit "$status"
