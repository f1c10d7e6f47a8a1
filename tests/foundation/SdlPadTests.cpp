// SPDX-License-Identifier: GPL-3.0-or-later
// The real SDL input backend under the real game, with SDL's virtual game controllers and the
// dummy video driver, no hardware: pads plugged in and out at any moment, their keys as the game
// reads them, which pad drives which player, the pause when a pad in use goes or the window is left,
// the cursor and the click in the menus, the rumble of a hit player's pad; where the cursor starts,
// the click that refocuses the window.

#include <gtest/gtest.h>

#include <SDL.h>

#include <memory>

#include "LogCapture.h"
#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Character.h"
#include "actors/GameState.h"
#include "app/Game.h"
#include "graphics/headless/RecordingGraphicsBackend.h"
#include "input/KeyCodes.h"
#include "input/sdl/SdlInputBackend.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "platform/sdl/SdlWindow.h"

namespace {

const Sint16 FULL = 32767;
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
	}

	// Plugs in a pad (or another device), which the game opens with the next events; its instance id,
	// as SDL's events and the backend name it.
	SDL_JoystickID Attach( SDL_JoystickType type = SDL_JOYSTICK_TYPE_GAMECONTROLLER, const char *name = "Virtual pad" ) {
		SDL_VirtualJoystickDesc desc;
		SDL_zero( desc );
		desc.version = SDL_VIRTUAL_JOYSTICK_DESC_VERSION;
		desc.type = type;
		desc.naxes = SDL_CONTROLLER_AXIS_MAX;
		desc.nbuttons = SDL_CONTROLLER_BUTTON_MAX;
		desc.name = name;
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
	SDL_Joystick *Opened( SDL_JoystickID id ) {
		SDL_Joystick *joystick = SDL_JoystickFromInstanceID( id );
		EXPECT_NE( joystick, nullptr ) << "pad " << id << " was not opened by the game";
		return joystick;
	}
	void SetAxis( SDL_JoystickID id, SDL_GameControllerAxis axis, Sint16 value ) {
		SDL_JoystickSetVirtualAxis( Opened( id ), axis, value );
	}
	void SetButton( SDL_JoystickID id, SDL_GameControllerButton button, bool down ) {
		SDL_JoystickSetVirtualButton( Opened( id ), button, down ? 1 : 0 );
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
		game.SetGameState( STATE_PLAYING );
		game.NewGame();
		ASSERT_EQ( game.GetGameState(), STATE_PLAYING );
	}
	bool Held( int key ) { return game.GetInputLayer().KeyDown( key ); }
	// A window event (its kind in detail) or a mouse press (its button), at SDL's msec.
	void SendEvent( Uint32 type, Uint8 detail, Uint32 timestamp ) {
		SDL_Event event = {};
		event.type = type;
		( type == SDL_WINDOWEVENT ? event.window.event : event.button.button ) = detail;
		event.common.timestamp = timestamp;
		input->HandleEvent( event );
	}
	// From the middle of the screen, where the game puts the cursor, to (158, 360): the pause
	// screen's entry 4, resume; there the south button clicks.
	void ClickResume( SDL_JoystickID id ) {
		SetStick( id, -FULL, 0 );
		Frames( 27 );
		SetStick( id, 0, FULL );
		Frames( 20 );
		SetStick( id, 0, 0 );
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

TEST_F( SdlPadTest, UnpluggedInPlayPausesAndPluggedBackInDrivesTheSamePlayer ) {
	const SDL_JoystickID pad = Attach();
	StartGame( 2 );
	Frames( 1 );
	SetStick( pad, FULL, 0 );
	Frames( 1 );
	ASSERT_TRUE( Held( KEY_RIGHT ) );
	Detach( pad );
	Frames( 1 );
	EXPECT_EQ( game.GetGameState(), STATE_PAUSE ) << "the player's pad went";
	EXPECT_FALSE( Held( KEY_RIGHT ) ) << "its keys are let go at once";
	game.GetInputLayer().Rumble( 2 );		// a pad that is gone is not touched
	Frames( 5 );
	EXPECT_EQ( game.GetGameState(), STATE_PAUSE );

	const SDL_JoystickID back = Attach();
	game.GetInputLayer().SetMousePosition( 320, 240 );
	ClickResume( back );
	ASSERT_EQ( game.GetGameState(), STATE_PLAYING );
	SetButton( back, SDL_CONTROLLER_BUTTON_DPAD_UP, true );
	Frames( 1 );
	EXPECT_TRUE( Held( KEY_UP ) ) << "plugged back in, the pad drives player 2 again";
	EXPECT_FALSE( Held( KEY_W ) );
	SetButton( back, SDL_CONTROLLER_BUTTON_DPAD_UP, false );
	SetButton( back, SDL_CONTROLLER_BUTTON_START, true );
	Frames( 1 );
	EXPECT_EQ( game.GetGameState(), STATE_PAUSE ) << "Start pauses as Escape does";
}

// Leaving the window pauses play as a pad in use going does, and as Escape does, only in play: the
// window lost the focus, was minimised or hidden. Other window events change nothing, and coming
// back to the window does not resume by itself.
TEST_F( SdlPadTest, LeavingTheWindowPausesPlayOnly ) {
	StartGame( 1 );
	const struct { Uint8 event; bool pauses; } cases[] = {
		{ SDL_WINDOWEVENT_FOCUS_LOST, true }, { SDL_WINDOWEVENT_MINIMIZED, true }, { SDL_WINDOWEVENT_HIDDEN, true },
		{ SDL_WINDOWEVENT_FOCUS_GAINED, false }, { SDL_WINDOWEVENT_RESTORED, false }, { SDL_WINDOWEVENT_SHOWN, false },
	};
	for ( int32_t state = STATE_MAIN_MENU; state <= STATE_VICTORY; state++ ) {
		for ( const auto &c : cases ) {
			game.SetGameState( state );
			SDL_Event event = { SDL_WINDOWEVENT };
			event.window.event = c.event;
			SDL_PushEvent( &event );
			Frames( 1 );
			EXPECT_EQ( game.GetGameState(), c.pauses && state == STATE_PLAYING ? STATE_PAUSE : state )
				<< "window event " << static_cast<int>( c.event ) << " on screen " << state;
		}
	}
}

TEST_F( SdlPadTest, JoystickWithoutAMappingIsLoggedAndLeftAlone ) {
	cLogCapture log;
	Attach( SDL_JOYSTICK_TYPE_WHEEL, "Odd wheel" );
	Frames( 2 );
	ASSERT_FALSE( SDL_IsGameController( 0 ) ) << "SDL made a mapping for the wheel: pick another device";
	const std::string text = log.GetText();
	EXPECT_NE( text.find( "Pad not recognised, unused: Odd wheel" ), std::string::npos ) << text;
	EXPECT_NE( text.find( "SDL_GAMECONTROLLERCONFIG" ), std::string::npos ) << text;
}

// The click that brings the window back to the front is the desktop's, whether it comes before the
// focus or up to 250 msec after it: on the pause screen's resume entry it resumes nothing.
TEST_F( SdlPadTest, TheClickThatBringsTheWindowBackChoosesNoEntry ) {
	const struct { Uint32 focusAt, pressAt; int expected; } cases[] = {	// a focus at 0 never came
		{ 0, 4990, STATE_PAUSE }, { 5000, 5250, STATE_PAUSE }, { 5000, 5251, STATE_PLAYING } };
	for ( const auto &c : cases ) {
		StartGame( 1 );
		SendEvent( SDL_WINDOWEVENT, SDL_WINDOWEVENT_FOCUS_LOST, 4900 );
		Frames( 1 );
		game.GetInputLayer().SetMousePosition( 158, 360 );	// the resume entry
		if ( c.focusAt > 0 ) {
			SendEvent( SDL_WINDOWEVENT, SDL_WINDOWEVENT_FOCUS_GAINED, c.focusAt );
		}
		SendEvent( SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, c.pressAt );
		Frames( 2 );	// pressed, then let go: a click
		EXPECT_EQ( game.GetGameState(), c.expected ) << "a press at " << c.pressAt << ", the focus back at " << c.focusAt;
	}
}

// Where the desktop does not move the pointer for the game (here the game's window is never opened,
// the pointer lies in another), the cursor stays where the game put it when the pointer comes in.
TEST_F( SdlPadTest, TheCursorStartsInTheMiddleWhereverThePointerIs ) {
	SDL_WarpMouseInWindow( SDL_CreateWindow( "pointer", 0, 0, 640, 480, SDL_WINDOW_HIDDEN ), 50, 60 );	// only noted
	SendEvent( SDL_WINDOWEVENT, SDL_WINDOWEVENT_ENTER, 0 );
	Frames( 2 );
	int32_t x = 0, y = 0;
	game.GetInputLayer().GetMousePosition( x, y );
	EXPECT_TRUE( x == 320 && y == 240 ) << "the pointer came in at (50, 60); the cursor is at " << x << ", " << y;
}
