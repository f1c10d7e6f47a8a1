// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cInputLayer owns the keyboard and the mouse and reads both once at the start of every frame.

#include <cstdint>
#include <memory>
#include <string>

#include "input/Keyboard.h"
#include "input/Mouse.h"

class cInputBackend;

class cInputLayer {
public:
	enum { DEVICE_KEYBOARD = 1, DEVICE_MOUSE = 2 };

					cInputLayer() = default;
					~cInputLayer();

	// devices is a bit set of DEVICE_KEYBOARD and DEVICE_MOUSE.
	bool			Init( cInputBackend *backend, bool exclusiveMouse, uint32_t devices );
	bool			Release();
	bool			Read();
	void			Acquire();
	void			Unacquire();

	cKeyboard *		GetKeyboard() const { return keyboard.get(); }
	cMouse *		GetMouse() const { return mouse.get(); }

	bool			KeyDown( int key ) const;
	bool			KeyUp( int key ) const;
	bool			MouseButtonDown( int button ) const;
	bool			MouseButtonUp( int button ) const;
	void			GetMouseMovement( int32_t &dx, int32_t &dy ) const;
	int32_t			GetMouseWheel() const;
	void			SetMousePosition( int32_t x, int32_t y );
	void			GetMousePosition( int32_t &x, int32_t &y ) const;
	// Whether the last Read saw the player leave the controls: the game pauses as for Escape.
	bool			IsPauseRequested() const { return pauseRequested; }
	// A new game of 1 or 2 players begins: the pads are handed to the players again.
	void			SetPlayerCount( int count );
	// From the next Read on, the keys as they are rather than folded onto the actions.
	void			SetRawKeys( bool raw ) { rawKeys = raw; }
	// The key's name in the player's keyboard layout.
	std::string		GetKeyName( int key ) const;
	// The player (1 or 2) was hit: a short, light rumble of the player's pad.
	void			Rumble( int player );

private:
	std::unique_ptr<cKeyboard>	keyboard;
	std::unique_ptr<cMouse>		mouse;
	cInputBackend *				backend = nullptr;	// not owned; stands for the platform's input object
	bool						pauseRequested = false;
	bool						rawKeys = false;
};
