# SPDX-License-Identifier: GPL-3.0-or-later
# The game's window under Xvfb, for the end-to-end scripts (sourced; the caller defines fail).
# A machine busy with other work can make the game slow to start, to draw or to end: every wait
# polls with a generous limit (E2E_WAIT seconds) instead of sleeping for a time that may be too short.

E2E_WAIT=${E2E_WAIT:-60}

# Runs the calling script again under a virtual X display of its own, unless it already is.
run_under_xvfb() {
  if [ -z "${KMVT_INSIDE_XVFB:-}" ]; then
    export KMVT_INSIDE_XVFB=1
    exec bash "$(dirname "${BASH_SOURCE[0]}")/../virtual_display.sh" "-screen 0 1280x1024x24" bash "$@"
  fi
}
E2E_CONVERT=$(command -v convert-im6.q16 || command -v convert)	# ImageMagick's, not a namesake

# Goes into a working folder of its own (work), removed at exit, with the game's resources linked
# in, and makes the folder for the artefacts. The game runs silent, and its settings are those of
# a first run: the tester's own settings.ini is neither read nor written. In the sanitizer build it runs
# with every check but the leak check: SDL unloads the display's libraries at exit, which leaves
# their allocations nameless to the leak checker. The game's own leaks are checked by the headless tests.
enter_work_folder() {
  local resources=$1 artefacts=$2
  mkdir -p "$artefacts"
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  ln -s "$resources" "$work/resources"
  cd "$work"
  export ASAN_OPTIONS="${ASAN_OPTIONS:-}:detect_leaks=0"
  export SDL_AUDIODRIVER=dummy
  export XDG_CONFIG_HOME="$work/config"
}

# Windows titled like the game, one "id width height" a line. SDL names its windows in UTF-8,
# which xdotool's name search does not read; xwininfo does. A window that vanishes while the tree
# is listed makes xwininfo fail: the windows listed so far stand, and the caller looks again.
titled_windows() {
  { xwininfo -root -tree 2>/dev/null || true; } | awk '/"Project Kormaveth 2D"/ { split($(NF-1), size, /[x+]/); print $1, size[1], size[2] }'
}
is_viewable() { xwininfo -id "$1" 2>/dev/null | grep -q "Map State: IsViewable"; }

# Starts COMMAND with its output in OUT, answers the full-screen question with No (Escape; again
# while the question is still there a second later, in case it was not yet ready for keys) and
# waits for the game's mapped window, the one whose size is a whole multiple of 640 x 480.
# Sets pid, window and scale. The game shows its window once the renderer is made, so the first
# one mapped is the one.
start_game() {
  local out=$1; shift
  "$@" > "$out" 2>&1 &
  pid=$!
  window="" scale=""
  local answered=-2 deadline=$((SECONDS + E2E_WAIT)) question id width height
  while [ $SECONDS -lt $deadline ]; do
    kill -0 "$pid" 2>/dev/null || fail "the game ended before its window appeared: $(cat "$out")"
    question=$(titled_windows | awk '$2 < 640 { print $1; exit }')
    if [ -n "$question" ] && [ $SECONDS -gt $((answered + 1)) ]; then
      xdotool windowfocus "$question" 2>/dev/null || true
      xdotool key Escape 2>/dev/null || true
      answered=$SECONDS
    fi
    while read -r id width height; do
      if [ $((width % 640)) -eq 0 ] && [ $((width / 640 * 480)) -eq "$height" ] && is_viewable "$id"; then
        window=$id scale=$((width / 640))
      fi
    done < <(titled_windows)
    [ -n "$window" ] && return 0
    sleep 0.1
  done
  # What the display showed, and which windows of the game's name it had, for the report.
  local shot=${artefacts:-$work}/no-game-window.png
  xwd -silent -root 2>/dev/null | "$E2E_CONVERT" xwd:- "$shot" 2>/dev/null || true
  fail "no mapped game window of 640 x 480 or a whole multiple within $E2E_WAIT s (windows titled as the game's:" \
       "$(titled_windows | tr '\n' ';'); the display: $shot): $(cat "$out")"
}

