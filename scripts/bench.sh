#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Runs every benchmark of the game on this machine and rewrites docs/performance.md with the
# figures: the enemies' path search against libtcod's, one UpdateEnemies frame, the game's step
# over twelve autoplay games, one busy Render frame on the software renderer, the frame loop on
# simulated displays and on the real clock, and the processor share of the idle main menu, the
# idle pause screen and a game in play under Xvfb, and of play beside Chocolate Doom's demo loop
# (Debian's chocolate-doom and freedoom, when installed).
#   scripts/bench.sh            everything, about seven minutes
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
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DKMVT_BUILD_TESTS=OFF -DKMVT_BUILD_TOOLS=OFF -DKMVT_BUILD_BENCHMARKS=ON > /dev/null
cmake --build "$build" -j"$(nproc)" --target kormaveth2d bench-ai bench-game bench-match bench-render bench-frame \
  kmvt_autoplay kmvt_relay > /dev/null

out=$(mktemp -d)
trap 'rm -rf "$out"' EXIT
load_before=$(cut -d' ' -f1-3 /proc/loadavg)

echo "== Path search and the enemies' frame (bench-ai)"
"$build/bench/ai/bench-ai" --resources="$root" | tee "$out/ai.txt"
echo "== The game's step over autoplay games (bench-game)"
"$build/bench/game/bench-game" --resources="$root" | tee "$out/game.txt"
echo "== Saving and restoring the match (bench-match)"
"$build/bench/match/bench-match" --resources="$root" --benchmark_repetitions=5 --benchmark_report_aggregates_only=true \
  | tee "$out/match.txt"
