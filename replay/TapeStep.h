// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cTapeStep is one step of a recording as the game read it: whether the input layer's poll asked to
// pause, then every read of the keyboard, the mouse and the clocks in the order the game made them,
// with the values it got.

#include <array>
#include <cstdint>
#include <vector>

#include "input/InputBackend.h"

struct cTapeStep {
	enum eKind : uint8_t { TICK, CALENDAR, KEYBOARD, MOUSE, KEYBOARD_FAILED, MOUSE_FAILED };

	struct cRead {
		eKind					kind = TICK;
		int64_t					time = 0;			// TICK in msec, CALENDAR in seconds
		std::array<uint8_t, 256> keys = {};			// KEYBOARD
		cMouseReading			mouse;				// MOUSE
	};

	bool				pause = false;
	std::vector<cRead>	reads;
};
