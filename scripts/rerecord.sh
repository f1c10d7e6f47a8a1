#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Records the games of tests/replays/ again, with the autoplay bots, in a Release build:
#   scripts/rerecord.sh
# Run it only after a deliberate change to the rules that alters the course of play (the replay
# tests then fail, naming the first step that went another way), and commit the new files with
# that change. A replay test that fails after any other change has found a fault: fix the fault,
# not the recordings. KMVT_BUILD names another build folder (build/test by default).
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${KMVT_BUILD:-build/test}
out=$root/tests/replays

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release > /dev/null
cmake --build "$build" -j2 --target kmvt_autoplay > /dev/null
rm -f "$out"/*.kmr
mkdir -p "$out"

play() {
  "$build/harness/kmvt_autoplay" --resources="$root" --record="$out" "$@" | sed 's/  UpdateInGame.*//'
}

# Victories: each character alone, both together, each difficulty; the calendar second moving on
# with the game's clock in one of them, as in a real run.
play --players=1 --character=tavesh --difficulty=1
play --players=1 --character=lumra --difficulty=2 --live-calendar
play --players=2 --character=tavesh --difficulty=3 --calendar=1700000321
# Every door and every box opened, by lumra with tavesh beside her.
play --players=2 --character=lumra --difficulty=1 --open-doors
mv "$out/2p-lumra-tavesh-d1-victory.kmr" "$out/2p-lumra-tavesh-d1-victory-every-door-and-box.kmr"
# Defeats: bots that walk into the enemies' fire and shoot seldom or never.
play --players=1 --character=tavesh --difficulty=3 --reckless --tap=100000
play --players=1 --character=lumra --difficulty=3 --reckless --tap=30
# Games left from the pause screen: a player down and not revived; the players on pads; 15 s of
# play.
play --players=2 --character=lumra --difficulty=3 --reckless --tap=100000 --frames=3000
play --players=2 --character=tavesh --difficulty=2 --pads --frames=2000
play --players=1 --character=lumra --difficulty=1 --frames=1000 --calendar=1700000777

du -ch "$out"/*.kmr | tail -n 1
