#!/usr/bin/env bash
# Starts an installed game the way a desktop menu does and checks what a player would find:
#   run_installed.sh GAME ARTEFACTS
# GAME is the installed executable (under a DESTDIR, or /usr/games/kormaveth2d of the package).
# The game runs under Xvfb from an empty working folder, with HOME an empty folder and neither
# KMVT_DATA nor XDG_STATE_HOME set. Answer the full-screen question with No, take a screenshot of
# the main menu that must not be one flat colour, end the game with SIGTERM (exit code 0), and
# expect no file in the working folder and an empty log at ~/.local/state/kormaveth2d/log.txt.
set -euo pipefail
game=$1 artefacts=$2
if [ -z "${KMVT_INSIDE_XVFB:-}" ]; then
  export KMVT_INSIDE_XVFB=1
  exec xvfb-run -a -s "-screen 0 1280x1024x24" bash "$0" "$@"
fi

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
env -u KMVT_DATA -u XDG_STATE_HOME HOME="$home" SDL_AUDIODRIVER=dummy "$game" > "$scratch/output.txt" 2>&1 &
pid=$!

# Windows titled like the game, one "id width height" a line (xwininfo reads SDL's UTF-8 names).
titled_windows() {
  xwininfo -root -tree | awk '/"Project Kormaveth 2D"/ { split($(NF-1), size, /[x+]/); print $1, size[1], size[2] }'
}
# Waits up to 10 s for a window that the awk condition picks; prints its id.
wait_for_window() {
  local id
  for _ in $(seq 1 100); do
    id=$(titled_windows | awk "$1 { print \$1; exit }")
    if [ -n "$id" ] && xwininfo -id "$id" 2>/dev/null | grep -q "Map State: IsViewable"; then
      echo "$id"
      return 0
    fi
    kill -0 "$pid" 2>/dev/null || return 1
    sleep 0.1
  done
  return 1
}

# The full-screen question comes first. Where SDL cannot show it (an X server without fonts), the
# game goes on windowed at once.
first=$(wait_for_window '1') || fail "no window appeared: $(cat "$scratch/output.txt")"
if [ "$(titled_windows | awk -v id="$first" '$1 == id { print $2 }')" -lt 640 ]; then
  sleep 0.3
  xdotool windowfocus "$first" 2>/dev/null || true
  xdotool key Escape
fi
window=$(wait_for_window '$2 % 640 == 0 && $2 / 640 * 480 == $3') \
  || fail "no mapped game window of 640 x 480 or a whole multiple: $(cat "$scratch/output.txt")"
sleep 1
shot="$artefacts/installed-main-menu.png"
convert=$(command -v convert-im6.q16 || command -v convert)
timeout 10 xwd -silent -id "$window" | timeout 10 "$convert" xwd:- "$shot" || fail "no screenshot of the window"
spread=$("$convert" "$shot" -format '%[fx:standard_deviation]' info:) || fail "the screenshot cannot be read"
awk -v s="$spread" 'BEGIN { exit !(s > 0) }' || fail "the main menu is one flat colour: the data was not found ($shot)"

kill -TERM "$pid"
for _ in $(seq 1 50); do
  kill -0 "$pid" 2>/dev/null || break
  sleep 0.1
done
if kill -0 "$pid" 2>/dev/null; then
  kill -KILL "$pid"
  fail "the game was still running 5 s after SIGTERM"
fi
status=0
wait "$pid" || status=$?
[ "$status" -eq 0 ] || fail "exit code $status: $(cat "$scratch/output.txt")"
[ -z "$(ls -A "$work")" ] || fail "the game wrote into its working folder: $(ls -A "$work")"
[ -f "$state_log" ] || fail "no log in the state folder ($state_log)"
[ ! -s "$state_log" ] || fail "the log is not empty"
echo "PASS (installed game): main menu drawn, nothing written in the working folder, empty log in ~/.local/state"
