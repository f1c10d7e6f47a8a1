// The real SDL input backend under the real game, with SDL's virtual game controllers and the
// dummy video driver, no hardware: pads plugged in and out at any moment, their keys as the game
// reads them, which pad drives which player, the pause when a pad in use goes, the cursor and the
// click in the menus, and the rumble of a hit player's pad.

#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdlib>
#include <memory>

#include "LogCapture.h"
#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Character.h"
#include "app/Game.h"
#include "app/GameState.h"
#include "graphics/headless/RecordingGraphicsBackend.h"
#include "input/KeyCodes.h"
#include "input/sdl/SdlInputBackend.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/sdl/SdlWindow.h"

namespace {

const Sint16 FULL = 32767;
const Sint16 SLIGHT = 8192;		// just past the dead zone: the cursor moves 1 pixel
const int MAX_PADS = 4;

int CountRumble( void *userdata, Uint16, Uint16 ) {
	++*static_cast<int *>( userdata );
	return 0;
}

class SdlPadTest : public ::testing::Test {
protected:
	void SetUp() override {
		setenv( "SDL_VIDEODRIVER", "dummy", 1 );
		// The dummy window never has the focus, without which SDL keeps the pads' moves from the game.
		SDL_SetHint( SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, "1" );
		ASSERT_EQ( SDL_Init( SDL_INIT_VIDEO | SDL_INIT_GAMECONTROLLER ), 0 ) << SDL_GetError();
		SetClock( &clock );
		gameState = STATE_MAIN_MENU;
		input = std::make_unique<cSdlInputBackend>( window );
		graphics.SetRecording( false );
		cPlatform platform;
		platform.graphics = &graphics;
		platform.input = input.get();
		ASSERT_TRUE( game.Init( platform, false ) );
	}
	void TearDown() override {
		game.Finalize();
		input.reset();
		while ( SDL_NumJoysticks() > 0 ) {
			SDL_JoystickDetachVirtual( 0 );
		}
		SDL_Quit();
		SetClock( nullptr );
		gameState = STATE_MAIN_MENU;
	}

	// Plugs in a pad, which the game opens with the next events; its instance id, as SDL's events
	// and the backend name it.
	SDL_JoystickID Attach() {
		SDL_VirtualJoystickDesc desc;
		SDL_zero( desc );
		desc.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
		desc.type = SDL_JOYSTICK_TYPE_GAMECONTROLLER;
		desc.naxes = SDL_CONTROLLER_AXIS_MAX;
		desc.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
		desc.name = "Virtual pad";
		desc.userdata = &rumbles[attached++ % MAX_PADS];
		desc.Rumble = CountRumble;
		const int index = SDL_JoystickAttachVirtualEx( &desc );
		EXPECT_GE( index, 0 ) << SDL_GetError();
		const SDL_JoystickID id = SDL_JoystickGetDeviceInstanceID( index );
		HandleEvents();
		return id;
	}
	void Detach( SDL_JoystickID id ) {
		for ( int index = 0; index < SDL_NumJoysticks(); index++ ) {
			if ( SDL_JoystickGetDeviceInstanceID( index ) == id ) {
				SDL_JoystickDetachVirtual( index );
			}
		}
	}
	void SetAxis( SDL_JoystickID id, SDL_GameControllerAxis axis, Sint16 value ) {
		SDL_Joystick *joystick = SDL_JoystickFromInstanceID( id );
		ASSERT_NE( joystick, nullptr ) << "pad " << id << " was not opened by the game";
		SDL_JoystickSetVirtualAxis( joystick, axis, value );
	}
	void SetButton( SDL_JoystickID id, SDL_GameControllerButton button, bool down ) {
		SDL_Joystick *joystick = SDL_JoystickFromInstanceID( id );
		ASSERT_NE( joystick, nullptr ) << "pad " << id << " was not opened by the game";
		SDL_JoystickSetVirtualButton( joystick, button, down ? 1 : 0 );
	}
	void SetStick( SDL_JoystickID id, Sint16 x, Sint16 y ) {
		SetAxis( id, SDL_CONTROLLER_AXIS_LEFTX, x );
		SetAxis( id, SDL_CONTROLLER_AXIS_LEFTY, y );
	}
	void HandleEvents() {
		SDL_Event event;
		while ( SDL_PollEvent( &event ) ) {
			input->HandleEvent( event );
		}
	}
	// As the program's loop: the pending events, then the game's step and its frame, 15 msec apart.
	void Frames( int count ) {
		for ( int i = 0; i < count; i++ ) {
			HandleEvents();
			ASSERT_TRUE( game.Step() );
			game.RenderFrame();
			clock.Advance( cGame::FRAME_TIME );
		}
	}
	void StartGame( uint32_t players ) {
		game.GetConfig().SetPlayers( players );
		gameState = STATE_PLAYING;
		game.NewGame();
		ASSERT_EQ( gameState, STATE_PLAYING );
	}
	bool Held( int key ) { return game.GetInputLayer().KeyDown( key ); }
	void GetCursor( int32_t &x, int32_t &y ) { game.GetInputLayer().GetMousePosition( x, y ); }
	// Steers the cursor with the stick, one axis after the other, slowing down for the last pixels.
	void MoveCursorTo( SDL_JoystickID id, int32_t x, int32_t y ) {
		for ( int axis = 0; axis < 2; axis++ ) {
			for ( int frame = 0; frame < 200; frame++ ) {
				int32_t cursor[2] = {};
				GetCursor( cursor[0], cursor[1] );
				const int32_t distance = ( axis == 0 ? x : y ) - cursor[axis];
				if ( distance == 0 ) {
					break;
				}
				const Sint16 speed = std::abs( distance ) >= 6 ? FULL : SLIGHT;
				const Sint16 tilt = distance > 0 ? speed : static_cast<Sint16>( -speed );
				SetStick( id, axis == 0 ? tilt : 0, axis == 1 ? tilt : 0 );
				Frames( 1 );
			}
		}
		SetStick( id, 0, 0 );
		Frames( 1 );
	}
	void Click( SDL_JoystickID id ) {
		SetButton( id, SDL_CONTROLLER_BUTTON_A, true );
		Frames( 1 );
		SetButton( id, SDL_CONTROLLER_BUTTON_A, false );
		Frames( 1 );
	}

