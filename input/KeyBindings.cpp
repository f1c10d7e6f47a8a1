// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/KeyBindings.h"

#include <algorithm>
#include <cstring>

#include "input/KeyCodes.h"
#include "input/KeyNames.h"

namespace {

const int GAME_KEYS[cKeyBindings::PLAYERS][cKeyBindings::ACTIONS] = {
	{ KEY_W, KEY_S, KEY_A, KEY_D, KEY_H, KEY_J, KEY_K },
	{ KEY_UP, KEY_DOWN, KEY_LEFT, KEY_RIGHT, KEY_NUMPAD1, KEY_NUMPAD2, KEY_NUMPAD3 },
};

// Right Ctrl and Right Shift sit beside the arrows on laptops, and like every modifier can be held
// with any other key without the keyboard losing one; Return stands right above Right Shift.
const int KEY_RIGHT_CTRL = 0x9D;
const int KEY_RIGHT_SHIFT = 0x36;
const int KEY_RETURN = 0x1C;
const int NO_KEYPAD[] = { KEY_RIGHT_CTRL, KEY_RIGHT_SHIFT, KEY_RETURN };	// fire, skill, use

const int KEY_LEFT_ALT = 0x38;
const int KEY_RIGHT_ALT = 0xB8;

const char *const ACTION_NAMES[cKeyBindings::ACTIONS] = { "up", "down", "left", "right", "fire", "skill", "use" };

}

bool cKeyBindings::FindHolder( int key, int player, int action, int &holderPlayer, int &holderAction ) const {
	for ( int p = 1; p <= PLAYERS; p++ ) {
		for ( int a = 0; a < ACTIONS; a++ ) {
			if ( GetKey( p, a ) == key && ( p != player || a != action ) ) {
				holderPlayer = p;
				holderAction = a;
				return true;
			}
		}
	}
	return false;
}

void cKeyBindings::SetDefaults() {
	std::memcpy( keys, GAME_KEYS, sizeof( keys ) );
}

bool cKeyBindings::SetNoKeypad( int &key, int &holderPlayer, int &holderAction ) {
	for ( int i = 0; i < 3; i++ ) {
		key = NO_KEYPAD[i];
		const bool taken = FindHolder( key, 2, FIRE + i, holderPlayer, holderAction );
		if ( taken && ( holderPlayer == 1 || holderAction < FIRE ) ) {
			return false;
		}
	}
	for ( int i = 0; i < 3; i++ ) {
		SetKey( 2, FIRE + i, NO_KEYPAD[i] );
	}
	return true;
}

bool cKeyBindings::IsBindable( int key ) {
	return key != KEY_ESCAPE && key != KEY_LEFT_ALT && key != KEY_RIGHT_ALT && cKeyNames::GetPlaceName( key ) != nullptr;
}

int cKeyBindings::GetGameKey( int player, int action ) {
	return GAME_KEYS[player - 1][action];
}

const char *cKeyBindings::GetActionName( int action ) {
	return ACTION_NAMES[action];
}

// The chosen keys themselves are taken off, so that only the actions go on to the game, to a
// recording and to an online partner.
void cKeyBindings::Apply( uint8_t state[256] ) const {
	uint8_t actions[PLAYERS][ACTIONS] = {};
	for ( int p = 0; p < PLAYERS; p++ ) {
		for ( int a = 0; a < ACTIONS; a++ ) {
			actions[p][a] = state[keys[p][a] & 0xFF];
		}
	}
	for ( int p = 0; p < PLAYERS; p++ ) {
		for ( int a = 0; a < ACTIONS; a++ ) {
			state[keys[p][a] & 0xFF] = 0;
			state[GAME_KEYS[p][a]] = 0;
		}
	}
	for ( int p = 0; p < PLAYERS; p++ ) {
		for ( int a = 0; a < ACTIONS; a++ ) {
			state[GAME_KEYS[p][a]] |= actions[p][a];
		}
	}
}

bool cKeyBindings::operator==( const cKeyBindings &other ) const {
	return std::memcmp( keys, other.keys, sizeof( keys ) ) == 0;
}
