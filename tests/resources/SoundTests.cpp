// SPDX-License-Identifier: GPL-3.0-or-later
// The fifteen sounds read with the game's own WAV reader: formats the output takes, lengths that
// fit each use, peaks below -1 dBFS without clipping, and effects that start and end in silence.

#include "sound/WaveReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
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

TEST( Sounds, EveryFileIsSixteenBitPcmOfALengthAndLoudnessThatFitItsUse ) {
	size_t total = 0;
	for ( const sExpectedSound &expected : SOUNDS ) {
		sSound sound;
		ASSERT_TRUE( Read( expected, sound ) );
		const uint32_t rate = sound.wave.format.samplesPerSecond;
		EXPECT_TRUE( rate == 22050 || rate == 44100 ) << expected.file;
		EXPECT_TRUE( sound.wave.format.channels == 1 || sound.wave.format.channels == 2 ) << expected.file;
		total += sound.wave.samples.size();
		const std::vector<int> &s = sound.samples;
		const int peak = PeakOf( s, 0, s.size() );
		EXPECT_LE( peak, PEAK_LIMIT ) << expected.file << " peaks at " << 20.0 * std::log10( peak / 32768.0 ) << " dBFS";
		EXPECT_GT( peak, 3276 ) << expected.file << " is quieter than -20 dBFS: nearly silent";
		if ( expected.use == MUSIC ) {
			EXPECT_TRUE( sound.seconds >= 20.0 && sound.seconds <= 40.0 ) << expected.file << " lasts " << sound.seconds << " s";
			// cut on a bar line: a whole number of 4/4 bars at the tune's tempo
			const double bars = sound.seconds * expected.bpm / 240.0;
			EXPECT_NEAR( bars, std::round( bars ), 1e-4 ) << expected.file << " holds " << bars << " bars at " << expected.bpm << " bpm";
			continue;
		}
		if ( expected.use == LOOP ) {
			EXPECT_NEAR( sound.seconds, 1.0, 0.001 ) << expected.file << " should beat once a second";
		} else {
			EXPECT_TRUE( sound.seconds > 0.05 && sound.seconds <= 3.5 ) << expected.file << " lasts " << sound.seconds << " s";
		}
		EXPECT_LE( std::abs( s.front() ), QUIET ) << expected.file << " starts with a click";
		EXPECT_LE( std::abs( s.back() ), QUIET ) << expected.file << " is cut off with a click";
		EXPECT_GE( PeakOf( s, 0, rate / 10 ), peak / 4 ) << expected.file << " takes longer than 100 ms to sound";
	}
	EXPECT_LT( total, 12u * 1024 * 1024 ) << "all sounds together must stay under 12 MB";
}
