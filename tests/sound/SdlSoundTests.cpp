// The sound layer on SDL_mixer, run on SDL's dummy audio driver: the output's format, sounds of
// every shipped format converted at load, one mixer channel per id, volumes, stop, release, a
// driver that cannot open, and no allocation while the game plays.

#include "sound/sdl/SdlSoundBackend.h"

#include <SDL.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "AllocationCounter.h"
#include "LogCapture.h"
#include "TempDir.h"
#include "WaveBytes.h"
#include "sound/SoundLayer.h"

namespace {

const int OUTPUT_FRAME = 4;		// in bytes: 16-bit stereo

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
			folder.WriteFile( GAME_SOUND_FILES[id], MakeCanonicalWave( ShapeOf( id ) ) );
		}
	}

	void TearDown() override {
		layer.Release();
		unsetenv( "SDL_AUDIODRIVER" );
	}

	void Start() {
		ASSERT_TRUE( layer.Init( &backend ) ) << backend.GetErrorText();
		ASSERT_TRUE( layer.LoadSounds( ( folder.GetPath() + "/" ).c_str() ) ) << log.GetText();
	}

	cLogCapture			log;
	cTempDir			folder;
	cSdlSoundBackend	backend;
	cSoundLayer			layer;
};

}

TEST( SdlSoundVolume, TurnsHundredthsOfADecibelIntoMixerVolume ) {
	EXPECT_EQ( cSdlSoundBackend::ToMixerVolume( 0 ), 128 );
	EXPECT_EQ( cSdlSoundBackend::ToMixerVolume( -500 ), 72 );		// 128 x 10^(-5/20)
	EXPECT_EQ( cSdlSoundBackend::ToMixerVolume( -1000 ), 40 );		// 128 x 10^(-10/20)
	EXPECT_EQ( cSdlSoundBackend::ToMixerVolume( -10000 ), 0 );
	EXPECT_EQ( cSdlSoundBackend::ToMixerVolume( 600 ), 128 ) << "no amplification above full volume";
}

TEST_F( SdlSoundTest, OpensTheOutputAt44100HzSixteenBitStereo ) {
	Start();
	int rate = 0;
	Uint16 format = 0;
	int channels = 0;
	ASSERT_EQ( Mix_QuerySpec( &rate, &format, &channels ), 1 );
	EXPECT_EQ( rate, 44100 );
	EXPECT_EQ( format, AUDIO_S16SYS );
	EXPECT_EQ( channels, 2 );
	EXPECT_EQ( Mix_AllocateChannels( -1 ), SOUND_COUNT ) << "one mixer channel per sound id";
}

// Every sound is held in the output's format: a second of any file becomes about a second of
// 44,100 Hz stereo, whole frames.
TEST_F( SdlSoundTest, ConvertsEverySoundToTheOutputFormatAtLoad ) {
	Start();
	const uint32_t second = 44100 * OUTPUT_FRAME;
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		const uint32_t bytes = backend.GetSampleBytes( id );
		EXPECT_EQ( bytes % OUTPUT_FRAME, 0u ) << "sound " << id << " ends inside a frame";
		EXPECT_NEAR( double( bytes ), double( second ), second * 0.01 ) << "sound " << id << ": " << ShapeOf( id ).rate
																		  << " Hz, " << ShapeOf( id ).bits << " bits";
	}
}

TEST_F( SdlSoundTest, PlaysEachIdOnItsOwnChannelAtItsVolume ) {
	Start();
	layer.PlayMusic( SOUND_MENU_MUSIC );
	layer.PlaySound( SOUND_HEARTBEAT, true );
	layer.PlaySound( SOUND_EXPLOSION, false );
	EXPECT_EQ( Mix_Playing( -1 ), 3 );
	EXPECT_EQ( Mix_Playing( SOUND_MENU_MUSIC ), 1 );
	EXPECT_EQ( Mix_Volume( SOUND_MENU_MUSIC, -1 ), 40 );
	EXPECT_EQ( Mix_Volume( SOUND_HEARTBEAT, -1 ), 128 );
	EXPECT_EQ( Mix_Volume( SOUND_EXPLOSION, -1 ), 72 );
	for ( int id : { SOUND_MENU_MUSIC, SOUND_HEARTBEAT, SOUND_EXPLOSION } ) {
		ASSERT_NE( Mix_GetChunk( id ), nullptr ) << "channel " << id;
		EXPECT_EQ( Mix_GetChunk( id )->alen, backend.GetSampleBytes( id ) ) << "channel " << id << " plays another sound";
	}
}

