// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The small pictures of the running game: items, bullets, explosions, the HUD bar colours, the
// enemies' alert icons and the mouse cursor.

#include "Canvas.h"

#include <cstdint>

constexpr uint32_t CURSOR_KEY = 0x00FF00FF;		// the loader's colour key: stored, then made transparent

enum eBar {
	BAR_HEALTH,
	BAR_LOW_HEALTH,
	BAR_ENERGY,
	BAR_AMMO
};

cCanvas MakeItemSheet();		// 192 x 32: kinds 0..5 at x = 32 k
cCanvas MakeBulletSheet();		// 80 x 20: weapons 0..3 at x = 20 w
cCanvas MakeExplosionSheet();	// 224 x 64: 7 frames; row 0 death, row 1 impact
cCanvas MakeBar( eBar bar );	// 8 x 8, all columns alike
cCanvas MakeExclamationIcon();	// 16 x 16
cCanvas MakeQueryIcon();		// 16 x 16
cCanvas MakePuzzledIcon();		// 32 x 32
cCanvas MakeCursor();			// 32 x 32, hot spot at (0, 0), background CURSOR_KEY
