// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The screens of the program. The game's match (app/Match.h) holds the one it is on; the codes live
// with the actors, the lowest layer that reads them, since players and enemies freeze on the end screens.

#include <cstdint>

enum eGameState : int32_t {
	STATE_MAIN_MENU			= 0,
	STATE_PLAYING			= 1,
	STATE_SETTINGS			= 2,
	STATE_DIFFICULTY		= 3,
	STATE_CONTROLS			= 4,
	STATE_CREDITS			= 5,
	STATE_SELECT_ONE		= 6,	// character selection for one player
	STATE_SELECT_TWO		= 7,	// character selection for two players
	STATE_PAUSE				= 8,
	STATE_DEFEAT			= 9,
	STATE_VICTORY			= 10,
	STATE_SOUND				= 11	// the volumes, from the settings
};

// The states that show the world: play and the two end screens drawn over it.
inline bool ShowsWorld( int32_t state ) {
	return state == STATE_PLAYING || state == STATE_DEFEAT || state == STATE_VICTORY;
}
