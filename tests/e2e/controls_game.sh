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
#         say "fr" where they said "us" (setxkbmap's changes do not reach Xvfb's keyboard); the
#         scenario "shot" takes each display's pictures.
set -euo pipefail
game=$1 scenario=$2 resources=$3 artefacts=$4
self=$(cd "$(dirname "$0")" && pwd)/$(basename "$0")
source "$(dirname "$0")/game_window.sh"
run_under_xvfb "$0" "$@"

enter_work_folder "$resources" "$artefacts"
fail() {
  echo "FAIL (controls $scenario): $*" >&2
  for f in game.txt verify.txt log.txt; do [ -s "$work/$f" ] && { echo "$f:" >&2; cat "$work/$f" >&2; }; done
  cp -f "$work"/*.png "$work"/*.kmr "$artefacts/" 2>/dev/null || true
  exit 1
}
mkdir -p "$XDG_CONFIG_HOME/kormaveth2d"
command -v openbox > /dev/null && start_window_manager

# The window manager gives the window the focus; a click the game reads soon after the focus came
# would be the desktop's, not the game's: the pointer comes in, and the clicks wait a while.
bring_pointer() {
  xdotool mousemove --window "$window" 10 10
  xdotool windowfocus "$window" 2>/dev/null || true
  sleep 1
}

# crop SHOT WIDTH HEIGHT LEFT TOP OUT: a rectangle of the 640 x 480 screen out of a screenshot.
crop() {
  "$E2E_CONVERT" "$1" -crop "$(($2 * scale))x$(($3 * scale))+$(($4 * scale))+$(($5 * scale))" +repage "$6"
}
same() { [ "$(compare -metric AE "$1" "$2" null: 2>&1 || true)" = 0 ]; }

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
    bring_pointer
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
  shot)
    # shot LAYOUT FOLDER: the cells of player 1's and player 2's up and left, on this display.
    layout=$5 into=$6
    printf '[keys]\nplayer2.up = Z\nplayer2.left = Q\n' > "$XDG_CONFIG_HOME/kormaveth2d/settings.ini"
    xkbcomp "$DISPLAY" - 2>/dev/null | grep -A2 "key <AD01>" | grep -q "\b$([ "$layout" = fr ] && echo a || echo q)," \
      || fail "the display's keyboard is not $layout"
    start_game "$work/game.txt" "$game" --window
    bring_pointer
    click 160 328		# settings
    click 160 360		# controls
    xdotool mousemove --window "$window" 10 10
    # The controls screen is up once the entry Defaults shows as the picture has it.
    "$E2E_CONVERT" resources/menu/controls.png -crop 180x25+70+317 +repage -sample "$((scale * 100))%" "$work/defaults.png"
    deadline=$((SECONDS + E2E_WAIT))
    until expect_picture "$work/$layout.png" && crop "$work/$layout.png" 180 25 70 317 "$work/shown.png" \
          && same "$work/shown.png" "$work/defaults.png"; do
      [ $SECONDS -lt $deadline ] || fail "the controls screen did not show within $E2E_WAIT s"
      sleep 0.2
    done
    # the cells of up (row 0) and left (row 2)
    for cell in "1up 392 274" "1left 392 318" "2up 508 274" "2left 508 318"; do
      read -r name x y <<< "$cell"
      crop "$work/$layout.png" 106 20 "$x" "$y" "$into/$layout-$name.png" || fail "cannot cut the cell $name"
    done
    end_game
    ;;
  layout)
    # A second virtual display whose keyboard files say "fr" where they said "us".
    cp -r /usr/share/X11/xkb "$work/xkb"
    cp "$work/xkb/symbols/fr" "$work/xkb/symbols/us"
    bash "$(dirname "$self")/../virtual_display.sh" "-screen 0 1280x1024x24 -xkbdir $work/xkb" bash "$self" "$game" shot "$resources" "$artefacts" fr "$work" \
      || fail "the French display's screenshot failed"
    bash "$self" "$game" shot "$resources" "$artefacts" us "$work" || fail "the US display's screenshot failed"
    same "$work/fr-1up.png" "$work/us-2up.png" || fail "under fr player 1's up is not named as the key Z"
    same "$work/fr-1left.png" "$work/us-2left.png" || fail "under fr player 1's left is not named as the key Q"
    ! same "$work/fr-1up.png" "$work/us-1up.png" || fail "player 1's up has the same name under fr and us"
    ;;
  *) fail "unknown scenario" ;;
esac
echo "PASS (controls $scenario)"
