// SPDX-License-Identifier: GPL-3.0-or-later
// Pads without any device: the mapping of one pad's controls to a player's keys, the cursor's step,
// which pad drives which player as pads come and go, and a scripted pad in the real game.

#include <gtest/gtest.h>

#include "actors/Character.h"
#include "actors/GameState.h"
#include "app/Config.h"
#include "input/KeyCodes.h"
#include "input/PadMapping.h"
#include "input/Pads.h"
#include "harness/HeadlessGame.h"

namespace {

const int16_t FULL = 32767;

cPadState Stick( int16_t x, int16_t y ) {
	cPadState pad;
	pad.axes[PAD_AXIS_LEFT_X] = x;
	pad.axes[PAD_AXIS_LEFT_Y] = y;
	return pad;
}

cPadState Button( ePadButton button ) {
	cPadState pad;
	pad.buttons[button] = true;
	return pad;
}

// The keys held by the pad for the player; a byte other than held or free fails the test.
std::vector<int> HeldKeys( const cPadState &pad, int player ) {
	uint8_t keys[256] = {};
	cPadMapping::PressKeys( pad, player, keys );
	std::vector<int> held;
	for ( int key = 0; key < 256; key++ ) {
		EXPECT_TRUE( keys[key] == 0 || keys[key] == 0x80 ) << "key " << key << " has the byte " << int( keys[key] );
		if ( keys[key] != 0 ) {
			held.push_back( key );
		}
	}
	return held;
}

}

// The dead zone's edge, the eight sectors' boundaries at 22.5 degrees either side of each
// direction (tan 22.5 = 0.41421), the trigger's threshold, and the buttons beside the bindings below.
TEST( PadMapping, ControlsPressTheirPlayersKeysAtTheEdges ) {
	const struct { const char *what; cPadState pad; int player; std::vector<int> keys; } cases[] = {
		{ "stick at rest", Stick( 0, 0 ), 1, {} },
		{ "just inside the dead zone", Stick( 8191, 0 ), 1, {} },
		{ "on the dead zone's edge", Stick( 8192, 0 ), 1, { KEY_D } },
		{ "dead zone edge, diagonal inside", Stick( -5792, -5792 ), 1, {} },
		{ "dead zone edge, diagonal outside", Stick( -5793, -5793 ), 1, { KEY_W, KEY_A } },
		{ "right, 22.4 degrees down", Stick( 20000, 8284 ), 1, { KEY_D } },
		{ "down-right, 22.5 degrees down", Stick( 20000, 8285 ), 1, { KEY_S, KEY_D } },
		{ "down-right, 67.4 degrees", Stick( 8285, 20000 ), 1, { KEY_S, KEY_D } },
		{ "down, 67.5 degrees", Stick( 8284, 20000 ), 1, { KEY_S } },
		{ "left, just above", Stick( -FULL, -13571 ), 1, { KEY_A } },
		{ "up-left", Stick( -FULL, -13573 ), 1, { KEY_W, KEY_A } },
		{ "full up", Stick( 0, -32768 ), 1, { KEY_W } },
		{ "up-right for player 2", Stick( FULL, -FULL ), 2, { KEY_UP, KEY_RIGHT } },
		{ "full left for player 2", Stick( -32768, 0 ), 2, { KEY_LEFT } },
		{ "d-pad with the stick", [] { cPadState p = Stick( FULL, 0 ); p.buttons[PAD_BUTTON_DPAD_UP] = true; return p; }(), 1,
		  { KEY_W, KEY_D } },
		{ "trigger below the threshold", [] { cPadState p; p.axes[PAD_AXIS_RIGHT_TRIGGER] = 8191; return p; }(), 1, {} },
		{ "trigger at the threshold", [] { cPadState p; p.axes[PAD_AXIS_RIGHT_TRIGGER] = 8192; return p; }(), 2,
		  { KEY_NUMPAD1 } },
		{ "left trigger does nothing", [] { cPadState p; p.axes[PAD_AXIS_LEFT_TRIGGER] = FULL; return p; }(), 1, {} },
		{ "left shoulder is the skill", Button( PAD_BUTTON_LEFT_SHOULDER ), 2, { KEY_NUMPAD2 } },
		{ "north is use", Button( PAD_BUTTON_NORTH ), 2, { KEY_NUMPAD3 } },
		{ "start is Escape", Button( PAD_BUTTON_START ), 2, { KEY_ESCAPE } },
		{ "a pad of nobody: only Escape", [] { cPadState p = Stick( FULL, 0 ); p.buttons[PAD_BUTTON_START] = true;
											  p.buttons[PAD_BUTTON_SOUTH] = true; return p; }(), 0, { KEY_ESCAPE } },
	};
	for ( const auto &c : cases ) {
		EXPECT_EQ( HeldKeys( c.pad, c.player ), c.keys ) << c.what;
	}
}

