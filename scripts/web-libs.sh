#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Builds SDL2, SDL2_image (PNG through libpng and zlib), SDL2_mixer (WAV) and SDL2_ttf (through
# FreeType) for the browser with emscripten, from Debian's own source packages, and prints the folder that holds them (include/
# and lib/). The result is kept outside the clone, in
#   ${XDG_CACHE_HOME:-~/.cache}/kormaveth2d/web-libs/KEY
# where KEY follows the source versions, the compiler's version and this script, so a second run
# costs a second and any change builds afresh. Everything but the last line goes to stderr.
set -euo pipefail
packages=(libsdl2 libsdl2-image libsdl2-mixer zlib libpng1.6 freetype libsdl2-ttf)
cache_root=${XDG_CACHE_HOME:-$HOME/.cache}/kormaveth2d/web-libs
jobs=$(nproc)
export NODE_PATH=${NODE_PATH:-/usr/share/nodejs}
exec 3>&1 1>&2

if [ "$(id -u)" -eq 0 ]; then sudo=(); else sudo=(sudo); fi

# apt-get source needs deb-src lines; they are added beside the machine's own deb lines, for the
# same mirrors and suites.
ensure_source_lines() {
  apt-cache showsrc libsdl2 2> /dev/null | grep -q '^Package:' && return
  echo "Adding deb-src lines for Debian's own mirrors"
  if [ -f /etc/apt/sources.list.d/debian.sources ]; then
    sed 's/^Types: deb$/Types: deb-src/' /etc/apt/sources.list.d/debian.sources |
      "${sudo[@]}" tee /etc/apt/sources.list.d/kormaveth2d-src.sources > /dev/null
  fi
  if [ -f /etc/apt/sources.list ] && grep -q '^deb ' /etc/apt/sources.list; then
    sed -n 's/^deb /deb-src /p' /etc/apt/sources.list |
      "${sudo[@]}" tee /etc/apt/sources.list.d/kormaveth2d-src.list > /dev/null
  fi
  "${sudo[@]}" apt-get update -q -o DPkg::Lock::Timeout=300
}

ensure_source_lines
# The source versions Debian offers; the key follows them.
versions=$(for package in "${packages[@]}"; do
  echo "$package $(apt-cache showsrc --only-source "$package" | sed -n 's/^Version: //p' | sort -V | tr '\n' ' ')"
done)
key=$( { echo "$versions"; emcc --version | sed -n 1p; cat "$0"; } | sha256sum | cut -c1-16)
prefix=$cache_root/$key
if [ -f "$prefix/done" ]; then
  echo "$prefix" >&3
  exit 0
fi

echo "Building the web libraries (once; kept in $prefix):"
echo "$versions"
work=$cache_root/build-$key
rm -rf "$cache_root"/build-*		# this one's last try, and those of older keys
mkdir -p "$work/src" "$work/prefix/include" "$work/prefix/lib"
out=$work/prefix
# fetch PACKAGE: its source, the newest version the mirror still serves.
fetch() {
  local version
  for version in $(apt-cache showsrc --only-source "$1" | sed -n 's/^Version: //p' | sort -rV); do
    apt-get source -qq --download-only "$1=$version" 2> /dev/null && return
  done
  echo "Could not download the source of $1"
  return 1
}
cd "$work/src"
for package in "${packages[@]}"; do fetch "$package"; done
for dsc in *.dsc; do dpkg-source -x --no-check "$dsc" > /dev/null; done
cd - > /dev/null
src() { find "$work/src" -maxdepth 1 -type d -name "$1-[0-9]*" | head -1; }
cflags=(-O2 -I"$out/include" -I"$out/include/SDL2")

# compile_library NAME FOLDER DEFINE... -- FILE...: a static library of the files named.
compile_library() {
  local name=$1 folder=$2 defines=() objects=()
  shift 2
  while [ "$1" != -- ]; do defines+=("$1"); shift; done
  shift
  mkdir -p "$work/obj-$name"
  local file
  for file in "$@"; do
    objects+=("$work/obj-$name/$(basename "${file%.c}").o")
    emcc "${cflags[@]}" "${defines[@]}" -c "$folder/$file" -o "${objects[-1]}" &
    [ "$(jobs -r | wc -l)" -lt "$jobs" ] || wait -n
  done
  wait
  emar rcs "$out/lib/lib$name.a" "${objects[@]}"
}

