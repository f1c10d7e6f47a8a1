// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/sdl/SdlInputBackend.h"

#include <SDL.h>

#include <algorithm>
#include <cstring>

#include "input/KeyBindings.h"
#include "input/sdl/ScancodeMap.h"
#include "log/Log.h"
#include "platform/sdl/SdlWindow.h"

namespace {

const uint8_t KEY_HELD = 0x80;

// SDL maps its buttons 1 left, 2 middle, 3 right; the game's are 0 left, 1 right, 2 middle.
int GameButton( Uint8 sdlButton ) {
	switch ( sdlButton ) {
		case SDL_BUTTON_LEFT:	return 0;
		case SDL_BUTTON_RIGHT:	return 1;
		case SDL_BUTTON_MIDDLE:	return 2;
		case SDL_BUTTON_X1:		return 3;
		default:				return -1;
	}
}

// The player switched to another window or put this one away.
bool IsLeavingWindow( Uint8 windowEvent ) {
	return windowEvent == SDL_WINDOWEVENT_FOCUS_LOST || windowEvent == SDL_WINDOWEVENT_MINIMIZED
		|| windowEvent == SDL_WINDOWEVENT_HIDDEN;
}

// The pad's controls by SDL's names, in the order of the game's pad state.
const SDL_GameControllerAxis PAD_AXES[PAD_AXIS_COUNT] = {
	SDL_CONTROLLER_AXIS_LEFTX, SDL_CONTROLLER_AXIS_LEFTY, SDL_CONTROLLER_AXIS_TRIGGERLEFT, SDL_CONTROLLER_AXIS_TRIGGERRIGHT,
};
const SDL_GameControllerButton PAD_BUTTONS[PAD_BUTTON_COUNT] = {
	SDL_CONTROLLER_BUTTON_A, SDL_CONTROLLER_BUTTON_B, SDL_CONTROLLER_BUTTON_X, SDL_CONTROLLER_BUTTON_Y,
	SDL_CONTROLLER_BUTTON_LEFTSHOULDER, SDL_CONTROLLER_BUTTON_START, SDL_CONTROLLER_BUTTON_DPAD_UP,
	SDL_CONTROLLER_BUTTON_DPAD_DOWN, SDL_CONTROLLER_BUTTON_DPAD_LEFT, SDL_CONTROLLER_BUTTON_DPAD_RIGHT,
};

int PadButton( Uint8 sdlButton ) {
	for ( int button = 0; button < PAD_BUTTON_COUNT; button++ ) {
		if ( PAD_BUTTONS[button] == sdlButton ) {
			return button;
		}
	}
	return -1;
}

// The make's GUID and, where the pad reports one, its serial number.
std::string GetPadIdentity( SDL_GameController *controller ) {
	char guid[33] = {};
	SDL_JoystickGetGUIDString( SDL_JoystickGetGUID( SDL_GameControllerGetJoystick( controller ) ), guid, sizeof( guid ) );
	const char *serial = SDL_GameControllerGetSerial( controller );
	return std::string( guid ) + "/" + ( serial != nullptr ? serial : "" );
}

void LogUnknownJoystick( int deviceIndex ) {
	char guid[33] = {};
	SDL_JoystickGetGUIDString( SDL_JoystickGetDeviceGUID( deviceIndex ), guid, sizeof( guid ) );
	const char *name = SDL_JoystickNameForIndex( deviceIndex );
	const std::string line = std::string( "Pad not recognised, unused: " ) + ( name != nullptr ? name : "unnamed" )
							 + " (GUID " + guid + "); SDL_GAMECONTROLLERCONFIG can map it";
	cLog::Write( line.c_str() );
}

}

cSdlInputBackend::cSdlInputBackend( const cSdlWindow &gameWindow ) : window( gameWindow ) {
}

cSdlInputBackend::~cSdlInputBackend() {
	for ( const cController &pad : controllers ) {
		SDL_GameControllerClose( pad.controller );
	}
}

void cSdlInputBackend::HandleEvent( const SDL_Event &event ) {
	if ( cSdlWindow::IsSwitchKey( event ) ) {
		switchKey = event.key.keysym.scancode;
		HoldCursor();
		switchReadsLeft = SWITCH_READS;
	} else if ( event.type == SDL_KEYDOWN ) {
		const int code = MapScancode( event.key.keysym.scancode );
		if ( code != 0 && !IsWindowKey( event.key.keysym.scancode ) ) {
			keyPressed[code] = true;
		}
	} else if ( event.type == SDL_WINDOWEVENT ) {
		HandleWindowEvent( event.window );
	} else if ( event.type == SDL_MOUSEBUTTONDOWN ) {
		HandleButtonDown( event.button );
	} else if ( event.type == SDL_CONTROLLERDEVICEADDED ) {
		OpenPad( event.cdevice.which );
	} else if ( event.type == SDL_CONTROLLERDEVICEREMOVED ) {
		ClosePad( event.cdevice.which );
	} else if ( event.type == SDL_CONTROLLERBUTTONDOWN ) {
		const int button = PadButton( event.cbutton.button );
		for ( cController &pad : controllers ) {
			if ( pad.id == event.cbutton.which && button >= 0 ) {
				pad.tapped[button] = true;
			}
		}
	} else if ( event.type == SDL_JOYDEVICEADDED && !SDL_IsGameController( event.jdevice.which ) ) {
		LogUnknownJoystick( event.jdevice.which );
	}
}

