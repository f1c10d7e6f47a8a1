// SPDX-License-Identifier: GPL-3.0-or-later
// The menus driven with the mouse through the real game: a tour of the screens, the click
// that is a press and a release, the entries' edges, the cursor kept on the screen, pause, and the
// victory screen's first frame.

#include <gtest/gtest.h>

#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "input/KeyCodes.h"
#include "harness/HeadlessGame.h"
#include "sound/headless/RecordingSoundBackend.h"
#include "world/Scene.h"

namespace {

// The middle of each of the five entries.
const int32_t ENTRY_X = 160;
const int32_t ENTRY_Y[6] = { 0, 260, 295, 328, 360, 392 };

class MenuFlowTest : public ::testing::Test {
protected:
	void SetUp() override {
		ASSERT_TRUE( headless.Start() );
	}
	bool ClickEntry( int entry ) { return headless.Click( ENTRY_X, ENTRY_Y[entry] ); }
	uint32_t Difficulty() {
		uint32_t level = 0;
		headless.GetGame().GetConfig().GetDifficulty( level );
		return level;
	}
	uint32_t Players() {
		uint32_t count = 0;
		headless.GetGame().GetConfig().GetPlayers( count );
		return count;
	}

	cRecordingSoundBackend	sound;
	cHeadlessGame			headless { &sound };
};

}

// A tour of every screen by its entries, with the options each sets on the way: a handled click
// clears the latch, and entries that do nothing on a screen (here difficulty 1, pause 3) leave it.
TEST_F( MenuFlowTest, EntriesLeadFromScreenToScreenAndSetTheOptions ) {
	const struct { int entry; int32_t screen; uint32_t players, difficulty; } tour[] = {
		{ 2, STATE_SELECT_TWO, 2, 2 }, { 5, STATE_MAIN_MENU, 2, 2 }, { 1, STATE_SELECT_ONE, 1, 2 },
		{ 5, STATE_MAIN_MENU, 1, 2 }, { 3, STATE_SETTINGS, 1, 2 }, { 3, STATE_DIFFICULTY, 1, 2 },
		{ 1, STATE_DIFFICULTY, 1, 2 }, { 2, STATE_MAIN_MENU, 1, 1 }, { 3, STATE_SETTINGS, 1, 1 },
		{ 3, STATE_DIFFICULTY, 1, 1 }, { 4, STATE_MAIN_MENU, 1, 3 }, { 3, STATE_SETTINGS, 1, 3 },
		{ 3, STATE_DIFFICULTY, 1, 3 }, { 5, STATE_MAIN_MENU, 1, 3 }, { 3, STATE_SETTINGS, 1, 3 },
		{ 4, STATE_CONTROLS, 1, 3 }, { 5, STATE_MAIN_MENU, 1, 3 }, { 4, STATE_CREDITS, 1, 3 },
		{ 5, STATE_MAIN_MENU, 1, 3 }, { 3, STATE_SETTINGS, 1, 3 }, { 5, STATE_MAIN_MENU, 1, 3 },
	};
	for ( size_t i = 0; i < std::size( tour ); i++ ) {
		const int32_t from = headless.GetGame().GetGameState();
		ASSERT_TRUE( ClickEntry( tour[i].entry ) );
		EXPECT_EQ( headless.GetGame().GetGameState(), tour[i].screen ) << "step " << i << ": entry " << tour[i].entry << " on screen " << from;
		EXPECT_EQ( Players(), tour[i].players ) << "step " << i;
		EXPECT_EQ( Difficulty(), tour[i].difficulty ) << "step " << i;
		EXPECT_FALSE( headless.GetGame().IsClickLatched() ) << "a handled click clears the latch";
	}
	headless.GetGame().SetGameState( STATE_PAUSE );
	ASSERT_TRUE( ClickEntry( 3 ) );
	EXPECT_EQ( headless.GetGame().GetGameState(), STATE_PAUSE );
	ASSERT_TRUE( ClickEntry( 4 ) );
	EXPECT_EQ( headless.GetGame().GetGameState(), STATE_PLAYING ) << "resume";
}

