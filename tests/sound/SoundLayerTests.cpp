// The sound layer over a recording backend: loading the fifteen sounds (and stopping at a broken
// one), the music switch, effect and heartbeat volumes, failures of the device and the silent layer.

#include "sound/SoundLayer.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "LogCapture.h"
#include "TempDir.h"
#include "WaveBytes.h"
#include "log/Log.h"
#include "sound/headless/RecordingSoundBackend.h"

typedef cRecordingSoundBackend::cEvent tEvent;

// Outside the unnamed namespace, where the comparisons of std::vector and gtest look for them.
static bool operator==( const tEvent &a, const tEvent &b ) {
	return a.play == b.play && a.id == b.id && a.loop == b.loop && ( !a.play || a.volume == b.volume );
}

static std::ostream &operator<<( std::ostream &out, const tEvent &event ) {
	if ( !event.play ) {
		return out << "stop " << event.id;
	}
	return out << "play " << event.id << ( event.loop ? " looping" : " once" ) << " at " << event.volume;
}

namespace {

tEvent Played( int id, bool loop, int32_t volume ) {
	return tEvent { true, id, loop, volume };
}

tEvent Stopped( int id ) {
	return tEvent { false, id, false, 0 };
}

// Each sound file gets a shape of its own, so a sound loaded into the wrong slot shows.
sWaveShape ShapeOf( int id ) {
	return sWaveShape { static_cast<uint16_t>( 1 + id % 2 ), id < 3 ? 44100u : 22050u, 16, 100u + id };
}

class SoundLayerTest : public testing::Test {
protected:
	// Writes the game's fifteen files into the test's folder, all but the one named.
	void WriteSounds( int missing = -1 ) {
		for ( int id = 0; id < SOUND_COUNT; id++ ) {
			if ( id != missing ) {
				folder.WriteFile( GAME_SOUND_FILES[id], MakeCanonicalWave( ShapeOf( id ) ) );
			}
		}
	}

	bool LoadSounds() {
		return layer.LoadSounds( ( folder.GetPath() + "/" ).c_str() );
	}

	// The layer opened and every sound loaded, with nothing logged and nothing played yet.
	void StartWithAllSounds() {
		WriteSounds();
		ASSERT_TRUE( layer.Init( &backend ) );
		ASSERT_TRUE( LoadSounds() );
		ASSERT_EQ( log.GetText(), "" );
	}

	std::vector<int> GetLoadedIds() const {
		std::vector<int> ids;
		for ( int id = 0; id < SOUND_COUNT; id++ ) {
			if ( layer.IsLoaded( id ) ) {
				ids.push_back( id );
			}
		}
		return ids;
	}

	cLogCapture				log;
	cTempDir				folder;
	cRecordingSoundBackend	backend;
	cSoundLayer				layer;
};

const std::vector<int> FIRST_EIGHT = { 0, 1, 2, 3, 4, 5, 6, 7 };

}

TEST_F( SoundLayerTest, LoadsTheFifteenSoundsInTheirSlots ) {
	StartWithAllSounds();
	EXPECT_EQ( backend.GetSoundCount(), SOUND_COUNT );
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		const sWaveShape shape = ShapeOf( id );
		EXPECT_EQ( backend.GetFormat( id ).channels, shape.channels ) << "sound " << id;
		EXPECT_EQ( backend.GetFormat( id ).samplesPerSecond, shape.rate ) << "sound " << id;
		EXPECT_EQ( backend.GetSampleBytes( id ), shape.frames * shape.channels * 2 ) << "sound " << id;
	}
}

TEST_F( SoundLayerTest, AMissingFileLeavesItAndTheSoundsAfterItUnloaded ) {
	WriteSounds( SOUND_SKILL );
	ASSERT_TRUE( layer.Init( &backend ) );
	EXPECT_FALSE( LoadSounds() );
	EXPECT_EQ( GetLoadedIds(), FIRST_EIGHT );
	EXPECT_EQ( log.GetLines(), std::vector<std::string>( { "Error opening sound file", "Error loading skill.wav" } ) );
	EXPECT_TRUE( layer.IsEnabled() ) << "a missing file must not silence the sounds that loaded";
}

