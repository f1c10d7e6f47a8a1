#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and runs the whole test suite: the Release build with every test (the end-to-end runs of
# the real game under Xvfb included), then the same suite built with AddressSanitizer and
# UndefinedBehaviorSanitizer; then the recordings' contract on four builds, the fuzzing, and the
# game built for the browser, under node and in headless chromium.
# Each step is timed; the times are listed at the end, also when a step fails.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh test
jobs=$(nproc)
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"
# Every build goes through the compiler cache, kept outside the clone in ccache's own folder
# (under $XDG_CACHE_HOME, or ~/.cache): a fresh clone compiles again only what changed since the
# last run on the machine, wherever the clone lies.
# The folder is left out of the hash of builds with debugging information, which would otherwise
# hold it (their debugging information then names the folder of the clone that compiled first).
if command -v ccache > /dev/null; then
  export CMAKE_CXX_COMPILER_LAUNCHER=ccache CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
fi

# step NAME COMMAND...: one step, announced and timed.
times=()
step() {
  local name=$1 start=$SECONDS
  shift
  echo "== $name"
  "$@"
  times+=("$(printf '%5d s  %s' $(( SECONDS - start )) "$name")")
}
list_times() {
  echo "== Time of each step (whole run: $SECONDS s)"
  printf '%s\n' "${times[@]}"
}
trap list_times EXIT

# build FOLDER CMAKE-OPTION...: configures and builds one build folder.
build() {
  local folder=$1
  shift
  cmake -S . -B "$folder" -DKMVT_WERROR=ON "$@" > /dev/null
  cmake --build "$folder" -j"$jobs"
}
# Twice as many tests as cores at once: the online and end-to-end tests keep real time and spend
# most of it waiting, so a core would otherwise sit idle beside each.
suite() {
  ctest --test-dir "$1" --output-on-failure -j"$(( jobs * 2 ))"
}

step "Release build" build build/test -DCMAKE_BUILD_TYPE=Release
step "Release tests" suite build/test
step "Sanitizer build" build build/asan -DCMAKE_BUILD_TYPE=Debug -DKMVT_SANITIZE=ON -DKMVT_BUILD_TOOLS=OFF \
  -DKMVT_BUILD_BENCHMARKS=OFF
step "Sanitizer tests" suite build/asan
# Every recording with one final hash, and one fingerprint, on the Release and sanitizer builds,
# a -march=native -ffp-contract=fast -O3 build and an arm64 build under qemu (skipped, and said
# so, without the cross compiler or qemu).
step "The recordings on every build" scripts/replay-contract.sh
# The map layer loader, the WAV reader, the keyed picture loader, the replay reader and the online
# packet reader under libFuzzer with AddressSanitizer and UndefinedBehaviorSanitizer, each starting
# from the kept corpus; any finding fails the test command.
step "Fuzzing the file readers" scripts/fuzz.sh 20
# kmvt_verify for node against the Linux build's recordings and fingerprint, then the page in
# headless chromium; SKIPPED, and said so, where emscripten or chromium cannot be installed.
step "The web build" scripts/web-test.sh
