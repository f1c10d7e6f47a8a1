// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The PC keyboard's keys as SDL reports them, mapped to the game's key codes (scan code set 1,
// extended keys with 0x80 added), so that every key of a PC keyboard has its code.

#include <SDL_scancode.h>

#include <cstddef>

struct cScancodePair {
	SDL_Scancode	scancode;
	int				keyCode;
};

// 0 for a key the game has no code for.
int						MapScancode( SDL_Scancode scancode );
const cScancodePair *	GetScancodeTable( size_t &count );
