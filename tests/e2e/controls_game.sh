#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The keys a player chose, in the real window under Xvfb:
#   controls_game.sh GAME SCENARIO RESOURCES ARTEFACTS
# remap:  settings.ini (in $XDG_CONFIG_HOME/kormaveth2d/) gives player 2's fire to L. A two-player
#         game is recorded while xdotool presses L; the recording must hold player 2's fire (the
#         keypad 1 code the game reads for it) held, and never L itself, and must verify.
# layout: on a display whose keyboard is French, the controls screen must name player 1's up and
#         left keys Z and Q: the pictures of those two cells must be those of the cells of the keys
#         at the places of Z and Q (given to player 2 by the settings file) on a US display, and
#         not the US display's W and A. The French display is a second Xvfb whose keyboard files
#         say "fr" where they said "us" (setxkbmap's changes do not reach Xvfb's keyboard).
set -euo pipefail
game=$1 scenario=$2 resources=$3 artefacts=$4
source "$(dirname "$0")/game_window.sh"
run_under_xvfb "$0" "$@"

enter_work_folder "$resources" "$artefacts"
fail() {
  echo "FAIL (controls $scenario): $*" >&2
  for f in game.txt verify.txt log.txt; do [ -s "$work/$f" ] && { echo "$f:" >&2; cat "$work/$f" >&2; }; done
  cp -f "$work"/*.png "$work"/*.kmr "$artefacts/" 2>/dev/null || true
  exit 1
}
export XDG_CONFIG_HOME="$work/config"
mkdir -p "$XDG_CONFIG_HOME/kormaveth2d"

click() {
  xdotool mousemove --window "$window" $(($1 * scale)) $(($2 * scale))
  sleep 0.2
  xdotool click 1
  sleep 0.5
}

end_game() {
  kill -TERM "$pid"
  expect_clean_exit
}

# The key codes a recording's keyboard polls ever held, one a line in decimal (docs/replays.md).
held_keys() {
  python3 - "$1" <<'PY'
import sys
data = open(sys.argv[1], "rb").read()
pos = 4
def varint():
    global pos
    value, shift = 0, 0
    while True:
        byte = data[pos]; pos += 1
        value |= (byte & 0x7F) << shift; shift += 7
        if byte < 0x80:
            return value
varint()                                   # format version
length = varint()
pos += length                              # game version
pos += 1                                   # sound opened
varint()                                   # steps
length = varint()
end = pos + length
held = set()
while pos < end:
    tag = data[pos]; pos += 1
    kind, arg = tag & 7, tag >> 3
    if arg >= 31:
        arg = 31 + varint()
    if kind == 4:
        for _ in range(arg):
            key, value = data[pos], data[pos + 1]; pos += 2
            if value & 0x80:
                held.add(key)
    elif kind == 5:
        if arg & 1: varint(); varint()
        if arg & 2: varint()
        if arg & 4: pos += 1; varint(); varint()
        if arg & 8: pos += 4
for key in sorted(held):
    print(key)
PY
}

case "$scenario" in
  remap)
    printf '[keys]\nplayer2.fire = L\n' > "$XDG_CONFIG_HOME/kormaveth2d/settings.ini"
    start_game "$work/game.txt" "$game" --window --record "$work/game.kmr"
    sleep 0.5
    xdotool windowfocus "$window" 2>/dev/null || true
    click 160 295		# two players
    click 160 328		# tavesh and lumra
    for _ in 1 2 3 4 5 6; do xdotool keydown l; sleep 0.3; xdotool keyup l; sleep 0.1; done
    end_game
    [ -f "$work/game.kmr" ] || fail "no recording was written"
    keys=$(held_keys "$work/game.kmr") || fail "the recording cannot be read"
    grep -qx 79 <<< "$keys" || fail "player 2's fire (keypad 1, 79) was never held; keys held: $(echo $keys)"
    ! grep -qx 38 <<< "$keys" || fail "the recording holds L (38) itself, not the action"
    "$game" --replay "$work/game.kmr" --verify > "$work/verify.txt" 2>&1 || fail "the recording does not verify"
    ;;
  layout)
    printf '[keys]\nplayer2.up = Z\nplayer2.left = Q\n' > "$XDG_CONFIG_HOME/kormaveth2d/settings.ini"
    cp -r /usr/share/X11/xkb "$work/xkb"
    cp "$work/xkb/symbols/fr" "$work/xkb/symbols/us"
    us_display=$DISPLAY
    Xvfb -displayfd 3 -screen 0 1280x1024x24 -xkbdir "$work/xkb" 3> "$work/display" > /dev/null 2>&1 &
    french=$!
    trap 'kill "$french" 2>/dev/null; rm -rf "$work"' EXIT
    deadline=$((SECONDS + E2E_WAIT))
    until [ -s "$work/display" ]; do
      [ $SECONDS -lt $deadline ] || fail "the French display did not start"
      sleep 0.1
    done
    # The cells' pictures, by layout: player 1's up and left, then player 2's.
    for layout in fr us; do
      if [ "$layout" = fr ]; then export DISPLAY=":$(cat "$work/display")"; else export DISPLAY=$us_display; fi
      xkbcomp "$DISPLAY" - 2>/dev/null | grep -A2 "key <AD01>" | grep -q "\b$([ "$layout" = fr ] && echo a || echo q)," \
        || fail "the $layout display's keyboard is not $layout"
      start_game "$work/game.txt" "$game" --window
      sleep 0.5
      xdotool windowfocus "$window" 2>/dev/null || true
      click 160 328		# settings
      click 160 360		# controls
      xdotool mousemove --window "$window" 10 10
      sleep 0.5
      expect_picture "$work/$layout.png"
      # the cells of up (row 0) and left (row 2): x 392 and 508, y 274 + 22 row, 106 x 20
      for cell in "1up 392 274" "1left 392 318" "2up 508 274" "2left 508 318"; do
        read -r name x y <<< "$cell"
        "$E2E_CONVERT" "$work/$layout.png" -crop "$((106 * scale))x$((20 * scale))+$((x * scale))+$((y * scale))" +repage \
          "$work/$layout-$name.png" || fail "cannot cut the cell $name"
      done
      end_game
    done
    same() { [ "$(compare -metric AE "$1" "$2" null: 2>&1 || true)" = 0 ]; }
    same "$work/fr-1up.png" "$work/us-2up.png" || fail "under fr player 1's up is not named as the key Z"
    same "$work/fr-1left.png" "$work/us-2left.png" || fail "under fr player 1's left is not named as the key Q"
    ! same "$work/fr-1up.png" "$work/us-1up.png" || fail "player 1's up has the same name under fr and us"
    ;;
  *) fail "unknown scenario" ;;
esac
echo "PASS (controls $scenario)"
