#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the game as a web page in build/web/ (index.html with the game's .js, .wasm and .data),
# which any static web server serves. The web libraries are built once from Debian's sources
# (scripts/web-libs.sh) and kept outside the clone.
#   scripts/web.sh            builds the page and says how to serve it
#   scripts/web.sh verifier   builds kmvt_verify for node instead, into build/web-node/
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

if [ "${1:-page}" = verifier ]; then
  # For node: everything in one file that reads the real file system.
  quietly emcmake cmake -S . -B build/web-node -DCMAKE_BUILD_TYPE=Release -DKMVT_VERIFIER_ONLY=ON -DKMVT_WERROR=ON \
    "-DCMAKE_EXE_LINKER_FLAGS=-sENVIRONMENT=node -sSINGLE_FILE=1 -sNODERAWFS=1 -sALLOW_MEMORY_GROWTH=1"
  quietly cmake --build build/web-node -j"$jobs" --target kmvt_verify
  echo "Built build/web-node/kmvt_verify.js: node build/web-node/kmvt_verify.js FILE..."
  exit 0
fi

libs=$(scripts/web-libs.sh)
quietly emcmake cmake -S . -B build/web-build -DCMAKE_BUILD_TYPE=Release -DKMVT_WERROR=ON -DKMVT_WEB_LIBS="$libs"
quietly cmake --build build/web-build -j"$jobs" --target kormaveth2d
mkdir -p build/web
for file in index.html kormaveth2d.js kormaveth2d.wasm kormaveth2d.data; do
  cp build/web-build/$file build/web/
done
echo "Built the page in build/web/. Serve it, then open http://localhost:8000/ in a browser:"
echo "  python3 -m http.server -d build/web"
