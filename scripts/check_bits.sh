#!/usr/bin/env bash
# Draws the same scenes with every compiler, optimisation level and processor and compares the checksums with
# tests/golden/checksums.txt.
#
#   scripts/check_bits.sh            compare
#   scripts/check_bits.sh refresh    take this machine's release build (GCC) as the new truth
set -euo pipefail
cd "$(dirname "$0")/.."
coverage=tests/data/coverage/headline.pgm
golden=tests/golden/checksums.txt
fresh=$(mktemp)
trap 'rm -f "$fresh"' EXIT

# name, build type, then what chooses the compiler
build() {
    local folder="build/bits-$1" type="$2"
    shift 2
    mkdir -p build
    if ! { cmake -S . -B "$folder" -G Ninja -DCMAKE_BUILD_TYPE="$type" -DQX_BUILD_TEXT=OFF -DQX_BUILD_TESTS=OFF \
            -DQX_BUILD_CHECKSUMS=ON "$@" && cmake --build "$folder" --target qx_checksums -j "$(nproc)"; } \
            >"$folder.log" 2>&1; then
        echo "check_bits: the build in $folder failed:" >&2
        tail -n 30 "$folder.log" >&2
        exit 1
    fi
}

check() {  # name, what to call the run, then how to run the program
    local name="$1" title="$2"
    shift 2
    "$@" "build/bits-$name/tests/golden/qx_checksums" "$coverage" >"$fresh"
    if ! diff -u "$golden" "$fresh"; then
        echo "check_bits: $title draws other pixels (- kept, + drawn)" >&2
        exit 1
    fi
    echo "bits: $title agrees ($(wc -l <"$fresh") checksums)"
}

if [ "${1:-}" = refresh ]; then
    build gcc-release Release -DCMAKE_CXX_COMPILER=g++
    build/bits-gcc-release/tests/golden/qx_checksums "$coverage" >"$golden"
    echo "bits: $golden is new"
    exit 0
fi

arm64=(-DCMAKE_TOOLCHAIN_FILE=cmake/aarch64.cmake)
emulator=(qemu-aarch64 -L /usr/aarch64-linux-gnu)
for type in Release Debug; do
    suffix=${type,,}
    build "gcc-$suffix" $type -DCMAKE_CXX_COMPILER=g++
    check "gcc-$suffix" "x86-64, GCC, $type"
    # The same program without its fast paths for newer processors.
    check "gcc-$suffix" "x86-64, GCC, $type, portable kernels" env QX_PORTABLE_KERNELS=1
    build "clang-$suffix" $type -DCMAKE_CXX_COMPILER=clang++
    check "clang-$suffix" "x86-64, Clang, $type"
    build "arm64-gcc-$suffix" $type "${arm64[@]}"
    check "arm64-gcc-$suffix" "arm64, GCC, $type" "${emulator[@]}"
    build "arm64-clang-$suffix" $type "${arm64[@]}" -DQX_CROSS_CLANG=ON
    check "arm64-clang-$suffix" "arm64, Clang, $type" "${emulator[@]}"
done
