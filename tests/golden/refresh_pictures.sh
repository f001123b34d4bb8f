#!/usr/bin/env bash
# Takes what the effects draw now as the pictures to keep. For when a picture was meant to change: look at the
# difference before and after.
#
#   tests/golden/refresh_pictures.sh [BUILD]     BUILD: a build tree with the tests, default build/release
set -euo pipefail
cd "$(dirname "$0")/../.."
build="${1:-build/release}"
cmake --build "$build" --target qx_draw_pictures
rm -f tests/golden/pictures/*.png
mkdir -p tests/golden/pictures
"$build/tests/tools/qx_draw_pictures" "$PWD" tests/golden/pictures
git status --short tests/golden/pictures
