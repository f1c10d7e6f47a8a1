#!/bin/sh
# SPDX-License-Identifier: GPL-3.0-or-later
# Rebuilds the picture and sound generators and regenerates every picture and sound of the game
# (all but the map's tile sheet) from code, plus the contact sheets under docs/images.
# Usage: scripts/make-art.sh [build folder]   (default: build-art beside the repository)
set -eu
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-"$root/../build-art"}
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DKMVT_BUILD_TESTS=OFF -DKMVT_BUILD_TOOLS=ON -DKMVT_BUILD_BENCHMARKS=OFF >/dev/null
cmake --build "$build" --target kmvt_art kmvt_audio -j2
mkdir -p "$root/resources/menu" "$root/resources/sprites" "$root/resources/icon" "$root/resources/audio" \
	"$root/docs/images" "$root/tests/resources"
"$build/tools/art/kmvt_art" "$root"
"$build/tools/audio/kmvt_audio" "$root"
echo "pictures and sounds regenerated under $root/resources"
