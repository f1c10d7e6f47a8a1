// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cPadMapping turns one pad's state into what the keyboard and the mouse would give: the key codes
// of the player the pad drives (stick and d-pad to the four direction keys, the face buttons,
// shoulder and triggers to fire, skill and use, Start to Escape), the cursor's step and the click.

#include <cstdint>

#include "input/PadState.h"

class cPadMapping {
public:
	static constexpr int	DEAD_ZONE = 8192;		// a quarter of the stick's reach: below it the stick is at rest
	static constexpr int	TRIGGER_THRESHOLD = 8192;	// a quarter of the pull fires
	static constexpr int	CURSOR_SPEED = 6;		// pixels a frame at full tilt

	// The stick's direction by its angle in eight 45-degree sectors: dx and dy are -1, 0 or 1
	// (y grows downwards), both 0 inside the dead zone.
	static void		GetStickDirection( int32_t x, int32_t y, int32_t &dx, int32_t &dy );
	// Sets (never clears) the high bit of every key the pad holds for player 1 or 2; Escape for any
	// player, 0 included (a pad that drives nobody still leaves the end screens).
	static void		PressKeys( const cPadState &pad, int player, uint8_t keys[256] );
	// The cursor's move this frame from the left stick: 1 pixel just past the dead zone, rising to
	// CURSOR_SPEED at full tilt, along the stick's angle.
	static void		GetCursorStep( const cPadState &pad, int32_t &dx, int32_t &dy );
	// The south button clicks as the left mouse button does.
	static bool		IsClickHeld( const cPadState &pad ) { return pad.buttons[PAD_BUTTON_SOUTH]; }
};
