#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Online play on this machine's loopback: two autoplay programs (a bot a machine) play 2,000 steps
# of a two-player game through the impairment relay at round trips of 0, 50, 100 and 200 ms, each
# without and with 5 % loss, and a table row per run: the input delay (at the end, and its mean over
# the steps when it moved), the steps per second held, the step times waited (and per 100 steps),
# the bytes per second each way (UDP payload, counted by the relay) and the time from the partner's
# start to the shared main menu, the host's CPU time per frame (and without its bot's thinking,
# which is no part of the game), and the steps played again after corrections (per frame: mean and
# most) with the partner's figure's jumps (how many, mean and longest, in the game's units), the
# felt delay measured on the host (step times from its bot's key going down to the first step shown
# that reads it: mean and most), and the CPU time of the online game's own work per step time (the
# steps played and played again, the saves, the packets: without the bot, the drawing and the
# pacing, which both ways of playing share). KMVT_ONLINE_TRIPS, KMVT_ONLINE_LOSSES and
# KMVT_ONLINE_JITTER (ms either way) choose other lines; KMVT_ONLINE_LOCKSTEP=1 plays in lockstep
# with the delay the host would measure, (round trip + 20) / 15 + 1, fixed with --delay.
#   bench/net/online-bench.sh AUTOPLAY RELAY RESOURCES
set -euo pipefail
autoplay=$1 relay=$2 resources=$3
work=$(mktemp -d)
trap 'kill -9 $(jobs -p) 2> /dev/null || true; rm -rf "$work"' EXIT
mkdir -p "$work/host" "$work/partner"
ln -s "$resources" "$work/host/resources"
ln -s "$resources" "$work/partner/resources"
port=$(( 20000 + RANDOM % 20000 ))

# The bytes per second one way, host or joiner, from the relay's line.
rate() { sed -n "s/.*$1 [0-9]* bytes in [0-9]* packets (\([0-9]*\) B\/s).*/\1/p" "$2"; }
# The number that follows a phrase in a file.
after() { awk -v phrase="$2" 'index($0, phrase) { rest = substr($0, index($0, phrase) + length(phrase));
  if (match(rest, /[0-9]+(\.[0-9]+)?/)) { print substr(rest, RSTART, RLENGTH); exit } }' "$1"; }

# The host's CPU per frame in msec, less some msec of it: per_frame MSEC LESS
per_frame() { awk -v all="$1" -v less="${2:-0}" 'BEGIN { printf "%.3f", (all - less) / 2000 }'; }

jitter=${KMVT_ONLINE_JITTER:-0}
echo "| round trip | jitter | loss | input delay D | mean D | steps | steps/s | step times waited | per 100 steps | bytes/s host to partner | bytes/s partner to host | --join to the shared main menu | host CPU per frame | without the bot | steps again per frame (mean, most) | figure jumps (count, mean, longest) | felt delay (mean, most) | game CPU per step time |"
echo "|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|---|"
for trip in ${KMVT_ONLINE_TRIPS:-0 50 100 200}; do
  for loss in ${KMVT_ONLINE_LOSSES:-0 5}; do
    port=$(( port + 2 ))
    fixed=()
    [ -n "${KMVT_ONLINE_LOCKSTEP:-}" ] && fixed=(--delay=$(( (trip + 20) / 15 + 1 )))
    # The subshell's children's CPU time (user, system), from times' second line.
    ( cd "$work/host" && { "$autoplay" --host=$port --players=2 --difficulty=1 --frames=2000 "${fixed[@]}" > out.txt 2> err.txt
        times > cpu.txt; } ) &
    host=$!
    "$relay" $(( port + 1 )) $port --delay=$(( trip / 2 )) --jitter=$(( jitter / 2 )) --loss=$loss --seed=11 --idle=5 > "$work/relay.txt" &
    relay_pid=$!
    ( cd "$work/partner" && exec "$autoplay" --join=127.0.0.1:$(( port + 1 )) > out.txt 2> err.txt ) &
    partner=$!
    wait $host $partner || true
    wait $relay_pid || true
    out=$work/host/out.txt
    delay=$(sed -n 's/^Online game over .*input delay \([0-9]*\).*/\1/p' "$out")
    mean=$(sed -n 's/^Online game over .*input delay [0-9]* (mean \([0-9.]*\)).*/\1/p' "$out")
    steps=$(sed -n 's/^Online game over .*): \([0-9]*\) steps.*/\1/p' "$out")
    waited=$(sed -n 's/^Online game over .* \([0-9]*\) step times waited.*/\1/p' "$out")
    again=$(sed -n 's/^Online game over .* \([0-9]*\) steps played again in \([0-9]*\) step times (at most \([0-9]*\)), the partner.s figure moved by \([0-9]*\) corrections (\([0-9]*\) in all, at most \([0-9]*\)).*/\1 \2 \3 \4 \5 \6/p' "$out")
    read -r again_steps frames most jumps jumped longest <<< "${again:-0 0 0 0 0 0}"
    cpu=$(tail -n 1 "$work/host/cpu.txt" | sed 's/[ms]/ /g' | awk '{ print 1000 * ($1 * 60 + $2 + $3 * 60 + $4) }')
    printf "| %s ms | ±%s ms | %s %% | %s | %s | %s | %s | %s | %s | %s | %s | %s ms | %s ms | %s ms | %s, %s | %s, %s, %s | %s, %s | %s ms |\n" "$trip" "$jitter" "$loss" "$delay" \
      "${mean:-$delay}" "$steps" "$(after "$out" "s (")" "$waited" \
      "$(awk -v w="${waited:-0}" -v s="${steps:-1}" 'BEGIN { printf "%.2f", 100 * w / s }')" \
      "$(rate "host to joiner" "$work/relay.txt")" "$(rate "joiner to host" "$work/relay.txt")" \
      "$(after "$work/partner/out.txt" "At the shared main menu ")" \
      "$(per_frame "$cpu" 0)" "$(per_frame "$cpu" "$(after "$out" "Bot CPU: ")")" \
      "$(awk -v a="$again_steps" -v f="$frames" 'BEGIN { printf "%.2f", ( f > 0 ? a / f : 0 ) }')" "$most" \
      "$jumps" "$(awk -v l="$jumped" -v j="$jumps" 'BEGIN { printf "%.1f", ( j > 0 ? l / j : 0 ) }')" "$longest" \
      "$(after "$out" "Felt delay: ")" "$(after "$out" "on average, ")" "$(after "$out" "Online game CPU: ")"
  done
done
