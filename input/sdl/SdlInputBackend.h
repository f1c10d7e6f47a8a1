// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The keyboard and the mouse over SDL: the keyboard state mapped to the game's key codes, the
// pointer's position mapped to the 640 x 480 screen. A window without the focus reports no key held.
// A key or button pressed and released between two polls (a touchpad tap) still reads as held once.
// The window keeps its own: the Alt keys and the Enter of Alt+Enter never reach the game, nor does
// the click that brought the window back to the front; the cursor stays where it was in the game's
// screen when the window changes size, and where the game put it until the pointer itself moves.
// Game controllers that SDL recognises, plugged in at any moment, add their keys to the keyboard and
// move and click the cursor (see cPads for which pad drives which player).

#include <SDL_events.h>
#include <SDL_gamecontroller.h>

#include <string>
#include <vector>

#include "input/InputBackend.h"
#include "input/Pads.h"

class cKeyBindings;
class cSdlWindow;

class cSdlInputBackend : public cInputBackend {
public:
	explicit		cSdlInputBackend( const cSdlWindow &window );
					~cSdlInputBackend() override;
					cSdlInputBackend( const cSdlInputBackend & ) = delete;
	cSdlInputBackend &operator=( const cSdlInputBackend & ) = delete;

	// The keys the player chose for the actions (not owned): the keyboard's state comes folded onto
	// the actions, before the pads add theirs.
	void			SetKeyBindings( const cKeyBindings *keyBindings ) { bindings = keyBindings; }
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
	void			SetPlayerCount( int count ) override { pads.SetPlayerCount( count ); }
	void			SetPlaying( bool playing ) override { pads.SetPlaying( playing ); }
	void			Rumble( int player ) override;
	void			SetRawKeys( bool raw ) override { rawKeys = raw; }
	// What the player's layout prints on the key at that place.
	std::string		GetKeyName( int key ) const override;

	const char *	GetErrorCode() const override { return errorCode.c_str(); }
	const char *	GetErrorText() const override { return errorText.c_str(); }

private:
	static constexpr int	RUMBLE_STRENGTH = 0x3000;	// of 0xFFFF, on both motors: light
	static constexpr int	RUMBLE_TIME = 150;			// msec
	static constexpr Uint32	REFOCUS_TIME = 250;			// msec: a press this soon after the focus came back brought it
	static constexpr int	SWITCH_READS = 40;			// about 0.6 s: the cursor waits this long for the pointer after a switch

	void				OpenPad( int deviceIndex );
	void				ClosePad( SDL_JoystickID id );
	void				PollPads();
	bool				ArePadsHeard() const;
	bool				IsWindowKey( SDL_Scancode scancode ) const;
	void				HoldCursor();
	bool				IsPointerAtCursor( int windowX, int windowY ) const;
	void				HandleWindowEvent( const SDL_WindowEvent &event );
	void				HandleButtonDown( const SDL_MouseButtonEvent &event );

	const cSdlWindow &	window;
	const cKeyBindings *bindings = nullptr;
	bool				rawKeys = false;
	bool				keyPressed[256] = {};		// since the last poll, by key code
	bool				buttonPressed[4] = {};		// since the last poll
	bool				pauseRequest = false;		// the window lost the focus or a pad in use went, since the last poll
	SDL_Scancode		switchKey = SDL_SCANCODE_UNKNOWN;	// the Enter of Alt+Enter, the window's until let go
	bool				away = false;				// the window lost the focus and has not had it back
	bool				cameBack = false;			// it had it back, at cameBackAt (SDL's msec)
	Uint32				cameBackAt = 0;
	bool				focusClick[4] = {};			// the button that brought the window back, the desktop's until let go
	cPads				pads;
	struct cController {
		SDL_JoystickID			id;
		SDL_GameController *	controller;
		bool					tapped[PAD_BUTTON_COUNT];	// went down since the last poll
	};
	std::vector<cController>	controllers;
	// The cursor stays where the game or a pad put it until the pointer itself moves.
	bool				ownCursor = false;
	int					switchReadsLeft = 0;		// reads left for the pointer to arrive where the cursor stays
	int32_t				cursorX = 0;
	int32_t				cursorY = 0;
	int					pointerX = -1;				// the pointer's last window position
	int					pointerY = -1;
	std::string			errorCode;
	std::string			errorText;
};