# Takes screenshots of the window into SHOT until one is not of one flat colour (black when
# nothing was drawn yet): a fault once the game has had the whole wait to draw.
expect_picture() {
  local shot=$1 spread=0 deadline=$((SECONDS + E2E_WAIT))
  while [ $SECONDS -lt $deadline ]; do
    timeout 10 xwd -silent -id "$window" | timeout 10 "$E2E_CONVERT" xwd:- "$shot" \
      || fail "no screenshot of the window could be taken"
    spread=$("$E2E_CONVERT" "$shot" -format '%[fx:standard_deviation]' info:) || fail "the screenshot cannot be read"
    awk -v s="$spread" 'BEGIN { exit !(s > 0) }' && return 0
    sleep 0.2
  done
  fail "the screenshot is one flat colour after $E2E_WAIT s ($shot)"
}

# Asks the window to close as a window manager's close button does: the WM_DELETE_WINDOW message
# of the WM_PROTOCOLS, sent to the window (Xlib through Python's ctypes: no tool on the machine sends it).
close_window() {
  python3 - "$1" <<'PY' || fail "the close request could not be sent to window $1"
import ctypes, sys
x11 = ctypes.cdll.LoadLibrary("libX11.so.6")
x11.XOpenDisplay.restype = ctypes.c_void_p
x11.XInternAtom.argtypes = [ctypes.c_void_p, ctypes.c_char_p, ctypes.c_int]
x11.XInternAtom.restype = ctypes.c_ulong
class ClientMessage(ctypes.Structure):
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int),
                ("display", ctypes.c_void_p), ("window", ctypes.c_ulong), ("message_type", ctypes.c_ulong),
                ("format", ctypes.c_int), ("data", ctypes.c_long * 5)]
class Event(ctypes.Union):
    _fields_ = [("xclient", ClientMessage), ("pad", ctypes.c_long * 24)]
x11.XSendEvent.argtypes = [ctypes.c_void_p, ctypes.c_ulong, ctypes.c_int, ctypes.c_long, ctypes.POINTER(Event)]
x11.XCloseDisplay.argtypes = [ctypes.c_void_p]
display = x11.XOpenDisplay(None)
if not display:
    sys.exit(1)
event = Event()
event.xclient.type = 33                        # ClientMessage
event.xclient.window = int(sys.argv[1], 0)
event.xclient.message_type = x11.XInternAtom(display, b"WM_PROTOCOLS", 0)
event.xclient.format = 32
event.xclient.data[0] = x11.XInternAtom(display, b"WM_DELETE_WINDOW", 0)
sent = x11.XSendEvent(display, event.xclient.window, 0, 0, ctypes.byref(event))
x11.XCloseDisplay(display)                     # flushes the request
sys.exit(0 if sent else 1)
PY
}

# Waits for the game told to end, and expects exit code 0.
expect_clean_exit() {
  local deadline=$((SECONDS + E2E_WAIT)) status=0
  while [ $SECONDS -lt $deadline ] && kill -0 "$pid" 2>/dev/null; do
    sleep 0.1
  done
  if kill -0 "$pid" 2>/dev/null; then
    kill -KILL "$pid"
    fail "the game was still running $E2E_WAIT s after it was told to end"
  fi
  wait "$pid" || status=$?
  [ "$status" -eq 0 ] || fail "exit code $status"
}

# Full screen is the window manager's to give: the scenarios that switch start openbox on the
# virtual display and wait until it manages windows. Openbox names itself on the display before it
# has finished starting, and a window asked to be shown in between may never be shown (on a fresh
# machine, where its first start is slow, the game's question was lost so): it is ready once it has
# taken a window of its own, a clock shown for the purpose and asked again until it is taken.
start_window_manager() {
  openbox --sm-disable > /dev/null 2>&1 &
  local deadline=$((SECONDS + E2E_WAIT)) probe="" asked=0
  until xprop -root _NET_CLIENT_LIST 2>/dev/null | grep -q "window id # 0x"; do
    [ $SECONDS -lt $deadline ] || fail "the window manager did not start"
    if [ -z "$probe" ] || [ $SECONDS -gt $((asked + 2)) ]; then
      [ -n "$probe" ] && kill "$probe" 2>/dev/null
      xclock > /dev/null 2>&1 &
      probe=$! asked=$SECONDS
    fi
    sleep 0.1
  done
  kill "$probe" 2>/dev/null || true
  wait "$probe" 2>/dev/null || true
}

# Clicks a point of the 640 x 480 screen in the game's window.
click() {
  xdotool mousemove --window "$window" $(($1 * scale)) $(($2 * scale))
  sleep 0.2
  xdotool click 1
  sleep 0.5
}

# Ends the game with SIGTERM, as the desktop does, and expects it to leave cleanly.
end_game() {
  kill -TERM "$pid"
  expect_clean_exit
}
