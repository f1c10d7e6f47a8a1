#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The real game hosts an online game under Xvfb; an autoplay program joins it as player 2:
#   online_window.sh GAME AUTOPLAY RESOURCES ARTEFACTS
# The host's clicks (xdotool) choose two players and tavesh on the shared menus; the partner's bot
# plays lumra for a few seconds; Escape on the host pauses both; the host's window closes. The
# partner must say "Partner lost" and come back to its main menu with exit status 0, and both
# recordings must verify to the same final state hash.
set -euo pipefail
game=$1 autoplay=$2 resources=$3 artefacts=$4
source "$(dirname "$0")/game_window.sh"
run_under_xvfb "$0" "$@"

mkdir -p "$artefacts"
work=$(mktemp -d)
partner_pid=""
trap '[ -n "$partner_pid" ] && kill -9 "$partner_pid" 2> /dev/null; rm -rf "$work"' EXIT
mkdir -p "$work/host" "$work/partner"
ln -s "$resources" "$work/host/resources"
ln -s "$resources" "$work/partner/resources"
export ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0"	# as in run_game.sh: SDL's display libraries
export SDL_AUDIODRIVER=dummy
fail() {
  echo "FAIL (online window): $*" >&2
  for f in host/stdout.txt host/log.txt partner/out.txt partner/log.txt; do
    [ -s "$work/$f" ] && { echo "$f:" >&2; tail -n 20 "$work/$f" >&2; }
  done
  exit 1
}
port=$(( 20000 + RANDOM % 12000 ))	# below the ephemeral ports that the system hands out

cd "$work/host"
start_game "$work/host/stdout.txt" "$game" --host "$port" --no-port-mapping --record "$work/host/host.kmr"
( cd "$work/partner" && exec "$autoplay" "--join=127.0.0.1:$port" --online-record=partner.kmr > out.txt 2>&1 ) &
partner_pid=$!
for _ in $(seq 1 $(( E2E_WAIT * 10 ))); do
  grep -q "shared main menu" "$work/partner/out.txt" 2> /dev/null && break
  sleep 0.1
done
grep -q "shared main menu" "$work/partner/out.txt" || fail "the partner never reached the shared main menu"

click() {
  xdotool mousemove --window "$window" $(($1 * scale)) $(($2 * scale))
  sleep 0.3
  xdotool click 1
  sleep 0.8
}
xdotool windowfocus "$window" 2> /dev/null || true
click 160 296		# two players
click 160 328		# tavesh for player 1, lumra for the partner
sleep 4
expect_picture "$artefacts/online-host-play.png"
xdotool key Escape
sleep 1
kill -TERM "$pid"
expect_clean_exit
status=0
wait "$partner_pid" || status=$?
partner_pid=""
[ "$status" -eq 0 ] || fail "the partner ended with status $status"
grep -q "^Partner lost" "$work/partner/log.txt" || fail "no \"Partner lost\" in the partner's log"
grep -q "Back at the main menu" "$work/partner/out.txt" || fail "the partner is not back at its main menu"
hashes=()
for side in host partner; do
  file=$(ls "$work/$side"/*.kmr) || fail "no recording on the $side's side"
  "$game" --replay "$file" --verify > "$work/$side/verify.txt" 2>&1 || fail "the $side's recording does not verify"
  hashes+=("$(sed -n 's/^Final state hash: //p' "$work/$side/verify.txt")")
done
[ "${hashes[0]}" = "${hashes[1]}" ] || fail "the recordings end apart: ${hashes[*]}"
steps=$(sed -n 's/^Replay .*: \([0-9]*\) steps.*/\1/p' "$work/host/verify.txt")
(( steps > 200 )) || fail "only $steps online steps"
echo "PASS (online window): the host's clicks started a game of two, $steps steps, both recordings end at ${hashes[0]}"