TEST( PadMapping, PlayersKeysAreTheKeyboardBindings ) {
	const cConfig config;
	const ePadButton held[cConfig::KEYS_PER_PLAYER] = {
		PAD_BUTTON_DPAD_UP, PAD_BUTTON_DPAD_DOWN, PAD_BUTTON_DPAD_RIGHT, PAD_BUTTON_DPAD_LEFT, PAD_BUTTON_SOUTH,
		PAD_BUTTON_WEST, PAD_BUTTON_EAST,
	};
	for ( uint32_t player = 1; player <= 2; player++ ) {
		uint32_t keys[cConfig::KEYS_PER_PLAYER] = {};
		config.GetKeys( player, keys );
		for ( int i = 0; i < cConfig::KEYS_PER_PLAYER; i++ ) {
			EXPECT_EQ( HeldKeys( Button( held[i] ), static_cast<int>( player ) ), std::vector<int>{ static_cast<int>( keys[i] ) } )
				<< "player " << player << ", key " << i;
		}
	}
}

TEST( PadMapping, CursorStepsOnePixelPastTheDeadZoneAndSixAtFullTilt ) {
	const struct { cPadState pad; int32_t dx, dy; } cases[] = {
		{ Stick( 8191, 0 ), 0, 0 }, { Stick( 8192, 0 ), 1, 0 }, { Stick( 0, -8192 ), 0, -1 },
		{ Stick( FULL, 0 ), 6, 0 }, { Stick( -32768, 0 ), -6, 0 }, { Stick( 0, FULL ), 0, 6 },
		{ Stick( 20480, 0 ), 4, 0 },				// half-way between the dead zone and full tilt: 3.5
		{ Stick( FULL, FULL ), 4, 4 },				// the stick's corner is past full tilt: 6 along 45 degrees
		{ Stick( -FULL, 8192 ), -6, 1 },
	};
	for ( const auto &c : cases ) {
		int32_t dx = 99, dy = 99;
		cPadMapping::GetCursorStep( c.pad, dx, dy );
		EXPECT_EQ( dx, c.dx ) << "stick at (" << c.pad.axes[0] << ", " << c.pad.axes[1] << ")";
		EXPECT_EQ( dy, c.dy ) << "stick at (" << c.pad.axes[0] << ", " << c.pad.axes[1] << ")";
	}
}

// Pads 1, 2 and 3 by the order they were plugged in; "pad" names a make without serial numbers.
TEST( Pads, SeatsFollowThePlayerCountAndTheOrderOfPluggingIn ) {
	const struct { const char *what; int players; int pads; int seat[3]; } cases[] = {
		{ "one pad, one player", 1, 1, { 1, 0, 0 } },
		{ "one pad, two players: the pad takes player 2", 2, 1, { 2, 0, 0 } },
		{ "two pads, two players", 2, 2, { 1, 2, 0 } },
		{ "two pads, one player: the second drives nobody", 1, 2, { 1, 0, 0 } },
		{ "three pads, two players", 2, 3, { 1, 2, 0 } },
	};
	for ( const auto &c : cases ) {
		cPads pads;
		for ( int id = 1; id <= c.pads; id++ ) {
			pads.Connect( id, "pad" );
		}
		pads.SetPlayerCount( c.players );
		for ( int id = 1; id <= 3; id++ ) {
			EXPECT_EQ( pads.GetPlayer( id ), c.seat[id - 1] ) << c.what << ": pad " << id;
		}
	}
}