TEST_F( SoundLayerTest, ABrokenFileStopsTheLoadingWithTheReadersMessage ) {
	WriteSounds();
	folder.WriteFile( "item.wav", "RIFF" );
	ASSERT_TRUE( layer.Init( &backend ) );
	EXPECT_FALSE( LoadSounds() );
	EXPECT_EQ( GetLoadedIds(), std::vector<int>( { 0, 1, 2, 3, 4, 5, 6, 7, 8 } ) );
	EXPECT_EQ( log.GetLines(), std::vector<std::string>( { "Error reading wave file header", "Error loading item.wav" } ) );
}

TEST_F( SoundLayerTest, ASoundThePlatformRefusesStopsTheLoading ) {
	WriteSounds();
	ASSERT_TRUE( layer.Init( &backend ) );
	backend.SetFailCreate( true );
	EXPECT_FALSE( LoadSounds() );
	EXPECT_EQ( GetLoadedIds(), std::vector<int>() );
	EXPECT_EQ( log.GetLines(),
			   std::vector<std::string>( { "Error creating DirectSound temporary buffer", "Error loading menu.wav" } ) );
}

// The game goes on asking for every sound; those that never loaded must do nothing at all.
TEST_F( SoundLayerTest, SoundsThatNeverLoadedPlayAndStopAsSilence ) {
	WriteSounds( SOUND_SKILL );
	ASSERT_TRUE( layer.Init( &backend ) );
	LoadSounds();
	for ( int id = SOUND_SKILL; id < SOUND_COUNT; id++ ) {
		EXPECT_TRUE( layer.PlaySound( id, id == SOUND_HEARTBEAT ) ) << "sound " << id;
		EXPECT_TRUE( layer.Stop( id ) ) << "sound " << id;
	}
	EXPECT_TRUE( backend.GetEvents().empty() ) << "an unloaded sound reached the device";
	layer.PlaySound( SOUND_MACHINE_GUN, false );
	EXPECT_EQ( backend.GetPlayed(), std::vector<int>( { SOUND_MACHINE_GUN } ) ) << "a loaded sound before it must play";
	EXPECT_EQ( log.GetLines().size(), 2u ) << "playing unloaded sounds must not log";
}

TEST_F( SoundLayerTest, MusicSwitchesAndKeepsPlayingWhenAskedAgain ) {
	StartWithAllSounds();
	EXPECT_EQ( layer.GetCurrentMusic(), -1 );
	EXPECT_TRUE( layer.PlayMusic( SOUND_MENU_MUSIC ) );
	EXPECT_TRUE( layer.PlayMusic( SOUND_MENU_MUSIC ) );
	EXPECT_EQ( backend.GetEvents(), std::vector<tEvent>( { Played( SOUND_MENU_MUSIC, true, -1000 ) } ) )
		<< "asking for the current music again must not restart it";
	backend.Clear();
	EXPECT_TRUE( layer.PlayMusic( SOUND_STREETS_MUSIC ) );
	EXPECT_EQ( backend.GetEvents(),
			   std::vector<tEvent>( { Stopped( SOUND_MENU_MUSIC ), Played( SOUND_STREETS_MUSIC, true, -1000 ) } ) );
	EXPECT_EQ( layer.GetCurrentMusic(), SOUND_STREETS_MUSIC );
}

// The game stops the streets music itself (defeat); it stays current until another music is asked for.
TEST_F( SoundLayerTest, AStoppedMusicStaysCurrent ) {
	StartWithAllSounds();
	layer.PlayMusic( SOUND_STREETS_MUSIC );
	EXPECT_TRUE( layer.Stop( SOUND_STREETS_MUSIC ) );
	EXPECT_EQ( layer.GetCurrentMusic(), SOUND_STREETS_MUSIC );
	backend.Clear();
	layer.PlayMusic( SOUND_STREETS_MUSIC );
	EXPECT_TRUE( backend.GetEvents().empty() );
	layer.PlayMusic( SOUND_MENU_MUSIC );
	layer.PlayMusic( SOUND_STREETS_MUSIC );
	EXPECT_EQ( backend.GetPlayed(), std::vector<int>( { SOUND_MENU_MUSIC, SOUND_STREETS_MUSIC } ) );
}

