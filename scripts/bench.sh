#!/usr/bin/env bash
# Runs every benchmark of the game on this machine and rewrites docs/performance.md with the
# figures: the enemies' path search against libtcod's, one UpdateEnemies frame, the in-game frame
# over twelve autoplay games, one busy Render frame on the software renderer, and the processor
# share of the idle main menu.
#   scripts/bench.sh            everything, about five minutes
# KMVT_BENCH_BUILD names the build folder (build/bench by default); KMVT_BENCH_DOC the page to
# write (docs/performance.md by default). Other work on the machine moves the figures: run it on
# a quiet machine.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
build=${KMVT_BENCH_BUILD:-build/bench}
doc=${KMVT_BENCH_DOC:-docs/performance.md}
scripts/deps.sh test

echo "== Release build of the game and its benchmarks in $build"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DKMVT_BUILD_TESTS=OFF -DKMVT_BUILD_TOOLS=ON > /dev/null
cmake --build "$build" -j"$(nproc)" --target kormaveth2d bench-ai bench-game bench-render > /dev/null

out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
load_before=$(cut -d' ' -f1-3 /proc/loadavg)

echo "== Path search and the enemies' frame (bench-ai)"
"$build/tools/bench-ai/bench-ai" --resources="$root" | tee "$out/ai.txt"
echo "== The in-game frame over autoplay games (bench-game)"
"$build/tools/bench-game/bench-game" --resources="$root" | tee "$out/game.txt"
echo "== One busy frame drawn on the software renderer (bench-render)"
"$build/tools/bench-render/bench-render" --resources="$root" | tee "$out/render.txt"
echo "== The idle main menu's share of a core"
tools/bench-idle/idle-menu-cpu.sh "$build/kormaveth2d" "$root/resources" 20 | tee "$out/idle.txt"

# A counter of a Google Benchmark row, such as per_search=26.3us: the number, without its unit.
counter() {
  awk -v row="$2" -v name="$3" '$1 ~ row { for (i = 2; i <= NF; i++) if (index($i, name "=") == 1) {
    value = substr($i, length(name) + 2); sub(/[a-z\/]+$/, "", value); print value; exit } }' "$1"
}
# The time column of a Google Benchmark row with its unit, such as "1037 us".
row_time() { awk -v row="$2" '$1 ~ row { print $2, $3; exit }' "$1"; }
# The number that follows a phrase in a program's own lines.
after() { awk -v phrase="$2" 'index($0, phrase) { rest = substr($0, index($0, phrase) + length(phrase));
  if (match(rest, /-?[0-9]+(\.[0-9]+)?/)) { print substr(rest, RSTART, RLENGTH); exit } }' "$1"; }
# "yes" when the measured figure is below the goal.
below() { awk -v a="$1" -v b="$2" 'BEGIN { print (a != "" && a + 0 < b + 0) ? "yes" : "no" }'; }

game_median=$(after "$out/ai.txt" "game A*    median")
tcod_median=$(after "$out/ai.txt" "libtcod A* median")
ratio=$(after "$out/ai.txt" "libtcod / game at the median:")
longer=$(after "$out/ai.txt" "game paths longer than libtcod's:")
search_avg=$(counter "$out/ai.txt" "game-astar.*_median$" per_search)
tcod_avg=$(counter "$out/ai.txt" "libtcod-astar.*_median$" per_search)
enemies_p50=$(counter "$out/ai.txt" "^Enemies/update-frame" p50_us)
enemies_p99=$(counter "$out/ai.txt" "^Enemies/update-frame" p99_us)
enemies_max=$(counter "$out/ai.txt" "^Enemies/update-frame" max_us)
update_p50=$(after "$out/game.txt" "p50")
update_p99=$(after "$out/game.txt" "p99")
update_max=$(after "$out/game.txt" "max")
update_frames=$(after "$out/game.txt" "games,")
render_level=$(row_time "$out/render.txt" "busy-frame-level-map.*_median$")
render_full=$(row_time "$out/render.txt" "busy-frame-all-layers-full.*_median$")
render_level_us=${render_level% *}
idle=$(after "$out/idle.txt" "idle main menu:")
ratio_met=$(awk -v r="$ratio" 'BEGIN { print (r != "" && r + 0 >= 2) ? "yes" : "no" }')

cpu=$(awk -F': ' '/model name/ { print $2; exit }' /proc/cpuinfo)
cat > "$doc" <<EOF
# Performance

Written by \`scripts/bench.sh\` on $(date -u '+%Y-%m-%d %H:%M UTC'), on this machine: $cpu,
$(nproc) cores, $(awk '/MemTotal/ { printf "%.0f GiB", $2 / 1048576 }' /proc/meminfo) of memory,
$(. /etc/os-release && echo "$PRETTY_NAME"); load average $load_before before the run. Release build
(g++ $(g++ -dumpfullversion), SDL $(pkg-config --modversion sdl2)).

| Measure | Figure | Goal | Met |
|---|---|---|---|
| Path search, game's A*, median per pair (1000 pairs of the level) | $game_median us | | |
| Path search, libtcod's A*, same pairs | $tcod_median us | | |
| libtcod / game at the median | $ratio | at least 2 | $ratio_met |
| Path search, average over the set (benchmark median): game / libtcod | $search_avg / $tcod_avg us | | |
| Game's paths longer than libtcod's, on average per pair | $longer % | | |
| \`UpdateEnemies\`, 24 enemies hunting two players: p50 / p99 / slowest | $enemies_p50 / $enemies_p99 / $enemies_max us | p99 under 200 us | $(below "$enemies_p99" 200) |
| \`UpdateInGame\` over 12 autoplay games ($update_frames frames): p50 / p99 / slowest | $update_p50 / $update_p99 / $update_max us | p99 under 500 us | $(below "$update_p99" 500) |
| \`Render\` of a busy frame on the software renderer, the level's map: median | $render_level | under 2 ms | $(below "$render_level_us" 2000) |
| \`Render\` of a busy frame, all three tile layers in every cell: median | $render_full | | |
| Idle main menu, share of one core over 20 s | $idle % | under 20 % | $(below "$idle" 20) |

## What is measured

- **Path search** (\`bench-ai\`): the game's A* run exactly as an enemy runs it (a fresh search
  object per search) and libtcod's A* with one reused path object, on the same 1000 start and
  goal cells of the level's walk layer; each pair's time is the median of nine passes.
  [performance-ai.md](performance-ai.md) tells the method in full.
- **\`UpdateEnemies\`** (\`bench-ai\`): 5000 frames, each timed alone, of the level's 24 enemies
  chasing two players who walk a fixed round on the top street.
- **\`UpdateInGame\`** (\`bench-game\`): every frame of play of twelve autoplay games (one or two
  players, each character, each difficulty), the bots at the keys ([autoplay.md](autoplay.md)).
- **\`Render\`** (\`bench-render\`): one whole frame of play drawn into an off-screen surface by
  SDL's software renderer: 24 enemies, shots, explosions, items and both HUDs in view.
- **Idle main menu** (\`tools/bench-idle/idle-menu-cpu.sh\`): the real game under Xvfb, answered
  No, left in the main menu; the processor time it used over 20 s.

## How to reproduce

\`\`\`sh
scripts/bench.sh
\`\`\`

It installs what it needs, builds in \`build/bench\` and rewrites this page. Each program also
runs on its own from that folder, with \`--resources=\` naming the folder that holds \`resources/\`.

## The autoplay games

\`\`\`
$(cat "$out/game.txt")
\`\`\`
EOF
echo "== Wrote $doc"