// After Alt+Enter the cursor stays at its place of the game's screen, and the pointer is sent there
// each time the window moves or changes size: SDL may announce the new size before the window
// manager has moved the window. The pointer coming into the window has not moved yet either.
void cSdlInputBackend::HandleWindowEvent( const SDL_WindowEvent &event ) {
	if ( IsLeavingWindow( event.event ) ) {
		pauseRequest = true;
	}
	if ( event.event == SDL_WINDOWEVENT_FOCUS_LOST ) {
		away = true;
	} else if ( event.event == SDL_WINDOWEVENT_FOCUS_GAINED ) {
		away = false;
		cameBack = true;
		cameBackAt = event.timestamp;
	} else if ( ( event.event == SDL_WINDOWEVENT_SIZE_CHANGED || event.event == SDL_WINDOWEVENT_MOVED ) && switchReadsLeft > 0 ) {
		WarpMouse( cursorX, cursorY );
		switchReadsLeft = SWITCH_READS;
	} else if ( event.event == SDL_WINDOWEVENT_ENTER && ownCursor ) {
		HoldCursor();
	}
}

// The desktop may hand the window the click that brought it back, before or after the focus itself.
void cSdlInputBackend::HandleButtonDown( const SDL_MouseButtonEvent &event ) {
	const int button = GameButton( event.button );
	if ( button < 0 ) {
		return;
	}
	const bool bringsBack = away || ( cameBack && event.timestamp - cameBackAt <= REFOCUS_TIME );
	( bringsBack ? focusClick : buttonPressed )[button] = true;
}

// The Alt keys are the desktop's and the window's (Alt+Tab, Alt+Enter); the game has no use for them.
bool cSdlInputBackend::IsWindowKey( SDL_Scancode scancode ) const {
	return scancode == SDL_SCANCODE_LALT || scancode == SDL_SCANCODE_RALT || scancode == switchKey;
}

void cSdlInputBackend::OpenPad( int deviceIndex ) {
	const SDL_JoystickID id = SDL_JoystickGetDeviceInstanceID( deviceIndex );
	if ( id < 0 || pads.IsConnected( id ) ) {
		return;		// gone again already, or announced twice
	}
	SDL_GameController *controller = SDL_GameControllerOpen( deviceIndex );
	if ( controller == nullptr ) {
		const std::string line = std::string( "Error opening pad: " ) + SDL_GetError();
		cLog::Write( line.c_str() );
		return;
	}
	controllers.push_back( cController{ id, controller, {} } );
	pads.Connect( id, GetPadIdentity( controller ) );
}

// The pad's keys are let go at once; the game pauses when the pad drove a player.
void cSdlInputBackend::ClosePad( SDL_JoystickID id ) {
	for ( auto pad = controllers.begin(); pad != controllers.end(); ++pad ) {
		if ( pad->id == id ) {
			SDL_GameControllerClose( pad->controller );
			controllers.erase( pad );
			break;
		}
	}
	if ( pads.Disconnect( id ) ) {
		pauseRequest = true;
	}
}

// A button that went down and up again between two polls still counts once.
void cSdlInputBackend::PollPads() {
	const bool heard = ArePadsHeard();
	for ( cController &pad : controllers ) {
		cPadState state;
		for ( int axis = 0; heard && axis < PAD_AXIS_COUNT; axis++ ) {
			state.axes[axis] = SDL_GameControllerGetAxis( pad.controller, PAD_AXES[axis] );
		}
		for ( int button = 0; heard && button < PAD_BUTTON_COUNT; button++ ) {
			state.buttons[button] = SDL_GameControllerGetButton( pad.controller, PAD_BUTTONS[button] ) != 0 || pad.tapped[button];
		}
		std::fill( pad.tapped, pad.tapped + PAD_BUTTON_COUNT, false );
		pads.SetState( pad.id, state );
	}
}

// SDL hands the pads' moves to a window with the focus only, unless told to listen in the background.
bool cSdlInputBackend::ArePadsHeard() const {
	return window.HasInputFocus() || SDL_GetHintBoolean( SDL_HINT_JOYSTICK_ALLOW_BACKGROUND_EVENTS, SDL_FALSE );
}

// Pads that cannot rumble, or a player without a pad, feel nothing.
void cSdlInputBackend::Rumble( int player ) {
	const int id = pads.GetPad( player );
	for ( const cController &pad : controllers ) {
		if ( pad.id == id ) {
			SDL_GameControllerRumble( pad.controller, RUMBLE_STRENGTH, RUMBLE_STRENGTH, RUMBLE_TIME );
		}
	}
}

