#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The Linux build's main menu as a picture: the game in a 640 x 480 window under Xvfb, with its
# default settings, the pointer at (X, Y) of the game's screen, the window's pixels written to OUT.
# Each CLICK (X,Y) comes first, once the picture holds still: the picture of the screen it leads to.
#   linux-menu.sh GAME X Y OUT [CLICK...]
set -euo pipefail
game=$1 x=$2 y=$3 out=$4
if [ -z "${KMVT_IN_XVFB:-}" ]; then
  KMVT_IN_XVFB=1 exec bash "$(dirname "$0")/../virtual_display.sh" "-screen 0 1024x768x24" "$0" "$@"
fi
shift 4
work=$(mktemp -d)
trap 'kill "$pid" 2> /dev/null || true; rm -rf "$work"' EXIT
cd "$work"
XDG_STATE_HOME=$work XDG_CONFIG_HOME=$work SDL_AUDIODRIVER=dummy "$game" --window > "$work/out.txt" 2>&1 &
pid=$!
window=$(timeout 60 xdotool search --sync --onlyvisible --name "Project Kormaveth 2D" | head -1)
# still: the picture once it holds still: two looks a second apart agree.
still() {
  import -window "$window" "$work/before.png"
  for _ in $(seq 60); do
    sleep 1
    import -window "$window" "$out"
    [ "$(compare -metric AE "$work/before.png" "$out" null: 2>&1)" != 0 ] || return 0
    mv "$out" "$work/before.png"
  done
  echo "The Linux build's picture did not hold still" >&2
  exit 1
}
# The game places the pointer itself as it starts: the test's place comes after.
still
for click in "$@"; do
  xdotool mousemove --window "$window" "${click%,*}" "${click#*,}" click 1
  still
done
xdotool mousemove --window "$window" "$x" "$y"
still
