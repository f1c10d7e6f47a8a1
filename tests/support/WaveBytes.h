// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// WAV files built byte by byte for the sound and fuzz tests: the canonical layout, or one whose "fmt "
// chunk is longer than 16 bytes, with sample bytes that differ from their neighbours so that a
// shifted or truncated copy shows.

#include <cstdint>
#include <string>

struct sWaveShape {
	uint16_t		channels;
	uint32_t		rate;			// in Hz
	uint16_t		bits;			// per sample
	uint32_t		frames;
};

inline const char *const GAME_SOUND_FILES[15] = {		// in id order
	"menu.wav", "streets.wav", "boss.wav", "explosion.wav", "tavesh_shot.wav", "lumra_shot.wav",
	"enemy_shot.wav", "machinegun.wav", "skill.wav", "item.wav", "heartbeat.wav", "LvlComplete.wav",
	"GameOver.wav", "open_box.wav", "door_open.wav",
};

inline std::string MakeSampleBytes( uint32_t size ) {
	std::string bytes( size, '\0' );
	for ( uint32_t i = 0; i < size; i++ ) {
		bytes[i] = static_cast<char>( ( i * 7 + 3 ) & 0xff );
	}
	return bytes;
}

// Overwrites a little-endian field of width bytes (2 or 4).
inline void PutField( std::string &bytes, size_t at, uint32_t value, int width ) {
	for ( int i = 0; i < width; i++ ) {
		bytes[at + i] = static_cast<char>( ( value >> ( 8 * i ) ) & 0xff );
	}
}

// The header (44 bytes, or extraFormatBytes more), then MakeSampleBytes of the data size.
inline std::string MakeWave( const sWaveShape &shape, uint16_t extraFormatBytes = 0 ) {
	const uint16_t blockAlign = static_cast<uint16_t>( shape.channels * shape.bits / 8 );
	const uint32_t dataSize = shape.frames * blockAlign;
	const uint32_t formatSize = 16u + extraFormatBytes;
	std::string bytes = "RIFF....WAVEfmt ....";
	bytes.resize( 20 + formatSize, '\0' );
	bytes += "data....";
	PutField( bytes, 4, 4 + ( 8 + formatSize ) + ( 8 + dataSize ), 4 );
	PutField( bytes, 16, formatSize, 4 );
	PutField( bytes, 20, 1, 2 );						// PCM
	PutField( bytes, 22, shape.channels, 2 );
	PutField( bytes, 24, shape.rate, 4 );
	PutField( bytes, 28, shape.rate * blockAlign, 4 );
	PutField( bytes, 32, blockAlign, 2 );
	PutField( bytes, 34, shape.bits, 2 );
	PutField( bytes, 24 + formatSize, dataSize, 4 );
	return bytes + MakeSampleBytes( dataSize );
}
