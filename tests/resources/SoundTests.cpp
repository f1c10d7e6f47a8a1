// The fifteen sounds read with the game's own WAV reader: the canonical header the reader relies
// on, formats the output takes, lengths that fit each use, peaks below -1 dBFS without clipping,
// effects that start and end in silence, and loops whose ends meet their starts.

#include "sound/WaveReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

enum eUse {
	MUSIC,		// a loop of whole bars
	EFFECT,		// played once
	LOOP		// the heartbeat: an effect the game loops
};

struct sExpectedSound {
	const char *	file;
	eUse			use;
	int				bpm;	// music only
};

// In the order of the game's sound ids.
const sExpectedSound SOUNDS[] = {
	{ "menu.wav", MUSIC, 90 },
	{ "streets.wav", MUSIC, 120 },
	{ "boss.wav", MUSIC, 150 },
	{ "explosion.wav", EFFECT, 0 },
	{ "tavesh_shot.wav", EFFECT, 0 },
	{ "lumra_shot.wav", EFFECT, 0 },
	{ "enemy_shot.wav", EFFECT, 0 },
	{ "machinegun.wav", EFFECT, 0 },
	{ "skill.wav", EFFECT, 0 },
	{ "item.wav", EFFECT, 0 },
	{ "heartbeat.wav", LOOP, 0 },
	{ "LvlComplete.wav", EFFECT, 0 },
	{ "GameOver.wav", EFFECT, 0 },
	{ "open_box.wav", EFFECT, 0 },
	{ "door_open.wav", EFFECT, 0 },
};

const int PEAK_LIMIT = 29204;			// -1 dBFS of 16-bit full scale
const int QUIET = 64;					// a sample this small starts or ends without a click

std::string PathOf( const sExpectedSound &sound ) {
	return std::string( "resources/audio/" ) + sound.file;
}

// One channel's worth of 16-bit samples (the first channel of a stereo file).
struct sSound {
	cWave					wave;
	std::vector<int>		samples;
	double					seconds = 0.0;
};

bool Read( const sExpectedSound &expected, sSound &sound ) {
	std::string error;
	if ( !ReadWaveFile( PathOf( expected ).c_str(), sound.wave, error ) ) {
		ADD_FAILURE() << PathOf( expected ) << ": " << error;
		return false;
	}
	if ( sound.wave.format.bitsPerSample != 16 ) {
		ADD_FAILURE() << PathOf( expected ) << ": 16-bit samples expected";
		return false;
	}
	const size_t frame = 2u * sound.wave.format.channels;
	for ( size_t at = 0; at + frame <= sound.wave.samples.size(); at += frame ) {
		sound.samples.push_back( int16_t( sound.wave.samples[at] | sound.wave.samples[at + 1] << 8 ) );
	}
	sound.seconds = double( sound.samples.size() ) / sound.wave.format.samplesPerSecond;
	return !sound.samples.empty();
}

int PeakOf( const std::vector<int> &samples, size_t from, size_t to ) {
	int peak = 0;
	for ( size_t i = from; i < to && i < samples.size(); i++ ) {
		peak = std::max( peak, std::abs( samples[i] ) );
	}
	return peak;
}

}	// namespace

TEST( Sounds, EveryFileHasTheCanonicalHeaderAndAFormatTheGameTakes ) {
	size_t total = 0;
	for ( const sExpectedSound &expected : SOUNDS ) {
		std::ifstream in( PathOf( expected ), std::ios::binary );
		ASSERT_TRUE( in ) << PathOf( expected ) << " is missing";
		const std::vector<unsigned char> bytes( ( std::istreambuf_iterator<char>( in ) ), std::istreambuf_iterator<char>() );
		ASSERT_GE( bytes.size(), 44u ) << PathOf( expected );
		auto u16 = [&]( size_t at ) { return unsigned( bytes[at] | bytes[at + 1] << 8 ); };
		auto u32 = [&]( size_t at ) { return u16( at ) | u16( at + 2 ) << 16; };
		auto tag = [&]( size_t at ) { return std::string( bytes.begin() + long( at ), bytes.begin() + long( at ) + 4 ); };
		EXPECT_EQ( tag( 0 ), "RIFF" ) << PathOf( expected );
		EXPECT_EQ( u32( 4 ), bytes.size() - 8 ) << PathOf( expected );
		EXPECT_EQ( tag( 8 ), "WAVE" ) << PathOf( expected );
		EXPECT_EQ( tag( 12 ), "fmt " ) << PathOf( expected );
		EXPECT_EQ( u32( 16 ), 16u ) << PathOf( expected ) << ": the reader expects a 16-byte format chunk";
		EXPECT_EQ( u16( 20 ), 1u ) << PathOf( expected ) << ": PCM";
		EXPECT_EQ( tag( 36 ), "data" ) << PathOf( expected ) << ": the samples must start at byte 44";
		EXPECT_EQ( u32( 40 ), bytes.size() - 44 ) << PathOf( expected );
		const unsigned channels = u16( 22 ), rate = u32( 24 ), bits = u16( 34 );
		EXPECT_TRUE( channels == 1 || channels == 2 ) << PathOf( expected );
		EXPECT_TRUE( rate == 22050 || rate == 44100 ) << PathOf( expected );
		EXPECT_EQ( bits, 16u ) << PathOf( expected );
		EXPECT_EQ( u16( 32 ), channels * 2 ) << PathOf( expected ) << ": block alignment";
		EXPECT_EQ( u32( 28 ), rate * channels * 2 ) << PathOf( expected ) << ": bytes per second";
		total += bytes.size();

		sSound sound;
		ASSERT_TRUE( Read( expected, sound ) );
		EXPECT_EQ( sound.wave.format.channels, channels );
		EXPECT_EQ( sound.wave.format.samplesPerSecond, rate );
		EXPECT_EQ( sound.wave.samples.size(), bytes.size() - 44 );
	}
	EXPECT_LT( total, 12u * 1024 * 1024 ) << "all sounds together must stay under 12 MB";
}

