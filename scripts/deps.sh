#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs the Debian packages a build needs when they are missing.
#   scripts/deps.sh play   what building and running the game needs
#   scripts/deps.sh test   that, plus the test suite's tools (GoogleTest, Xvfb, sanitizers, ...)
#   scripts/deps.sh package  that of play, plus what makes and checks the Debian package
#   scripts/deps.sh web    what builds the game for the browser and tests it there
set -euo pipefail

play_packages=(g++ cmake make pkg-config libsdl2-dev libsdl2-image-dev libsdl2-mixer-dev libenet-dev
               libminiupnpc-dev libnatpmp-dev libinih-dev libsdl2-ttf-dev fonts-dejavu-core)
test_packages=(googletest python3 ccache libgtest-dev libbenchmark-dev libtcod-dev libsdl2-ttf-dev fonts-dejavu-core
               xvfb xauth xdotool x11-utils x11-apps xfonts-base imagemagick clang libclang-rt-14-dev
               desktop-file-utils appstream openbox x11-xkb-utils
               miniupnpd-nftables nftables miniupnpc iproute2)
# miniupnpd-nftables is the router of the router tests, started by the tests alone: the package
# holds the program and its nft scripts, with no service that starts and no question to ask (the
# service and its questions come with the package miniupnpd, which is not installed).
package_packages=(dpkg-dev file lintian)
# The web page: the compiler, Debian's sources of the libraries, node and a browser for its tests.
web_packages=(emscripten nodejs cmake make dpkg-dev python3 chromium imagemagick fonts-dejavu-core)
# The arm64 build of the recordings' check; without them that build is skipped, and says so.
cross_packages=(g++-aarch64-linux-gnu qemu-user)

case "${1:-play}" in
  play) wanted=("${play_packages[@]}") ;;
  test) wanted=("${play_packages[@]}" "${test_packages[@]}") ;;
  package) wanted=("${play_packages[@]}" "${package_packages[@]}") ;;
  web) wanted=("${web_packages[@]}") ;;
  *) echo "usage: $0 play|test|package|web" >&2; exit 2 ;;
esac

# find_missing PACKAGE...: those not installed, into missing.
find_missing() {
  missing=()
  local package
  for package in "$@"; do
    if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q "install ok installed"; then
      missing+=("$package")
    fi
  done
}

if [ "$(id -u)" -eq 0 ]; then
  sudo=()
else
  sudo=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
updated=0
install_missing() {
  echo "Installing missing packages: ${missing[*]}"
  [ "$updated" -eq 1 ] || "${sudo[@]}" apt-get update -q
  updated=1
  "${sudo[@]}" apt-get install -y -q --no-install-recommends "${missing[@]}"
}

find_missing "${wanted[@]}"
[ ${#missing[@]} -eq 0 ] || install_missing
if [ "${1:-play}" = test ]; then
  find_missing "${cross_packages[@]}"
  if [ ${#missing[@]} -ne 0 ] && ! install_missing; then
    echo "Could not install ${missing[*]}: the arm64 recordings' check will be skipped"
  fi
fi
exit 0
