// The game's WAV reader on files written here: the formats the game ships, files cut short,
// headers that announce more data than the file holds, formats the output cannot take, and
// files laid out differently from the canonical header, which are read as if they were canonical.

#include "sound/WaveReader.h"

#include <gtest/gtest.h>

#include <string>

#include "AllocationCounter.h"
#include "TempDir.h"
#include "WaveBytes.h"

namespace {

const char *const OPEN_FAILED = "Error opening sound file";
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
};

// Reads the bytes both ways, from a file and from memory, and checks that both agree.
sReadResult ReadBothWays( const std::string &bytes ) {
	cTempDir folder;
	folder.WriteFile( "sound.wav", bytes );
	sReadResult fromFile;
	fromFile.read = ReadWaveFile( folder.GetFile( "sound.wav" ).c_str(), fromFile.wave, fromFile.error );
	sReadResult fromMemory;
	fromMemory.read = ReadWaveMemory( reinterpret_cast<const uint8_t *>( bytes.data() ), bytes.size(),
									  fromMemory.wave, fromMemory.error );
	EXPECT_EQ( fromFile.read, fromMemory.read ) << "the file and the memory reader disagree";
	EXPECT_EQ( fromFile.error, fromMemory.error ) << "the file and the memory reader disagree";
	EXPECT_EQ( fromFile.wave.samples, fromMemory.wave.samples ) << "the file and the memory reader disagree";
	return fromFile;
}

std::string SamplesOf( const cWave &wave ) {
	return std::string( wave.samples.begin(), wave.samples.end() );
}

}

TEST( WaveReader, ReadsTheCanonicalFormatsTheGameShips ) {
	for ( uint16_t channels : { 1, 2 } ) {
		for ( uint16_t bits : { 8, 16 } ) {
			for ( uint32_t rate : { 22050u, 44100u } ) {
				const sWaveShape shape = { channels, rate, bits, 1001 };
				SCOPED_TRACE( std::to_string( channels ) + " channels, " + std::to_string( bits ) + " bits, " +
							  std::to_string( rate ) + " Hz" );
				const sReadResult result = ReadBothWays( MakeCanonicalWave( shape ) );
				ASSERT_TRUE( result.read ) << result.error;
				EXPECT_EQ( result.error, "" );
				EXPECT_EQ( result.wave.format.channels, channels );
				EXPECT_EQ( result.wave.format.bitsPerSample, bits );
				EXPECT_EQ( result.wave.format.samplesPerSecond, rate );
				EXPECT_EQ( SamplesOf( result.wave ), MakeSampleBytes( 1001u * channels * bits / 8 ) )
					<< "the samples must be the file's bytes from 44 on, unchanged";
			}
		}
	}
}

TEST( WaveReader, RefusesAMissingFile ) {
	cWave wave;
	std::string error;
	EXPECT_FALSE( ReadWaveFile( "no/such/folder/sound.wav", wave, error ) );
	EXPECT_EQ( error, OPEN_FAILED );
}

TEST( WaveReader, RefusesFilesShorterThanTheHeader ) {
	const std::string whole = MakeCanonicalWave( STEREO_16 );
	for ( size_t size : { size_t( 0 ), size_t( 1 ), size_t( 43 ) } ) {
		SCOPED_TRACE( std::to_string( size ) + " bytes" );
		const sReadResult result = ReadBothWays( whole.substr( 0, size ) );
		EXPECT_FALSE( result.read );
		EXPECT_EQ( result.error, HEADER_FAILED );
		EXPECT_TRUE( result.wave.samples.empty() );
	}
}

// The announced size is compared with the file before anything of that size is allocated.
TEST( WaveReader, RefusesADataSizeBeyondTheEndWithoutAllocatingIt ) {
	for ( uint32_t announced : { 404u, 0x7ffffffcu, 0xfffffffcu } ) {
		SCOPED_TRACE( "announced " + std::to_string( announced ) + " bytes, 400 present" );
		std::string bytes = MakeCanonicalWave( STEREO_16 );
		PutU32( bytes, DATA_SIZE_AT, announced );
		cAllocationCounter counter;
		const sReadResult result = ReadBothWays( bytes );
		EXPECT_LT( counter.GetLargest(), 64u * 1024 ) << "the announced data size was allocated";
		EXPECT_FALSE( result.read );
		EXPECT_EQ( result.error, DATA_FAILED );
		EXPECT_TRUE( result.wave.samples.empty() );
	}
}

