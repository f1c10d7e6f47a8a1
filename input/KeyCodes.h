// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The keyboard codes the game uses: PC scan codes (set 1), extended keys with 0x80 added.
// The full table of keys the platform can report is in input/sdl/ScancodeMap.cpp.

enum eKeyCode {
	KEY_ESCAPE		= 1,
	KEY_W			= 17,
	KEY_H			= 35,
	KEY_J			= 36,
	KEY_K			= 37,
	KEY_A			= 30,
	KEY_S			= 31,
	KEY_D			= 32,
	KEY_NUMPAD1		= 79,
	KEY_NUMPAD2		= 80,
	KEY_NUMPAD3		= 81,
	KEY_UP			= 200,
	KEY_LEFT		= 203,
	KEY_RIGHT		= 205,
	KEY_DOWN		= 208,
	KEY_COUNT		= 256
};