start=$SECONDS
zlib=$(src zlib)
compile_library z "$zlib" -DHAVE_UNISTD_H -- adler32.c compress.c crc32.c deflate.c gzclose.c gzlib.c gzread.c \
  gzwrite.c infback.c inffast.c inflate.c inftrees.c trees.c uncompr.c zutil.c
cp "$zlib"/zlib.h "$zlib"/zconf.h "$out/include/"

png=$(src libpng1.6)
cp "$png/scripts/pnglibconf.h.prebuilt" "$png/pnglibconf.h"
compile_library png16 "$png" -- png.c pngerror.c pngget.c pngmem.c pngpread.c pngread.c pngrio.c \
  pngrtran.c pngrutil.c pngset.c pngtrans.c pngwio.c pngwrite.c pngwtran.c pngwutil.c
cp "$png"/png.h "$png"/pngconf.h "$png"/pnglibconf.h "$out/include/"
echo "zlib and libpng: $(( SECONDS - start )) s"

start=$SECONDS
emcmake cmake -S "$(src libsdl2)" -B "$work/sdl2" -DCMAKE_BUILD_TYPE=Release \
  -DCMAKE_INSTALL_PREFIX="$out" -DSDL_SHARED=OFF -DSDL_STATIC=ON -DSDL_TEST=OFF > /dev/null
cmake --build "$work/sdl2" -j"$jobs" > /dev/null
cmake --install "$work/sdl2" > /dev/null
echo "SDL2: $(( SECONDS - start )) s"

start=$SECONDS
image=$(src libsdl2-image)
compile_library SDL2_image "$image" -DLOAD_PNG -DSDL_IMAGE_USE_COMMON_BACKEND -- \
  $(cd "$image" && ls IMG*.c src/IMG*.c 2> /dev/null | grep -v IMG_WIC)
cp "$image"/SDL_image.h "$image"/include/SDL_image.h "$out/include/SDL2/" 2> /dev/null || true
mixer=$(src libsdl2-mixer)
compile_library SDL2_mixer "$mixer" -DMUSIC_WAV -I"$mixer/src" -I"$mixer/src/codecs" -I"$mixer/include" -- \
  $(cd "$mixer" && ls src/*.c src/codecs/*.c 2> /dev/null)
cp "$mixer"/include/SDL_mixer.h "$out/include/SDL2/"
echo "SDL2_image and SDL2_mixer: $(( SECONDS - start )) s"

# FreeType as Debian builds it, on the zlib above, less what a TrueType font does not need: no
# HarfBuzz (SDL2_ttf lays out a line itself), no Brotli (WOFF2), no bzip2 (compressed bitmap
# fonts), no PNG (colour bitmap glyphs).
start=$SECONDS
emcmake cmake -S "$(src freetype)" -B "$work/freetype" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$out" \
  -DBUILD_SHARED_LIBS=OFF -DFT_DISABLE_HARFBUZZ=ON -DFT_DISABLE_BROTLI=ON -DFT_DISABLE_BZIP2=ON -DFT_DISABLE_PNG=ON \
  -DFT_REQUIRE_ZLIB=ON -DZLIB_LIBRARY="$out/lib/libz.a" -DZLIB_INCLUDE_DIR="$out/include" > /dev/null
cmake --build "$work/freetype" -j"$jobs" > /dev/null
cmake --install "$work/freetype" > /dev/null
ttf=$(src libsdl2-ttf)
compile_library SDL2_ttf "$ttf" -DTTF_USE_HARFBUZZ=0 -I"$out/include/freetype2" -- SDL_ttf.c
cp "$ttf"/SDL_ttf.h "$out/include/SDL2/"
echo "FreeType and SDL2_ttf: $(( SECONDS - start )) s"

mv "$out" "$prefix"
touch "$prefix/done"
rm -rf "$work"
echo "$prefix" >&3
