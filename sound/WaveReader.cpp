// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/WaveReader.h"

#include <algorithm>
#include <cstdio>
#include <new>

namespace {

const size_t HEADER_SIZE = 44;			// in bytes; the samples start right after it
const size_t CHANNELS_AT = 22;
const size_t RATE_AT = 24;
const size_t BITS_AT = 34;
const size_t DATA_SIZE_AT = 40;
const uint32_t LOWEST_RATE = 8000;		// in Hz
const uint32_t HIGHEST_RATE = 96000;	// in Hz

const char *const OPEN_FAILED = "Error opening sound file";
const char *const HEADER_FAILED = "Error reading wave file header";
const char *const FORMAT_REFUSED = "Error creating DirectSound temporary buffer";
const char *const BLOCK_FAILED = "Error creating a temporary buffer to hold wave file data";
const char *const DATA_FAILED = "Error dumping the wave file into the temporary buffer";
const char *const CLOSE_FAILED = "Error closing the wave file";

uint16_t ReadU16( const uint8_t *bytes ) {
	return static_cast<uint16_t>( bytes[0] | ( bytes[1] << 8 ) );
}

uint32_t ReadU32( const uint8_t *bytes ) {
	return static_cast<uint32_t>( bytes[0] ) | ( static_cast<uint32_t>( bytes[1] ) << 8 ) |
		   ( static_cast<uint32_t>( bytes[2] ) << 16 ) | ( static_cast<uint32_t>( bytes[3] ) << 24 );
}

// What a sound card would refuse to make a buffer of is refused here; an empty buffer included.
bool IsPlayableFormat( const cWaveFormat &format, uint32_t dataSize ) {
	if ( format.channels != 1 && format.channels != 2 ) {
		return false;
	}
	if ( format.bitsPerSample != 8 && format.bitsPerSample != 16 ) {
		return false;
	}
	if ( format.samplesPerSecond < LOWEST_RATE || format.samplesPerSecond > HIGHEST_RATE ) {
		return false;
	}
	return dataSize > 0 && dataSize % GetFrameSize( format ) == 0;
}

// Only the fields the game uses are taken; tags, chunk sizes and the format code are not looked at.
bool TakeHeader( const uint8_t *header, cWave &wave, uint32_t &dataSize, std::string &error ) {
	wave.format.channels = ReadU16( header + CHANNELS_AT );
	wave.format.samplesPerSecond = ReadU32( header + RATE_AT );
	wave.format.bitsPerSample = ReadU16( header + BITS_AT );
	dataSize = ReadU32( header + DATA_SIZE_AT );
	if ( !IsPlayableFormat( wave.format, dataSize ) ) {
		error = FORMAT_REFUSED;
		return false;
	}
	return true;
}

// Checked against what really follows the header, so a hostile size is never allocated.
bool FitsInFile( uint32_t dataSize, uint64_t bytesAfterHeader, std::string &error ) {
	if ( dataSize > bytesAfterHeader ) {
		error = DATA_FAILED;
		return false;
	}
	return true;
}

bool MakeBlock( std::vector<uint8_t> &samples, uint32_t dataSize, std::string &error ) {
	try {
		samples.resize( dataSize );
	} catch ( const std::bad_alloc & ) {
		error = BLOCK_FAILED;
		return false;
	}
	return true;
}

bool GetBytesAfterHeader( FILE *file, uint64_t &bytes ) {
	if ( std::fseek( file, 0, SEEK_END ) != 0 ) {
		return false;
	}
	const long fileSize = std::ftell( file );
	if ( fileSize < static_cast<long>( HEADER_SIZE ) ) {
		return false;
	}
	bytes = static_cast<uint64_t>( fileSize ) - HEADER_SIZE;
	return std::fseek( file, static_cast<long>( HEADER_SIZE ), SEEK_SET ) == 0;
}

// Everything between the open and the close of the file.
bool ReadOpenWave( FILE *file, cWave &wave, std::string &error ) {
	uint8_t header[HEADER_SIZE];
	if ( std::fread( header, HEADER_SIZE, 1, file ) != 1 ) {
		error = HEADER_FAILED;
		return false;
	}
	uint32_t dataSize = 0;
	if ( !TakeHeader( header, wave, dataSize, error ) ) {
		return false;
	}
	uint64_t bytesAfterHeader = 0;
	if ( !GetBytesAfterHeader( file, bytesAfterHeader ) ) {
		error = DATA_FAILED;
		return false;
	}
	if ( !FitsInFile( dataSize, bytesAfterHeader, error ) || !MakeBlock( wave.samples, dataSize, error ) ) {
		return false;
	}
	if ( std::fread( wave.samples.data(), 1, dataSize, file ) != dataSize ) {
		error = DATA_FAILED;
		return false;
	}
	return true;
}

}

uint32_t GetFrameSize( const cWaveFormat &format ) {
	return format.channels * ( format.bitsPerSample / 8u );
}

bool ReadWaveMemory( const uint8_t *bytes, size_t size, cWave &wave, std::string &error ) {
	wave = cWave();
	error.clear();
	if ( bytes == nullptr || size < HEADER_SIZE ) {
		error = HEADER_FAILED;
		return false;
	}
	uint32_t dataSize = 0;
	if ( !TakeHeader( bytes, wave, dataSize, error ) || !FitsInFile( dataSize, size - HEADER_SIZE, error ) ||
		 !MakeBlock( wave.samples, dataSize, error ) ) {
		wave.samples.clear();
		return false;
	}
	std::copy( bytes + HEADER_SIZE, bytes + HEADER_SIZE + dataSize, wave.samples.begin() );
	return true;
}

bool ReadWaveFile( const char *path, cWave &wave, std::string &error ) {
	wave = cWave();
	error.clear();
	FILE *file = std::fopen( path, "rb" );
	if ( file == nullptr ) {
		error = OPEN_FAILED;
		return false;
	}
	bool read = ReadOpenWave( file, wave, error );
	if ( std::fclose( file ) != 0 && read ) {
		error = CLOSE_FAILED;
		read = false;
	}
	if ( !read ) {
		wave.samples.clear();
	}
	return read;
}
