#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The web build against the Linux build (BUILD_RELEASE, build/test by default, built here when
# missing): kmvt_verify built for node has the same fingerprint and plays every recording of
# tests/replays/ to the same final hashes; then the page in Debian's chromium, headless
# (tests/web/page_test.py): the main menu the same picture as the Linux build's, a one-player game
# started by clicks and moved by keys, the run's recording downloaded and replayed on Linux, a
# recording opened in the page to the Linux build's final hash, and no error in the console.
# Without emscripten or chromium (packages that cannot be installed) it says SKIPPED and why.
set -euo pipefail
cd "$(dirname "$0")/.."
linux=${BUILD_RELEASE:-build/test}
artefacts=build/web-test
if ! scripts/deps.sh web > /dev/null; then
  echo "SKIPPED: the web build, for want of emscripten or chromium (scripts/deps.sh web failed)"
  exit 0
fi
rm -rf "$artefacts"
mkdir -p "$artefacts"
[ -f "$linux/CMakeCache.txt" ] || cmake -S . -B "$linux" -DCMAKE_BUILD_TYPE=Release -DKMVT_WERROR=ON > /dev/null
cmake --build "$linux" -j"$(nproc)" --target kormaveth2d kmvt_verify > /dev/null

start=$SECONDS
scripts/web-libs.sh > /dev/null
echo "web libraries: $(( SECONDS - start )) s"
start=$SECONDS
scripts/web.sh > /dev/null
echo "the page and kmvt_verify for node: $(( SECONDS - start )) s"
# The outputs name the same files: every line but the program's name must agree.
"$linux/kmvt_verify" --version | tail -n +2 > "$artefacts/linux.txt"
"$linux/kmvt_verify" tests/replays/*.kmr >> "$artefacts/linux.txt" || true
node build/web-build/kmvt_verify.js --version | tail -n +2 > "$artefacts/node.txt"
node build/web-build/kmvt_verify.js tests/replays/*.kmr >> "$artefacts/node.txt" || true
if ! diff "$artefacts/linux.txt" "$artefacts/node.txt"; then
  echo "FAIL: the web build plays another game than the Linux build (above: Linux <, web >)"
  exit 1
fi
echo "the web build: $(head -1 "$artefacts/node.txt"), $(grep -c 'every checkpoint matched' "$artefacts/node.txt") recordings as on Linux"

start=$SECONDS
python3 tests/web/page_test.py build/web "$linux/kormaveth2d" "$linux/kmvt_verify" \
  tests/replays/1p-lumra-d1-unfinished.kmr "$artefacts" | grep -v '^console: '
echo "the page in chromium: $(( SECONDS - start )) s"
