// SPDX-License-Identifier: GPL-3.0-or-later
// The game's WAV reader on files written here: every format the output takes, a layout other than
// the canonical one read as if it were canonical, and files it must refuse without misbehaving.

#include "sound/WaveReader.h"

#include <gtest/gtest.h>

#include <string>

#include "AllocationCounter.h"
#include "TempDir.h"
#include "WaveBytes.h"

namespace {

const char *const HEADER_FAILED = "Error reading wave file header";
const char *const FORMAT_REFUSED = "Error creating DirectSound temporary buffer";
const char *const DATA_FAILED = "Error dumping the wave file into the temporary buffer";

const size_t CHANNELS_AT = 22;
const size_t RATE_AT = 24;
const size_t BITS_AT = 34;
const size_t DATA_SIZE_AT = 40;
const sWaveShape STEREO_16 = { 2, 44100, 16, 100 };		// 400 bytes of samples

struct sReadResult {
	bool			read;
	std::string		error;
	cWave			wave;
	std::string		samples;
};

// Reads the bytes from a file and from memory: the two readers must agree.
sReadResult ReadBothWays( const std::string &bytes ) {
	cTempDir folder;
	folder.WriteFile( "sound.wav", bytes );
	sReadResult file;
	file.read = ReadWaveFile( folder.GetFile( "sound.wav" ).c_str(), file.wave, file.error );
	sReadResult memory;
	memory.read = ReadWaveMemory( reinterpret_cast<const uint8_t *>( bytes.data() ), bytes.size(), memory.wave,
								  memory.error );
	EXPECT_TRUE( file.read == memory.read && file.error == memory.error && file.wave.samples == memory.wave.samples )
		<< "the file reader (\"" << file.error << "\") and the memory reader (\"" << memory.error << "\") disagree";
	file.samples.assign( file.wave.samples.begin(), file.wave.samples.end() );
	return file;
}

// The stereo 16-bit file with one header field of width bytes overwritten.
std::string WithField( size_t at, uint32_t value, int width = 4 ) {
	std::string bytes = MakeWave( STEREO_16 );
	PutField( bytes, at, value, width );
	return bytes;
}

}

TEST( WaveReader, ReadsEveryFormatTheOutputTakes ) {
	for ( uint16_t channels : { 1, 2 } ) {
		for ( uint16_t bits : { 8, 16 } ) {
			for ( uint32_t rate : { 8000u, 22050u, 44100u, 96000u } ) {
				SCOPED_TRACE( std::to_string( channels ) + " channels, " + std::to_string( bits ) + " bits, " +
							  std::to_string( rate ) + " Hz" );
				const sReadResult result = ReadBothWays( MakeWave( { channels, rate, bits, 1001 } ) );
				ASSERT_TRUE( result.read ) << result.error;
				EXPECT_EQ( result.wave.format.channels, channels );
				EXPECT_EQ( result.wave.format.bitsPerSample, bits );
				EXPECT_EQ( result.wave.format.samplesPerSecond, rate );
				EXPECT_EQ( result.samples, MakeSampleBytes( 1001u * channels * bits / 8 ) )
					<< "the samples must be the file's bytes from 44 on, unchanged";
			}
		}
	}
}

// A "fmt " chunk of 18 bytes moves "data" to byte 38: the reader still takes bytes 40-43 as the
// data size (here the tag's "ta" and the low half of the real size) and the samples from byte 44.
TEST( WaveReader, TakesTheSizeAtByte40AndTheSamplesFrom44WhateverFollows ) {
	const std::string longFormat = MakeWave( { 1, 22050, 16, 32768 }, 2 );		// 65,536 data bytes
	ASSERT_EQ( longFormat.substr( 38, 6 ), std::string( "data\0\0", 6 ) );
	const sReadResult result = ReadBothWays( longFormat );
	ASSERT_TRUE( result.read ) << result.error;
	EXPECT_EQ( result.wave.format.samplesPerSecond, 22050u );
	EXPECT_EQ( result.samples, longFormat.substr( 44, 0x6174 ) ) << "0x6174 bytes from byte 44 on";

	const sReadResult shortData = ReadBothWays( WithField( DATA_SIZE_AT, 8 ) );
	EXPECT_EQ( shortData.samples, MakeSampleBytes( 8 ) ) << "what follows the announced data is not read";
}

// The announced size is compared with the file before anything of that size is allocated.
TEST( WaveReader, RefusesBadFilesWithTheStepsMessageWithoutAllocatingTheirSize ) {
	struct sCase {
		const char *	what;
		std::string		bytes;
		const char *	error;
	};
	const sCase cases[] = {
		{ "an empty file", "", HEADER_FAILED },
		{ "43 bytes", MakeWave( STEREO_16 ).substr( 0, 43 ), HEADER_FAILED },
		{ "4 bytes more data than the file holds", WithField( DATA_SIZE_AT, 404 ), DATA_FAILED },
		{ "2 GB of data announced", WithField( DATA_SIZE_AT, 0x7ffffffc ), DATA_FAILED },
		{ "4 GB of data announced", WithField( DATA_SIZE_AT, 0xfffffffc ), DATA_FAILED },
		{ "a longer fmt chunk whose size read at 40 overruns the file", MakeWave( STEREO_16, 2 ), DATA_FAILED },
		{ "no channels", WithField( CHANNELS_AT, 0, 2 ), FORMAT_REFUSED },
		{ "three channels", WithField( CHANNELS_AT, 3, 2 ), FORMAT_REFUSED },
		{ "24-bit samples", WithField( BITS_AT, 24, 2 ), FORMAT_REFUSED },
		{ "rate 7,999 Hz", WithField( RATE_AT, 7999 ), FORMAT_REFUSED },
		{ "rate 96,001 Hz", WithField( RATE_AT, 96001 ), FORMAT_REFUSED },
		{ "no data", WithField( DATA_SIZE_AT, 0 ), FORMAT_REFUSED },
		{ "half a stereo frame at the end", WithField( DATA_SIZE_AT, 398 ), FORMAT_REFUSED },
		{ "six channels, cut short: the format is looked at first", MakeWave( { 6, 44100, 16, 100 } ).substr( 0, 100 ),
		  FORMAT_REFUSED },
	};
	for ( const sCase &test : cases ) {
		cAllocationCounter counter;
		const sReadResult result = ReadBothWays( test.bytes );
		EXPECT_FALSE( result.read ) << test.what;
		EXPECT_EQ( result.error, test.error ) << test.what;
		EXPECT_TRUE( result.wave.samples.empty() ) << test.what;
		EXPECT_LT( counter.GetLargest(), 64u * 1024 ) << test.what << ": the announced data size was allocated";
	}
}
