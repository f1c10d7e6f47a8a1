// SPDX-License-Identifier: GPL-3.0-or-later
// The sound screen's levels and the settings screen's start choice, clicked like a player would:
// each click changes the setting, keeps it and shows it; a level reaches the sound the game plays,
// the music playing now included.

#include <gtest/gtest.h>

#include <algorithm>

#include "actors/GameState.h"
#include "harness/HeadlessGame.h"
#include "input/SettingsStore.h"
#include "sound/SoundLayer.h"
#include "sound/headless/RecordingSoundBackend.h"

namespace {

const int32_t LOWER_X = 100;		// the left half of an entry
const int32_t RAISE_X = 220;		// its right half
const int32_t ENTRY_Y[6] = { 0, 260, 295, 328, 360, 392 };

struct cKeptSettings : cSettingsStore {
	bool Save( const cSettings &settings ) override {
		kept.push_back( settings );
		return true;
	}
	std::vector<cSettings> kept;
};

class SoundAndStartTest : public ::testing::Test {
protected:
	void Start() {
		headless.SetSettingsStore( &store );
		ASSERT_TRUE( headless.Start() );
		headless.Frames( 1 );
		ASSERT_TRUE( headless.Click( RAISE_X, ENTRY_Y[3] ) );
		ASSERT_EQ( headless.GetGame().GetGameState(), STATE_SETTINGS );
	}
	std::vector<std::string> Texts() { return headless.GetGraphics().GetTexts(); }
	int32_t LastMusicVolume() {
		int32_t volume = 1;
		for ( const auto &event : sound.GetEvents() ) {
			volume = event.play && event.id == SOUND_MENU_MUSIC ? event.volume : volume;
		}
		for ( const auto &change : sound.GetVolumeChanges() ) {
			volume = change.id == SOUND_MENU_MUSIC ? change.volume : volume;
		}
		return volume;
	}

	cRecordingSoundBackend	sound;
	cKeptSettings			store;
	cHeadlessGame			headless { &sound };
};

}

// A level's steps are one loudness ratio each, on every sound's own volume; 0 is silence.
TEST( SoundLevelTest, ALevelSoftensEachSoundFromItsOwnVolume ) {
	const struct { int level; int32_t music, effect, heartbeat; } cases[] = {
		{ 10, -1000, -500, 0 }, { 5, -1602, -1102, -602 }, { 1, -3000, -2500, -2000 },
		{ 0, -10000, -10000, -10000 }, { 11, -1000, -500, 0 }, { -1, -10000, -10000, -10000 },
	};
	for ( const auto &c : cases ) {
		EXPECT_EQ( cSoundLayer::Soften( cSoundLayer::VOLUME_MUSIC, c.level ), c.music ) << c.level;
		EXPECT_EQ( cSoundLayer::Soften( cSoundLayer::VOLUME_EFFECT, c.level ), c.effect ) << c.level;
		EXPECT_EQ( cSoundLayer::Soften( cSoundLayer::VOLUME_FULL, c.level ), c.heartbeat ) << c.level;
	}
}

// The music of the menu plays on, softer at once; the levels stop at 0 and 10.
TEST_F( SoundAndStartTest, TheSoundScreenSetsTheLevelsHeardAtOnce ) {
	Start();
	ASSERT_EQ( LastMusicVolume(), cSoundLayer::VOLUME_MUSIC );
	ASSERT_TRUE( headless.Click( RAISE_X, ENTRY_Y[1] ) );
	ASSERT_EQ( headless.GetGame().GetGameState(), STATE_SOUND );
	EXPECT_EQ( Texts(), ( std::vector<std::string>{ "10", "10" } ) );
	for ( int i = 0; i < 3; i++ ) {
		ASSERT_TRUE( headless.Click( LOWER_X, ENTRY_Y[1] ) );
	}
	ASSERT_TRUE( headless.Click( RAISE_X, ENTRY_Y[2] ) );
	EXPECT_EQ( headless.GetSettings().musicVolume, 7 );
	EXPECT_EQ( headless.GetSettings().effectsVolume, 10 ) << "no louder than the game's own";
	EXPECT_EQ( LastMusicVolume(), cSoundLayer::Soften( cSoundLayer::VOLUME_MUSIC, 7 ) );
	EXPECT_EQ( Texts(), ( std::vector<std::string>{ "7", "10" } ) );
	ASSERT_EQ( store.kept.size(), 4u );
	EXPECT_EQ( store.kept.back().musicVolume, 7 );
	for ( int i = 0; i < 12; i++ ) {
		ASSERT_TRUE( headless.Click( LOWER_X, ENTRY_Y[2] ) );
	}
	EXPECT_EQ( headless.GetSettings().effectsVolume, 0 );
	ASSERT_TRUE( headless.Click( RAISE_X, ENTRY_Y[5] ) );
	EXPECT_EQ( headless.GetGame().GetGameState(), STATE_MAIN_MENU );
}

// Levels kept from an earlier run are heard from the first sound on.
TEST_F( SoundAndStartTest, KeptLevelsPlayFromTheStart ) {
	headless.GetSettings().musicVolume = 4;
	Start();
	EXPECT_EQ( LastMusicVolume(), cSoundLayer::Soften( cSoundLayer::VOLUME_MUSIC, 4 ) );
	EXPECT_TRUE( store.kept.empty() ) << "nothing changed, nothing written";
}

TEST_F( SoundAndStartTest, TheStartEntryGoesThroughTheThreeChoices ) {
	Start();
	EXPECT_EQ( Texts(), std::vector<std::string>{ "ask" } );
	const struct { cSettings::eStartScreen start; const char *shown; } turns[] = {
		{ cSettings::FULL_SCREEN, "full screen" }, { cSettings::WINDOW, "window" }, { cSettings::ASK, "ask" },
	};
	for ( const auto &turn : turns ) {
		ASSERT_TRUE( headless.Click( LOWER_X, ENTRY_Y[2] ) );
		EXPECT_EQ( headless.GetSettings().startScreen, turn.start );
		EXPECT_EQ( Texts(), std::vector<std::string>{ turn.shown } );
		EXPECT_EQ( store.kept.back().startScreen, turn.start );
	}
	EXPECT_EQ( headless.GetGame().GetGameState(), STATE_SETTINGS );
	headless.GetGame().LockSettings( true );
	ASSERT_TRUE( headless.Click( LOWER_X, ENTRY_Y[2] ) );
	EXPECT_EQ( headless.GetSettings().startScreen, cSettings::ASK ) << "an online game's menus change no setting";
}
