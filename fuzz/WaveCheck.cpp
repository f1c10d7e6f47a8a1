// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/InputChecks.h"

#include <cstdio>
#include <cstring>

#include "fuzz/FuzzScratch.h"
#include "sound/WaveReader.h"

namespace {

const size_t HEADER_SIZE = 44;			// in bytes; the samples start right after it
const size_t DATA_SIZE_AT = 40;
const uint32_t LOWEST_RATE = 8000;		// in Hz, the slowest sound the output takes
const uint32_t HIGHEST_RATE = 96000;	// in Hz

struct cWaveRead {
	bool			read = false;
	cWave			wave;
	std::string		error;
};

uint32_t ReadU32( const uint8_t *bytes ) {
	return static_cast<uint32_t>( bytes[0] ) | ( static_cast<uint32_t>( bytes[1] ) << 8 ) |
		   ( static_cast<uint32_t>( bytes[2] ) << 16 ) | ( static_cast<uint32_t>( bytes[3] ) << 24 );
}

bool IsSameFormat( const cWaveFormat &a, const cWaveFormat &b ) {
	return a.channels == b.channels && a.samplesPerSecond == b.samplesPerSecond && a.bitsPerSample == b.bitsPerSample;
}

std::string FindBrokenAgreement( const cWaveRead &memory, const cWaveRead &file ) {
	if ( memory.read != file.read ) {
		return memory.read ? "the file reader refused what the memory reader took" : "the memory reader refused what the file reader took";
	}
	if ( memory.error != file.error ) {
		return "the readers give different errors: '" + memory.error + "' and '" + file.error + "'";
	}
	if ( memory.wave.samples != file.wave.samples ) {
		return "the readers give different samples";
	}
	if ( memory.read && !IsSameFormat( memory.wave.format, file.wave.format ) ) {
		return "the readers give different formats";
	}
	return std::string();
}

std::string FindBrokenFormatRule( const cWaveFormat &format ) {
	if ( format.channels != 1 && format.channels != 2 ) {
		return "a sound with " + std::to_string( format.channels ) + " channels was accepted";
	}
	if ( format.bitsPerSample != 8 && format.bitsPerSample != 16 ) {
		return "a sound of " + std::to_string( format.bitsPerSample ) + " bits per sample was accepted";
	}
	if ( format.samplesPerSecond < LOWEST_RATE || format.samplesPerSecond > HIGHEST_RATE ) {
		return "a sound at " + std::to_string( format.samplesPerSecond ) + " Hz was accepted";
	}
	return std::string();
}

// An accepted sound holds the announced number of bytes from byte 44 on, in whole frames.
std::string FindBrokenSampleRule( const cWave &wave, const uint8_t *data, size_t size ) {
	const uint32_t announced = ReadU32( data + DATA_SIZE_AT );
	if ( wave.samples.size() != announced ) {
		return "the sound holds " + std::to_string( wave.samples.size() ) + " bytes where the header announces " +
			   std::to_string( announced );
	}
	if ( wave.samples.empty() || wave.samples.size() % GetFrameSize( wave.format ) != 0 ) {
		return "the sound does not hold whole frames";
	}
	if ( HEADER_SIZE + wave.samples.size() > size ||
		 std::memcmp( wave.samples.data(), data + HEADER_SIZE, wave.samples.size() ) != 0 ) {
		return "the samples are not the file's bytes from 44 on";
	}
	return std::string();
}

std::string FindBrokenReadRule( const cWaveRead &memory, const uint8_t *data, size_t size ) {
	if ( !memory.read ) {
		if ( memory.error.empty() ) {
			return "a refused sound gives no error for the log";
		}
		return memory.wave.samples.empty() ? std::string() : "a refused sound keeps samples";
	}
	if ( !memory.error.empty() ) {
		return "an accepted sound gives the error '" + memory.error + "'";
	}
	if ( size < HEADER_SIZE ) {
		return "a sound shorter than its header was accepted";
	}
	const std::string broken = FindBrokenFormatRule( memory.wave.format );
	return broken.empty() ? FindBrokenSampleRule( memory.wave, data, size ) : broken;
}

}

std::string CheckWave( const uint8_t *data, size_t size ) {
	cWaveRead memory;
	memory.read = ReadWaveMemory( data, size, memory.wave, memory.error );

	const cFuzzScratch &scratch = cFuzzScratch::Instance();
	const std::string path = scratch.WriteInput( "sound.wav", data, size );
	if ( path.empty() ) {
		return "the harness cannot write the input to " + scratch.GetPath();
	}
	const int openBefore = CountOpenFiles();
	cWaveRead file;
	file.read = ReadWaveFile( path.c_str(), file.wave, file.error );
	const bool filesKept = CountOpenFiles() == openBefore;
	std::remove( path.c_str() );

	if ( !filesKept ) {
		return "the WAV reader left a file open";
	}
	const std::string broken = FindBrokenAgreement( memory, file );
	return broken.empty() ? FindBrokenReadRule( memory, data, size ) : broken;
}