echo "== One busy frame drawn on the software renderer (bench-render)"
"$build/bench/render/bench-render" --resources="$root" | tee "$out/render.txt"
echo "== The frame loop on simulated displays and on the real clock (bench-frame)"
"$build/bench/frame/bench-frame" --resources="$root" | tee "$out/frame.txt"
echo "== Online play through the impairment relay (bench/net/online-bench.sh)"
bin=$build
[[ $bin = /* ]] || bin=$root/$bin
bench/net/online-bench.sh "$bin/harness/kmvt_autoplay" "$bin/bench/net/kmvt_relay" "$root" | tee "$out/online.md"
echo "== The share of a core of the idle main menu, the idle pause screen and a game in play"
for screen in menu pause play; do
  bench/idle/idle-menu-cpu.sh "$build/kormaveth2d" "$root/resources" 20 "$screen" | tee -a "$out/idle.txt"
done
echo "== The share of a core of a game in play beside Chocolate Doom's demo loop"
bench/play/play-cpu.sh "$build/kormaveth2d" "$root/resources" 15 | tee "$out/play.txt"

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
match_save=$(row_time "$out/match.txt" "Match/save_median")
match_restore=$(row_time "$out/match.txt" "Match/restore_median")
match_bytes=$(after "$out/match.txt" "states,")
# "yes" when both times, each "N ns" or "N us", are under 20 us.
match_met=$(awk -v a="$match_save" -v b="$match_restore" 'function us(t, parts) { split(t, parts, " ");
  return parts[2] == "ns" ? parts[1] / 1000 : parts[1] } BEGIN { print (a != "" && us(a) < 20 && us(b) < 20) ? "yes" : "no" }')
render_level=$(row_time "$out/render.txt" "busy-frame-level-map.*_median$")
render_full=$(row_time "$out/render.txt" "busy-frame-all-layers-full.*_median$")
render_tiles=$(row_time "$out/render.txt" "busy-frame-level-map-tile-by-tile.*_median$")
render_level_us=${render_level% *}
idle=$(after "$out/idle.txt" "idle main menu:")
idle_pause=$(after "$out/idle.txt" "idle pause screen:")
play=$(after "$out/idle.txt" "game in play:")
# A row of play beside Chocolate Doom at one size: below the port's share, and a bigger picture
# at most 1.3 times the 640 x 480 window's.
play_1x=$(after "$out/play.txt" ", 1x: game in play:")
play_row() {
  local size=$1 text=$2 game doom
  game=$(after "$out/play.txt" ", $size: game in play:")
  doom=$(after "$out/play.txt" "Chocolate Doom demo loop, $size:")
  local goal="at most the port's" met
  met=$(awk -v a="$game" -v b="$doom" 'BEGIN { print (a != "" && b != "" && a + 0 < b + 0) ? "yes" : "no" }')
  if [ "$size" != 1x ]; then
    goal="$goal, and 1.3 times the 640x480 window's"
    met=$(awk -v m="$met" -v a="$game" -v w="$play_1x" 'BEGIN { print (m == "yes" && a + 0 <= 1.3 * w) ? "yes" : "no" }')
  fi
  echo "| Play under Xvfb, $text, share of one core over 15 s: this game / Chocolate Doom's demo loop at the same size | $game % / ${doom:-not installed} % | $goal | $met |"
}
# Steps per second on the simulated displays, and the step interval on the real clock.
display_rate() { awk -v name="frame loop, display $1" 'index($0, name) { for (i = 1; i <= NF; i++) if ($i == "steps/s") { print $(i - 1); exit } }' "$out/frame.txt"; }
fixed_rate() { awk -v name="fixed wait, display $1" 'index($0, name) { for (i = 1; i <= NF; i++) if ($i == "steps/s") { print $(i - 1); exit } }' "$out/frame.txt"; }
within_one_percent() { awk -v r="$1" 'BEGIN { print (r != "" && r >= 66.0 && r <= 67.34) ? "yes" : "no" }'; }
same_state=$(grep -q "final state on every display: the same" "$out/frame.txt" && echo yes || echo no)
step_median=$(after "$out/frame.txt" "median")
step_p99=$(after "$out/frame.txt" "p99")
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
| The game's step (\`Step\`: input, \`UpdateInGame\`, animation, music) over 12 autoplay games ($update_frames steps of play): p50 / p99 / slowest | $update_p50 / $update_p99 / $update_max us | p99 under 500 us | $(below "$update_p99" 500) |
| Saving the whole match / putting it back (\`Save\`, \`Restore\`), a two-player game of the bots: median | $match_save / $match_restore | each under 20 us | $match_met |
| Bytes a saved match holds, the most over the game | $match_bytes | at most 200 KB | $(below "$match_bytes" 204800) |
| \`Render\` of a busy frame on the software renderer, the level's map: median | $render_level | under 2 ms | $(below "$render_level_us" 2000) |
| \`Render\` of a busy frame, the level's map drawn tile by tile as before the tile cache: median | $render_tiles | | |
| \`Render\` of a busy frame, all three tile layers in every cell: median | $render_full | | |
| Steps per second, present waiting for a 50 Hz refresh (before: $(fixed_rate "50 Hz")) | $(display_rate "50 Hz") | 66.67 within 1 % | $(within_one_percent "$(display_rate "50 Hz")") |
| Steps per second, 60 Hz (before: $(fixed_rate "60 Hz")) | $(display_rate "60 Hz") | 66.67 within 1 % | $(within_one_percent "$(display_rate "60 Hz")") |
| Steps per second, 75 Hz (before: $(fixed_rate "75 Hz")) | $(display_rate "75 Hz") | 66.67 within 1 % | $(within_one_percent "$(display_rate "75 Hz")") |
| Steps per second, 144 Hz (before: $(fixed_rate "144 Hz")) | $(display_rate "144 Hz") | 66.67 within 1 % | $(within_one_percent "$(display_rate "144 Hz")") |
| Steps per second, a present that never waits (before: $(fixed_rate "no wait")) | $(display_rate "no wait") | 66.67 within 1 % | $(within_one_percent "$(display_rate "no wait")") |
| The same game state after 2000 steps on all five displays | $same_state | the same | $same_state |
| Step interval on the real clock, present never waits: median / p99 | $step_median / $step_p99 ms | 15.0 / under 16 ms | $(awk -v m="$step_median" -v p="$step_p99" 'BEGIN { print (m >= 14.95 && m <= 15.05 && p < 16) ? "yes" : "no" }') |
| Idle main menu under Xvfb, share of one core over 20 s | $idle % | under 2 % | $(below "$idle" 2) |
| Idle pause screen under Xvfb, share of one core over 20 s | $idle_pause % | under 2 % | $(below "$idle_pause" 2) |
| A game in play under Xvfb (nobody at the keys), share of one core over 20 s | $play % | under 20 % | $(below "$play" 20) |
$(play_row 1x "a 640x480 window on a 1920x1080 display")
$(play_row 2x "a 1280x960 window on a 2560x1440 display")
$(play_row full "full screen on a 1920x1080 display")

## What is measured

- **Path search** (\`bench-ai\`): the game's A* run exactly as an enemy runs it (a fresh search
  object per search) and libtcod's A* with one reused path object, on the same 1000 start and
  goal cells of the level's walk layer; each pair's time is the median of nine passes.
  [performance-ai.md](performance-ai.md) tells the method in full.
- **\`UpdateEnemies\`** (\`bench-ai\`): 5000 frames, each timed alone, of the level's 24 enemies
  chasing two players who walk a fixed round on the top street.
- **The game's step** (\`bench-game\`): every step of play of twelve autoplay games (one or two
  players, each character, each difficulty), the bots at the keys ([autoplay.md](autoplay.md)).
- **The match saved and put back** (\`bench-match\`): a two-player game of the level played by
  two bots for 3000 steps, its match saved every 250 steps; then \`cGame::Save\` into a match
  saved before (as a ring of saved steps does), \`cGame::Restore\` of each saved state, and one
  step after a restore, for scale. The bytes are the match's own, the search's working memory not
  counted: it is scratch, not state.
- **\`Render\`** (\`bench-render\`): one whole frame of play drawn into an off-screen surface by
  SDL's software renderer: 24 enemies, shots, explosions, items and both HUDs in view.
- **The frame loop** (\`bench-frame\`): 2000 steps of an autoplay game (one player, tavesh,
  difficulty 2) paced by the game's frame loop on a simulated clock, with a graphics backend whose
  present waits for the next refresh of a simulated display at 50, 60, 75 and 144 Hz, or never
  waits; the steps per second of the display's time and the hash of the game's state after the
  last step. "Before" is the same on the pacing the game had before: a step, a frame, then a wait
  until 15 ms after the step began. Then 2000 steps on the real monotonic clock with a present
  that never waits: the interval between the starts of two steps. Its 99th percentile is how late
  the system wakes the game: with other builds busy on both cores it was 18 to 20 ms. The median
  stays at 15.0 ms whatever the load, since a late step moves no later deadline.
- **Idle screens and play** (\`bench/idle/idle-menu-cpu.sh\`): the real game under Xvfb,
  answered No, left in the main menu, or on the pause screen of a game, or in a game of one player
  nobody plays; the processor time it used over 20 s. Under Xvfb there is no graphics card: OpenGL
  is Mesa's llvmpipe, drawn by the processor, and the game then takes SDL's software renderer.
- **Play beside a classic port** (\`bench/play/play-cpu.sh\`): the same game in play for 15 s, and
  Chocolate Doom (Debian's \`chocolate-doom\` with \`freedoom\`'s Phase 2) playing its first demo at
  the same size, each alone under its own Xvfb, one after the other, each on the renderer it picks
  by default, sound through SDL's silent driver; the processor time each used. Three sizes: a
  640x480 window on a 1920x1080 display (the game's own choice there), a 1280x960 window on a
  2560x1440 display (likewise), and full screen on a 1920x1080 display under openbox.

## Before steps and frames were parted

Measured on 2026-11-23 on this machine with the same scripts, on the game as it was before (one
\`Loop\` a frame: a step, a drawing that also moved the animations on, then a wait to 15 ms after
the frame's start on the millisecond tick count), while other builds kept the load average at 7
to 9:

| Measure | Before | After |
|---|---|---|
| Idle main menu under Xvfb, share of one core over 20 s | 14.6 % | 1.2 % |
| Idle pause screen under Xvfb, share of one core over 20 s | 14.5 % | 1.1 % |
| A game in play under Xvfb, share of one core over 20 s, two runs each, taken in turns | 20.1 %, 20.6 % | 20.1 %, 20.2 % |
| Steps per second, present waiting for a 50 / 60 Hz refresh (\`bench-frame\`, "fixed wait") | 50.00 / 60.00 | 66.63 / 66.63 |

The idle screens drew and presented the same picture 66 times a second; now a menu or the pause
screen is drawn once and again only when the screen or the cursor changes or a window event asks
for it, and a hidden or minimised window is not drawn at all. In the real window the slower
displays cost 21 % (50 Hz) and 5 % (60 Hz) of the game's speed before.

## Play beside Chocolate Doom, before and after the tile cache

Measured on 2026-11-25 on this machine with \`bench/play/play-cpu.sh BEFORE:AFTER resources 15 3\`:
three rounds, each taking in turn the game before the change (main at 95c31c0: every tile drawn
each frame, on the renderer SDL picked, OpenGL on llvmpipe), the game after it, and Chocolate
Doom, while other builds kept the load average at 7 to 11:

| Share of one core over 15 s | Round 1 | Round 2 | Round 3 |
|---|---|---|---|
| This game before | 27.7 % | 26.6 % | 27.4 % |
| This game after | 6.6 % | 6.1 % | 6.6 % |
| Chocolate Doom's demo loop, 640x480 window | 23.6 % | 22.7 % | 26.8 % |

Two more rounds the same way on a quieter machine (load average 2 to 4): the game before 34.5 %
and 34.5 %, after 8.0 % and 7.0 %, Chocolate Doom 33.9 % and 31.5 %. A loaded machine lowers the
figures of the programs drawn through llvmpipe, whose threads then get less of the processor.
In a window at twice the size (1280x960, the game's choice on a 1920x1200 desktop, Xvfb), two
rounds in turn: the game before 75.2 % and 69.6 % (35.6 % in a run an hour earlier), after 27.6 %
and 23.2 %; SDL's software renderer scales every draw there.

Two changes make the difference. The map's three tile layers, up to 1008 tile draws a frame
(21 x 16 cells in each of three layers), are drawn once into two textures the size of the map,
the ground with its objects and the tiles above the actors; a frame copies the view out of the
first and blends from the second only the rectangles that hold tiles, and a cell whose
codes change (a door or a box opened) is drawn again alone. And where SDL's OpenGL renderer turns
out to be drawn by the processor (Mesa's llvmpipe, softpipe or swrast, as under Xvfb), the game
takes SDL's software renderer instead, with its frame shown through X's shared memory rather than
through another OpenGL texture; \`SDL_RENDER_DRIVER\` still chooses any renderer. Each change alone,
measured the same way (two runs each, the renderer named by \`SDL_RENDER_DRIVER\`):

| Share of one core over 15 s | Before | After |
|---|---|---|
| OpenGL on llvmpipe | 36.0 %, 33.1 % | 26.6 %, 24.2 % |
| SDL's software renderer, shown through X's shared memory (\`SDL_FRAMEBUFFER_ACCELERATION=0\`) | 9.7 %, 9.6 % | 6.9 %, 6.7 % |

(OpenGL named by \`SDL_RENDER_DRIVER\` costs a few points more than the same renderer picked by
default, 29 to 33 % in runs beside it; why was not looked into.) On llvmpipe the cost is the
pixels: a full-screen copy out of the ground texture alone costs about 16 % of a core at 66
frames a second, which is why the tiles above the actors are blended only where there are some.
Chocolate Doom given the same software path (\`SDL_RENDER_DRIVER=software
SDL_FRAMEBUFFER_ACCELERATION=0\`) took 8.5 % in one run. \`bench-render\`, one busy frame into an
off-screen surface on the software renderer, the same day: 963 us from the cache, 2041 us tile by
tile (medians, a loaded machine).

The picture is the same pixel for pixel: \`PixelTest.CachedTilesMatchTilesDrawnOneByOne\` draws the
map both ways at five cameras, players outdoors and under the roofs, a door group and a box shut
and open, with tiles see-through in places, and compares every pixel.

## Where the time of play went before the tile cache

A game in play draws a frame after every step, 66 a second, and under Xvfb SDL's renderer runs
on Mesa's software OpenGL (llvmpipe). A \`perf\` profile of the game in play over 8 s
(\`KMVT_BENCH_PERF=file bench/idle/idle-menu-cpu.sh GAME RESOURCES 8 play\`): 58 % in
llvmpipe's compiled rasterising code, 27 % in Mesa's software driver (swrast_dri.so), 7 % in the
kernel, 3 % in SDL, 3 % in the C library and 1.5 % in the game itself. Its steps, drawing calls
included, are a small part; the picture's pixels are the processor's work where a graphics card
would do them. SDL's own software renderer costs about the same (19 % in one run) when SDL shows its
frame through an OpenGL texture, as it does by default; shown through X's shared memory it is a
third of that (above). Mesa's thread count changes nothing.

## A bigger window: the picture drawn once, scaled once

The picture is drawn at 640x480 into a texture of its own, and that texture is copied to the
window once a frame, scaled to the largest 4:3 rectangle that fits, with black bars filled around
it in full screen. Before, the renderer's logical size scaled every tile copy, sprite and picture
as it was drawn, so a window of twice the size cost several times as much. At 1x the picture is
the same pixel for pixel as before: \`PixelTest.FrameScaledOnceIsTheFrameDrawnStraight\` draws one
frame both ways and compares every pixel, and checks the 2x and the 1920x1080 pictures pixel by
pixel against it. The pointer's place is the window's: the input maps it through the same
rectangle. Where the device cannot draw into a texture, the renderer's logical size scales each
draw as before.

Scaling quality: a whole multiple of 640x480 (every window the game opens) is sampled nearest,
each game pixel a sharp square, as pixel art is meant to look. Between whole multiples (full
screen on most screens: 2.25 on 1920x1080) nearest sampling makes some rows and columns a pixel
wider than their neighbours, which shimmers as the view scrolls; there a graphics card filters
linearly, at no cost to the processor. SDL's software renderer (under Xvfb, or without a graphics
driver) filters on the processor at several times the price of nearest sampling, one more pass
over 1.5 million pixels a frame; there the picture stays nearest-sampled, uneven pixels and all.

Measured on 2026-11-25 with \`bench/play/play-cpu.sh BEFORE:AFTER resources 15 1\`, before (main at
0a332d5) and after in one run, each size in turn, while other builds kept the load average at 6 to 9
on the two cores (so the figures are lower and noisier than on a quiet machine):

| Share of one core over 15 s | 640x480 window (1920x1080 display) | 1280x960 window (2560x1440) | Full screen 1920x1080 |
|---|---|---|---|
| This game before | 5.1 % | 15.9 % | 17.6 % |
| This game after | 6.2 % | 9.1 % | 12.5 % |
| Chocolate Doom's demo loop, same size | 15.7 % | 16.1 % | 22.8 % |

Every size costs less than Chocolate Doom at the same size. The goal of at most 1.3 times the 1x
cost for 2x and full screen is not met: 1.5 and 2.0 times in this run. What is left is the one
scaled copy (1.2 million pixels a frame at 2x, 1.6 million at 2.25 with the bars), 66 times a
second, on the processor; at 1x the copy of the frame costs about a point more than drawing
straight into the window did.

## How to reproduce

\`\`\`sh
scripts/bench.sh
\`\`\`

It installs what it needs, builds in \`build/bench\` and rewrites this page. Each program also
runs on its own from that folder, with \`--resources=\` naming the folder that holds \`resources/\`.

## Online play

Two autoplay programs on this machine's loopback, a bot a machine, play 2,000 steps of a
two-player game (and the menus around it) through the test tree's impairment relay, at round
trips of 0, 50, 100 and 200 ms, without and with 5 % loss each way (\`bench/net/online-bench.sh\`).
The input delay D is the one the host chose at connect; a step time waited is one in which no step
could run for want of the partner's input. Bytes per second are UDP payload, ENet's headers
included, counted by the relay over the whole session. Goals: 66.67 steps/s within 1 % whenever
the round trip is under D × 15 ms; at 100 ms and 5 % loss, fewer than 1 waited step in 100; under
4 kB/s each way.

$(cat "$out/online.md")

## The frame loop

\`\`\`
$(cat "$out/frame.txt")
\`\`\`

## The autoplay games

\`\`\`
$(cat "$out/game.txt")
\`\`\`
EOF
echo "== Wrote $doc"
