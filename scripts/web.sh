#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the game as a web page in build/web/ (index.html with the game's .js, .wasm and .data),
# which any static web server serves. The web libraries are built once from Debian's sources
# (scripts/web-libs.sh) and kept outside the clone.
# Beside it, build/web-build/kmvt_verify.js checks recordings under node, from the same objects:
#   node build/web-build/kmvt_verify.js FILE...
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh web
jobs=$(nproc)
# Debian's emscripten finds its own node modules there, whichever node runs it.
export NODE_PATH=${NODE_PATH:-/usr/share/nodejs}
# quietly COMMAND...: its output only when it fails.
quietly() {
  local output
  output=$("$@" 2>&1) || { echo "$output" >&2; return 1; }
}

libs=$(scripts/web-libs.sh)
launcher=()
if [ -z "${CMAKE_CXX_COMPILER_LAUNCHER:-}" ] && command -v ccache > /dev/null; then
  launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
quietly emcmake cmake -S . -B build/web-build -DCMAKE_BUILD_TYPE=Release -DKMVT_WERROR=ON -DKMVT_WEB_LIBS="$libs" \
  "${launcher[@]}"
quietly cmake --build build/web-build -j"$jobs" --target kormaveth2d kmvt_verify
mkdir -p build/web
for file in index.html kormaveth2d.js kormaveth2d.wasm kormaveth2d.data; do
  cp build/web-build/$file build/web/
done
echo "Built the page in build/web/. Serve it, then open http://localhost:8000/ in a browser:"
echo "  python3 -m http.server -d build/web"
