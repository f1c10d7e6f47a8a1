#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The share of one core a game in play takes under Xvfb (1280 x 1024), side by side in one run:
# this game (a game of one player nobody plays, on the renderer SDL picks by default) and
# Chocolate Doom playing its demo loop in a 640 x 480 window, each alone on the machine in turn.
#   play-cpu.sh GAME RESOURCES [SECONDS] [ROUNDS]
# GAME may be a list of builds separated by colons (for example the game before and after a
# change), each measured in every round; ROUNDS (1 by default) repeats the whole, taken in turns.
# Chocolate Doom is Debian's: apt-get install chocolate-doom freedoom. Without it only the game
# is measured.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
games=$1 resources=$2 seconds=${3:-15} rounds=${4:-1}
doom=$(command -v chocolate-doom || echo /usr/games/chocolate-doom)
iwad=/usr/share/games/doom/freedoom2.wad

# Chocolate Doom in a window of its own, both audio and music through SDL's silent driver as the
# game's are; its settings go to a folder thrown away afterwards.
doom_cpu() {
  xvfb-run -a -s "-screen 0 1280x1024x24" bash -c '
    set -euo pipefail
    doom=$1 iwad=$2 seconds=$3
    work=$(mktemp -d)
    SDL_AUDIODRIVER=dummy HOME="$work" "$doom" -iwad "$iwad" -geometry 640x480 \
      -config "$work/default.cfg" -extraconfig "$work/extra.cfg" > "$work/out.txt" 2>&1 &
    pid=$!
    trap "kill $pid 2>/dev/null || true; rm -rf $work" EXIT
    sleep 13	# the title picture stays 11 s; then the first demo plays, for more than 15 s
    kill -0 "$pid" 2>/dev/null || { echo "Chocolate Doom ended: $(cat "$work/out.txt")" >&2; exit 1; }
    ticks() { awk "{ print \$14 + \$15 }" "/proc/$pid/stat"; }
    start=$(ticks)
    sleep "$seconds"
    end=$(ticks)
    awk -v used="$((end - start))" -v hz="$(getconf CLK_TCK)" -v s="$seconds" \
      "BEGIN { printf \"Chocolate Doom demo loop, 640x480 window: %.1f %% of one core over %d s\n\", 100 * used / hz / s, s }"
  ' bash "$doom" "$iwad" "$seconds"
}

for round in $(seq 1 "$rounds"); do
  IFS=: read -ra builds <<< "$games"
  for game in "${builds[@]}"; do
    echo -n "$game: "
    "$here/../idle/idle-menu-cpu.sh" "$game" "$resources" "$seconds" play
  done
  if [ -x "$doom" ] && [ -f "$iwad" ]; then
    doom_cpu
  elif [ "$round" = 1 ]; then
    echo "Chocolate Doom or Freedoom missing (apt-get install chocolate-doom freedoom): not measured" >&2
  fi
done
