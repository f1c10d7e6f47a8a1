#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Measures the processor time the real game takes under Xvfb with nobody at the keys: answered
# No, then left in the main menu, on the pause screen or in a game of one player standing still;
# prints the share of one core it used.
#   idle-menu-cpu.sh GAME RESOURCES [SECONDS] [menu|pause|play] [SCREEN] [window|fullscreen]
# SCREEN is the virtual display's size (1280x1024 by default); window or fullscreen is given to the
# game instead of answering its question; full screen runs under openbox, which gives it.
set -euo pipefail
game=$(realpath "$1") resources=$(realpath "$2") seconds=${3:-10} screen=${4:-menu}
display=${5:-1280x1024} mode=${6:-}
if [ -z "${KMVT_INSIDE_XVFB:-}" ]; then
  export KMVT_INSIDE_XVFB=1
  exec xvfb-run -a -s "-screen 0 ${display}x24" bash "$0" "$@"
fi
work=$(mktemp -d)
trap 'kill "$pid" 2>/dev/null || true; rm -rf "$work"' EXIT
ln -s "$resources" "$work/resources"
cd "$work"
if [ "$mode" = fullscreen ]; then
  openbox --sm-disable > /dev/null 2>&1 &
  for _ in $(seq 1 100); do
    xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q "window id" && break
    sleep 0.1
  done
fi
SDL_AUDIODRIVER=dummy "$game" ${mode:+--$mode} > "$work/stdout.txt" 2>&1 &
pid=$!
titled_windows() {
  { xwininfo -root -tree 2>/dev/null || true; } | awk '/"Project Kormaveth 2D"/ { split($(NF-1), s, /[x+]/); print $1, s[1], s[2] }'
}
# Answer the full-screen question with No.
if [ -z "$mode" ]; then
  for _ in $(seq 1 200); do
    question=$(titled_windows | awk '$2 < 640 { print $1; exit }')
    [ -n "$question" ] && break
    sleep 0.1
  done
  sleep 0.3
  xdotool windowfocus "$question" 2>/dev/null || true
  xdotool key Escape
fi
# The game's window, a whole multiple of 640 x 480 or the whole display, and where the 4:3 picture
# lies in it: from (left, top), scale window pixels to one of the picture's.
window=""
for _ in $(seq 1 600); do
  read -r window width height < <(titled_windows | awk -v d="$display" '$2 >= 640 && ($2 % 640 == 0 || $2 "x" $3 == d) { line = $0 } END { print line }')
  [ -n "$window" ] && xwininfo -id "$window" 2>/dev/null | grep -q IsViewable && break
  sleep 0.1
done
[ -n "$window" ] || { echo "the game's window never appeared" >&2; exit 1; }
sleep 2	# let the menu settle, and the window manager give full screen
read -r width height < <(xwininfo -id "$window" | awk '/Width:/ { w = $2 } /Height:/ { h = $2 } END { print w, h }')
read -r scale left top < <(awk -v w="$width" -v h="$height" 'BEGIN {
  s = w / 640 < h / 480 ? w / 640 : h / 480; printf "%s %d %d\n", s, (w - int(640 * s)) / 2, (h - int(480 * s)) / 2 }')
# Moves the pointer to a point of the 640 x 480 picture.
point_at() {
  xdotool mousemove --window "$window" "$(awk -v s="$scale" -v o="$left" -v x="$1" 'BEGIN { print int(o + x * s) }')" \
    "$(awk -v s="$scale" -v o="$top" -v y="$2" 'BEGIN { print int(o + y * s) }')"
}

# A busy machine can make the game miss an input sent too early: each one is sent again until the
# picture shows it was taken (it changed; for the pause, it stands still).
picture() { xwd -silent -id "$window" | md5sum; }
until_changed() {
  local before
  before=$(picture)
  for _ in $(seq 1 20); do
    "$@"
    for _ in $(seq 1 10); do
      sleep 0.1
      [ "$(picture)" != "$before" ] && return 0
    done
  done
  echo "the game did not answer: $*" >&2
  exit 1
}
until_still() {
  for _ in $(seq 1 20); do
    "$@"
    local first
    first=$(picture)
    sleep 0.5
    [ "$(picture)" = "$first" ] && return 0
  done
  echo "the game did not answer: $*" >&2
  exit 1
}
# The cursor goes to a menu entry's centre first (the entries span x 70-249; rows as in the menu
# pictures), so that only the click changes the picture.
click_entry() {
  local -a rows=(0 260 295 328 360 392)
  point_at 160 "${rows[$1]}"
  sleep 0.5
  until_changed xdotool click 1
}
case "$screen" in
  menu) ;;
  play|pause)
    click_entry 1		# one player
    click_entry 3		# tavesh: the game starts
    [ "$screen" = pause ] && until_still xdotool key --window "$window" Escape
    point_at 600 20 ;;		# the cursor at rest in a corner
  *) echo "unknown screen $screen" >&2; exit 1 ;;
esac
sleep 1

ticks_per_second=$(getconf CLK_TCK)
cpu_ticks() { awk '{ print $14 + $15 }' "/proc/$pid/stat"; }
kill -0 "$pid" 2>/dev/null || { echo "the game ended: $(cat "$work/stdout.txt" "$work/log.txt" 2>/dev/null)" >&2; exit 1; }
start=$(cpu_ticks)
# KMVT_BENCH_PERF names a file for a perf profile of the game over the measure, to see where the time goes.
if [ -n "${KMVT_BENCH_PERF:-}" ]; then
  perf record -q -g -o "$KMVT_BENCH_PERF" -p "$pid" -- sleep "$seconds" > /dev/null 2>&1
else
  sleep "$seconds"
fi
end=$(cpu_ticks)
# KMVT_BENCH_SHOT names a file for a picture of the screen at the end, to see what was measured.
[ -n "${KMVT_BENCH_SHOT:-}" ] && xwd -silent -root | convert xwd:- "$KMVT_BENCH_SHOT"
declare -A names=( [menu]="idle main menu" [pause]="idle pause screen" [play]="game in play" )
awk -v used="$((end - start))" -v hz="$ticks_per_second" -v s="$seconds" -v name="${names[$screen]}" \
  'BEGIN { printf "%s: %.1f %% of one core over %d s\n", name, 100 * used / hz / s, s }'
