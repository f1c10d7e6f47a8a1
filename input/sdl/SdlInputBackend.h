#pragma once
// The keyboard and the mouse over SDL: the keyboard state mapped to the game's key codes, the
// pointer's position mapped to the 640 x 480 screen. A window without the focus reports no key held.
// A key or button pressed and released between two polls (a touchpad tap) still reads as held once.

#include <SDL_events.h>

#include <string>

#include "input/InputBackend.h"

class cSdlWindow;

class cSdlInputBackend : public cInputBackend {
public:
	explicit		cSdlInputBackend( const cSdlWindow &window );

	// Every window event passes here before the game's frame polls the devices.
	void			HandleEvent( const SDL_Event &event );

	bool			AcquireKeyboard() override { return true; }
	bool			UnacquireKeyboard() override { return true; }
	bool			ReadKeyboard( uint8_t state[256] ) override;

	bool			AcquireMouse( bool exclusive ) override;
	bool			UnacquireMouse() override { return true; }
	bool			ReadMouse( cMouseReading &reading ) override;
	void			WarpMouse( int32_t x, int32_t y ) override;
	bool			TakePauseRequest() override;

	const char *	GetErrorCode() const override { return errorCode.c_str(); }
	const char *	GetErrorText() const override { return errorText.c_str(); }

private:
	const cSdlWindow &	window;
	bool				keyPressed[256] = {};		// since the last poll, by key code
	bool				buttonPressed[4] = {};		// since the last poll
	bool				pauseRequest = false;		// the window lost the focus since the last poll
	std::string			errorCode;
	std::string			errorText;
};
