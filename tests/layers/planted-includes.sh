#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The layer check against includes planted in a small tree made here: each case plants one file
# and expects the check to pass, or to fail with the complaint that names the file.
#   planted-includes.sh CHECK_SCRIPT
set -u
check="$1"
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT

# file | its include line | the complaint expected, empty when the check must pass
CASES=(
	'world/Plant.h|#include "app/Game.h"|world/Plant.h: world/ includes app/Game.h from a layer above it'
	'actors/Plant.cpp|#include "ai/Enemy.h"|actors/Plant.cpp: actors/ includes ai/Enemy.h from a layer above it'
	'platform/sdl/Plant.cpp|#include "world/Grid.h"|platform/sdl/Plant.cpp: platform/ includes world/Grid.h from a layer above it'
	'replay/Plant.cpp|#include "program/Session.h"|replay/Plant.cpp: replay/ includes program/Session.h from a layer above it'
	'ai/Plant.cpp|#include "actors/Player.h"|'
	'app/Plant.cpp|#include "app/Game.h"|'
	'world/Plant.cpp|#include "graphics/sdl/SdlGraphicsBackend.h"|world/Plant.cpp: the logic includes the backend header graphics/sdl/SdlGraphicsBackend.h'
	'graphics/headless/Plant.cpp|#include "input/sdl/SdlInputBackend.h"|graphics/headless/Plant.cpp: the headless backend includes the backend header input/sdl/SdlInputBackend.h'
	'harness/Plant.cpp|#include "graphics/headless/RecordingGraphicsBackend.h"|'
	'app/Plant.cpp|#include <SDL.h>|app/Plant.cpp: includes SDL outside an sdl/ folder'
	'input/sdl/Plant.cpp|#include <SDL.h>|'
	'program/main.cpp|#include <SDL.h>|'
	'program/Plant.cpp|#include <SDL.h>|program/Plant.cpp: includes SDL outside an sdl/ folder'
	'net/Plant.cpp|#include <natpmp.h>|net/Plant.cpp: includes natpmp.h outside an portmap/ folder'
	'net/enet/Plant.cpp|#include <miniupnpc/miniupnpc.h>|net/enet/Plant.cpp: includes miniupnpc/ outside an portmap/ folder'
	'net/portmap/Plant.cpp|#include <miniupnpc/upnpcommands.h>|'
	'program/Plant.cpp|#include "net/portmap/RouterPortMapper.h"|program/Plant.cpp: the logic includes the backend header net/portmap/RouterPortMapper.h'
	'platform/web/Plant.cpp|#include <emscripten.h>|'
	'app/Plant.cpp|#include <emscripten.h>|app/Plant.cpp: includes emscripten outside an web/ folder'
)

failed=0
for entry in "${CASES[@]}"; do
	IFS='|' read -r file include expected <<< "$entry"
	rm -rf "${tree:?}"/*
	mkdir -p "$tree/$(dirname "$file")"
	echo "$include" > "$tree/$file"
	output=$(bash "$check" "$tree")
	status=$?
	if [[ -z "$expected" && $status -ne 0 ]]; then
		echo "FAIL: $file with $include should keep to the layers, but the check said:"
		echo "$output"
		failed=$(( failed + 1 ))
	elif [[ -n "$expected" && ( $status -eq 0 || "$output" != *"$expected"* ) ]]; then
		echo "FAIL: $file with $include should fail with \"$expected\"; the check ended $status and said:"
		echo "$output"
		failed=$(( failed + 1 ))
	fi
done

# A map that lists a folder above its own line is refused, whatever the files include.
sed 's/^\t"world:\t\tlog platform"/\t"world:\t\tlog platform actors"/' "$check" > "$tree/check-layers.sh"
rm -rf "${tree:?}"/*/
output=$(bash "$tree/check-layers.sh" "$tree")
if [[ $? -eq 0 || "$output" != *"world/ lists actors/, which is not below it"* ]]; then
	echo "FAIL: a map with world/ above actors/ should be refused; the check said:"
	echo "$output"
	failed=$(( failed + 1 ))
fi

echo "$(( ${#CASES[@]} + 1 - failed )) of $(( ${#CASES[@]} + 1 )) planted cases judged right"
[[ $failed -eq 0 ]]
