// SPDX-License-Identifier: GPL-3.0-or-later
// The controls screen driven like a player would: a click on an action's key and a key pressed
// binds it, is refused with the line that names the holder, or is cancelled by Escape; the
// screen's entries restore the defaults or take player 2 off the keypad; the names shown are the
// layout's; and a key bound here is the one player 2 fires with in a game.

#include <gtest/gtest.h>

#include <algorithm>

#include "actors/Bullet.h"
#include "actors/GameState.h"
#include "app/ControlsPage.h"
#include "harness/HeadlessGame.h"
#include "input/KeyCodes.h"
#include "input/SettingsStore.h"

namespace {

const int32_t ENTRY_X = 160;
const int32_t ENTRY_Y[6] = { 0, 260, 295, 328, 360, 392 };
const int KEY_L = 0x26;
const int KEY_SPACE = 0x39;
const int KEY_RETURN = 0x1C;
const int KEY_LEFT_ALT = 0x38;
const int32_t LUMRA_GUN = 1;

struct cCountingStore : cSettingsStore {
	bool Save( const cSettings & ) override {
		saves++;
		return true;
	}
	int saves = 0;
};

class ControlsPageTest : public ::testing::Test {
protected:
	void SetUp() override {
		headless.SetSettingsStore( &store );
		ASSERT_TRUE( headless.Start() );
		ASSERT_TRUE( ClickEntry( 3 ) );
		ASSERT_TRUE( ClickEntry( 4 ) );
		ASSERT_EQ( headless.GetGame().GetGameState(), STATE_CONTROLS );
	}
	bool ClickEntry( int entry ) { return headless.Click( ENTRY_X, ENTRY_Y[entry] ); }
	void ClickKey( int player, int action ) {
		const cRect cell = cControlsPage::GetKeyCell( player, action );
		ASSERT_TRUE( headless.Click( ( cell.left + cell.right ) / 2, ( cell.top + cell.bottom ) / 2 ) );
	}
	void Press( int key ) {
		headless.SetKey( key, true );
		headless.Frames( 2 );
		headless.SetKey( key, false );
		headless.Frames( 1 );
	}
	int Key( int player, int action ) { return headless.GetSettings().keys.GetKey( player, action ); }
	const std::string &Line() { return headless.GetGame().GetControlsPage().GetLine(); }
	bool Shows( const std::string &text ) {
		const std::vector<std::string> texts = headless.GetGraphics().GetTexts();
		return std::find( texts.begin(), texts.end(), text ) != texts.end();
	}

	cCountingStore	store;
	cHeadlessGame	headless;
};

}

// A key held when the waiting began is no press; the next key pressed is.
TEST_F( ControlsPageTest, AClickedActionTakesTheNextKeyPressedAndKeepsIt ) {
	headless.SetKey( KEY_SPACE, true );
	ClickKey( 2, cKeyBindings::FIRE );
	EXPECT_EQ( Line(), "Press a key for player 2's fire; Escape cancels" );
	EXPECT_TRUE( Shows( "?" ) );
	headless.SetKey( KEY_SPACE, false );
	headless.Frames( 2 );
	EXPECT_EQ( Key( 2, cKeyBindings::FIRE ), KEY_NUMPAD1 ) << "Space was held before";
	Press( KEY_L );
	EXPECT_EQ( Key( 2, cKeyBindings::FIRE ), KEY_L );
	EXPECT_EQ( store.saves, 1 );
	EXPECT_EQ( Line(), "" );
	EXPECT_TRUE( Shows( "L" ) );
	EXPECT_FALSE( Shows( "Keypad 1" ) );
}

