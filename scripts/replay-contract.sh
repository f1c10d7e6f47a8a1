#!/usr/bin/env bash
# The recordings' contract: every game of tests/replays/ plays to its end, every checkpoint
# matching, with one final state hash, and the game has one fingerprint, on each build:
#   release    the Release build (BUILD_RELEASE, build/test by default)
#   sanitizer  the sanitizer build (BUILD_SANITIZER, build/asan by default)
#   native     Release with -march=native -ffp-contract=fast -O3 added, as a packager might build
#   arm64      cross-compiled with g++-aarch64-linux-gnu, run under qemu-aarch64
# The first two are folders already configured (scripts/test.sh makes them); the last two build
# kmvt_verify alone, in build/native and build/arm64. Without the cross compiler or qemu the
# arm64 build is skipped, and the script says so. Prints one table; fails on any difference.
set -euo pipefail
cd "$(dirname "$0")/.."
jobs=$(nproc)
recordings=(tests/replays/*.kmr)
builds=()
declare -A hashes=()
failed=0

# verify NAME COMMAND...: the fingerprint and each recording's final hash by one build's checker.
verify() {
  local name=$1 output status=0
  shift
  builds+=("$name")
  hashes[$name,fingerprint]=$("$@" --version | sed -n 's/^Game fingerprint //p')
  output=$("$@" "${recordings[@]}") || status=$?
  if [ "$status" -ne 0 ]; then
    echo "$name: a recording went another way:"
    grep -B1 "went another way" <<< "$output" || echo "$output"
    failed=1
  fi
  local recording hash
  while read -r recording hash; do
    hashes[$name,$recording]=$hash
  done < <(paste <(printf '%s\n' "${recordings[@]##*/}") <(sed -n 's/^Final state hash: //p' <<< "$output"))
}

# build_verifier FOLDER CMAKE-OPTION...: kmvt_verify alone, without SDL.
build_verifier() {
  local folder=$1
  shift
  cmake --no-warn-unused-cli -S . -B "$folder" -DCMAKE_BUILD_TYPE=Release -DKMVT_VERIFIER_ONLY=ON -DKMVT_WERROR=ON "$@" > /dev/null
  cmake --build "$folder" -j"$jobs" --target kmvt_verify > /dev/null
}

for pair in "release ${BUILD_RELEASE:-build/test}" "sanitizer ${BUILD_SANITIZER:-build/asan}"; do
  read -r name folder <<< "$pair"
  cmake --build "$folder" -j"$jobs" --target kmvt_verify > /dev/null
  verify "$name" "$folder/kmvt_verify"
done

start=$SECONDS
build_verifier build/native "-DCMAKE_CXX_FLAGS=-march=native -ffp-contract=fast -O3"
echo "native build: $(( SECONDS - start )) s"
verify native build/native/kmvt_verify

missing=()
command -v aarch64-linux-gnu-g++ > /dev/null || missing+=("aarch64-linux-gnu-g++ (Debian: g++-aarch64-linux-gnu)")
command -v qemu-aarch64 > /dev/null || missing+=("qemu-aarch64 (Debian: qemu-user)")
if [ ${#missing[@]} -eq 0 ]; then
  start=$SECONDS
  build_verifier build/arm64 -DCMAKE_TOOLCHAIN_FILE=cmake/aarch64-linux-gnu.cmake
  echo "arm64 build: $(( SECONDS - start )) s"
  verify arm64 qemu-aarch64 -L /usr/aarch64-linux-gnu build/arm64/kmvt_verify
else
  echo "SKIPPED: the arm64 build, for want of ${missing[*]}"
fi

# One row per recording, one column per build; a row whose hashes differ is marked.
printf '%-52s' "recording"
printf ' %-16s' "${builds[@]}"
echo
for row in fingerprint "${recordings[@]##*/}"; do
  printf '%-52s' "$row"
  distinct=()
  for name in "${builds[@]}"; do
    hash=${hashes[$name,$row]:-none}
    printf ' %-16s' "$hash"
    [[ " ${distinct[*]} " == *" $hash "* ]] || distinct+=("$hash")
  done
  if [ ${#distinct[@]} -ne 1 ] || [ "${distinct[0]}" = none ]; then
    printf '  DIFFERS'
    failed=1
  fi
  echo
done
if [ "$failed" -ne 0 ]; then
  echo "The recordings' contract is broken: see above"
  exit 1
fi
echo "Every recording replays with one final hash on: ${builds[*]}"
