#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Two real game processes online on this machine's loopback, each a headless autoplay program with
# one bot at its player:
#   online_game.sh AUTOPLAY GAME RELAY RESOURCES SCENARIO [STRANGER SKEWED-AUTOPLAY]
# relay:          the host, the impairment relay (30 ms each way with 10 ms jitter, 5 % lost, 2 %
#                 duplicated, 5 % reordered, seed 7) and the partner play a whole two-player game
#                 with the input delay fixed at 8 steps, so that the bots play alike however busy
#                 the machine is; both must end with the same final state hash, and both
#                 recordings must --verify to it.
# rollback:       the same game with neither delay fixed, through the relay at 100 ms each way
#                 with 5 % lost: each machine plays its own keys at once on guesses of the
#                 partner's; both end with the same final state hash, and both recordings verify.
# strangers:      in the middle of a short game, strangers connect to the host's port and to the
#                 partner's, silent or talking: each is turned away, the game goes on to the host's
#                 quit, and both recordings verify to the same end.
# silent-first:   a silent connection reaches the host before the partner: the partner still plays
#                 within 6 s of its start.
# delay-follows:  through the relay, 30 ms each way and 90 ms from 12 s of traffic on: the game
#                 that plays ahead on guesses keeps up with the worse line, and over the last 1000
#                 steps of each side fewer than 1 step time in 100 waits.
# blackout:       through the relay, every packet lost for 15 s in the middle of the game; meanwhile
#                 a stranger claims at the host to be the partner come back, with a wrong token,
#                 and is turned away; both games resume and both recordings verify to one end.
# blackout-long:  the same for 35 s: "Partner lost" on both machines.
# new-port:       the relay speaks to the host from a new port in the middle of the game, as a
#                 router does after a restart: the partner connects again and both games resume.
# out-of-step:    the partner is the skewed build, which plays an extra step of its own: both
#                 report the same step and part, and both write out-of-step.kmr.
# partner-killed: the partner is killed with SIGKILL in the middle of the game; the host must say
#                 "Partner lost" in its log, come back to the main menu and exit with status 0.
# version:        the partner claims version 1.0.1; both refuse with the line naming the versions.
# data:           the partner's walk map has one number changed; both refuse naming the data.
# The limits are generous: the machine may be busy, and only the outcome is checked.
set -euo pipefail
autoplay=$1 game=$2 relay=$3 resources=$4 scenario=$5 stranger=${6:-} skewed=${7:-}
work=$(mktemp -d)
pids=()
cleanup() {
  for pid in "${pids[@]}"; do kill -9 "$pid" 2> /dev/null || true; done
  wait 2> /dev/null || true
  [ -n "${KEEP_WORK:-}" ] || rm -rf "$work"
}
trap cleanup EXIT
fail() {
  echo "FAIL ($scenario): $*" >&2
  for f in "$work"/*/out.txt "$work"/*/err.txt "$work"/*/log.txt "$work"/relay.txt; do
    [ -s "$f" ] && { echo "== $f" >&2; tail -n 20 "$f" >&2; }
  done
  exit 1
}
mkdir -p "$work/host" "$work/partner"
ln -s "$resources" "$work/host/resources"
ln -s "$resources" "$work/partner/resources"
port=$(( 20000 + RANDOM % 12000 ))	# below the ephemeral ports that the system hands out
# Every scenario has ports of its own (the port and the next), below the random ones, so that they
# all run side by side.
declare -A OWN_PORTS=([strangers]=19410 [silent-first]=19420 [out-of-step]=19430 [delay-follows]=19440 [blackout]=19450
                      [blackout-long]=19460 [new-port]=19470 [partner-killed]=19480 [version]=19490 [data]=19500
                      [relay]=19510 [rollback]=19520)
port=${OWN_PORTS[$scenario]:-$port}
frames=9000

# Starts one side in its own folder: start SIDE ARGUMENTS... (the program: $program, else AUTOPLAY)
start() {
  local side=$1
  shift
  ( cd "$work/$side" && exec "${program:-$autoplay}" --difficulty=1 --frames=$frames "$@" > out.txt 2> err.txt ) &
  pids+=($!)
}
# Waits up to 60 s for a line in a side's output: wait_for SIDE TEXT
wait_for() {
  for _ in $(seq 1 600); do
    grep -q "$2" "$work/$1/out.txt" 2> /dev/null && return 0
    sleep 0.1
  done
  fail "no \"$2\" from the $1"
}
# Both sides' recordings verify to the same final state hash as both games ended with, in $hash.
check_recordings() {
  hash=$(final_hash host)
  [ -n "$hash" ] && [ "$hash" = "$(final_hash partner)" ] || fail "the final state hashes differ"
  for side in host partner; do
    "$game" --replay "$work/$side/$side.kmr" --verify > "$work/$side/verify.txt" 2>&1 || fail "$side's recording does not verify"
    grep -qx "Final state hash: $hash" "$work/$side/verify.txt" || fail "$side's recording ends elsewhere"
  done
}
# The UDP port of a running side: port_of PID
port_of() {
  ss -Hunap | sed -n "s/^[^ ]* *[0-9]* *[0-9]* *[^ ]*:\([0-9]*\) .*pid=$1,.*/\1/p" | head -n 1
}
# Waits for a side: finish PID EXPECTED-STATUS MESSAGE
finish() {
  local status=0
  wait "$1" || status=$?
  [ "$status" = "$2" ] || fail "$3 (exit status $status)"
}
final_hash() {
  sed -n 's/^Online game over .*final state hash: \([0-9a-f]*\)$/\1/p' "$work/$1/out.txt"
}

