#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Fuzzes the game's readers (map layers, WAV files, pictures with the colour key, replays, online packets) with
# libFuzzer, AddressSanitizer and UndefinedBehaviorSanitizer, each target for N seconds, as many
# targets at once as there are cores (KMVT_FUZZ_JOBS for another number):
#   scripts/fuzz.sh          60 s per target (the test command runs 20 s each)
#   scripts/fuzz.sh 600      a longer session
#   scripts/fuzz.sh 60 wave  only the named targets (map, wave, picture, replay, net)
# Prints per target the executions, libFuzzer's final coverage (cov: code edges, ft: features) and
# the findings, and fails when any target found one. Every run starts from the corpus kept in the
# repository (fuzz/corpus/, what earlier sessions found, merged small) and the seeds; the corpora
# grow in build/fuzz/corpus/ from run to run (KMVT_FUZZ_BUILD names another build folder);
# findings land in build/fuzz/findings/. After a long session, scripts/fuzz.sh --keep merges what
# it found into fuzz/corpus/, to be committed.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
keep=0
if [ "${1:-}" = --keep ]; then
  keep=1
  shift
fi
seconds=${1:-60}
build=${KMVT_FUZZ_BUILD:-build/fuzz}
[[ $build = /* ]] || build=$root/$build
targets=(map wave picture replay net)
if (( $# > 1 )); then
  targets=("${@:2}")
fi

echo "== Fuzz build (clang, libFuzzer, ASan, UBSan) in $build"
cmake -S . -B "$build" -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=Debug -DKMVT_FUZZ=ON \
      -DKMVT_BUILD_TESTS=OFF -DKMVT_BUILD_TOOLS=OFF -DKMVT_BUILD_BENCHMARKS=OFF > /dev/null
cmake --build "$build" -j"$(nproc)" --target "${targets[@]/#/kmvt_fuzz_}" > "$build/fuzz-build.log" 2>&1 ||
  { cat "$build/fuzz-build.log"; exit 1; }
fuzz/make-seeds.sh "$build/seeds"

export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$root/tests/lsan.supp:print_suppressions=0"

# The last value libFuzzer printed for a field such as "cov:" or "stat::number_of_executed_units:".
last_field() {
  grep -o -- "$1 *[0-9]*" "$2" | tail -n 1 | grep -o '[0-9]*$' || echo "?"
}

# Runs one target in a folder of its own, so that its log and scratch files stay there; the
# scratch folder must be gone when the target ends.
run_target() {
  local name=$1 run=$build/run/$1 corpus=$build/corpus/$1 found=$build/findings/$1
  rm -rf "$run"
  mkdir -p "$run/tmp" "$corpus" "$found"
  local status=0 kept=()
  [ -d "$root/fuzz/corpus/$name" ] && kept=("$root/fuzz/corpus/$name")
  ( cd "$run" && TMPDIR="$run/tmp" "$build/fuzz/kmvt_fuzz_$name" -max_total_time="$seconds" -timeout=25 \
      -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$found/" "$corpus" "${kept[@]}" \
      "$build/seeds/$name" \
      > "$run/fuzz.log" 2>&1 ) || status=$?
  local findings left
  findings=$(find "$found" -type f -newer "$run/tmp" | wc -l)
  left=$(find "$run/tmp" -mindepth 1 | wc -l)
  printf "%-8s %10s runs  cov %5s  ft %6s  corpus %5s  findings %s  exit %s\n" "$name" \
    "$(last_field stat::number_of_executed_units: "$run/fuzz.log")" "$(last_field cov: "$run/fuzz.log")" \
    "$(last_field ft: "$run/fuzz.log")" "$(find "$corpus" -type f | wc -l)" "$findings" "$status"
  if (( status != 0 || findings != 0 )); then
    grep -E "ERROR|kmvt fuzz|SUMMARY|#[0-9]+ in |Test unit written" "$run/fuzz.log" | head -n 40 || true
    echo "   whole log: $run/fuzz.log; replay: $build/fuzz/kmvt_fuzz_$name FILE;" \
         "keep the input under tests/fuzz-regressions/$name/"
    return 1
  fi
  if (( left != 0 )); then
    echo "   the target left $left temporary files in $run/tmp"
    return 1
  fi
}

# keep_corpus NAME: the inputs of the kept corpus and of this build's that add coverage, merged
# into the kept corpus.
keep_corpus() {
  local name=$1 merged=$build/merged/$1
  rm -rf "$merged"
  mkdir -p "$merged" "$root/fuzz/corpus/$name"
  "$build/fuzz/kmvt_fuzz_$name" -merge=1 -rss_limit_mb=2048 "$merged" "$root/fuzz/corpus/$name" \
    "$build/corpus/$name" > "$build/run/$name/merge.log" 2>&1
  rm -rf "$root/fuzz/corpus/$name"
  mv "$merged" "$root/fuzz/corpus/$name"
  echo "$name: $(find "$root/fuzz/corpus/$name" -type f | wc -l) inputs kept in fuzz/corpus/$name"
}

jobs=${KMVT_FUZZ_JOBS:-$(nproc)}
echo "== Fuzzing each reader for $seconds s, $jobs at a time"
mkdir -p "$build/run"
running=0
for name in "${targets[@]}"; do
  if (( running >= jobs )); then
    wait -n || true
    running=$(( running - 1 ))
  fi
  { status=0; run_target "$name" || status=$?; echo "$status" > "$build/run/$name.status"; } > "$build/run/$name.txt" 2>&1 &
  running=$(( running + 1 ))
done
wait
failed=0
for name in "${targets[@]}"; do
  cat "$build/run/$name.txt"
  [ "$(cat "$build/run/$name.status" 2>/dev/null)" = 0 ] || failed=1
  if (( keep )); then
    keep_corpus "$name"
  fi
done
exit $failed
