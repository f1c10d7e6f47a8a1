#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Full screen and the window in the real game under Xvfb (1280 x 1024) with a window manager:
#   screen_game.sh GAME SCENARIO RESOURCES ARTEFACTS
# fullscreen, window: GAME --SCENARIO must open no question and a window of that shape at once:
#   full screen 1280 x 1024 with the 4:3 picture between black bars, or the 640 x 480 window.
#   Alt+Enter switches to the other shape and back, and the pointer keeps its place on the game's
#   screen each time; a click on the main menu's quit entry then ends the game (exit code 0, empty log).
# question-sigterm, question-sigint: the signal while the start-up question is shown ends the game:
#   exit code 0, an empty log.txt, and no window left, the question's included.
set -euo pipefail
game=$1 scenario=$2 resources=$3 artefacts=$4
source "$(dirname "$0")/game_window.sh"
run_under_xvfb "$0" "$@"

fail() { echo "FAIL ($scenario): $*" >&2; [ -s "$work/log.txt" ] && { echo "log.txt:" >&2; cat "$work/log.txt" >&2; }; exit 1; }
enter_work_folder "$resources" "$artefacts"
start_window_manager

# Waits for the game's window mapped at WIDTH x HEIGHT; sets window.
wait_for_shape() {
  local width=$1 height=$2 deadline=$((SECONDS + E2E_WAIT)) id w h
  while [ $SECONDS -lt $deadline ]; do
    kill -0 "$pid" 2>/dev/null || fail "the game ended: $(cat "$work/out.txt")"
    while read -r id w h; do
      if [ "$w" -eq "$width" ] && [ "$h" -eq "$height" ] && is_viewable "$id"; then
        window=$id
        return 0
      fi
    done < <(titled_windows)
    sleep 0.1
  done
  fail "no $width x $height game window within $E2E_WAIT s; there are: $(titled_windows | tr '\n' ';')"
}

# Where the 640 x 480 picture lies in the window, as the game places it: "x y scale" (scale in
# hundredths, the largest that fits).
picture_rect() {
  xwininfo -id "$window" | awk '/Width:/ { w = $2 } /Height:/ { h = $2 }
    END { s = w / 640 < h / 480 ? w / 640 : h / 480; printf "%d %d %d\n", (w - int(640 * s)) / 2, (h - int(480 * s)) / 2, s * 100 }'
}

# Points at (X, Y) of the game's screen.
point_at() {
  local x0 y0 scale
  read -r x0 y0 scale < <(picture_rect)
  xdotool mousemove --window "$window" $((x0 + $1 * scale / 100)) $((y0 + $2 * scale / 100))
}

# Waits until the pointer is at (X, Y) of the game's screen, give or take a pixel of the window.
expect_pointer_at() {
  local deadline=$((SECONDS + E2E_WAIT)) x0 y0 scale left top X Y gx gy
  while [ $SECONDS -lt $deadline ]; do
    read -r x0 y0 scale < <(picture_rect)
    read -r left top < <(xwininfo -id "$window" | awk '/Absolute upper-left X/ { x = $4 } /Absolute upper-left Y/ { print x, $4 }')
    eval "$(xdotool getmouselocation --shell)"
    gx=$(( (X - left - x0) * 100 / scale )) gy=$(( (Y - top - y0) * 100 / scale ))
    [ $((gx - $1)) -ge -1 ] && [ $((gx - $1)) -le 1 ] && [ $((gy - $2)) -ge -1 ] && [ $((gy - $2)) -le 1 ] && return 0
    sleep 0.1
  done
  fail "the pointer is at ($gx, $gy) of the game's screen after the switch, not at ($1, $2)"
}

# Alt+Enter to the game's window.
switch() {
  xdotool windowfocus "$window" 2>/dev/null || true
  sleep 0.3
  xdotool key --window "$window" alt+Return 2>/dev/null || xdotool key alt+Return
}

# The picture between black bars, nothing drawn on them: the full screen's top and bottom 32 rows.
# Screenshots are taken until the picture is drawn (not one flat colour) with the bars black.
expect_bars() {
  local shot=$artefacts/$scenario-full-screen.png deadline=$((SECONDS + E2E_WAIT)) spread bars
  while [ $SECONDS -lt $deadline ]; do
    timeout 10 xwd -silent -id "$window" | timeout 10 "$E2E_CONVERT" xwd:- "$shot" || fail "no screenshot of the window"
    spread=$("$E2E_CONVERT" "$shot" -crop 1280x960+0+32 -format '%[fx:standard_deviation]' info:)
    bars=$("$E2E_CONVERT" "$shot" -crop 1280x32+0+0 -format '%[max]' info:)+$("$E2E_CONVERT" "$shot" -crop 1280x32+0+992 -format '%[max]' info:)
    awk -v s="$spread" 'BEGIN { exit !(s > 0) }' && [ "$bars" = 0+0 ] && return 0
    sleep 0.2
  done
  fail "no picture between black bars after $E2E_WAIT s (spread $spread, bars' brightest $bars; $shot)"
}

# Full screen: the picture between black bars; a window: a picture.
expect_shape_drawn() {
  if [ "$1" = "1280 1024" ]; then
    expect_bars
  else
    expect_picture "$artefacts/$scenario-window.png"
  fi
}

case "$scenario" in
  question-sigterm|question-sigint)
    "$game" > "$work/out.txt" 2>&1 &
    pid=$!
    deadline=$((SECONDS + E2E_WAIT))
    until titled_windows | awk '$2 < 640 { found = 1 } END { exit !found }'; do
      kill -0 "$pid" 2>/dev/null || fail "the game ended before it asked: $(cat "$work/out.txt")"
      [ $SECONDS -lt $deadline ] || fail "no question within $E2E_WAIT s"
      sleep 0.1
    done
    sleep 0.5
    signal=${scenario#question-sig}
    kill -s "${signal^^}" "$pid"
    expect_clean_exit
    sleep 0.5
    [ -z "$(titled_windows)" ] || fail "windows are left: $(titled_windows | tr '\n' ';')"
    [ -f "$work/log.txt" ] && [ ! -s "$work/log.txt" ] || fail "log.txt is missing or not empty"
    echo "PASS ($scenario): the question ended with the game, exit code 0, empty log" ;;
  fullscreen|window)
    "$game" "--$scenario" > "$work/out.txt" 2>&1 &
    pid=$!
    shapes=("1280 1024" "640 480")
    [ "$scenario" = fullscreen ] || shapes=("640 480" "1280 1024")
    wait_for_shape ${shapes[0]}
    titled_windows | awk '$2 < 640 { exit 1 }' || fail "the question was asked"
    expect_shape_drawn "${shapes[0]}"
    # There (the pointer at (200, 150) of the game's screen) and back (at (300, 100)).
    for there in "1 200 150" "0 300 100"; do
      read -r shape x y <<< "$there"
      point_at "$x" "$y"
      sleep 0.3
      switch
      wait_for_shape ${shapes[$shape]}
      expect_pointer_at "$x" "$y"
      expect_shape_drawn "${shapes[$shape]}"
    done
    point_at 160 392		# the quit entry, 70-249 x 381-403
    sleep 0.3
    xdotool click 1
    expect_clean_exit
    [ ! -s "$work/log.txt" ] || fail "log.txt is not empty"
    echo "PASS ($scenario): no question, Alt+Enter there and back, the pointer kept its place, exit code 0" ;;
  *) fail "unknown scenario" ;;
esac