case "$scenario" in
  relay|rollback)
    fixed=(--delay=8) line=(--delay=30 --jitter=10 --loss=5 --duplicate=2 --reorder=5) ran="victory\|defeat"
    if [ "$scenario" = rollback ]; then
      fixed=() line=(--delay=100 --jitter=10 --loss=5) ran="guessing the partner's keys up to 10 steps ahead"
    fi
    start host "--host=$port" --online-record=host.kmr "${fixed[@]}"
    host=${pids[-1]}
    "$relay" $(( port + 1 )) "$port" "${line[@]}" --seed=7 --seconds=280 --idle=10 > "$work/relay.txt" &
    pids+=($!)
    start partner "--join=127.0.0.1:$(( port + 1 ))" --online-record=partner.kmr
    partner=${pids[-1]}
    finish "$host" 0 "the host did not end well"
    finish "$partner" 0 "the partner did not end well"
    grep -q "$ran" "$work/host/out.txt" || fail "the game did not reach its end or did not run ahead"
    check_recordings
    echo "PASS ($scenario): both ended at $hash, both recordings verify to it; $(tail -n 1 "$work/relay.txt" 2>/dev/null || true)"
    ;;
  strangers)
    frames=1200
    start host "--host=$port" --online-record=host.kmr --delay=4
    host=${pids[-1]}
    start partner "--join=127.0.0.1:$port" --online-record=partner.kmr
    partner=${pids[-1]}
    wait_for partner "shared main menu"
    sleep 5		# the menus take two seconds; the game runs by then
    partner_port=$(port_of "$partner")
    [ -n "$partner_port" ] || fail "the partner's port was not found"
    "$stranger" "$port" 3 --talk > "$work/host-talker.txt"
    "$stranger" "$port" 3 > "$work/host-silent.txt"
    "$stranger" "$partner_port" 3 --talk > "$work/partner-talker.txt"
    "$stranger" "$partner_port" 3 > "$work/partner-silent.txt"
    finish "$host" 0 "the host did not end well"
    finish "$partner" 0 "the partner did not end well"
    for who in host-talker host-silent partner-talker partner-silent; do
      grep -q "^turned away" "$work/$who.txt" || fail "the stranger at the $who was not turned away"
    done
    grep -q "The host quit the game" "$work/partner/log.txt" || fail "the game did not go on to the host's quit"
    check_recordings
    echo "PASS (strangers): four strangers turned away; both ended at $hash, both recordings verify to it"
    ;;
  silent-first)
    frames=300
    start host "--host=$port" --delay=4
    host=${pids[-1]}
    sleep 1
    "$stranger" "$port" 10 > "$work/silent.txt" &
    pids+=($!)
    sleep 1
    start partner "--join=127.0.0.1:$port"
    partner=${pids[-1]}
    finish "$partner" 0 "the partner did not end well"
    finish "$host" 0 "the host did not end well"
    joined=$(sed -n 's/^At the shared main menu \([0-9]*\) ms after the start$/\1/p' "$work/partner/out.txt")
    [ -n "$joined" ] && [ "$joined" -le 6000 ] || fail "the partner was not at the shared main menu within 6 s (${joined:-never} ms)"
    echo "PASS (silent-first): the partner was at the shared main menu $joined ms after its start"
    ;;
  delay-follows)
    frames=2700
    start host "--host=$port"
    host=${pids[-1]}
    "$relay" $(( port + 1 )) "$port" --delay=30 --change-at=12 --delay-then=90 --seconds=200 > "$work/relay.txt" &
    pids+=($!)
    start partner "--join=127.0.0.1:$(( port + 1 ))"
    partner=${pids[-1]}
    finish "$host" 0 "the host did not end well"
    finish "$partner" 0 "the partner did not end well"
    for side in host partner; do
      # Online step N: input delay D, round trip R ms, W step times waited
      sed -n 's/^Online step \([0-9]*\): input delay \([0-9]*\), round trip [0-9]* ms, \([0-9]*\) step times waited$/\1 \2 \3/p' \
        "$work/$side/out.txt" > "$work/$side/line.txt"
      read -r last delay waited < <(tail -n 1 "$work/$side/line.txt")
      read -r first _ waited_first < <(awk -v last="$last" '$1 <= last - 1000' "$work/$side/line.txt" | tail -n 1)
      [ -n "${first:-}" ] || fail "the $side played fewer than 1000 steps"
      (( (waited - waited_first) * 100 < last - first )) ||
        fail "the $side waited $(( waited - waited_first )) step times in steps $first to $last"
      echo "$side: delay $delay, $(( waited - waited_first )) step times waited in steps $first to $last"
    done
    echo "PASS (delay-follows)"
    ;;
  blackout|blackout-long|new-port)
    frames=1500
    line=(--blackout-at=12 --blackout-for=15)
    [ "$scenario" = blackout-long ] && line=(--blackout-at=12 --blackout-for=35)
    [ "$scenario" = new-port ] && line=(--new-port-at=12)
    start host "--host=$port" --online-record=host.kmr --delay=6
    host=${pids[-1]}
    "$relay" $(( port + 1 )) "$port" --delay=20 "${line[@]}" --seconds=200 > "$work/relay.txt" &
    pids+=($!)
    start partner "--join=127.0.0.1:$(( port + 1 ))" --online-record=partner.kmr
    partner=${pids[-1]}
    if [ "$scenario" = blackout ]; then
      wait_for partner "shared main menu"
      sleep 16		# within the blackout, the partner silent
      "$stranger" "$port" 3 --resume > "$work/stranger.txt"
      grep -q "^turned away" "$work/stranger.txt" || fail "the stranger with a wrong token was not turned away"
    fi
    finish "$host" 0 "the host did not end well"
    finish "$partner" 0 "the partner did not end well"
    if [ "$scenario" = blackout-long ]; then
      for side in host partner; do
        grep -q "^Partner lost" "$work/$side/log.txt" || fail "no \"Partner lost\" in the $side's log"
      done
      echo "PASS ($scenario): both lost the partner"
    else
      grep -q "The host quit the game" "$work/partner/log.txt" || fail "the game did not go on to the host's quit"
      grep -q "The partner connected again" "$work/host/log.txt" || fail "the partner did not connect again"
      check_recordings
      echo "PASS ($scenario): both resumed and ended at $hash, both recordings verify to it"
    fi
    ;;
  out-of-step)
    frames=3000
    start host "--host=$port" --delay=4
    host=${pids[-1]}
    export KMVT_SKEW_AT_STEP=500		# read by the skewed build alone
    program=$skewed
    start partner "--join=127.0.0.1:$port"
    partner=${pids[-1]}
    finish "$host" 0 "the host did not end well"
    finish "$partner" 0 "the partner did not end well"
    line=$(grep -m 1 "^Game went out of step with the partner at step [0-9]* (part .*)$" "$work/host/log.txt") ||
      fail "no out-of-step line in the host's log"
    grep -qxF "$line" "$work/partner/log.txt" || fail "the partner's log does not tell the same: $line"
    for side in host partner; do
      [ -s "$work/$side/out-of-step.kmr" ] || fail "no out-of-step.kmr from the $side"
    done
    echo "PASS (out-of-step): both say \"$line\" and wrote out-of-step.kmr"
    ;;
  partner-killed)
    start host "--host=$port"
    host=${pids[-1]}
    start partner "--join=127.0.0.1:$port"
    partner=${pids[-1]}
    for _ in $(seq 1 600); do
      grep -q "shared main menu" "$work/partner/out.txt" 2> /dev/null && break
      sleep 0.1
    done
    grep -q "shared main menu" "$work/partner/out.txt" || fail "the partner never joined"
    sleep 8		# the menus take two seconds; the game runs by then
    kill -9 "$partner"
    killed=$SECONDS
    finish "$host" 0 "the host did not end well"
    grep -q "^Partner lost" "$work/host/log.txt" || fail "no \"Partner lost\" in the host's log"
    grep -q "Back at the main menu" "$work/host/out.txt" || fail "the host did not come back to the main menu"
    echo "PASS (partner-killed): the host was back at the main menu $(( SECONDS - killed )) s after the kill, exit status 0"
    ;;
  version|data)
    extra=()
    if [ "$scenario" = version ]; then
      extra=(--version-as=1.0.1)
      line="Partner runs version"
    else
      rm "$work/partner/resources"
      cp -r "$resources" "$work/partner/resources"
      sed -i '1s/^\([0-9]*\)/9\1/' "$work/partner/resources/map/walkmap.txt"
      line="Partner has other game data"
    fi
    start host "--host=$port" --wait=60
    host=${pids[-1]}
    start partner "--join=127.0.0.1:$port" "${extra[@]}"
    partner=${pids[-1]}
    finish "$partner" 1 "the partner was not refused"
    finish "$host" 1 "the host did not refuse"
    for side in host partner; do
      grep -q "^$line" "$work/$side/log.txt" || fail "no \"$line\" in the $side's log"
      grep -q "^$line" "$work/$side/err.txt" || fail "no \"$line\" on the $side's terminal"
    done
    echo "PASS ($scenario): refused on both sides: $(grep -m 1 "^$line" "$work/host/log.txt")"
    ;;
  *) fail "unknown scenario" ;;
esac
