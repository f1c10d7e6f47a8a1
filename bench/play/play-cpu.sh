#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The share of one core a game in play takes under Xvfb, side by side in one run: this game (a game
# of one player nobody plays, on the renderer SDL picks by default) and Chocolate Doom playing its
# demo loop in a window of the same size, each alone on the machine in turn, at three sizes:
#   1x    a 1920 x 1080 display: the game's window is 640 x 480
#   2x    a 2560 x 1440 display: the game's window is 1280 x 960
#   full  full screen on a 1920 x 1080 display (under openbox): the 4:3 picture is 1440 x 1080
#   play-cpu.sh GAME RESOURCES [SECONDS] [ROUNDS] [SIZES]
# GAME may be a list of builds separated by colons (for example the game before and after a
# change), each measured in every round; ROUNDS (1 by default) repeats the whole, taken in turns;
# SIZES (all three by default) is a list such as "1x full".
# Chocolate Doom is Debian's: apt-get install chocolate-doom freedoom. Without it only the game
# is measured.
set -euo pipefail
here=$(dirname "$(realpath "$0")")
games=$1 resources=$2 seconds=${3:-15} rounds=${4:-1} sizes=${5:-1x 2x full}
doom=$(command -v chocolate-doom || echo /usr/games/chocolate-doom)
iwad=/usr/share/games/doom/freedoom2.wad
declare -A displays=( [1x]=1920x1080 [2x]=2560x1440 [full]=1920x1080 )
declare -A modes=( [1x]=window [2x]=window [full]=fullscreen )
declare -A doom_windows=( [1x]="-window -geometry 640x480" [2x]="-window -geometry 1280x960" [full]="-fullscreen" )

# Chocolate Doom on a display of its own, both audio and music through SDL's silent driver as the
# game's are; its settings go to a folder thrown away afterwards.
doom_cpu() {
  local size=$1
  xvfb-run -a -s "-screen 0 ${displays[$size]}x24" bash -c '
    set -euo pipefail
    doom=$1 iwad=$2 seconds=$3 size=$4 shape=$5
    work=$(mktemp -d)
    [ "$size" = full ] && { openbox --sm-disable > /dev/null 2>&1 & sleep 2; }
    SDL_AUDIODRIVER=dummy HOME="$work" "$doom" -iwad "$iwad" $shape \
      -config "$work/default.cfg" -extraconfig "$work/extra.cfg" > "$work/out.txt" 2>&1 &
    pid=$!
    trap "kill $pid 2>/dev/null || true; rm -rf $work" EXIT
    sleep 13	# the title picture stays 11 s; then the first demo plays, for more than 15 s
    kill -0 "$pid" 2>/dev/null || { echo "Chocolate Doom ended: $(cat "$work/out.txt")" >&2; exit 1; }
    ticks() { awk "{ print \$14 + \$15 }" "/proc/$pid/stat"; }
    start=$(ticks)
    sleep "$seconds"
    end=$(ticks)
    awk -v used="$((end - start))" -v hz="$(getconf CLK_TCK)" -v s="$seconds" -v size="$size" \
      "BEGIN { printf \"Chocolate Doom demo loop, %s: %.1f %% of one core over %d s\n\", size, 100 * used / hz / s, s }"
  ' bash "$doom" "$iwad" "$seconds" "$size" "${doom_windows[$size]}"
}

for round in $(seq 1 "$rounds"); do
  for size in $sizes; do
    IFS=: read -ra builds <<< "$games"
    for game in "${builds[@]}"; do
      echo -n "$game, $size: "
      "$here/../idle/idle-menu-cpu.sh" "$game" "$resources" "$seconds" play "${displays[$size]}" "${modes[$size]}"
    done
    if [ -x "$doom" ] && [ -f "$iwad" ]; then
      doom_cpu "$size"
    elif [ "$round" = 1 ]; then
      echo "Chocolate Doom or Freedoom missing (apt-get install chocolate-doom freedoom): not measured" >&2
    fi
  done
done
