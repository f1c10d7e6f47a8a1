// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cStepInput is what one machine's player gave in one step of an online game, the same record a
// recording's tape keeps of a step: the keys held and the mouse's poll. Each machine folds its own
// keyboard into its player's keys before sending (the host's into player 1's, the partner's into
// player 2's, whichever of the two key sets was pressed), and both machines put the two records
// together into the one input their games read: the keys of both, the host's mouse.

#include <cstdint>

#include "input/InputBackend.h"

struct cStepInput {
	static constexpr int	KEY_COUNT = 256;

	uint8_t				keys[KEY_COUNT / 8] = {};	// a bit per key code, set while the key is held
	cMouseReading		mouse;

	bool				IsKeyDown( int key ) const { return ( keys[key / 8] >> ( key % 8 ) ) & 1; }
	void				SetKey( int key, bool down );
	int					CountKeys() const;
	// A keyboard poll folded into a player's (1 or 2) seven keys, and Escape.
	static cStepInput	FromPoll( int player, const uint8_t state[KEY_COUNT], const cMouseReading &mouse );
	// The keyboard state the game reads: 0x80 for every key held.
	void				ToKeyboard( uint8_t state[KEY_COUNT] ) const;
	static cStepInput	Combine( const cStepInput &host, const cStepInput &partner );
	bool				operator==( const cStepInput &other ) const;
	bool				operator!=( const cStepInput &other ) const { return !( *this == other ); }
};
