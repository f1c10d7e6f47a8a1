// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/PadMapping.h"

#include <algorithm>
#include <cmath>

#include "input/KeyCodes.h"

namespace {

const uint8_t KEY_HELD = 0x80;
const double STICK_REACH = 32767.0;
const double SECTOR = 3.14159265358979323846 / 4.0;

enum { UP, DOWN, LEFT, RIGHT, FIRE, SKILL, USE, ACTION_COUNT };

// The players' keys, the same as the keyboard's bindings.
const int PLAYER_KEYS[2][ACTION_COUNT] = {
	{ KEY_W, KEY_S, KEY_A, KEY_D, KEY_H, KEY_J, KEY_K },
	{ KEY_UP, KEY_DOWN, KEY_LEFT, KEY_RIGHT, KEY_NUMPAD1, KEY_NUMPAD2, KEY_NUMPAD3 },
};

double GetTilt( int32_t x, int32_t y ) {
	return std::sqrt( static_cast<double>( x ) * x + static_cast<double>( y ) * y );
}

}

// Sector k (k = 0 right, counted towards down) spans the angles ( k - 0.5 ) .. ( k + 0.5 ) x 45
// degrees; a boundary belongs to the sector after it, turning clockwise on the screen.
void cPadMapping::GetStickDirection( int32_t x, int32_t y, int32_t &dx, int32_t &dy ) {
	dx = 0;
	dy = 0;
	if ( GetTilt( x, y ) < DEAD_ZONE ) {
		return;
	}
	static const int32_t SECTOR_DX[8] = { 1, 1, 0, -1, -1, -1, 0, 1 };
	static const int32_t SECTOR_DY[8] = { 0, 1, 1, 1, 0, -1, -1, -1 };
	const double angle = std::atan2( static_cast<double>( y ), static_cast<double>( x ) );
	const int sector = static_cast<int>( std::floor( angle / SECTOR + 0.5 ) ) & 7;
	dx = SECTOR_DX[sector];
	dy = SECTOR_DY[sector];
}

void cPadMapping::PressKeys( const cPadState &pad, int player, uint8_t keys[256] ) {
	if ( pad.buttons[PAD_BUTTON_START] ) {
		keys[KEY_ESCAPE] |= KEY_HELD;
	}
	if ( player != 1 && player != 2 ) {
		return;
	}
	int32_t dx = 0;
	int32_t dy = 0;
	GetStickDirection( pad.axes[PAD_AXIS_LEFT_X], pad.axes[PAD_AXIS_LEFT_Y], dx, dy );
	const bool *button = pad.buttons;
	const bool held[ACTION_COUNT] = {
		dy < 0 || button[PAD_BUTTON_DPAD_UP],
		dy > 0 || button[PAD_BUTTON_DPAD_DOWN],
		dx < 0 || button[PAD_BUTTON_DPAD_LEFT],
		dx > 0 || button[PAD_BUTTON_DPAD_RIGHT],
		button[PAD_BUTTON_SOUTH] || pad.axes[PAD_AXIS_RIGHT_TRIGGER] >= TRIGGER_THRESHOLD,
		button[PAD_BUTTON_WEST] || button[PAD_BUTTON_LEFT_SHOULDER],
		button[PAD_BUTTON_EAST] || button[PAD_BUTTON_NORTH],
	};
	for ( int action = 0; action < ACTION_COUNT; action++ ) {
		if ( held[action] ) {
			keys[PLAYER_KEYS[player - 1][action]] |= KEY_HELD;
		}
	}
}

void cPadMapping::GetCursorStep( const cPadState &pad, int32_t &dx, int32_t &dy ) {
	dx = 0;
	dy = 0;
	const int32_t x = pad.axes[PAD_AXIS_LEFT_X];
	const int32_t y = pad.axes[PAD_AXIS_LEFT_Y];
	const double tilt = GetTilt( x, y );
	if ( tilt < DEAD_ZONE ) {
		return;
	}
	const double beyond = std::min( 1.0, ( tilt - DEAD_ZONE ) / ( STICK_REACH - DEAD_ZONE ) );
	const double speed = 1.0 + ( CURSOR_SPEED - 1 ) * beyond;
	dx = static_cast<int32_t>( std::lround( speed * x / tilt ) );
	dy = static_cast<int32_t>( std::lround( speed * y / tilt ) );
}