TEST( Pads, PadsComingAndGoingInATwoPlayerGameKeepTheirPlayers ) {
	cPads pads;
	pads.SetPlayerCount( 2 );
	pads.Connect( 7, "blue" );
	EXPECT_EQ( pads.GetPlayer( 7 ), 2 ) << "a first pad plugged in during play takes player 2";
	pads.Connect( 8, "red" );
	EXPECT_EQ( pads.GetPlayer( 8 ), 1 ) << "the second takes the free player";
	EXPECT_EQ( pads.GetPlayer( 7 ), 2 ) << "and the first keeps its own";

	EXPECT_TRUE( pads.Disconnect( 8 ) ) << "a pad that drove a player";
	EXPECT_EQ( pads.GetPad( 1 ), cPads::NO_PAD );
	pads.Connect( 9, "green" );
	EXPECT_EQ( pads.GetPlayer( 9 ), 1 ) << "any pad takes the seat left empty";
	EXPECT_TRUE( pads.Disconnect( 9 ) );
	EXPECT_TRUE( pads.Disconnect( 7 ) );
	pads.Connect( 10, "blue" );
	EXPECT_EQ( pads.GetPlayer( 10 ), 2 ) << "the same make back takes its own seat first";
	pads.Connect( 11, "yellow" );
	EXPECT_EQ( pads.GetPlayer( 11 ), 1 );
	pads.Connect( 12, "red" );
	EXPECT_EQ( pads.GetPlayer( 12 ), 0 ) << "every seat is filled";
	EXPECT_FALSE( pads.Disconnect( 12 ) ) << "a pad of nobody leaves no player";
	EXPECT_FALSE( pads.Disconnect( 12 ) ) << "unplugged twice";
	EXPECT_FALSE( pads.Disconnect( 99 ) ) << "never plugged in";
}

// In play the pads move no cursor and click nothing; south held into the pause or an end screen
// is no click there until it is let go and pressed anew.
TEST( Pads, FireHeldIntoThePauseIsNoClickUntilPressedAnew ) {
	cPads pads;
	pads.Connect( 1, "pad" );
	pads.SetPlaying( true );
	cPadState fire = Stick( FULL, 0 );
	fire.buttons[PAD_BUTTON_SOUTH] = true;
	pads.SetState( 1, fire );
	int32_t dx = 99, dy = 99;
	pads.GetCursorStep( dx, dy );
	EXPECT_TRUE( dx == 0 && dy == 0 ) << "the cursor moved in play";
	EXPECT_FALSE( pads.IsClickHeld() ) << "fire in play";
	pads.SetPlaying( false );
	pads.SetState( 1, fire );
	EXPECT_FALSE( pads.IsClickHeld() ) << "fire held into the pause";
	pads.SetState( 1, cPadState() );
	pads.SetState( 1, fire );
	EXPECT_TRUE( pads.IsClickHeld() ) << "pressed anew";
}

// The scripted backend feeds the pads to the whole game: in play the stick walks player 1 and
// leaves the cursor where it was.
TEST( ScriptedPad, StickWalksInPlayAndLeavesTheCursor ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	headless.GetInput().PlugPad( 1, "pad" );
	cGame &game = headless.GetGame();
	game.SetGameState( STATE_PLAYING );
	game.NewGame();
	ASSERT_TRUE( headless.Frames( 1 ) );
	cCharacter &player = *( *game.GetPlayers() )[0];
	int32_t x0 = 0, y0 = 0, x1 = 0, y1 = 0;
	player.GetPosition( x0, y0 );
	headless.GetInput().SetPad( 1, Stick( 0, -FULL ) );
	ASSERT_TRUE( headless.Frames( 5 ) );
	player.GetPosition( x1, y1 );
	EXPECT_EQ( x1, x0 );
	EXPECT_LT( y1, y0 ) << "the stick pushed up walks player 1 up";
	game.GetInputLayer().GetMousePosition( x1, y1 );
	EXPECT_TRUE( x1 == 320 && y1 == 240 ) << "the cursor moved in play, to (" << x1 << ", " << y1 << ")";
}