TEST_F( SoundLayerTest, EffectsPlayAtMinusFiveDecibelsAndTheHeartbeatAtFullVolume ) {
	StartWithAllSounds();
	std::vector<tEvent> expected;
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		const bool loop = id == SOUND_HEARTBEAT;
		EXPECT_TRUE( layer.PlaySound( id, loop ) );
		expected.push_back( Played( id, loop, id == SOUND_HEARTBEAT ? 0 : -500 ) );
	}
	EXPECT_EQ( backend.GetEvents(), expected );
	EXPECT_EQ( layer.GetCurrentMusic(), -1 ) << "a music id played as a sound is not the current music";
}

TEST_F( SoundLayerTest, AFailedPlayIsLoggedAndKeepsTheOldMusic ) {
	StartWithAllSounds();
	layer.PlayMusic( SOUND_MENU_MUSIC );
	backend.SetFailPlay( true );
	EXPECT_FALSE( layer.PlayMusic( SOUND_BOSS_MUSIC ) );
	EXPECT_EQ( layer.GetCurrentMusic(), SOUND_MENU_MUSIC );
	EXPECT_FALSE( layer.PlaySound( SOUND_ITEM, false ) );
	EXPECT_EQ( log.GetLines(), std::vector<std::string>( { "Error playing DirectSound secondary buffer", "Error playing music",
															"Error playing DirectSound secondary buffer", "Error playing sound" } ) );
}

TEST_F( SoundLayerTest, AFailedStopIsLogged ) {
	StartWithAllSounds();
	backend.SetFailStop( true );
	EXPECT_FALSE( layer.Stop( SOUND_EXPLOSION ) );
	EXPECT_EQ( log.GetLines(), std::vector<std::string>( { "Error stopping DirectSound secondary buffer" } ) );
}

TEST_F( SoundLayerTest, WithoutADeviceEveryCallIsASilentSuccess ) {
	cRecordingSoundBackend failing;
	failing.SetFailOpen( true );
	for ( cSoundBackend *device : { static_cast<cSoundBackend *>( nullptr ), static_cast<cSoundBackend *>( &failing ) } ) {
		SCOPED_TRACE( device == nullptr ? "no backend" : "a backend that cannot open" );
		cLog::Restart( cLog::GetPath() );
		WriteSounds();
		cSoundLayer silent;
		silent.heartbeatPlaying = true;
		EXPECT_FALSE( silent.Init( device ) );
		EXPECT_FALSE( silent.IsEnabled() );
		EXPECT_FALSE( silent.heartbeatPlaying ) << "Init must reset the heartbeat flag";
		EXPECT_EQ( log.GetLines(), std::vector<std::string>( { "Error creating DirectSound object" } ) );
		EXPECT_TRUE( silent.LoadSounds( ( folder.GetPath() + "/" ).c_str() ) );
		EXPECT_TRUE( silent.LoadWave( "no/such/file.wav", SOUND_ITEM ) );
		EXPECT_TRUE( silent.PlayMusic( SOUND_MENU_MUSIC ) );
		EXPECT_TRUE( silent.PlaySound( SOUND_HEARTBEAT, true ) );
		EXPECT_TRUE( silent.PlayBuffer( SOUND_ITEM, false, 0 ) );
		EXPECT_TRUE( silent.Stop( SOUND_MENU_MUSIC ) );
		EXPECT_EQ( silent.GetCurrentMusic(), -1 );
		EXPECT_EQ( log.GetLines().size(), 1u ) << "a silent layer must not log";
		silent.Release();
	}
	EXPECT_EQ( failing.GetSoundCount(), 0 );
	EXPECT_TRUE( failing.GetEvents().empty() );
	EXPECT_FALSE( failing.IsOpen() );
}

TEST_F( SoundLayerTest, ReleaseGivesEverythingBackAndSilencesTheLayer ) {
	StartWithAllSounds();
	layer.PlayMusic( SOUND_MENU_MUSIC );
	layer.Release();
	EXPECT_EQ( backend.GetSoundCount(), 0 );
	EXPECT_FALSE( backend.IsOpen() );
	EXPECT_FALSE( layer.IsEnabled() );
	backend.Clear();
	EXPECT_TRUE( layer.PlaySound( SOUND_EXPLOSION, false ) );
	EXPECT_TRUE( backend.GetEvents().empty() );
	layer.Release();	// twice, as after a failed start and the shut-down
}
