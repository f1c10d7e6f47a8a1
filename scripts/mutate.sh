#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Mutation testing of the game's rules: makes one small change at a time to the constants and
# comparisons of app/, world/, actors/ and ai/ (a `<` to `<=`, a `>` to `>=`, `==` to `!=`, `&&`
# to `||`, an integer constant +1 or -1), builds the Release tests and runs them. A mutant is
# caught when a test fails or times out; the ones that survive are rules no test pins.
#
#   scripts/mutate.sh [--rev REV] [--seed S] [--count N] [--list] [--work DIR]
#
#   --rev REV    the commit to mutate (default HEAD); it is exported with git archive into a
#                scratch folder, so the working tree is never touched
#   --seed S     the seed of the sample (default 17); a seed draws the same mutants on every line
#                two commits share (see below)
#   --count N    how many mutants to run (default 80); about 20-30 s each on two cores with ccache
#   --list       print the sampled mutants and stop
#   --work DIR   the scratch folder (default /tmp/kmvt-mutate-REV)
#   --from FILE  run the mutants listed in FILE instead of a sample (the survivors.tsv that every
#                run leaves in its scratch folder, say, to try them again after new tests)
#
# The end-to-end tests and the autoplay soak are left out (tools are not built), each test has a
# 60 s limit. A mutant that does not compile (a `>` closing a template, say) is counted apart.
# Output: one line per mutant, then the figures and the survivors as file:line, change.
set -euo pipefail
cd "$(dirname "$0")/.."

rev=HEAD
seed=17
count=80
list_only=0
work=""
from=""
while [ $# -gt 0 ]; do
	case "$1" in
		--rev) rev="$2"; shift 2 ;;
		--seed) seed="$2"; shift 2 ;;
		--count) count="$2"; shift 2 ;;
		--list) list_only=1; shift ;;
		--work) work="$2"; shift 2 ;;
		--from) from=$(realpath "$2"); shift 2 ;;
		*) echo "mutate.sh: unknown argument '$1'" >&2; exit 2 ;;
	esac
done
commit=$(git rev-parse --verify "$rev^{commit}")
work=${work:-/tmp/kmvt-mutate-${commit:0:10}}
if [ "$list_only" = 1 ]; then		# a listing leaves any run's scratch folder alone
	work=$(mktemp -d)
	trap 'rm -rf "$work"' EXIT
fi

mkdir -p "$work"
exec 9> "$work/lock"
flock -n 9 || { echo "mutate.sh: another run is using $work" >&2; exit 1; }
rm -rf "$work/src"
mkdir -p "$work/src"
git archive "$commit" | tar -x -m -C "$work/src"	# fresh times: no object of an earlier run is reused

# Every mutation site of the rules' folders, one per line:
#   file<TAB>line<TAB>column<TAB>from<TAB>to<TAB>the line's text
# where the column and the text leave out the line's indentation.
# The sample is the count sites of lowest hash of (seed, file, line text, column, change), so a
# site is drawn or not whatever changed elsewhere: runs before and after new tests, or on two
# commits, try the same mutants on the lines they share.
# Comments, string literals, preprocessor lines, asserts and log lines are left alone; so are
# the `<` and `>` of templates (no space on both sides), `>` on a line that opens a template and
# the number a plain variable starts at (`int32_t dx = 0;`), which is nearly always overwritten.
python3 - "$work/src" "$seed" "$count" > "$work/mutants.tsv" 2> "$work/sites.txt" <<'PY'
import hashlib, os, re, sys
root, seed, count = sys.argv[1], int(sys.argv[2]), int(sys.argv[3])
folders = ["app", "world", "actors", "ai"]
# main() and the state fingerprint hold no rule of the game.
skip_files = {"program/main.cpp", "app/StateHash.cpp"}
operators = [(" < ", " <= "), (" <= ", " < "), (" > ", " >= "), (" >= ", " > "),
             (" == ", " != "), (" != ", " == "), (" && ", " || "), (" || ", " && ")]
number = re.compile(r"(?<![\w.])(\d+)(?![\w.])")
# A variable that starts at a number it is given before it is read: changing it changes nothing.
dead_start = re.compile(r"^\s*(?!const\b|static\b|constexpr\b)[A-Za-z_][\w:]*\s+[A-Za-z_]\w*\s*=\s*-?\d+\s*;")

def blank_strings_and_comments(line):
    out, i, quote = [], 0, None
    while i < len(line):
        c = line[i]
        if quote:
            if c == "\\":
                out.append("  "); i += 2; continue
            if c == quote:
                quote = None
            out.append(" "); i += 1; continue
        if line.startswith("//", i):
            break
        if c in "\"'":
            quote = c
        out.append(c); i += 1
    return "".join(out).ljust(len(line))

sites = []
for folder in folders:
    for dirpath, _, names in os.walk(os.path.join(root, folder)):
        if os.sep + "sdl" in dirpath or os.sep + "headless" in dirpath:
            continue
        for name in sorted(names):
            if not name.endswith((".cpp", ".h")):
                continue
            rel = os.path.relpath(os.path.join(dirpath, name), root)
            if rel in skip_files:
                continue
            in_block = False
            for n, raw in enumerate(open(os.path.join(root, rel), encoding="utf-8"), 1):
                text = raw.rstrip("\n")
                if in_block:
                    if "*/" in text:
                        in_block = False
                    continue
                stripped = text.strip()
                if stripped.startswith("/*"):
                    in_block = "*/" not in stripped
                    continue
                if (stripped.startswith(("#", "assert", "static_assert", "//"))
                        or "cLog::" in text or "LogMapError" in text):
                    continue
                code = blank_strings_and_comments(text)
                template_line = re.search(r"\w<", code) is not None
                for old, new in operators:
                    start = 0
                    while True:
                        col = code.find(old, start)
                        if col < 0:
                            break
                        start = col + 1
                        if old.strip() in (">", ">=") and template_line:
                            continue
                        sites.append((rel, n, col, old.strip(), new.strip(), text))
                for m in ([] if dead_start.match(code) else number.finditer(code)):
                    value = int(m.group(1))
                    for delta in (1, -1):
                        if value + delta < 0:
                            continue
                        sites.append((rel, n, m.start(), m.group(1), str(value + delta), text))