bool cSdlInputBackend::TakePauseRequest() {
	const bool requested = pauseRequest;
	pauseRequest = false;
	return requested;
}

// The pads are polled here, once a frame; the mouse's read that follows uses the same poll.
bool cSdlInputBackend::ReadKeyboard( uint8_t state[256] ) {
	std::memset( state, 0, 256 );
	PollPads();
	if ( !window.HasInputFocus() ) {
		std::memset( keyPressed, 0, sizeof( keyPressed ) );
		pads.PressKeys( state );
		return true;	// a key held while the focus went elsewhere counts as released
	}
	int count = 0;
	const Uint8 *keys = SDL_GetKeyboardState( &count );
	if ( switchKey < count && !keys[switchKey] ) {
		switchKey = SDL_SCANCODE_UNKNOWN;
	}
	for ( int scancode = 0; scancode < count; scancode++ ) {
		const int code = MapScancode( static_cast<SDL_Scancode>( scancode ) );
		if ( keys[scancode] && code != 0 && !IsWindowKey( static_cast<SDL_Scancode>( scancode ) ) ) {
			state[code] = KEY_HELD;
		}
	}
	for ( int code = 0; code < 256; code++ ) {
		if ( keyPressed[code] ) {
			state[code] = KEY_HELD;
			keyPressed[code] = false;
		}
	}
	if ( bindings != nullptr && !rawKeys ) {
		bindings->Apply( state );
	}
	pads.PressKeys( state );
	return true;
}

std::string cSdlInputBackend::GetKeyName( int key ) const {
	size_t count = 0;
	const cScancodePair *table = GetScancodeTable( count );
	for ( size_t i = 0; i < count; i++ ) {
		if ( table[i].keyCode == key ) {
			const char *name = SDL_GetKeyName( SDL_GetKeyFromScancode( table[i].scancode ) );
			return name != nullptr && name[0] != '\0' ? name : SDL_GetScancodeName( table[i].scancode );
		}
	}
	return cInputBackend::GetKeyName( key );
}

// The game draws its own cursor; the system pointer stays hidden over the window either way.
bool cSdlInputBackend::AcquireMouse( bool ) {
	SDL_ShowCursor( SDL_DISABLE );
	return true;
}

bool cSdlInputBackend::ReadMouse( cMouseReading &reading ) {
	int windowX = 0;
	int windowY = 0;
	const Uint32 buttons = SDL_GetMouseState( &windowX, &windowY );
	if ( switchReadsLeft > 0 ) {
		switchReadsLeft = IsPointerAtCursor( windowX, windowY ) ? 0 : switchReadsLeft - 1;
	} else if ( !ownCursor || windowX != pointerX || windowY != pointerY ) {
		window.WindowToScreen( windowX, windowY, cursorX, cursorY );
		ownCursor = false;
	}
	pointerX = windowX;
	pointerY = windowY;
	int32_t padX = 0;
	int32_t padY = 0;
	pads.GetCursorStep( padX, padY );
	if ( padX != 0 || padY != 0 ) {
		cursorX += padX;
		cursorY += padY;
		ownCursor = true;
	}
	reading.hasPosition = true;
	reading.x = cursorX;
	reading.y = cursorY;
	const Uint32 masks[4] = { SDL_BUTTON_LMASK, SDL_BUTTON_RMASK, SDL_BUTTON_MMASK, SDL_BUTTON_X1MASK };
	for ( int button = 0; button < 4; button++ ) {
		const bool down = ( buttons & masks[button] ) != 0;
		focusClick[button] = focusClick[button] && down;
		const bool held = ( down && !focusClick[button] ) || buttonPressed[button] || ( button == 0 && pads.IsClickHeld() );
		reading.buttons[button] = held ? KEY_HELD : 0;
		buttonPressed[button] = false;
	}
	return true;
}

bool cSdlInputBackend::IsPointerAtCursor( int windowX, int windowY ) const {
	int x = 0;
	int y = 0;
	window.ScreenToWindow( cursorX, cursorY, x, y );
	return x == windowX && y == windowY;
}

// The cursor stays where it is until the pointer moves from where it is now.
void cSdlInputBackend::HoldCursor() {
	ownCursor = true;
	SDL_GetMouseState( &pointerX, &pointerY );
}

// A desktop that does not honour the warp leaves the pointer where it was: the cursor stays where
// the game put it until the player moves the pointer.
void cSdlInputBackend::WarpMouse( int32_t x, int32_t y ) {
	cursorX = x;
	cursorY = y;
	HoldCursor();
	if ( window.GetWindow() == nullptr ) {
		return;
	}
	int windowX = 0;
	int windowY = 0;
	window.ScreenToWindow( x, y, windowX, windowY );
	SDL_WarpMouseInWindow( window.GetWindow(), windowX, windowY );
}
