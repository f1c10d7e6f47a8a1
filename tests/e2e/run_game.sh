#!/usr/bin/env bash
# Runs the real game under Xvfb and checks what a player would see:
#   run_game.sh GAME SCENARIO RESOURCES ARTEFACTS
# sigterm:    answer the full-screen question with No, find the 640 x 480 window titled
#             "Project Kormaveth 2D", check that it is mapped, take a screenshot that must not be
#             one flat colour, check that the window found first is still the one mapped, send
#             SIGTERM and expect exit code 0 and an empty log.txt.
# quit-click: the same start, then click the main menu's quit entry and expect the same ending.
# A machine busy with other work can make the game slow to start or to end: every wait polls with
# a generous limit (WAIT seconds) instead of sleeping for a time that may be too short.
set -euo pipefail
game=$1 scenario=$2 resources=$3 artefacts=$4
if [ -z "${KMVT_INSIDE_XVFB:-}" ]; then
  export KMVT_INSIDE_XVFB=1
  exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
fi

mkdir -p "$artefacts"
WAIT=60
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
ln -s "$resources" "$work/resources"
fail() { echo "FAIL ($scenario): $*" >&2; [ -f "$work/log.txt" ] && { echo "log.txt:" >&2; cat "$work/log.txt" >&2; }; exit 1; }

cd "$work"
# In the sanitizer build the real game runs with every check but the leak check: SDL unloads the
# display's libraries at exit, which leaves their allocations nameless to the leak checker. The
# game's own leaks are checked by the headless tests.
export ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0"
SDL_AUDIODRIVER=dummy "$game" > "$work/stdout.txt" 2>&1 &
pid=$!

# Windows titled like the game, one "id width height" a line. SDL names its windows in UTF-8,
# which xdotool's name search does not read; xwininfo does. A window that vanishes while the tree
# is listed makes xwininfo fail: the windows listed so far stand, and the caller looks again.
titled_windows() {
  { xwininfo -root -tree 2>/dev/null || true; } | awk '/"Project Kormaveth 2D"/ { split($(NF-1), size, /[x+]/); print $1, size[1], size[2] }'
}

# The question comes first, in a small window of its own with the game's caption.
question=""
deadline=$((SECONDS + WAIT))
while [ $SECONDS -lt $deadline ]; do
  question=$(titled_windows | awk '$2 < 640 { print $1; exit }')
  [ -n "$question" ] && break
  kill -0 "$pid" 2>/dev/null || fail "the game ended before asking: $(cat "$work/stdout.txt")"
  sleep 0.1
done
[ -n "$question" ] || fail "the full-screen question never appeared"
# Escape answers No. A question not yet ready for keys misses it: while the question is still
# there a second later, it is answered again.
answer() {
  xdotool windowfocus "$question" 2>/dev/null || true
  xdotool key Escape
  answered=$SECONDS
}
answer

# Then the game's window: the one whose size is a whole multiple of 640 x 480, once it is mapped.
# The game shows its window only once the renderer is made, so the first one mapped is the one.
is_viewable() { xwininfo -id "$1" 2>/dev/null | grep -q "Map State: IsViewable"; }
window="" sized=""
deadline=$((SECONDS + WAIT))
while [ $SECONDS -lt $deadline ]; do
  while read -r id width height; do
    if [ $((width % 640)) -eq 0 ] && [ $((width / 640 * 480)) -eq "$height" ]; then
      sized=$id
      is_viewable "$id" && window=$id scale=$((width / 640))
    fi
  done < <(titled_windows)
  [ -n "$window" ] && break
  kill -0 "$pid" 2>/dev/null || fail "the game ended before its window appeared: $(cat "$work/stdout.txt")"
  if [ $SECONDS -gt $((answered + 1)) ] && xwininfo -id "$question" > /dev/null 2>&1; then
    answer
  fi
  sleep 0.1
done
[ -n "$sized" ] || fail "no window of 640 x 480 (or a whole multiple) titled Project Kormaveth 2D"
[ -n "$window" ] || fail "the window is not mapped"
shot="$artefacts/$scenario-main-menu.png"
# ImageMagick's own convert (the plain name may be shadowed by another tool); xwd grabs the window.
convert=$(command -v convert-im6.q16 || command -v convert)
# The main menu is a picture: a screen of one flat colour (black when nothing was drawn yet) is a
# fault once the game has had the whole wait to draw it.
spread=0
deadline=$((SECONDS + WAIT))
while [ $SECONDS -lt $deadline ]; do
  timeout 10 xwd -silent -id "$window" | timeout 10 "$convert" xwd:- "$shot" \
    || fail "no screenshot of the window could be taken"
  spread=$("$convert" "$shot" -format '%[fx:standard_deviation]' info:) || fail "the screenshot cannot be read"
  awk -v s="$spread" 'BEGIN { exit !(s > 0) }' && break
  sleep 0.2
done
awk -v s="$spread" 'BEGIN { exit !(s > 0) }' || fail "the screenshot of the main menu is one flat colour ($shot)"
# The window seen first is the one that stays: no other game-sized window came after it.
is_viewable "$window" || fail "the window $window found at start is no longer mapped"
others=$(titled_windows | awk -v w="$window" '$1 != w && $2 >= 640 { print $1 }')
[ -z "$others" ] || fail "another game window appeared beside $window: $others"

case "$scenario" in
  sigterm)
    kill -TERM "$pid" ;;
  quit-click)
    # Entry 5 of the main menu spans x 70-249, y 381-403 of the 640 x 480 screen.
    xdotool mousemove --window "$window" $((160 * scale)) $((392 * scale))
    sleep 0.2
    xdotool click 1 ;;
  *) fail "unknown scenario" ;;
esac

deadline=$((SECONDS + WAIT))
while [ $SECONDS -lt $deadline ]; do
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
if kill -0 "$pid" 2>/dev/null; then
  kill -KILL "$pid"
  fail "the game was still running $WAIT s after it was told to end"
fi
status=0
wait "$pid" || status=$?
[ "$status" -eq 0 ] || fail "exit code $status: $(cat "$work/stdout.txt")"
[ -f "$work/log.txt" ] || fail "log.txt was not created"
[ ! -s "$work/log.txt" ] || fail "log.txt is not empty"
echo "PASS ($scenario): window ${scale}x, exit code 0, empty log"
