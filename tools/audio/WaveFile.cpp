// SPDX-License-Identifier: GPL-3.0-or-later
#include "WaveFile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <vector>

namespace {

void Put16( std::vector<uint8_t> &out, uint32_t value ) {
	out.push_back( uint8_t( value ) );
	out.push_back( uint8_t( value >> 8 ) );
}

void Put32( std::vector<uint8_t> &out, uint32_t value ) {
	Put16( out, value & 0xFFFF );
	Put16( out, value >> 16 );
}

void PutTag( std::vector<uint8_t> &out, const char *tag ) {
	out.insert( out.end(), tag, tag + 4 );
}

}	// namespace

bool WriteWaveFile( const std::string &path, const tSamples &samples ) {
	const uint32_t dataBytes = uint32_t( samples.size() * 2 );
	std::vector<uint8_t> file;
	PutTag( file, "RIFF" );
	Put32( file, 36 + dataBytes );
	PutTag( file, "WAVE" );
	PutTag( file, "fmt " );
	Put32( file, 16 );
	Put16( file, 1 );						// PCM
	Put16( file, 1 );						// mono
	Put32( file, SAMPLE_RATE );
	Put32( file, SAMPLE_RATE * 2 );			// bytes per second
	Put16( file, 2 );						// block alignment
	Put16( file, 16 );						// bits per sample
	PutTag( file, "data" );
	Put32( file, dataBytes );
	for ( float s : samples ) {
		const long value = std::lround( std::clamp( s, -1.0f, 1.0f ) * 32767.0f );
		Put16( file, uint32_t( int16_t( value ) ) & 0xFFFF );
	}
	FILE *out = std::fopen( path.c_str(), "wb" );
	if ( out == nullptr ) {
		std::fprintf( stderr, "cannot write %s\n", path.c_str() );
		return false;
	}
	const bool written = std::fwrite( file.data(), 1, file.size(), out ) == file.size();
	return std::fclose( out ) == 0 && written;
}
