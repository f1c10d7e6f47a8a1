#!/usr/bin/env bash
# Measures the processor time the game takes while it sits in the main menu: the real game under
# Xvfb, answered No, left alone for a while; prints the share of one core it used.
#   idle-menu-cpu.sh GAME RESOURCES [SECONDS]
set -euo pipefail
game=$(realpath "$1") resources=$(realpath "$2") seconds=${3:-10}
if [ -z "${KMVT_INSIDE_XVFB:-}" ]; then
  export KMVT_INSIDE_XVFB=1
  exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
fi
work=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null || true; rm -rf "$work"' EXIT
ln -s "$resources" "$work/resources"
cd "$work"
SDL_AUDIODRIVER=dummy "$game" > "$work/stdout.txt" 2>&1 &
pid=$!
# Answer the full-screen question with No.
for _ in $(seq 1 200); do
  question=$(xwininfo -root -tree | awk '/"Project Kormaveth 2D"/ { split($(NF-1), s, /[x+]/); if (s[1] < 640) { print $1; exit } }')
  [ -n "$question" ] && break
  sleep 0.1
done
sleep 0.3
xdotool windowfocus "$question" 2>/dev/null || true
xdotool key Escape
sleep 2	# let the window open and the menu settle

ticks_per_second=$(getconf CLK_TCK)
cpu_ticks() { awk '{ print $14 + $15 }' "/proc/$pid/stat"; }
kill -0 "$pid" 2>/dev/null || { echo "the game ended: $(cat "$work/stdout.txt" "$work/log.txt" 2>/dev/null)" >&2; exit 1; }
start=$(cpu_ticks)
sleep "$seconds"
end=$(cpu_ticks)
awk -v used="$((end - start))" -v hz="$ticks_per_second" -v s="$seconds" \
  'BEGIN { printf "idle main menu: %.1f %% of one core over %d s\n", 100 * used / hz / s, s }'