// A click is the release: wherever the press was, and on whatever screen.
TEST_F( MenuFlowTest, ClickIsTheReleaseWhereverThePressWas ) {
	const struct { int32_t pressScreen, pressX, pressY, releaseScreen, releaseX, releaseY, expected; const char *what; } cases[] = {
		{ STATE_MAIN_MENU, ENTRY_X, ENTRY_Y[3], STATE_MAIN_MENU, 400, 100, STATE_MAIN_MENU, "pressed on entry 3, released outside" },
		{ STATE_MAIN_MENU, 400, 100, STATE_MAIN_MENU, ENTRY_X, ENTRY_Y[3], STATE_SETTINGS, "pressed outside, released on entry 3" },
		{ STATE_SETTINGS, ENTRY_X, ENTRY_Y[5], STATE_CREDITS, ENTRY_X, ENTRY_Y[5], STATE_MAIN_MENU,
		  "held across a change of screen, released on the credits' entry 5" },
	};
	cScriptedInputBackend &input = headless.GetInput();
	for ( const auto &c : cases ) {
		headless.GetGame().SetGameState( c.pressScreen );
		input.SetMousePosition( c.pressX, c.pressY );
		input.SetButton( 0, true );
		ASSERT_TRUE( headless.Frame() );
		headless.GetGame().SetGameState( c.releaseScreen );
		input.SetMousePosition( c.releaseX, c.releaseY );
		input.SetButton( 0, false );
		ASSERT_TRUE( headless.Frame() );
		EXPECT_EQ( headless.GetGame().GetGameState(), c.expected ) << c.what;
	}
}

// Each entry of the main menu, by the pixels at its corners: the top-left one and the last one
// inside, and the first ones past its right and bottom edges and before its left edge.
TEST_F( MenuFlowTest, EveryEntrysEdgesOnTheMainMenu ) {
	const struct {
		int32_t	left, top, right, bottom;	// right and bottom are the first pixels outside
		int32_t	screen;						// where the entry leads; -1 quits
	} entries[] = {
		{ 70, 248, 250, 273, STATE_SELECT_ONE }, { 70, 284, 250, 307, STATE_SELECT_TWO },
		{ 70, 317, 250, 340, STATE_SETTINGS }, { 70, 348, 250, 372, STATE_CREDITS },
		{ 70, 381, 250, 404, -1 },
	};
	for ( const auto &e : entries ) {
		const int32_t inside[][2] = { { e.left, e.top }, { e.right - 1, e.bottom - 1 } };
		for ( const auto &point : inside ) {
			headless.GetGame().SetGameState( STATE_MAIN_MENU );
			const bool running = headless.Click( point[0], point[1] );
			EXPECT_EQ( running ? headless.GetGame().GetGameState() : -1, e.screen ) << "(" << point[0] << ", " << point[1] << ") is inside";
		}
		const int32_t outside[][2] = { { e.right, e.top }, { e.left, e.bottom }, { e.left - 1, e.top } };
		for ( const auto &point : outside ) {
			headless.GetGame().SetGameState( STATE_MAIN_MENU );
			ASSERT_TRUE( headless.Click( point[0], point[1] ) ) << "(" << point[0] << ", " << point[1] << ") quits";
			EXPECT_EQ( headless.GetGame().GetGameState(), STATE_MAIN_MENU ) << "(" << point[0] << ", " << point[1] << ") is outside";
		}
	}
}

TEST_F( MenuFlowTest, CursorIsKeptOnTheScreen ) {
	const struct { int32_t x, y, keptX, keptY; } cases[] = { { -50, 900, 0, 479 }, { 5000, -3, 639, 0 } };
	for ( const auto &c : cases ) {
		headless.GetInput().SetMousePosition( c.x, c.y );
		ASSERT_TRUE( headless.Frame() );
		int32_t x = 0, y = 0;
		headless.GetGame().GetInputLayer().GetMousePosition( x, y );
		EXPECT_TRUE( x == c.keptX && y == c.keptY ) << "(" << c.x << ", " << c.y << ") kept at (" << x << ", " << y << ")";
	}
}

TEST_F( MenuFlowTest, MusicFollowsTheScreens ) {
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( sound.GetPlayed(), std::vector<int>( { SOUND_MENU_MUSIC } ) ) << "the menu music starts once";
	ASSERT_TRUE( ClickEntry( 3 ) );
	ASSERT_TRUE( ClickEntry( 4 ) );
	EXPECT_EQ( sound.GetPlayed(), std::vector<int>( { SOUND_MENU_MUSIC } ) ) << "and is not restarted";
	EXPECT_EQ( sound.GetEvents().front().volume, -1000 );
	EXPECT_TRUE( sound.GetEvents().front().loop );
}
