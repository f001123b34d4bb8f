#!/usr/bin/env bash
# Installs what the project needs from Debian's packages.
#
#   scripts/setup.sh            everything (what scripts/test.sh needs)
#   scripts/setup.sh demo       compilers, libraries and fonts: enough to build and to draw
#   scripts/setup.sh bench      compilers, libraries and the font that scripts/bench.sh draws with
#   scripts/setup.sh peers      the same and the libraries that scripts/bench.sh --peers measures against
#
# Packages that are there already are left alone, and with nothing missing apt is not called at all.
set -euo pipefail

build=(g++ cmake ninja-build pkg-config ca-certificates)
libraries=(libfreetype-dev libharfbuzz-dev libicu-dev libpng-dev libfontconfig-dev fontconfig
           nlohmann-json3-dev libcli11-dev)
# The smallest set that covers the sample pictures: Latin, Arabic/Hebrew/Devanagari/Thai, their compact faces,
# Han/Kana/Hangul, and emoji.
fonts=(fonts-roboto-unhinted fonts-noto-core fonts-noto-ui-core fonts-noto-cjk fonts-noto-color-emoji)
java=(openjdk-17-jdk-headless)
bench_fonts=(fonts-roboto-unhinted)
peers=(libopencv-core-dev libopencv-imgproc-dev libpixman-1-dev)
tests=(libgtest-dev libgmock-dev clang libclang-rt-14-dev clang-tidy cppcheck python3
       g++-aarch64-linux-gnu qemu-user)

case "${1:-all}" in
    demo)  wanted=("${build[@]}" "${libraries[@]}" "${fonts[@]}" "${java[@]}") ;;
    bench) wanted=("${build[@]}" "${libraries[@]}" "${bench_fonts[@]}") ;;
    peers) wanted=("${build[@]}" "${libraries[@]}" "${bench_fonts[@]}" "${peers[@]}") ;;
    all)   wanted=("${build[@]}" "${libraries[@]}" "${fonts[@]}" "${java[@]}" "${tests[@]}") ;;
    *)     echo "setup: unknown set '$1' (demo, bench, peers or nothing for all)" >&2; exit 2 ;;
esac

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "setup: this machine has no apt; install the equivalents of these Debian packages by hand:" >&2
    printf '  %s\n' "${wanted[@]}" >&2
    exit 1
fi

missing=()
for package in "${wanted[@]}"; do
    [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "setup: not root and no sudo; as root run: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "setup: installing ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
install() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >"$log" 2>&1
}
# Package lists that are old or absent are the usual reason for a refusal, so the second try comes after an update.
if ! install; then
    if ! { "${as_root[@]}" apt-get update -qq >"$log" 2>&1 && install; }; then
        echo "setup: apt refused to install ${missing[*]}; its last words were:" >&2
        tail -n 15 "$log" >&2
        exit 1
    fi
fi
