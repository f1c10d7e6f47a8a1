// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The five clickable entries that every menu picture shares, stacked in one column; the pictures
// put their labels inside them.

#include "actors/Rect.h"

const int MENU_ENTRY_COUNT = 5;
constexpr cRect MENU_ENTRIES[MENU_ENTRY_COUNT] = {	// right and bottom excluded
	{ 70, 248, 250, 273 },
	{ 70, 284, 250, 307 },
	{ 70, 317, 250, 340 },
	{ 70, 348, 250, 372 },
	{ 70, 381, 250, 404 },
};

// Where the game writes a value it keeps into the entry that changes it: the start choice, and
// between the minus and the plus of a volume's entry; a line below the entry's top.
constexpr int32_t MENU_VALUE_X = 160;
constexpr int32_t MENU_LEVEL_X = 182;
constexpr int32_t MENU_VALUE_DOWN = 4;