TEST_F( ControlsPageTest, AKeyAnotherActionHoldsIsRefusedAndEscapeCancels ) {
	const struct {
		int			key;
		std::string	line;
		bool		waiting;
	} cases[] = {
		{ KEY_K, "K is player 1's use", true },
		{ KEY_UP, "Up is player 2's up", true },
		{ KEY_LEFT_ALT, "Left Alt stays the game's own", true },
		{ KEY_ESCAPE, "", false },
	};
	for ( const auto &c : cases ) {
		ClickKey( 2, cKeyBindings::FIRE );
		Press( c.key );
		EXPECT_EQ( Line(), c.line );
		EXPECT_EQ( headless.GetGame().GetControlsPage().IsWaiting(), c.waiting ) << c.line;
		EXPECT_EQ( Key( 2, cKeyBindings::FIRE ), KEY_NUMPAD1 );
	}
	EXPECT_EQ( store.saves, 0 ) << "nothing changed, nothing written";
	EXPECT_TRUE( Shows( "Keypad 1" ) );
}

// No keypad is refused while player 1 holds one of its keys; Defaults frees it.
TEST_F( ControlsPageTest, DefaultsAndNoKeypadSetTheirKeys ) {
	ClickKey( 1, cKeyBindings::FIRE );
	Press( KEY_RETURN );
	ASSERT_EQ( Key( 1, cKeyBindings::FIRE ), KEY_RETURN );
	ASSERT_TRUE( ClickEntry( cControlsPage::NO_KEYPAD_ENTRY ) );
	EXPECT_EQ( Line(), "Return is player 1's fire" );
	EXPECT_EQ( Key( 2, cKeyBindings::USE ), KEY_NUMPAD3 );
	ASSERT_TRUE( ClickEntry( cControlsPage::DEFAULTS_ENTRY ) );
	EXPECT_TRUE( headless.GetSettings().keys == cKeyBindings() );
	ASSERT_TRUE( ClickEntry( cControlsPage::NO_KEYPAD_ENTRY ) );
	EXPECT_EQ( store.saves, 3 );
	for ( const char *name : { "Right Ctrl", "Right Shift", "Return", "Up", "Left" } ) {
		EXPECT_TRUE( Shows( name ) ) << name;
	}
	EXPECT_FALSE( Shows( "Keypad 2" ) );
	EXPECT_EQ( Key( 2, cKeyBindings::FIRE ), 0x9D );
	EXPECT_EQ( Key( 2, cKeyBindings::SKILL ), 0x36 );
	EXPECT_EQ( Key( 2, cKeyBindings::USE ), KEY_RETURN );
}

// The page shows what the layout prints: on a French keyboard W and A's places are Z and Q.
TEST_F( ControlsPageTest, TheKeysShowTheLayoutsNames ) {
	headless.GetInput().SetKeyName( KEY_W, "Z" );
	headless.GetInput().SetKeyName( KEY_A, "Q" );
	headless.Frames( 1 );
	const std::vector<std::string> texts = headless.GetGraphics().GetTexts();
	ASSERT_GE( texts.size(), 4u );
	EXPECT_EQ( std::vector<std::string>( texts.begin(), texts.begin() + 4 ), ( std::vector<std::string>{ "Z", "S", "Q", "D" } ) );
}

// Player 2 (lumra) fires with the key bound on the page, and no longer with keypad 1.
TEST_F( ControlsPageTest, AKeyBoundHereIsTheOnePlayer2FiresWith ) {
	ClickKey( 2, cKeyBindings::FIRE );
	Press( KEY_L );
	ASSERT_TRUE( ClickEntry( 5 ) );
	ASSERT_TRUE( ClickEntry( 2 ) );
	ASSERT_TRUE( ClickEntry( 3 ) );
	ASSERT_EQ( headless.GetGame().GetGameState(), STATE_PLAYING );
	const auto lumraShots = [this]() {
		const tBulletList &bullets = *headless.GetGame().GetBullets();
		return std::count_if( bullets.begin(), bullets.end(), []( const cBullet &b ) { return b.GetWeapon() == LUMRA_GUN; } );
	};
	headless.SetKey( KEY_NUMPAD1, true );
	headless.Frames( 10 );
	EXPECT_EQ( lumraShots(), 0 ) << "keypad 1 is no longer player 2's fire";
	headless.SetKey( KEY_NUMPAD1, false );
	headless.SetKey( KEY_L, true );
	headless.Frames( 10 );
	EXPECT_GT( lumraShots(), 0 );
}
