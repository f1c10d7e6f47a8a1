#!/usr/bin/env bash
# The game's layers, checked on every #include of its folders. Each folder may include itself and
# the folders (or single headers) listed after it, which are the layers below it. Backends live in
# */sdl/ (the only code that may include SDL) and */headless/; the game logic includes neither, a
# backend may include the logic and backends of its own kind, and program/main.cpp, which puts the
# SDL game together, may include anything. The harness (the game without a window) counts as headless.
# The online game (net/) sits above app and replay and below the program; its ENet link lives in the
# backend folder net/enet/, the only code that includes ENet, which the programs (program/main.cpp,
# the harness's autoplay) put together.
#   check-layers.sh [SOURCE_DIR]   prints every include against the rules; fails if there is one
set -u
cd "${1:-$(dirname "$0")/../..}" || exit 2

declare -A ALLOWED=(
	[log]=""
	[platform]="log"
	[input]="log platform"
	[sound]="log"
	[world]="log actors"
	[actors]="log platform sound world ai"
	[ai]="log platform sound world actors"
	[graphics]="log platform world actors ai"
	[app]="log platform input sound world actors ai graphics"
	[replay]="log platform input sound world actors ai graphics app"
	[net]="log platform input sound world actors ai graphics app replay"
	[harness]="log platform input sound world actors ai graphics app replay net"
	[program]="log platform input sound world actors ai graphics app replay net"
)

broken=0
complain() {
	echo "$1: $2"
	broken=$(( broken + 1 ))
}

# May the file (folder/.../name) include the header (folder/.../name.h)?
check_include() {
	local file="$1" header="$2"
	local folder="${file%%/*}" target="${header%%/*}"
	local backend="" kind
	for kind in sdl headless enet; do
		[[ "$file" == */$kind/* ]] && backend=$kind
	done
	[[ "$file" == harness/* ]] && backend=headless	# the harness plays on the headless backends
	if [[ "$header" == */sdl/* || "$header" == */headless/* || "$header" == */enet/* ]]; then
		[[ -n "$backend" && "$header" == */$backend/* ]] && return
		[[ "$header" == net/enet/* && "$file" == harness/* ]] && return	# the autoplay program's link
		complain "$file" "the logic includes the backend header $header"
		return
	fi
	[[ -n "$backend" || "$target" == "$folder" ]] && return
	[[ -z "${ALLOWED[$target]+set}" ]] && return		# not one of the game's folders
	local allowed
	for allowed in ${ALLOWED[$folder]}; do
		[[ "$allowed" == "$target" || "$allowed" == "$header" ]] && return
	done
	complain "$file" "$folder/ includes $header from a layer above it"
}

for folder in "${!ALLOWED[@]}"; do
	while IFS= read -r file; do
		[[ "$file" == program/main.cpp ]] && continue
		if [[ "$file" != */sdl/* ]] && grep -qE '^\s*#\s*include\s*[<"]SDL' "$file"; then
			complain "$file" "includes SDL outside an sdl/ folder"
		fi
		if [[ "$file" != net/enet/* ]] && grep -qE '^\s*#\s*include\s*[<"]enet/' "$file"; then
			complain "$file" "includes ENet outside net/enet/"
		fi
		while IFS= read -r header; do
			check_include "$file" "$header"
		done < <(sed -nE 's/^\s*#\s*include\s*"([^"]+)".*/\1/p' "$file")
	done < <(find "$folder" -name '*.h' -o -name '*.cpp' | sort)
done
if [ "$broken" -gt 0 ]; then
	echo "$broken includes break the layers"
	exit 1
fi
echo "every include keeps to the layers"
