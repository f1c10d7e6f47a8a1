// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One poll of a pad, whatever the platform: the sticks and triggers as signed 16-bit axes and the
// buttons by their place on the pad (south, east, west, north), so that one mapping serves every pad.

#include <cstdint>

enum ePadAxis {
	PAD_AXIS_LEFT_X,			// -32768 full left .. 32767 full right
	PAD_AXIS_LEFT_Y,			// -32768 full up .. 32767 full down
	PAD_AXIS_LEFT_TRIGGER,		// 0 released .. 32767 fully pulled
	PAD_AXIS_RIGHT_TRIGGER,
	PAD_AXIS_COUNT
};

enum ePadButton {
	PAD_BUTTON_SOUTH,			// A on most pads
	PAD_BUTTON_EAST,			// B
	PAD_BUTTON_WEST,			// X
	PAD_BUTTON_NORTH,			// Y
	PAD_BUTTON_LEFT_SHOULDER,
	PAD_BUTTON_START,
	PAD_BUTTON_DPAD_UP,
	PAD_BUTTON_DPAD_DOWN,
	PAD_BUTTON_DPAD_LEFT,
	PAD_BUTTON_DPAD_RIGHT,
	PAD_BUTTON_COUNT
};

struct cPadState {
	int16_t		axes[PAD_AXIS_COUNT] = {};
	bool		buttons[PAD_BUTTON_COUNT] = {};
};
