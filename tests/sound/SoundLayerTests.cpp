// SPDX-License-Identifier: GPL-3.0-or-later
// The sound layer over a recording backend: loading the fifteen sounds and stopping at a bad one,
// the music switch, volumes per id, failures of the device and the silent layer.

#include "sound/SoundLayer.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "LogCapture.h"
#include "TempDir.h"
#include "WaveBytes.h"
#include "sound/headless/RecordingSoundBackend.h"

namespace {

typedef std::vector<std::string> tLines;

// Each file gets a shape of its own, so that a sound loaded into the wrong slot shows.
sWaveShape ShapeOf( int id ) {
	return sWaveShape { static_cast<uint16_t>( 1 + id % 2 ), id < 3 ? 44100u : 22050u, 16, 100u + id };
}

// A layer on a recording device, with the game's fifteen files in a folder of its own.
struct cSoundRig {
	cLogCapture				log;
	cTempDir				folder;
	cRecordingSoundBackend	backend;
	cSoundLayer				layer;

	void WriteSounds() {
		for ( int id = 0; id < SOUND_COUNT; id++ ) {
			folder.WriteFile( GAME_SOUND_FILES[id], MakeWave( ShapeOf( id ) ) );
		}
	}
	bool Load() { return layer.LoadSounds( ( folder.GetPath() + "/" ).c_str() ); }
	void Start() {
		WriteSounds();
		ASSERT_TRUE( layer.Init( &backend ) && Load() ) << log.GetText();
	}
	// What the device was asked since the last call, as "play 0 looping at -1000; stop 0; ".
	std::string TakeEvents() {
		std::string text;
		for ( const cRecordingSoundBackend::cEvent &event : backend.GetEvents() ) {
			text += ( event.play ? "play " : "stop " ) + std::to_string( event.id );
			if ( event.play ) {
				text += ( event.loop ? " looping at " : " once at " ) + std::to_string( event.volume );
			}
			text += "; ";
		}
		backend.Clear();
		return text;
	}
};

}

// The game goes on asking for every sound: those that never loaded play and stop as silence.
TEST( SoundLayer, ABadSoundStopsTheLoadingAndItAndTheSoundsAfterItStaySilent ) {
	struct sCase {
		const char *	file;			// none: the device refuses every sound
		const char *	contents;		// none: the file is missing
		int				loaded;			// the first ids
		tLines			lines;
	};
	const sCase cases[] = {
		{ "skill.wav", nullptr, 8, { "Error opening sound file", "Error loading skill.wav" } },
		{ "item.wav", "RIFF", 9, { "Error reading wave file header", "Error loading item.wav" } },
		{ nullptr, nullptr, 0, { "Error creating DirectSound temporary buffer", "Error loading menu.wav" } },
	};
	for ( const sCase &test : cases ) {
		const std::string what = test.file == nullptr ? "a device refusing" : test.file;
		cSoundRig rig;
		rig.WriteSounds();
		if ( test.file != nullptr && test.contents != nullptr ) {
			rig.folder.WriteFile( test.file, test.contents );
		} else if ( test.file != nullptr ) {
			std::remove( rig.folder.GetFile( test.file ).c_str() );
		}
		rig.backend.SetFailCreate( test.file == nullptr );
		ASSERT_TRUE( rig.layer.Init( &rig.backend ) );
		EXPECT_FALSE( rig.Load() ) << what;
		EXPECT_EQ( rig.log.GetLines(), test.lines ) << what;
		for ( int id = 0; id < SOUND_COUNT; id++ ) {
			EXPECT_EQ( rig.layer.IsLoaded( id ), id < test.loaded ) << what << ", sound " << id;
			EXPECT_TRUE( rig.layer.PlaySound( id, false ) && rig.layer.Stop( id ) ) << what << ", sound " << id;
		}
		EXPECT_EQ( rig.backend.GetEvents().size(), 2u * test.loaded ) << what << ": a sound not loaded reached the device";
		EXPECT_EQ( rig.log.GetLines(), test.lines ) << what << ": silent sounds must not log";
	}
}

