// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Config.h"

#include <algorithm>

#include "input/KeyCodes.h"

namespace {

const uint32_t DEFAULT_KEYS1[cConfig::KEYS_PER_PLAYER] = { KEY_W, KEY_S, KEY_D, KEY_A, KEY_H, KEY_J, KEY_K };
const uint32_t DEFAULT_KEYS2[cConfig::KEYS_PER_PLAYER] = {
	KEY_UP, KEY_DOWN, KEY_RIGHT, KEY_LEFT, KEY_NUMPAD1, KEY_NUMPAD2, KEY_NUMPAD3
};

}

cConfig::cConfig() : players( 1 ), difficulty( 2 ), character1( 0 ), character2( 0 ) {
	std::copy( DEFAULT_KEYS1, DEFAULT_KEYS1 + KEYS_PER_PLAYER, keys1 );
	std::copy( DEFAULT_KEYS2, DEFAULT_KEYS2 + KEYS_PER_PLAYER, keys2 );
}

void cConfig::SetCharacter( uint32_t player, uint32_t character ) {
	if ( player == 1 ) {
		character1 = character;
	} else if ( player == 2 ) {
		character2 = character;
	}
}

void cConfig::GetCharacter( uint32_t player, uint32_t &character ) const {
	if ( player == 1 ) {
		character = character1;
	} else if ( player == 2 ) {
		character = character2;
	}
}

void cConfig::GetKeys( uint32_t player, uint32_t keys[KEYS_PER_PLAYER] ) const {
	if ( player == 1 ) {
		std::copy( keys1, keys1 + KEYS_PER_PLAYER, keys );
	} else if ( player == 2 ) {
		std::copy( keys2, keys2 + KEYS_PER_PLAYER, keys );
	}
}
