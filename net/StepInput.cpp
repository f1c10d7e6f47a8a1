// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/StepInput.h"

#include <cstring>

#include "app/Config.h"
#include "input/KeyCodes.h"

namespace {

const uint8_t KEY_HELD = 0x80;

bool IsSameMouse( const cMouseReading &a, const cMouseReading &b ) {
	return a.dx == b.dx && a.dy == b.dy && a.wheel == b.wheel && a.hasPosition == b.hasPosition && a.x == b.x &&
		   a.y == b.y && std::memcmp( a.buttons, b.buttons, sizeof( a.buttons ) ) == 0;
}

}

void cStepInput::SetKey( int key, bool down ) {
	const uint8_t bit = static_cast<uint8_t>( 1u << ( key % 8 ) );
	keys[key / 8] = static_cast<uint8_t>( down ? keys[key / 8] | bit : keys[key / 8] & ~bit );
}

int cStepInput::CountKeys() const {
	int count = 0;
	for ( int key = 0; key < KEY_COUNT; key++ ) {
		count += IsKeyDown( key ) ? 1 : 0;
	}
	return count;
}

// Either player's keys count as the player's own: each plays with the set they know.
cStepInput cStepInput::FromPoll( int player, const uint8_t state[KEY_COUNT], const cMouseReading &mouse ) {
	const cConfig bindings;
	uint32_t sets[2][cConfig::KEYS_PER_PLAYER] = {};
	bindings.GetKeys( 1, sets[0] );
	bindings.GetKeys( 2, sets[1] );
	const uint32_t *own = sets[player == 2 ? 1 : 0];
	cStepInput input;
	for ( int i = 0; i < cConfig::KEYS_PER_PLAYER; i++ ) {
		input.SetKey( static_cast<int>( own[i] ), ( state[sets[0][i]] & KEY_HELD ) || ( state[sets[1][i]] & KEY_HELD ) );
	}
	input.SetKey( KEY_ESCAPE, state[KEY_ESCAPE] & KEY_HELD );
	input.mouse = mouse;
	return input;
}

void cStepInput::ToKeyboard( uint8_t state[KEY_COUNT] ) const {
	for ( int key = 0; key < KEY_COUNT; key++ ) {
		state[key] = IsKeyDown( key ) ? KEY_HELD : 0;
	}
}

cStepInput cStepInput::Combine( const cStepInput &host, const cStepInput &partner ) {
	cStepInput both = host;
	for ( int i = 0; i < KEY_COUNT / 8; i++ ) {
		both.keys[i] = static_cast<uint8_t>( host.keys[i] | partner.keys[i] );
	}
	return both;
}

bool cStepInput::operator==( const cStepInput &other ) const {
	return std::memcmp( keys, other.keys, sizeof( keys ) ) == 0 && IsSameMouse( mouse, other.mouse );
}
