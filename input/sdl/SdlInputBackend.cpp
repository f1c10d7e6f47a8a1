#include "input/sdl/SdlInputBackend.h"

#include <SDL.h>

#include <cstring>

#include "input/sdl/ScancodeMap.h"
#include "platform/sdl/SdlWindow.h"

namespace {

const uint8_t KEY_HELD = 0x80;

}

cSdlInputBackend::cSdlInputBackend( const cSdlWindow &gameWindow ) : window( gameWindow ) {
}

bool cSdlInputBackend::ReadKeyboard( uint8_t state[256] ) {
	std::memset( state, 0, 256 );
	if ( !window.HasInputFocus() ) {
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
	reading.buttons[0] = ( buttons & SDL_BUTTON_LMASK ) ? KEY_HELD : 0;
	reading.buttons[1] = ( buttons & SDL_BUTTON_RMASK ) ? KEY_HELD : 0;
	reading.buttons[2] = ( buttons & SDL_BUTTON_MMASK ) ? KEY_HELD : 0;
	reading.buttons[3] = ( buttons & SDL_BUTTON_X1MASK ) ? KEY_HELD : 0;
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