TEST( Sounds, PeaksStayAtOrBelowMinusOneDecibelWithoutClipping ) {
	for ( const sExpectedSound &expected : SOUNDS ) {
		sSound sound;
		ASSERT_TRUE( Read( expected, sound ) );
		const int peak = PeakOf( sound.samples, 0, sound.samples.size() );
		EXPECT_LE( peak, PEAK_LIMIT ) << expected.file << " peaks at " << 20.0 * std::log10( peak / 32768.0 ) << " dBFS";
		EXPECT_GT( peak, 3276 ) << expected.file << " is quieter than -20 dBFS: nearly silent";
	}
}

TEST( Sounds, LengthsFitTheirUse ) {
	for ( const sExpectedSound &expected : SOUNDS ) {
		sSound sound;
		ASSERT_TRUE( Read( expected, sound ) );
		if ( expected.use == MUSIC ) {
			EXPECT_GE( sound.seconds, 20.0 ) << expected.file;
			EXPECT_LE( sound.seconds, 40.0 ) << expected.file;
			// cut on a bar line: a whole number of 4/4 bars at the tune's tempo
			const double bars = sound.seconds * expected.bpm / 240.0;
			EXPECT_NEAR( bars, std::round( bars ), 1e-4 ) << expected.file << " holds " << bars << " bars at " << expected.bpm << " bpm";
		} else if ( expected.use == LOOP ) {
			EXPECT_NEAR( sound.seconds, 1.0, 0.001 ) << expected.file << " should beat once a second";
		} else {
			EXPECT_GT( sound.seconds, 0.05 ) << expected.file;
			EXPECT_LE( sound.seconds, 3.5 ) << expected.file << " is too long for an effect";
		}
	}
}

TEST( Sounds, EffectsStrikeAtOnceAndEndInSilence ) {
	for ( const sExpectedSound &expected : SOUNDS ) {
		if ( expected.use == MUSIC ) {
			continue;
		}
		sSound sound;
		ASSERT_TRUE( Read( expected, sound ) );
		const std::vector<int> &s = sound.samples;
		const size_t rate = sound.wave.format.samplesPerSecond;
		const int peak = PeakOf( s, 0, s.size() );
		EXPECT_LE( std::abs( s.front() ), QUIET ) << expected.file << " starts with a click";
		EXPECT_LE( std::abs( s.back() ), QUIET ) << expected.file << " is cut off with a click";
		EXPECT_GE( PeakOf( s, 0, rate / 10 ), peak / 4 ) << expected.file << " takes longer than 100 ms to sound";
		EXPECT_LE( PeakOf( s, s.size() - rate / 200, s.size() ), peak / 10 ) << expected.file << " has no clean tail";
	}
}

TEST( Sounds, LoopsMeetTheirStartWithoutAJump ) {
	for ( const sExpectedSound &expected : SOUNDS ) {
		if ( expected.use == EFFECT ) {
			continue;
		}
		sSound sound;
		ASSERT_TRUE( Read( expected, sound ) );
		const std::vector<int> &s = sound.samples;
		std::vector<int> steps;
		for ( size_t i = 1; i < s.size(); i++ ) {
			steps.push_back( std::abs( s[i] - s[i - 1] ) );
		}
		std::sort( steps.begin(), steps.end() );
		const int usual = steps[steps.size() * 999 / 1000];	// all but the sharpest 0.1 % of steps
		const int seam = std::abs( s.front() - s.back() );
		EXPECT_LE( seam, std::max( usual, QUIET ) ) << expected.file << ": the step from the last sample back to the first is " << seam << ", larger than the loop's own steps (" << usual << ")";
	}
}
