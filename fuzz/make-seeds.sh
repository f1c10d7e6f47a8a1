#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Writes the fuzz targets' seed corpora from the game's own resource files into a folder:
#   fuzz/make-seeds.sh OUT     makes OUT/map, OUT/wave, OUT/picture and OUT/replay
# map:     the four map layers, and the walk layer on one line with tabs and with CRLF line ends.
# wave:    every sound; the long music files cut to their header and 16 KiB of samples (the data
#          size rewritten) so they stay small inputs, and the item sound relabelled 8-bit mono.
# picture: every picture and the window icon, and the cursor in other formats (when ImageMagick is
#          at hand), which the loader, decoding PNG only, must refuse without harm.
# replay:  the recorded games of tests/replays/.
# net:     one packet of each kind the online game sends, its steps inside the check's window.
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:?usage: fuzz/make-seeds.sh OUT}
rm -rf "$out"
mkdir -p "$out/map" "$out/wave" "$out/picture" "$out/replay" "$out/net"

max_wave_samples=16384		# in bytes: whole frames of every format the game takes

# Little-endian bytes of a 16- or 32-bit value, for patching a WAV header.
le16() { printf '\\x%02x\\x%02x' $(( $1 & 255 )) $(( ($1 >> 8) & 255 )); }
le32() { le16 $(( $1 & 65535 )); le16 $(( ($1 >> 16) & 65535 )); }

make_map_seeds() {
  cp resources/map/basemap.txt resources/map/objectmap.txt resources/map/walkmap.txt resources/map/overmap.txt "$out/map/"
  tr '\n ' '\t\t' < resources/map/walkmap.txt > "$out/map/walkmap-one-line.txt"
  sed 's/$/\r/' resources/map/objectmap.txt > "$out/map/objectmap-crlf.txt"
}

make_wave_seeds() {
  local file name size
  for file in resources/audio/*.wav; do
    name=$(basename "$file")
    size=$(stat -c %s "$file")
    if (( size - 44 > max_wave_samples )); then
      { head -c 40 "$file"; printf "$(le32 $max_wave_samples)"; head -c $(( 44 + max_wave_samples )) "$file" | tail -c +45; } \
        > "$out/wave/$name"
    else
      cp "$file" "$out/wave/$name"
    fi
  done
  # 8-bit mono: block alignment 1, as many bytes per second as samples.
  file=resources/audio/item.wav
  { head -c 22 "$file"; printf "$(le16 1)$(le32 22050)$(le32 22050)$(le16 1)$(le16 8)"; tail -c +37 "$file"; } \
    > "$out/wave/item-8bit-mono.wav"
}

make_picture_seeds() {
  cp resources/menu/*.png resources/sprites/*.png resources/map/tiles.png resources/icon/kmvt.ico "$out/picture/"
  if ! command -v convert > /dev/null; then
    echo "fuzz/make-seeds.sh: no ImageMagick, the picture seeds are PNG and ICO only" >&2
    return
  fi
  local format
  for format in bmp gif tga ppm pcx xpm jpg tif webp; do
    convert resources/menu/mouse.png "$out/picture/mouse.$format" 2> /dev/null || true
  done
}

make_map_seeds
make_wave_seeds
make_picture_seeds
cp tests/replays/*.kmr "$out/replay/" 2> /dev/null || true

make_net_seeds() {
  printf '\x01\x01\x051.0.0\x01\x02\x03\x04\x05\x06\x07\x08\x11\x12\x13\x14\x15\x16\x17\x18\x00' > "$out/net/hello"
  printf '\x02\x05\x10\x27\x00\x00\x80\x80\x80\x80\x0c' > "$out/net/start"
  printf '\x03\x64\x64\x03\x05\x01\x11\x11\x20\x40\x02\x00' > "$out/net/inputs"
  printf '\x04\x78\x01\x02\x03\x04\x05\x06\x07\x08\x02\x01\x04game\x05scene\x01\x00\x00\x00\x02\x00\x00\x00' > "$out/net/hash"
  printf '\x05\x10\x27\x00\x00' > "$out/net/ping"
  printf '\x07\x01\x78' > "$out/net/bye"
}
make_net_seeds