	cManualClock						clock;
	cSdlWindow							window;		// never opened: the dummy driver has no screen
	cRecordingGraphicsBackend			graphics;
	std::unique_ptr<cSdlInputBackend>	input;
	cGame								game;
	int									rumbles[MAX_PADS] = {};
	int									attached = 0;
};

}

TEST_F( SdlPadTest, StickMovesTheCursorAndTheSouthButtonClicksOnRelease ) {
	Frames( 1 );
	const SDL_JoystickID pad = Attach();
	SetStick( pad, FULL, 0 );
	Frames( 10 );
	int32_t x = 0, y = 0;
	GetCursor( x, y );
	EXPECT_EQ( x, 380 ) << "6 pixels a frame at full tilt from the middle of the screen";
	EXPECT_EQ( y, 240 );
	SetStick( pad, FULL, FULL );
	Frames( 100 );
	GetCursor( x, y );
	EXPECT_EQ( x, 639 ) << "kept on the screen";
	EXPECT_EQ( y, 479 );

	MoveCursorTo( pad, 160, 360 );			// entry 4 of the main menu: the credits
	GetCursor( x, y );
	ASSERT_EQ( x, 160 );
	ASSERT_EQ( y, 360 );
	SetButton( pad, SDL_CONTROLLER_BUTTON_A, true );
	Frames( 3 );
	EXPECT_EQ( gameState, STATE_MAIN_MENU ) << "a press alone is no click";
	SetButton( pad, SDL_CONTROLLER_BUTTON_A, false );
	Frames( 1 );
	EXPECT_EQ( gameState, STATE_CREDITS ) << "the release clicks";
}

TEST_F( SdlPadTest, PadPluggedInMidGameTakesTheFreePlayerAndPressesItsKeys ) {
	StartGame( 2 );
	Frames( 2 );
	const SDL_JoystickID first = Attach();
	SetStick( first, -FULL, -FULL );
	SetButton( first, SDL_CONTROLLER_BUTTON_A, true );
	Frames( 1 );
	EXPECT_TRUE( Held( KEY_UP ) && Held( KEY_LEFT ) ) << "a lone pad in a two-player game drives player 2";
	EXPECT_TRUE( Held( KEY_NUMPAD1 ) ) << "south fires";
	EXPECT_FALSE( Held( KEY_W ) || Held( KEY_A ) || Held( KEY_H ) ) << "player 1 keeps the keyboard";
	SetStick( first, 0, 0 );
	SetButton( first, SDL_CONTROLLER_BUTTON_A, false );
	SetAxis( first, SDL_CONTROLLER_AXIS_TRIGGERRIGHT, FULL );
	Frames( 1 );
	EXPECT_FALSE( Held( KEY_UP ) || Held( KEY_LEFT ) ) << "the stick let go";
	EXPECT_TRUE( Held( KEY_NUMPAD1 ) ) << "the right trigger fires";

	const SDL_JoystickID second = Attach();
	SetButton( second, SDL_CONTROLLER_BUTTON_X, true );
	SetButton( second, SDL_CONTROLLER_BUTTON_DPAD_RIGHT, true );
	Frames( 1 );
	EXPECT_TRUE( Held( KEY_J ) && Held( KEY_D ) ) << "the second pad takes player 1";
	EXPECT_FALSE( Held( KEY_NUMPAD2 ) || Held( KEY_RIGHT ) );

	// An enemy's shot on each player in turn: only that player's pad rumbles.
	for ( int player = 1; player <= 2; player++ ) {
		int32_t x = 0, y = 0;
		( *game.GetPlayers() )[player - 1]->GetPosition( x, y );
		game.GetBullets()->push_back( cBullet( x + 6, y + 6, DIR_DOWN, WEAPON_ENEMY_GUN, KIND_SOLDIER ) );
		Frames( 1 );
	}
	EXPECT_EQ( rumbles[1], 1 ) << "player 1's pad, plugged in second";
	EXPECT_EQ( rumbles[0], 1 ) << "player 2's pad";
}

