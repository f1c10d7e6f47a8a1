#pragma once
// WAV files built byte by byte for the sound tests: canonical ones, ones whose "fmt " chunk is
// longer than the canonical 16 bytes, and headers that lie about their data.

#include <cstdint>
#include <string>
#include <vector>

struct sWaveShape {
	uint16_t		channels;
	uint32_t		rate;			// in Hz
	uint16_t		bits;			// per sample
	uint32_t		frames;
};

// Sample bytes that differ from their neighbours, so a shifted or truncated copy shows.
std::string MakeSampleBytes( uint32_t size );
// A canonical file: the 44-byte header, then the samples of MakeSampleBytes.
std::string MakeCanonicalWave( const sWaveShape &shape );
// A valid file whose "fmt " chunk carries extraBytes more than 16 (so "data" does not stand at 36).
std::string MakeLongFormatWave( const sWaveShape &shape, uint16_t extraBytes );

void PutU16( std::string &bytes, size_t at, uint16_t value );
void PutU32( std::string &bytes, size_t at, uint32_t value );
uint32_t GetU32( const std::string &bytes, size_t at );

// The sound files of the game, in id order.
extern const char *const GAME_SOUND_FILES[15];
