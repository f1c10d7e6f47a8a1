#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Plays 200 games in a row with the autoplay bot in the build with AddressSanitizer and
# UndefinedBehaviorSanitizer: each game a new one through the menus, every difficulty, character
# and number of players in turn, each with a calendar second of its own. A game still running at
# the frame limit is left through the pause screen. Prints the memory every 10 games and
# fails on any sanitizer report, on a game that does not run through, or when the heap the game
# holds grows by more than the allowed share from the first half of the games to the second.
#   scripts/soak.sh [GAMES] [FRAMES PER GAME]        (200 and 4000 by default)
# KMVT_SOAK_BUILD names the build folder (build/soak by default); KMVT_SOAK_GROWTH the allowed
# growth in percent (5 by default).
set -euo pipefail
cd "$(dirname "$0")/.."
games=${1:-200}
frames=${2:-4000}
build=${KMVT_SOAK_BUILD:-build/soak}
allowed=${KMVT_SOAK_GROWTH:-5}
scripts/deps.sh play

cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DKMVT_SANITIZE=ON -DKMVT_BUILD_TESTS=OFF > /dev/null
cmake --build "$build" -j"$(nproc)" --target kmvt_autoplay

# Freed memory goes back to the allocator at once instead of waiting in a large quarantine, so
# that the resident memory shows what the game keeps; use-after-free is still caught.
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:quarantine_size_mb=16"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"

log=$(mktemp -d)
trap 'rm -rf "$log"' EXIT
echo "== $games games of at most $frames frames, sanitizers on"
set +e
( cd "$build" && harness/kmvt_autoplay --vary --games="$games" --frames="$frames" --memory-every=10 ) \
  2> "$log/err.txt" | tee "$log/out.txt"
status=${PIPESTATUS[0]}
set -e

if [ "$status" -ne 0 ] || grep -q -e "Sanitizer" -e "runtime error" "$log/err.txt"; then
  cat "$log/err.txt" >&2
  echo "soak failed: exit status $status" >&2
  exit 1
fi
# "memory after game N: VmRSS R kB heap H kB": the heap figure counts what the game holds; the
# resident memory also moves with the sanitizer's quarantine and is printed for the record.
# memory FIELD FROM TO: the smallest figure of the games FROM to TO.
memory() { awk -v field="$1" -v from="$2" -v to="$3" '$1 == "memory" {
  game = $4 + 0; if (game >= from && game <= to && (least == "" || $field < least)) least = $field } END { print least + 0 }' "$log/out.txt"; }
half=$(( games / 2 ))
first=$(memory 9 10 "$half")
last=$(memory 9 $(( half + 1 )) "$games")
for outcome in victory defeat unfinished; do
  printf "%s %d  " "$outcome" "$(grep -c ": .* $outcome " "$log/out.txt" || true)"
done
echo
echo "resident memory: $(memory 6 10 "$half") kB at least over games 10 to $half, $(memory 6 $(( half + 1 )) "$games") kB over the rest"
# After a game the main menu still holds it, so the heap after each game moves with what that
# game left; a leak lifts every later figure, the smallest of the second half too.
awk -v first="$first" -v last="$last" -v half="$half" -v games="$games" -v allowed="$allowed" 'BEGIN {
  change = last - first
  printf "heap in use: %d kB at least over games 10 to %d, %d kB over games %d to %d: %+d kB (%+.2f %%)\n", first, half, last, half + 1, games, change, 100 * change / first
  exit (100 * change / first > allowed) ? 1 : 0
}' || { echo "soak failed: the heap grew by more than $allowed %" >&2; exit 1; }
echo "no sanitizer report"
