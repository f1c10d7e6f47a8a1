#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds the game's Debian package with CPack and checks it with lintian:
#   scripts/package.sh      writes build/package/kormaveth2d_<version>_<arch>.deb
# The package follows Debian's layout for games (/usr/games/kormaveth2d, the data in
# /usr/share/games/kormaveth2d); its Depends line is worked out by dpkg-shlibdeps from the
# libraries the game links. KMVT_PACKAGE_BUILD names another build folder.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh package
build=${KMVT_PACKAGE_BUILD:-build/package}

# Debian's hardening flags (fortified functions, stack protector, read-only relocations bound at
# start, position-independent executable).
export DEB_BUILD_MAINT_OPTIONS=hardening=+all
CXXFLAGS="$(dpkg-buildflags --get CPPFLAGS) $(dpkg-buildflags --get CXXFLAGS)"
LDFLAGS="$(dpkg-buildflags --get LDFLAGS)"
export CXXFLAGS LDFLAGS

echo "== Release build for /usr in $build"
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX=/usr \
      -DCMAKE_INSTALL_BINDIR=games -DKMVT_INSTALL_DATADIR=share/games/kormaveth2d \
      -DKMVT_BUILD_TESTS=OFF -DKMVT_BUILD_TOOLS=OFF -DKMVT_BUILD_BENCHMARKS=OFF > /dev/null
cmake --build "$build" -j"$(nproc)"

echo "== Package"
rm -f "$build"/kormaveth2d_*.deb
(cd "$build" && cpack -G DEB > /dev/null)
deb=$(ls "$build"/kormaveth2d_*.deb)
dpkg-deb --field "$deb" Package Version Architecture Installed-Size Depends
echo "Size: $(stat -c %s "$deb") bytes"

echo "== lintian"
lintian --info "$deb" || { echo "lintian found errors in $deb" >&2; exit 1; }
echo "$deb"
