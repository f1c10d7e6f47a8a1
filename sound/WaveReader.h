// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The game's WAV reader: a canonical 44-byte header (channels, rate and bits per sample taken,
// the data size at byte 40) and the samples from byte 44. Hostile files are refused before any
// allocation of their announced size.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "sound/SoundBackend.h"

struct cWave {
	cWaveFormat				format;
	std::vector<uint8_t>	samples;		// as they stand in the file: unsigned 8-bit or signed 16-bit little-endian
};

// On failure, error holds the message for the log, wave holds no samples and the result is false.
// A file is refused for the first of: cannot be opened, shorter than the header, a format the
// output cannot take (channels 1-2, 8 or 16 bits, 8,000-96,000 Hz, whole frames, not empty),
// a data size beyond the end of the file.
bool ReadWaveFile( const char *path, cWave &wave, std::string &error );
// The same for a file already in memory (size bytes from bytes), as a fuzzer or a tool holds it.
bool ReadWaveMemory( const uint8_t *bytes, size_t size, cWave &wave, std::string &error );

// Bytes of one sample on every channel.
uint32_t GetFrameSize( const cWaveFormat &format );
