#pragma once
// The game's WAV reader: a canonical 44-byte header (channels, rate and bits per sample taken,
// the data size at byte 40) and the samples from byte 44. Hostile files are refused before any
// allocation of their announced size.

#include <cstdint>
#include <string>
#include <vector>

#include "sound/SoundBackend.h"

struct cWave {
	cWaveFormat				format;
	std::vector<uint8_t>	samples;
};

// On failure, error holds the message for the log and the result is false.
bool ReadWaveFile( const char *path, cWave &wave, std::string &error );
bool ReadWaveMemory( const uint8_t *bytes, size_t size, cWave &wave, std::string &error );