// The game stops the streets music itself on a defeat; it stays current until another is asked for.
// A device failing to play or stop is logged.
TEST( SoundLayer, MusicSwitchesButIsNeverRestartedByAskingForItAgain ) {
	cSoundRig rig;
	rig.Start();
	EXPECT_EQ( rig.layer.GetCurrentMusic(), -1 );
	EXPECT_TRUE( rig.layer.PlayMusic( SOUND_MENU_MUSIC ) && rig.layer.PlayMusic( SOUND_MENU_MUSIC ) );
	EXPECT_EQ( rig.TakeEvents(), "play 0 looping at -1000; " ) << "the current music was restarted";
	EXPECT_TRUE( rig.layer.PlayMusic( SOUND_STREETS_MUSIC ) );
	EXPECT_EQ( rig.TakeEvents(), "stop 0; play 1 looping at -1000; " );
	rig.layer.Stop( SOUND_STREETS_MUSIC );
	rig.layer.PlayMusic( SOUND_STREETS_MUSIC );
	EXPECT_EQ( rig.TakeEvents(), "stop 1; " ) << "a stopped music stays current";
	rig.layer.PlayMusic( SOUND_MENU_MUSIC );

	rig.backend.SetFailPlay( true );
	rig.backend.SetFailStop( true );
	EXPECT_FALSE( rig.layer.PlayMusic( SOUND_BOSS_MUSIC ) );
	EXPECT_EQ( rig.layer.GetCurrentMusic(), SOUND_MENU_MUSIC ) << "a music that failed to start is not current";
	EXPECT_FALSE( rig.layer.PlaySound( SOUND_ITEM, false ) || rig.layer.Stop( SOUND_ITEM ) );
	EXPECT_EQ( rig.log.GetLines(), tLines( { "Error stopping DirectSound secondary buffer",
											 "Error playing DirectSound secondary buffer", "Error playing music",
											 "Error playing DirectSound secondary buffer", "Error playing sound",
											 "Error stopping DirectSound secondary buffer" } ) );
}

TEST( SoundLayer, EachIdHoldsItsOwnFileAndPlaysAtMinusFiveDecibelsTheHeartbeatAtFull ) {
	cSoundRig rig;
	rig.Start();
	std::string expected;
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		EXPECT_EQ( rig.backend.GetSampleBytes( id ), ShapeOf( id ).frames * ShapeOf( id ).channels * 2 ) << "sound " << id;
		EXPECT_TRUE( rig.layer.PlaySound( id, id == SOUND_HEARTBEAT ) );
		expected += "play " + std::to_string( id ) + ( id == SOUND_HEARTBEAT ? " looping at 0; " : " once at -500; " );
	}
	EXPECT_EQ( rig.TakeEvents(), expected );
	EXPECT_EQ( rig.layer.GetCurrentMusic(), -1 ) << "a music id played as a sound is not the current music";
}

TEST( SoundLayer, WithoutADeviceEveryCallIsASilentSuccess ) {
	cRecordingSoundBackend failing;
	failing.SetFailOpen( true );
	for ( cSoundBackend *device : { static_cast<cSoundBackend *>( nullptr ), static_cast<cSoundBackend *>( &failing ) } ) {
		SCOPED_TRACE( device == nullptr ? "no backend" : "a backend that cannot open" );
		cSoundRig rig;
		rig.WriteSounds();
		rig.layer.heartbeatPlaying = true;
		EXPECT_FALSE( rig.layer.Init( device ) || rig.layer.IsEnabled() );
		EXPECT_FALSE( rig.layer.heartbeatPlaying ) << "Init must reset the heartbeat flag";
		EXPECT_TRUE( rig.Load() && rig.layer.LoadWave( "no/such/file.wav", SOUND_ITEM ) );
		EXPECT_TRUE( rig.layer.PlayMusic( SOUND_MENU_MUSIC ) && rig.layer.PlaySound( SOUND_HEARTBEAT, true ) );
		EXPECT_TRUE( rig.layer.PlayBuffer( SOUND_ITEM, false, 0 ) && rig.layer.Stop( SOUND_MENU_MUSIC ) );
		EXPECT_EQ( rig.layer.GetCurrentMusic(), -1 );
		EXPECT_EQ( rig.log.GetLines(), tLines( { "Error creating DirectSound object" } ) ) << "only the failed Init logs";
		rig.layer.Release();
	}
	EXPECT_TRUE( failing.GetSoundCount() == 0 && failing.GetEvents().empty() && !failing.IsOpen() );
}