def draw(site):
    rel, n, col, old, new, text = site
    indent = len(text) - len(text.lstrip())
    key = "%d|%s|%s|%d|%s|%s" % (seed, rel, text.strip(), col - indent, old, new)
    return hashlib.sha1(key.encode("utf-8")).hexdigest()
for rel, n, col, old, new, text in sorted(sites, key=draw)[:count]:
    indent = len(text) - len(text.lstrip())
    print("\t".join(map(str, (rel, n, col - indent, old, new, text.strip()))))
print("%d sites in all" % len(sites), file=sys.stderr)
PY

if [ -n "$from" ]; then
	cp "$from" "$work/mutants.tsv"
fi
echo "== $(cat "$work/sites.txt"); $(wc -l < "$work/mutants.tsv") mutants"
if [ "$list_only" = 1 ]; then
	awk -F'\t' '{ printf "%s:%s  %s -> %s  in: %s\n", $1, $2, $4, $5, $6 }' "$work/mutants.tsv"
	exit 0
fi

build="$work/build"
configure() {
	cmake -S "$work/src" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DKMVT_WERROR=OFF \
		-DKMVT_BUILD_TOOLS=OFF -DKMVT_BUILD_BENCHMARKS=OFF -DCMAKE_CXX_COMPILER_LAUNCHER=ccache > "$work/configure.log"
}
run_tests() {
	ctest --test-dir "$build" -j2 --timeout 60 --stop-on-failure -E '^e2e\.|soak' > "$work/ctest.log" 2>&1
}

echo "== Baseline: $commit"
configure
cmake --build "$build" -j2 > "$work/build.log" 2>&1 || { echo "the unmutated tree does not build"; exit 1; }
run_tests || { echo "the unmutated tree fails its tests (see $work/ctest.log)"; exit 1; }

# Replaces the from text at the given column of the given line with the to text.
# The line is found by its text (near its old number if it moved), so that a list of mutants can
# be run again on a later commit; false when the line is no longer there.
apply_mutant() {
	python3 - "$1" "$2" "$3" "$4" "$5" "$6" <<'PY'
import sys
path, line, col, old, new, wanted = sys.argv[1], int(sys.argv[2]), int(sys.argv[3]), sys.argv[4], sys.argv[5], sys.argv[6]
try:
    lines = open(path, encoding="utf-8").read().split("\n")
except OSError:
    sys.exit(1)
matches = [i for i, text in enumerate(lines) if text.strip() == wanted]
if not matches:
    sys.exit(1)
i = min(matches, key=lambda m: abs(m + 1 - line))
text = lines[i]
start = len(text) - len(text.lstrip()) + col
at = text.find(old, start)		# an operator's column is the blank before it
if at < 0 or at > start + 1:
    sys.exit(1)
lines[i] = text[:at] + new + text[at + len(old):]
open(path, "w", encoding="utf-8").write("\n".join(lines))
PY
}

caught=0
survived=0
broken=0
gone=0
survivors=()
: > "$work/survivors.tsv"
index=0
total=$(wc -l < "$work/mutants.tsv")
while IFS=$'\t' read -r file line col old new text; do
	index=$(( index + 1 ))
	where="$file:$line  $old -> $new  in: $text"
	if [ ! -f "$work/src/$file" ] || { cp "$work/src/$file" "$work/original"; \
			! apply_mutant "$work/src/$file" "$line" "$col" "$old" "$new" "$text"; }; then
		gone=$(( gone + 1 ))
		printf '[%d/%d] %s: the line is no longer there\n' "$index" "$total" "$where"
		continue
	fi
	if ! cmake --build "$build" -j2 > "$work/build.log" 2>&1; then
		outcome="does not compile"
		broken=$(( broken + 1 ))
	elif run_tests; then
		outcome="SURVIVED"
		survived=$(( survived + 1 ))
		survivors+=("$where")
		printf '%s\t%s\t%s\t%s\t%s\t%s\n' "$file" "$line" "$col" "$old" "$new" "$text" >> "$work/survivors.tsv"
	else
		outcome="caught by $(sed -nE 's/.*Test +#[0-9]+: ([^ ]+) .*\*\*\*.*/\1/p' "$work/ctest.log" | head -n 1)"
		caught=$(( caught + 1 ))
	fi
	cp "$work/original" "$work/src/$file"
	printf '[%d/%d] %s: %s\n' "$index" "$total" "$where" "$outcome"
done < "$work/mutants.tsv"

# Leave the build as the unmutated tree, so that the next run starts from ccache hits.
cmake --build "$build" -j2 > "$work/build.log" 2>&1 || true

echo "== $commit, seed $seed: $(( caught + survived )) mutants that compile, $caught caught, $survived survived" \
	"($broken did not compile, $gone not found)"
echo "== Survivors:"
for where in "${survivors[@]+"${survivors[@]}"}"; do
	echo "  $where"
done
