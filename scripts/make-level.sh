#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Rebuilds the level from its description, tools/level/town.txt: the four map files, tiles.png
# and the sheet's legend in resources/map/, then the pictures of the level in docs/images/.
# The same description always gives the same bytes.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh play
cmake -S . -B build/level -DCMAKE_BUILD_TYPE=Release -DKMVT_BUILD_TESTS=OFF -DKMVT_BUILD_TOOLS=ON -DKMVT_BUILD_BENCHMARKS=OFF > /dev/null
cmake --build build/level -j"$(nproc)" --target kmvt_level kmvt_level_render
build/level/tools/level/kmvt_level tools/level/town.txt resources/map/
build/level/tools/level/kmvt_level_render docs/images/