// What follows the announced data (another chunk, say) is not read.
TEST( WaveReader, ReadsExactlyTheAnnouncedData ) {
	std::string bytes = MakeCanonicalWave( STEREO_16 );
	PutU32( bytes, DATA_SIZE_AT, 400 );
	EXPECT_TRUE( ReadBothWays( bytes ).read ) << "data reaching the last byte of the file";
	PutU32( bytes, DATA_SIZE_AT, 8 );
	const sReadResult result = ReadBothWays( bytes );
	ASSERT_TRUE( result.read ) << result.error;
	EXPECT_EQ( SamplesOf( result.wave ), MakeSampleBytes( 8 ) );
}

TEST( WaveReader, RefusesFormatsTheOutputCannotTake ) {
	struct sCase {
		const char *	what;
		size_t			at;
		uint32_t		value;
		bool			wide;		// a 32-bit field
	};
	const sCase cases[] = {
		{ "no channels", CHANNELS_AT, 0, false },
		{ "three channels", CHANNELS_AT, 3, false },
		{ "4-bit samples", BITS_AT, 4, false },
		{ "24-bit samples", BITS_AT, 24, false },
		{ "32-bit samples", BITS_AT, 32, false },
		{ "rate 0", RATE_AT, 0, true },
		{ "rate 7,999 Hz", RATE_AT, 7999, true },
		{ "rate 96,001 Hz", RATE_AT, 96001, true },
		{ "no data", DATA_SIZE_AT, 0, true },
		{ "half a stereo frame at the end", DATA_SIZE_AT, 398, true },
	};
	for ( const sCase &test : cases ) {
		SCOPED_TRACE( test.what );
		std::string bytes = MakeCanonicalWave( STEREO_16 );
		if ( test.wide ) {
			PutU32( bytes, test.at, test.value );
		} else {
			PutU16( bytes, test.at, static_cast<uint16_t>( test.value ) );
		}
		const sReadResult result = ReadBothWays( bytes );
		EXPECT_FALSE( result.read );
		EXPECT_EQ( result.error, FORMAT_REFUSED );
	}
}

TEST( WaveReader, TakesTheRatesAtBothEndsOfTheRange ) {
	for ( uint32_t rate : { 8000u, 96000u } ) {
		const sReadResult result = ReadBothWays( MakeCanonicalWave( { 1, rate, 8, 10 } ) );
		EXPECT_TRUE( result.read ) << rate << " Hz: " << result.error;
	}
}

// As the game's loader does: the format is refused before the data size is looked at.
TEST( WaveReader, ChecksTheFormatBeforeTheDataSize ) {
	std::string bytes = MakeCanonicalWave( STEREO_16 );
	PutU16( bytes, CHANNELS_AT, 6 );
	PutU32( bytes, DATA_SIZE_AT, 1000000 );
	EXPECT_EQ( ReadBothWays( bytes ).error, FORMAT_REFUSED );
}

// A "fmt " chunk of 18 bytes moves "data" to byte 38: the reader still takes bytes 40-43 as the
// data size (here the tag's "ta" and the low half of the real size) and the samples from byte 44.
TEST( WaveReader, ReadsALongerFormatChunkAsIfItWereCanonical ) {
	const std::string bytes = MakeLongFormatWave( { 1, 22050, 16, 32768 }, 2 );	// 65,536 data bytes
	ASSERT_EQ( bytes.substr( 38, 4 ), "data" );
	ASSERT_EQ( GetU32( bytes, DATA_SIZE_AT ), 0x6174u ) << "the scenario needs 't', 'a', 0, 0 at byte 40";
	const sReadResult result = ReadBothWays( bytes );
	ASSERT_TRUE( result.read ) << result.error;
	EXPECT_EQ( result.wave.format.channels, 1 );
	EXPECT_EQ( result.wave.format.samplesPerSecond, 22050u );
	EXPECT_EQ( result.wave.samples.size(), 0x6174u );
	EXPECT_EQ( SamplesOf( result.wave ), bytes.substr( 44, 0x6174 ) )
		<< "the samples must start at byte 44, the real size's high half included";
}

// With a short sound the size read at byte 40 is far beyond the file's end.
TEST( WaveReader, RefusesALongerFormatChunkWhoseMisreadSizeOverrunsTheFile ) {
	const std::string bytes = MakeLongFormatWave( { 2, 44100, 16, 100 }, 2 );
	ASSERT_GT( GetU32( bytes, DATA_SIZE_AT ), bytes.size() );
	const sReadResult result = ReadBothWays( bytes );
	EXPECT_FALSE( result.read );
	EXPECT_EQ( result.error, DATA_FAILED );
}