// A second shot of the same gun cuts the first: one id never sounds twice at once.
TEST_F( SdlSoundTest, PlayingASoundAgainRestartsItOnTheSameChannel ) {
	Start();
	layer.PlaySound( SOUND_ENEMY_SHOT, false );
	layer.PlaySound( SOUND_ENEMY_SHOT, false );
	layer.PlaySound( SOUND_ENEMY_SHOT, false );
	EXPECT_EQ( Mix_Playing( -1 ), 1 );
	EXPECT_EQ( Mix_Playing( SOUND_ENEMY_SHOT ), 1 );
}

TEST_F( SdlSoundTest, StopSilencesOnlyThatSound ) {
	Start();
	layer.PlayMusic( SOUND_STREETS_MUSIC );
	layer.PlaySound( SOUND_HEARTBEAT, true );
	EXPECT_TRUE( layer.Stop( SOUND_HEARTBEAT ) );
	EXPECT_EQ( Mix_Playing( SOUND_HEARTBEAT ), 0 );
	EXPECT_EQ( Mix_Playing( SOUND_STREETS_MUSIC ), 1 );
	layer.PlayMusic( SOUND_BOSS_MUSIC );
	EXPECT_EQ( Mix_Playing( SOUND_STREETS_MUSIC ), 0 ) << "switching music must stop the old one";
	EXPECT_EQ( Mix_Playing( SOUND_BOSS_MUSIC ), 1 );
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

TEST_F( SdlSoundTest, ReleaseClosesTheOutputAndTheAudioSubsystem ) {
	Start();
	layer.PlayMusic( SOUND_MENU_MUSIC );
	layer.Release();
	EXPECT_EQ( Mix_QuerySpec( nullptr, nullptr, nullptr ), 0 ) << "the mixer is still open";
	EXPECT_EQ( SDL_WasInit( SDL_INIT_AUDIO ), 0u ) << "the audio subsystem is still running";
	EXPECT_EQ( backend.GetSampleBytes( SOUND_MENU_MUSIC ), 0u );
	EXPECT_TRUE( layer.PlaySound( SOUND_EXPLOSION, false ) );
}

// The game then runs silent; everything made before the failure is given back by Release.
TEST_F( SdlSoundTest, ADriverThatCannotOpenLeavesTheGameSilent ) {
	setenv( "SDL_AUDIODRIVER", "no-such-driver", 1 );
	EXPECT_FALSE( layer.Init( &backend ) );
	EXPECT_STRNE( backend.GetErrorText(), "" ) << "the platform's reason must be kept";
	EXPECT_EQ( log.GetLines(), std::vector<std::string>( { "Error creating DirectSound object" } ) );
	EXPECT_TRUE( layer.LoadSounds( ( folder.GetPath() + "/" ).c_str() ) );
	EXPECT_TRUE( layer.PlayMusic( SOUND_MENU_MUSIC ) );
	layer.Release();
	EXPECT_EQ( SDL_WasInit( SDL_INIT_AUDIO ), 0u );
}

// The shipped files, through the real conversion.
TEST_F( SdlSoundTest, LoadsTheGamesOwnSounds ) {
	ASSERT_TRUE( layer.Init( &backend ) ) << backend.GetErrorText();
	EXPECT_TRUE( layer.LoadSounds() ) << log.GetText();
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		EXPECT_GT( backend.GetSampleBytes( id ), 0u ) << GAME_SOUND_FILES[id];
	}
}
