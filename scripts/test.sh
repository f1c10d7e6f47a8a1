#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds and runs the whole test suite: the Release build with every test (the end-to-end runs of
# the real game under Xvfb included), then the same suite built with AddressSanitizer and
# UndefinedBehaviorSanitizer; then the recordings' contract on four builds, and the fuzzing.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh test
jobs=$(nproc)
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:strict_string_checks=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LSAN_OPTIONS="suppressions=$PWD/tests/lsan.supp:print_suppressions=0"

echo "== Release build and tests"
cmake -S . -B build/test -DCMAKE_BUILD_TYPE=Release -DKMVT_WERROR=ON > /dev/null
cmake --build build/test -j"$jobs"
ctest --test-dir build/test --output-on-failure -j"$jobs"

echo "== Sanitizer build and tests"
cmake -S . -B build/asan -DCMAKE_BUILD_TYPE=Debug -DKMVT_SANITIZE=ON -DKMVT_WERROR=ON -DKMVT_BUILD_TOOLS=OFF -DKMVT_BUILD_BENCHMARKS=OFF > /dev/null
cmake --build build/asan -j"$jobs"
ctest --test-dir build/asan --output-on-failure -j"$jobs"

# Every recording with one final hash, and one fingerprint, on the Release and sanitizer builds,
# a -march=native -ffp-contract=fast -O3 build and an arm64 build under qemu (skipped, and said
# so, without the cross compiler or qemu).
echo "== The recordings on every build"
contract_start=$SECONDS
scripts/replay-contract.sh
echo "== The recordings' check took $(( SECONDS - contract_start )) s"

# ---- Fuzzing (added with the fuzz targets; owned by the fuzzing work) ----------------------------
# The map layer loader, the WAV reader, the keyed picture loader and the replay reader, 45 s each
# under libFuzzer with AddressSanitizer and UndefinedBehaviorSanitizer; any finding fails the test
# command.
echo "== Fuzzing the file readers"
fuzz_start=$SECONDS
scripts/fuzz.sh 45
echo "== Fuzzing took $(( SECONDS - fuzz_start )) s"

# ---- The web build (added with the web page; owned by the web work) ------------------------------
# kmvt_verify for node against the Linux build's recordings and fingerprint, then the page in
# headless chromium; SKIPPED, and said so, where emscripten or chromium cannot be installed.
echo "== The web build"
web_start=$SECONDS
scripts/web-test.sh
echo "== The web build took $(( SECONDS - web_start )) s"
