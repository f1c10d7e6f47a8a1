// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the input layer needs from the platform: poll the keyboard and the mouse, take and give
// back the devices, move the pointer. The SDL backend and the scripted test backend implement it.

#include <cstdint>
#include <string>

// One poll of the mouse: relative motion, or an absolute position where the platform knows it
// (then the motion is ignored), and the high-bit button bytes (0 left, 1 right, 2 middle).
struct cMouseReading {
	int32_t		dx = 0;
	int32_t		dy = 0;
	int32_t		wheel = 0;
	bool		hasPosition = false;
	int32_t		x = 0;			// in 640 x 480 screen pixels, when hasPosition
	int32_t		y = 0;
	uint8_t		buttons[4] = {};
};

class cInputBackend {
public:
	virtual			~cInputBackend() = default;

	virtual bool	AcquireKeyboard() = 0;
	virtual bool	UnacquireKeyboard() = 0;
	virtual bool	ReadKeyboard( uint8_t state[256] ) = 0;	// high bit set while a key is down

	virtual bool	AcquireMouse( bool exclusive ) = 0;
	virtual bool	UnacquireMouse() = 0;
	virtual bool	ReadMouse( cMouseReading &reading ) = 0;
	virtual void	WarpMouse( int32_t x, int32_t y ) = 0;	// 640 x 480 screen pixels

	// True once after the player could no longer be at the controls since the last poll (the
	// window lost the keyboard focus or was minimised, a pad in use was unplugged); reading clears it.
	virtual bool	TakePauseRequest() { return false; }

	// Pads: a new game of 1 or 2 players gives the pads their players again; the player (1 or 2)
	// was hit, a pad of that player that can rumble does so briefly. Without pads, nothing.
	virtual void	SetPlayerCount( int ) {}
	virtual void	Rumble( int ) {}
	// Before each poll: whether the last frame was a step of play, where a pad's stick walks and
	// its south button fires, rather than moving the cursor and clicking.
	virtual void	SetPlaying( bool ) {}

	// While the player chooses a key for an action, the keys come as they are, not folded onto
	// the actions (input/KeyBindings.h).
	virtual void	SetRawKeys( bool ) {}
	// The key's name in the player's keyboard layout; empty for a key without one.
	virtual std::string GetKeyName( int key ) const;

	// The failing call and the platform's text, for the log.
	virtual const char *GetErrorCode() const = 0;
	virtual const char *GetErrorText() const = 0;
};
