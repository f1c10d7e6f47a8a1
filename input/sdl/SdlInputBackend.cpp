#include "input/sdl/SdlInputBackend.h"

#include <SDL.h>

#include <cstring>

#include "input/sdl/ScancodeMap.h"
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

}

cSdlInputBackend::cSdlInputBackend( const cSdlWindow &gameWindow ) : window( gameWindow ) {
}

void cSdlInputBackend::HandleEvent( const SDL_Event &event ) {
	if ( event.type == SDL_KEYDOWN ) {
		const int code = MapScancode( event.key.keysym.scancode );
		if ( code != 0 ) {
			keyPressed[code] = true;
		}
	} else if ( event.type == SDL_WINDOWEVENT && IsLeavingWindow( event.window.event ) ) {
		pauseRequest = true;
	} else if ( event.type == SDL_MOUSEBUTTONDOWN ) {
		const int button = GameButton( event.button.button );
		if ( button >= 0 ) {
			buttonPressed[button] = true;
		}
	}
}

bool cSdlInputBackend::TakePauseRequest() {
	const bool requested = pauseRequest;
	pauseRequest = false;
	return requested;
}

bool cSdlInputBackend::ReadKeyboard( uint8_t state[256] ) {
	std::memset( state, 0, 256 );
	if ( !window.HasInputFocus() ) {
		std::memset( keyPressed, 0, sizeof( keyPressed ) );
		return true;	// a key held while the focus went elsewhere counts as released
	}
	int count = 0;
	const Uint8 *keys = SDL_GetKeyboardState( &count );
	for ( int scancode = 0; scancode < count; scancode++ ) {
		const int code = MapScancode( static_cast<SDL_Scancode>( scancode ) );
		if ( keys[scancode] && code != 0 ) {
			state[code] = KEY_HELD;
		}
	}
	for ( int code = 0; code < 256; code++ ) {
		if ( keyPressed[code] ) {
			state[code] = KEY_HELD;
			keyPressed[code] = false;
		}
	}
	return true;
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
	reading.hasPosition = true;
	window.WindowToScreen( windowX, windowY, reading.x, reading.y );
	const Uint32 masks[4] = { SDL_BUTTON_LMASK, SDL_BUTTON_RMASK, SDL_BUTTON_MMASK, SDL_BUTTON_X1MASK };
	for ( int button = 0; button < 4; button++ ) {
		const bool held = ( buttons & masks[button] ) != 0 || buttonPressed[button];
		reading.buttons[button] = held ? KEY_HELD : 0;
		buttonPressed[button] = false;
	}
	return true;
}

void cSdlInputBackend::WarpMouse( int32_t x, int32_t y ) {
	if ( window.GetWindow() == nullptr ) {
		return;
	}
	int windowX = 0;
	int windowY = 0;
	window.ScreenToWindow( x, y, windowX, windowY );
	SDL_WarpMouseInWindow( window.GetWindow(), windowX, windowY );
}
