#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Records a short game in the real window under Xvfb and plays it back, checking that the state
# hash at the end is the same in all three runs:
#   replay_game.sh GAME RESOURCES ARTEFACTS
# 1. GAME --record: answer the full-screen question with No, click one player and tavesh, walk
#    right and fire with xdotool for a few seconds, Alt+Enter in play and on the pause screen (under
#    openbox where it is installed, so that the window really switches; the recording must not
#    notice), pause with Escape, then SIGTERM; the game must write the recording and print
#    "Recorded N steps to FILE; final state hash: H".
# 2. GAME --replay FILE --verify: no window; exit 0 and "Final state hash: H".
# 3. GAME --replay FILE in the window, a key held to play it four times as fast: it must print
#    "Replay left at step N of N; state hash: H" when the recording ends; SIGTERM ends it.
set -euo pipefail
game=$1 resources=$2 artefacts=$3
source "$(dirname "$0")/game_window.sh"
run_under_xvfb "$0" "$@"

enter_work_folder "$resources" "$artefacts"
fail() {
  echo "FAIL (replay): $*" >&2
  for f in record.txt verify.txt replay.txt log.txt; do [ -s "$work/$f" ] && { echo "$f:" >&2; cat "$work/$f" >&2; }; done
  cp -f "$work"/*.kmr "$artefacts/" 2>/dev/null || true
  exit 1
}
command -v openbox > /dev/null && start_window_manager	# so that Alt+Enter really switches

# 1. Record: the menus, then walking and firing, then the pause screen.
start_game "$work/record.txt" "$game" --record "$work/game.kmr"
sleep 0.5
xdotool windowfocus "$window" 2>/dev/null || true
click 160 260		# one player
click 160 328		# tavesh
xdotool keydown d
for _ in 1 2 3 4 5 6; do xdotool key h; sleep 0.3; done
xdotool keyup d
xdotool key alt+Return	# to full screen and back in play: the game must not see it
sleep 0.5
xdotool keydown s; sleep 1; xdotool keyup s
xdotool key alt+Return
sleep 0.5
xdotool key Escape
sleep 0.5
xdotool key alt+Return	# and on the pause screen
sleep 0.5
end_game
[ -f "$work/game.kmr" ] || fail "no recording was written"
recorded=$(sed -n 's/^Recorded \([0-9]*\) steps to .*; final state hash: \([0-9a-f]*\)$/\1 \2/p' "$work/record.txt")
[ -n "$recorded" ] || fail "the recording run did not print its final state hash"
read -r steps hash <<< "$recorded"
(( steps > 200 )) || fail "only $steps steps were recorded"
cp "$work/game.kmr" "$artefacts/"

# 2. Verify, without a window.
status=0
"$game" --replay "$work/game.kmr" --verify > "$work/verify.txt" 2>&1 || status=$?
[ "$status" -eq 0 ] || fail "--verify exit code $status"
grep -qx "Final state hash: $hash" "$work/verify.txt" || fail "--verify ends with another state than the recording ($hash)"

# 3. Replay in the window, to the end, fast.
start_game "$work/replay.txt" "$game" --replay "$work/game.kmr"
xdotool mousemove --window "$window" 10 10
xdotool keydown x
for _ in $(seq 1 $(( steps / 6 + 100 ))); do
  grep -q "^Replay left" "$work/replay.txt" && break
  sleep 0.1
done
xdotool keyup x
end_game
grep -qx "Replay left at step $steps of $steps; state hash: $hash" "$work/replay.txt" \
  || fail "the replay in the window did not end where the recording did ($steps steps, $hash)"
[ ! -s "$work/log.txt" ] || fail "log.txt is not empty"
echo "PASS (replay): $steps steps recorded in the window, verified and replayed, final state hash $hash"
