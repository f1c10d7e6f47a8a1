#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs the real game under Xvfb and checks what a player would see:
#   run_game.sh GAME SCENARIO RESOURCES ARTEFACTS
# sigterm:    answer the full-screen question with No, find the 640 x 480 window titled
#             "Project Kormaveth 2D", check that it is mapped, take a screenshot that must not be
#             one flat colour, check that the window found first is still the one mapped, send
#             SIGTERM and expect exit code 0 and an empty log.txt.
# quit-click: the same start, then click the main menu's quit entry and expect the same ending.
# close:      the same start, then close the window as a window manager's close button does.
set -euo pipefail
game=$1 scenario=$2 resources=$3 artefacts=$4
source "$(dirname "$0")/game_window.sh"
run_under_xvfb "$0" "$@"

fail() { echo "FAIL ($scenario): $*" >&2; [ -f "$work/log.txt" ] && { echo "log.txt:" >&2; cat "$work/log.txt" >&2; }; exit 1; }
enter_work_folder "$resources" "$artefacts"
start_game "$work/stdout.txt" "$game"
first=$window
expect_picture "$artefacts/$scenario-main-menu.png"
# The window seen first is the one that stays: no other game-sized window came after it.
is_viewable "$first" || fail "the window $first found at start is no longer mapped"
others=$(titled_windows | awk -v w="$first" '$1 != w && $2 >= 640 { print $1 }')
[ -z "$others" ] || fail "another game window appeared beside $first: $others"

case "$scenario" in
  sigterm)
    kill -TERM "$pid" ;;
  quit-click)
    # Entry 5 of the main menu spans x 70-249, y 381-403 of the 640 x 480 screen.
    xdotool mousemove --window "$window" $((160 * scale)) $((392 * scale))
    sleep 0.2
    xdotool click 1 ;;
  close)
    close_window "$window" ;;
  *) fail "unknown scenario" ;;
esac
expect_clean_exit
[ -f "$work/log.txt" ] || fail "log.txt was not created"
[ ! -s "$work/log.txt" ] || fail "log.txt is not empty"
echo "PASS ($scenario): window ${scale}x, exit code 0, empty log"
