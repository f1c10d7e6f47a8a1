// SPDX-License-Identifier: GPL-3.0-or-later
// The sound layer on SDL_mixer, run on SDL's dummy audio driver: the output's format, sounds of
// every shipped format converted at load, one mixer channel per id, volumes, restart and stop,
// release, a driver that cannot open, and no allocation while the game plays.

#include "sound/sdl/SdlSoundBackend.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "AllocationCounter.h"
#include "LogCapture.h"
#include "TempDir.h"
#include "WaveBytes.h"
#include "sound/SoundLayer.h"

namespace {

// A second of sound in each file, long enough to still play while the test looks; the formats
// vary so that each kind of conversion is made.
sWaveShape ShapeOf( int id ) {
	const uint32_t rate = id % 3 == 0 ? 44100u : ( id % 3 == 1 ? 22050u : 11025u );
	return sWaveShape { static_cast<uint16_t>( 1 + id % 2 ), rate, static_cast<uint16_t>( id % 4 < 2 ? 16 : 8 ), rate };
}

class SdlSoundTest : public testing::Test {
protected:
	void SetUp() override {
		setenv( "SDL_AUDIODRIVER", "dummy", 1 );
		for ( int id = 0; id < SOUND_COUNT; id++ ) {
			folder.WriteFile( GAME_SOUND_FILES[id], MakeWave( ShapeOf( id ) ) );
		}
	}
	void TearDown() override {
		layer.Release();
		unsetenv( "SDL_AUDIODRIVER" );
	}
	bool Load() { return layer.LoadSounds( ( folder.GetPath() + "/" ).c_str() ); }
	void Start() {
		ASSERT_TRUE( layer.Init( &backend ) ) << backend.GetErrorText();
		ASSERT_TRUE( Load() ) << log.GetText();
	}

	cLogCapture			log;
	cTempDir			folder;
	cSdlSoundBackend	backend;
	cSoundLayer			layer;
};

}

// A second of any file becomes about a second of 44,100 Hz 16-bit stereo, in whole frames.
TEST_F( SdlSoundTest, OpensTheOutputAt44100HzSixteenBitStereoAndConvertsEverySoundToIt ) {
	Start();
	int rate = 0;
	Uint16 format = 0;
	int channels = 0;
	ASSERT_EQ( Mix_QuerySpec( &rate, &format, &channels ), 1 );
	EXPECT_TRUE( rate == 44100 && format == AUDIO_S16SYS && channels == 2 ) << rate << " Hz, format " << format;
	EXPECT_EQ( Mix_AllocateChannels( -1 ), SOUND_COUNT ) << "one mixer channel per sound id";
	const uint32_t frame = 4;
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		const uint32_t bytes = backend.GetSampleBytes( id );
		EXPECT_EQ( bytes % frame, 0u ) << "sound " << id << " ends inside a frame";
		EXPECT_NEAR( double( bytes ), 44100.0 * frame, 44100 * frame * 0.01 )
			<< "sound " << id << ": " << ShapeOf( id ).rate << " Hz, " << ShapeOf( id ).bits << " bits";
	}
}

// A second shot of the same gun cuts the first: one id never sounds twice at once.
TEST_F( SdlSoundTest, PlaysEachIdOnItsOwnChannelAtItsVolumeRestartsAndStopsIt ) {
	Start();
	layer.PlayMusic( SOUND_MENU_MUSIC );
	layer.PlaySound( SOUND_HEARTBEAT, true );
	for ( int shot = 0; shot < 3; shot++ ) {
		layer.PlaySound( SOUND_EXPLOSION, false );
	}
	EXPECT_EQ( Mix_Playing( -1 ), 3 ) << "a sound played again must restart on its own channel";
	const int volumes[][2] = { { SOUND_MENU_MUSIC, 40 }, { SOUND_HEARTBEAT, 128 }, { SOUND_EXPLOSION, 72 } };
	for ( const int *sound : volumes ) {
		EXPECT_EQ( Mix_Playing( sound[0] ), 1 ) << "channel " << sound[0];
		EXPECT_EQ( Mix_Volume( sound[0], -1 ), sound[1] ) << "channel " << sound[0] << ": 128 x 10^(dB / 20)";
		ASSERT_NE( Mix_GetChunk( sound[0] ), nullptr ) << "channel " << sound[0];
		EXPECT_EQ( Mix_GetChunk( sound[0] )->alen, backend.GetSampleBytes( sound[0] ) ) << "channel " << sound[0] << " plays another sound";
	}
	EXPECT_TRUE( layer.Stop( SOUND_HEARTBEAT ) );
	EXPECT_TRUE( Mix_Playing( SOUND_HEARTBEAT ) == 0 && Mix_Playing( SOUND_MENU_MUSIC ) == 1 ) << "Stop silences only that sound";
	layer.PlayMusic( SOUND_BOSS_MUSIC );
	EXPECT_TRUE( Mix_Playing( SOUND_MENU_MUSIC ) == 0 && Mix_Playing( SOUND_BOSS_MUSIC ) == 1 ) << "the music did not switch";
	EXPECT_EQ( log.GetText(), "" );
}

TEST_F( SdlSoundTest, PlayingAndStoppingAllocatesNothing ) {
	Start();
	cAllocationCounter counter;
	for ( int round = 0; round < 50; round++ ) {
		layer.PlayMusic( round % 2 == 0 ? SOUND_STREETS_MUSIC : SOUND_BOSS_MUSIC );
		for ( int id = SOUND_EXPLOSION; id < SOUND_COUNT; id++ ) {
			layer.PlaySound( id, id == SOUND_HEARTBEAT );
		}
		layer.Stop( SOUND_HEARTBEAT );
	}
	EXPECT_EQ( counter.GetCount(), 0u );
}

// After a release, or a driver that cannot open, the game runs silent with nothing left open.
TEST_F( SdlSoundTest, ReleaseAndAFailedDriverLeaveNothingOpenAndTheGameSilent ) {
	Start();
	layer.PlayMusic( SOUND_MENU_MUSIC );
	layer.Release();
	EXPECT_EQ( Mix_QuerySpec( nullptr, nullptr, nullptr ), 0 ) << "the mixer is still open";
	EXPECT_EQ( SDL_WasInit( SDL_INIT_AUDIO ), 0u ) << "the audio subsystem is still running";

	setenv( "SDL_AUDIODRIVER", "no-such-driver", 1 );
	EXPECT_FALSE( layer.Init( &backend ) );
	EXPECT_STRNE( backend.GetErrorText(), "" ) << "the platform's reason must be kept";
	EXPECT_EQ( log.GetLines(), std::vector<std::string>( { "Error creating DirectSound object" } ) );
	EXPECT_TRUE( Load() && layer.PlayMusic( SOUND_MENU_MUSIC ) );
	layer.Release();
	EXPECT_EQ( SDL_WasInit( SDL_INIT_AUDIO ), 0u );
}
