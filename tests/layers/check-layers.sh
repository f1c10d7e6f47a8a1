#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# The game's layers, checked on every #include of its folders. LAYERS lists the folders from the
# bottom up, each with the folders below it that it may include; a folder may always include
# itself, and may list only folders on the lines above its own, so no arrow ever points back up.
# Backends live in FOLDER/KIND/ for each kind of BACKENDS; a backend keeps to its folder's layer,
# may include the backends of its own kind, and is the only code that includes its kind's outside
# library. The game logic includes no backend. The harness (the game without a window) plays on
# the headless backends. A new layer is one more line in LAYERS and its name in the lists of the
# layers above it; a new kind of backend is one more entry in BACKENDS. The online game (net/) sits
# above app and replay; its ENet link is the backend net/enet/, the only code that includes ENet,
# and its way to the home router the backend net/portmap/, the only code that includes libnatpmp
# and miniupnpc. The browser's page is the backend platform/web/, the only code that includes
# emscripten.
# The settings file is read and written with inih in the backend input/ini/, the only code that includes it.
#   check-layers.sh [SOURCE_DIR]   prints every include against the rules; fails if there is one
set -u
cd "${1:-$(dirname "$0")/../..}" || exit 2

LAYERS=(
	"log:"
	"platform:	log"
	"input:		log platform"
	"sound:		log"
	"world:		log platform"
	"actors:	log platform sound world"
	"ai:		log platform sound world actors"
	"graphics:	log platform world actors ai"
	"app:		log platform input sound world actors ai graphics"
	"replay:	log platform input sound world actors ai graphics app"
	"net:		log platform input sound world actors ai graphics app replay"
	"harness:	log platform input sound world actors ai graphics app replay net"
	"program:	log platform input sound world actors ai graphics app replay net"
)

# Each kind of backend and the start of the outside library's headers that only it may include.
declare -A BACKENDS=(
	[sdl]="SDL"
	[headless]=""
	[enet]="enet/"
	[portmap]="(natpmp\.h|miniupnpc/)"
	[web]="emscripten"
	[ini]="ini.h"
)
declare -A FOLDER_KIND=(
	[harness]=headless
)

# The files allowed past the backend rules, each with the reason.
declare -A EXCEPTIONS=(
	[program/main.cpp]="the entry point puts the SDL game together: it starts SDL and picks every backend"
)

broken=0
complain() {
	echo "$1: $2"
	broken=$(( broken + 1 ))
}

declare -A ALLOWED=()
ORDER=()
for line in "${LAYERS[@]}"; do
	folder="${line%%:*}"
	for below in ${line#*:}; do
		[[ -n "${ALLOWED[$below]+set}" ]] || complain "check-layers.sh" "$folder/ lists $below/, which is not below it"
	done
	ALLOWED[$folder]="${line#*:}"
	ORDER+=( "$folder" )
done

# The kind of backend a file belongs to, empty for the game logic.
backend_kind() {
	local file="$1" kind
	for kind in "${!BACKENDS[@]}"; do
		[[ "$file" == */$kind/* ]] && { echo "$kind"; return; }
	done
	echo "${FOLDER_KIND[${file%%/*}]:-}"
}

describe() {
	if [[ -n "$1" ]]; then echo "the $1 backend"; else echo "the logic"; fi
}

# May the file (folder/.../name) of the backend kind (empty for logic) include the header?
check_include() {
	local file="$1" kind="$2" header="$3"
	local folder="${file%%/*}" target="${header%%/*}"
	[[ -z "${ALLOWED[$target]+set}" ]] && return		# not one of the game's folders
	local other
	for other in "${!BACKENDS[@]}"; do
		if [[ "$header" == */$other/* && "$other" != "$kind" && -z "${EXCEPTIONS[$file]+set}" ]]; then
			complain "$file" "$( describe "$kind" ) includes the backend header $header"
			return
		fi
	done
	[[ "$target" == "$folder" ]] && return
	local allowed
	for allowed in ${ALLOWED[$folder]}; do
		[[ "$allowed" == "$target" ]] && return
	done
	complain "$file" "$folder/ includes $header from a layer above it"
}

# Only a backend of the kind includes the kind's outside library.
check_libraries() {
	local file="$1" kind="$2" other
	[[ -n "${EXCEPTIONS[$file]+set}" ]] && return
	for other in "${!BACKENDS[@]}"; do
		local library="${BACKENDS[$other]}"
		[[ -n "$library" && "$other" != "$kind" ]] || continue
		local found
		found=$(grep -m 1 -oE "^\s*#\s*include\s*[<\"]$library" "$file") || continue
		complain "$file" "includes ${found##*[<\"]} outside an $other/ folder"
	done
}

for folder in "${ORDER[@]}"; do
	[[ -d "$folder" ]] || continue
	while IFS= read -r file; do
		kind=$(backend_kind "$file")
		check_libraries "$file" "$kind"
		while IFS= read -r header; do
			check_include "$file" "$kind" "$header"
		done < <(sed -nE 's/^\s*#\s*include\s*"([^"]+)".*/\1/p' "$file")
	done < <(find "$folder" -name '*.h' -o -name '*.cpp' | sort)
done
for file in "${!EXCEPTIONS[@]}"; do
	echo "exception: $file: ${EXCEPTIONS[$file]}"
done
if [ "$broken" -gt 0 ]; then
	echo "$broken includes break the layers"
	exit 1
fi
echo "every include keeps to the layers"
