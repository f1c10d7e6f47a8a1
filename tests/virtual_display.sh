#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs a command under an X server of its own (Xvfb), as xvfb-run -a does, but on a display number
# the server picks itself (-displayfd) once it can take clients. xvfb-run takes the first number
# without a lock file, which a display still going away, or another starting at the same moment,
# may hold too: the command's clients then find no display, or the other one.
#   virtual_display.sh "SERVER OPTIONS" COMMAND [ARGUMENT...]
set -euo pipefail
options=$1
shift
number=$(mktemp)
# shellcheck disable=SC2086	# the options are words for the server
Xvfb -displayfd 3 -nolisten tcp $options 3> "$number" > /dev/null 2>&1 &
server=$!
trap 'kill "$server" 2> /dev/null || true; wait "$server" 2> /dev/null || true; rm -f "$number"' EXIT
for _ in $(seq 1 300); do
  [ -s "$number" ] && break
  kill -0 "$server" 2> /dev/null || { echo "Xvfb ended before it took a display" >&2; exit 1; }
  sleep 0.1
done
[ -s "$number" ] || { echo "Xvfb took no display within 30 s" >&2; exit 1; }
status=0
DISPLAY=:$(head -n 1 "$number") "$@" || status=$?
exit "$status"
