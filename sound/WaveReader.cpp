#include "sound/WaveReader.h"

#include <cstdio>
#include <cstring>

namespace {

const size_t HEADER_SIZE = 44;
const uint32_t LOWEST_RATE = 8000;		// in Hz
const uint32_t HIGHEST_RATE = 96000;	// in Hz

uint16_t ReadU16( const uint8_t *bytes ) {
	return static_cast<uint16_t>( bytes[0] | ( bytes[1] << 8 ) );
}

uint32_t ReadU32( const uint8_t *bytes ) {
	return static_cast<uint32_t>( bytes[0] ) | ( static_cast<uint32_t>( bytes[1] ) << 8 ) |
		   ( static_cast<uint32_t>( bytes[2] ) << 16 ) | ( static_cast<uint32_t>( bytes[3] ) << 24 );
}

// The formats the output can take: what a sound card would refuse is refused here.
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
	const uint32_t frameSize = format.channels * ( format.bitsPerSample / 8u );
	return dataSize % frameSize == 0;
}

bool ReadHeader( const uint8_t header[HEADER_SIZE], cWaveFormat &format, uint32_t &dataSize ) {
	format.channels = ReadU16( header + 22 );
	format.samplesPerSecond = ReadU32( header + 24 );
	format.bitsPerSample = ReadU16( header + 34 );
	dataSize = ReadU32( header + 40 );
	return IsPlayableFormat( format, dataSize );
}

}

bool ReadWaveMemory( const uint8_t *bytes, size_t size, cWave &wave, std::string &error ) {
	if ( bytes == nullptr || size < HEADER_SIZE ) {
		error = "Error reading wave file header";
		return false;
	}
	uint32_t dataSize = 0;
	if ( !ReadHeader( bytes, wave.format, dataSize ) ) {
		error = "Error creating DirectSound temporary buffer";
		return false;
	}
	if ( dataSize > size - HEADER_SIZE ) {
		error = "Error dumping the wave file into the temporary buffer";
		return false;
	}
	wave.samples.assign( bytes + HEADER_SIZE, bytes + HEADER_SIZE + dataSize );
	return true;
}

// The file's real size is known before the samples are read, so an announced size beyond the end
// of the file never reaches the allocation.
bool ReadWaveFile( const char *path, cWave &wave, std::string &error ) {
	FILE *file = std::fopen( path, "rb" );
	if ( file == nullptr ) {
		error = "Error opening sound file";
		return false;
	}
	uint8_t header[HEADER_SIZE];
	bool ok = std::fread( header, HEADER_SIZE, 1, file ) == 1;
	error = ok ? "" : "Error reading wave file header";
	uint32_t dataSize = 0;
	if ( ok && !ReadHeader( header, wave.format, dataSize ) ) {
		error = "Error creating DirectSound temporary buffer";
		ok = false;
	}
	long fileSize = 0;
	if ( ok ) {
		ok = std::fseek( file, 0, SEEK_END ) == 0 && ( fileSize = std::ftell( file ) ) >= 0 &&
			 static_cast<uint64_t>( fileSize ) - HEADER_SIZE >= dataSize &&
			 std::fseek( file, static_cast<long>( HEADER_SIZE ), SEEK_SET ) == 0;
		error = ok ? "" : "Error dumping the wave file into the temporary buffer";
	}
	if ( ok ) {
		wave.samples.resize( dataSize );
		ok = dataSize == 0 || std::fread( wave.samples.data(), 1, dataSize, file ) == dataSize;
		error = ok ? "" : "Error dumping the wave file into the temporary buffer";
	}
	if ( std::fclose( file ) != 0 && ok ) {
		error = "Error closing the wave file";
		ok = false;
	}
	return ok;
}
