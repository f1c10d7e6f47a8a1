#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Starts an installed game the way a desktop menu does and checks what a player would find:
#   run_installed.sh GAME ARTEFACTS
# GAME is the installed executable (under a DESTDIR, or /usr/games/kormaveth2d of the package).
# The game runs under Xvfb from an empty working folder, with HOME an empty folder and neither
# KMVT_DATA nor XDG_STATE_HOME set. Answer the full-screen question with No, take a screenshot of
# the main menu that must not be one flat colour, end the game with SIGTERM (exit code 0), and
# expect no file in the working folder and an empty log at ~/.local/state/kormaveth2d/log.txt.
set -euo pipefail
game=$1 artefacts=$2
source "$(dirname "$0")/../e2e/game_window.sh"
run_under_xvfb "$0" "$@"

mkdir -p "$artefacts"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
work=$scratch/work home=$scratch/home
mkdir "$work" "$home"
state_log=$home/.local/state/kormaveth2d/log.txt
fail() {
  echo "FAIL (installed game): $*" >&2
  [ -f "$state_log" ] && { echo "$state_log:" >&2; cat "$state_log" >&2; }
  exit 1
}

cd "$work"
# As in the other end-to-end runs: every sanitizer check but the leak check, which SDL's display
# libraries defeat at exit.
export ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0"

start_game "$scratch/output.txt" env -u KMVT_DATA -u XDG_STATE_HOME HOME="$home" SDL_AUDIODRIVER=dummy "$game"
expect_picture "$artefacts/installed-main-menu.png"

kill -TERM "$pid"
expect_clean_exit
[ -z "$(ls -A "$work")" ] || fail "the game wrote into its working folder: $(ls -A "$work")"
[ -f "$state_log" ] || fail "no log in the state folder ($state_log)"
[ ! -s "$state_log" ] || fail "the log is not empty"
echo "PASS (installed game): main menu drawn, nothing written in the working folder, empty log in ~/.local/state"
