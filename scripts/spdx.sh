#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Every source file of the game opens with a line naming its licence, GPL-3.0-or-later:
#   scripts/spdx.sh [FOLDER]            adds the line to each source file without one
#   scripts/spdx.sh --check [FOLDER]    lists the source files without one; fails when there are any
# FOLDER is the repository's folder (by default this script's). Source files are the C++ files
# (.h, .cpp, .h.in), the CMake files (CMakeLists.txt, .cmake) and the shell scripts (.sh), in
# every folder but build and hidden folders. The line goes first, as a comment of the file's
# language, or second after a "#!" line. A file counts as marked when one of its first three
# lines names an SPDX licence, so running the script again changes nothing.
set -euo pipefail

check=0
if [ "${1:-}" = "--check" ]; then
	check=1
	shift
fi
root=${1:-$(dirname "$0")/..}
[ -d "$root" ] || { echo "spdx.sh: no folder '$root'" >&2; exit 2; }

identifier="SPDX-License-Identifier: GPL-3.0-or-later"

source_files() {
	find "$root" -mindepth 1 \( -name '.*' -o -name build \) -prune -o -type f \
		\( -name '*.h' -o -name '*.cpp' -o -name '*.h.in' -o -name CMakeLists.txt -o -name '*.cmake' \
		-o -name '*.sh' \) -print | LC_ALL=C sort
}

comment_for() {
	case "$1" in
		*.h | *.cpp | *.h.in) echo "// $identifier" ;;
		*) echo "# $identifier" ;;
	esac
}

missing=0
while IFS= read -r file; do
	if head -n 3 "$file" | grep -q "SPDX-License-Identifier:"; then
		continue
	fi
	missing=$((missing + 1))
	if [ "$check" = 1 ]; then
		echo "${file#"$root"/}"
		continue
	fi
	line=$(comment_for "$file")
	if [ ! -s "$file" ]; then
		printf '%s\n' "$line" > "$file"
	elif head -n 1 "$file" | grep -q '^#!'; then
		sed -i "1a\\$line" "$file"
	else
		sed -i "1i\\$line" "$file"
	fi
done < <(source_files)

if [ "$check" = 1 ] && [ "$missing" -gt 0 ]; then
	echo "spdx.sh: $missing source files without an SPDX line; scripts/spdx.sh adds them" >&2
	exit 1
fi
[ "$check" = 1 ] || echo "spdx.sh: added the line to $missing files"
