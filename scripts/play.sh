#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the game (Release) and starts it from the build folder, which sees ./resources. Its
# arguments go to the game (scripts/play.sh --window); a file named there is in build/play.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh play
cmake -S . -B build/play -DCMAKE_BUILD_TYPE=Release -DKMVT_BUILD_TESTS=OFF -DKMVT_BUILD_TOOLS=OFF -DKMVT_BUILD_BENCHMARKS=OFF > /dev/null
cmake --build build/play -j"$(nproc)"
cd build/play
exec ./kormaveth2d "$@"