TEST_F( SdlPadTest, PadsAreHandedOutAgainAtEveryNewGame ) {
	const SDL_JoystickID first = Attach();
	const SDL_JoystickID second = Attach();
	Frames( 1 );
	SetStick( first, FULL, 0 );
	SetStick( second, FULL, 0 );
	const struct { const char *what; uint32_t players; bool detachSecond; int keysHeld[2]; int keysFree[2]; } cases[] = {
		{ "two pads, one player: the first", 1, false, { KEY_D, KEY_D }, { KEY_RIGHT, KEY_RIGHT } },
		{ "two pads, two players", 2, false, { KEY_D, KEY_RIGHT }, { 0, 0 } },
		{ "one pad, two players: player 2", 2, true, { KEY_RIGHT, KEY_RIGHT }, { KEY_D, KEY_D } },
	};
	for ( const auto &c : cases ) {
		if ( c.detachSecond ) {
			Detach( second );
			Frames( 1 );
		}
		StartGame( c.players );
		Frames( 1 );
		for ( int i = 0; i < 2; i++ ) {
			EXPECT_TRUE( Held( c.keysHeld[i] ) ) << c.what << ": key " << c.keysHeld[i];
			EXPECT_FALSE( c.keysFree[i] != 0 && Held( c.keysFree[i] ) ) << c.what << ": key " << c.keysFree[i];
		}
	}
}

TEST_F( SdlPadTest, UnpluggedInPlayPausesAndPluggedBackInDrivesTheSamePlayer ) {
	const SDL_JoystickID pad = Attach();
	StartGame( 2 );
	Frames( 1 );
	SetStick( pad, FULL, 0 );
	Frames( 1 );
	ASSERT_TRUE( Held( KEY_RIGHT ) );
	Detach( pad );
	Frames( 1 );
	EXPECT_EQ( gameState, STATE_PAUSE ) << "the player's pad went";
	EXPECT_FALSE( Held( KEY_RIGHT ) ) << "its keys are let go at once";
	game.GetInputLayer().Rumble( 2 );		// a pad that is gone is not touched
	Frames( 5 );
	EXPECT_EQ( gameState, STATE_PAUSE );

	const SDL_JoystickID back = Attach();
	Frames( 1 );
	MoveCursorTo( back, 160, 360 );			// the pause screen's entry 4: resume
	Click( back );
	ASSERT_EQ( gameState, STATE_PLAYING );
	SetButton( back, SDL_CONTROLLER_BUTTON_DPAD_UP, true );
	Frames( 1 );
	EXPECT_TRUE( Held( KEY_UP ) ) << "plugged back in, the pad drives player 2 again";
	EXPECT_FALSE( Held( KEY_W ) );
	SetButton( back, SDL_CONTROLLER_BUTTON_DPAD_UP, false );
	SetButton( back, SDL_CONTROLLER_BUTTON_START, true );
	Frames( 1 );
	EXPECT_EQ( gameState, STATE_PAUSE ) << "Start pauses as Escape does";
}

TEST_F( SdlPadTest, JoystickWithoutAMappingIsLoggedAndLeftAlone ) {
	cLogCapture log;
	SDL_VirtualJoystickDesc desc;
	SDL_zero( desc );
	desc.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
	desc.type = SDL_JOYSTICK_TYPE_WHEEL;
	desc.naxes = 1;
	desc.nbuttons = 1;
	desc.name = "Odd wheel";
	ASSERT_GE( SDL_JoystickAttachVirtualEx( &desc ), 0 );
	Frames( 2 );
	ASSERT_FALSE( SDL_IsGameController( 0 ) ) << "SDL made a mapping for the wheel: pick another device";
	const std::string text = log.GetText();
	EXPECT_NE( text.find( "Pad not recognised, unused: Odd wheel" ), std::string::npos ) << text;
	EXPECT_NE( text.find( "SDL_GAMECONTROLLERCONFIG" ), std::string::npos ) << text;
}
