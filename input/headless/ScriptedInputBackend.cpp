// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/headless/ScriptedInputBackend.h"

#include <cstring>

#include "input/KeyBindings.h"

void cScriptedInputBackend::SetKey( int key, bool down ) {
	if ( key >= 0 && key < 256 ) {
		keys[key] = down ? 0x80 : 0x00;
	}
}

void cScriptedInputBackend::ReleaseAllKeys() {
	std::memset( keys, 0, sizeof( keys ) );
}

void cScriptedInputBackend::SetMousePosition( int32_t x, int32_t y ) {
	mouse.hasPosition = true;
	mouse.x = x;
	mouse.y = y;
}

void cScriptedInputBackend::SetButton( int button, bool down ) {
	if ( button >= 0 && button < 4 ) {
		mouse.buttons[button] = down ? 0x80 : 0x00;
	}
}

bool cScriptedInputBackend::ReadKeyboard( uint8_t state[256] ) {
	if ( failReads ) {
		return false;
	}
	std::memcpy( state, keys, sizeof( keys ) );
	if ( bindings != nullptr && !rawKeys ) {
		bindings->Apply( state );
	}
	pads.PressKeys( state );
	return true;
}

bool cScriptedInputBackend::ReadMouse( cMouseReading &reading ) {
	if ( failReads ) {
		return false;
	}
	int32_t dx = 0;
	int32_t dy = 0;
	pads.GetCursorStep( dx, dy );
	if ( dx != 0 || dy != 0 ) {
		SetMousePosition( mouse.x + dx, mouse.y + dy );
	}
	reading = mouse;
	if ( pads.IsClickHeld() ) {
		reading.buttons[0] = 0x80;
	}
	return true;
}

// The game moved the pointer (its start position, a clamp): the script's pointer follows.
void cScriptedInputBackend::WarpMouse( int32_t x, int32_t y ) {
	SetMousePosition( x, y );
	warps++;
}

bool cScriptedInputBackend::TakePauseRequest() {
	const bool requested = pauseRequest;
	pauseRequest = false;
	return requested;
}

void cScriptedInputBackend::UnplugPad( int id ) {
	if ( pads.Disconnect( id ) ) {
		pauseRequest = true;
	}
}

// Only a pad plugged in for the player rumbles.
void cScriptedInputBackend::Rumble( int player ) {
	if ( pads.GetPad( player ) != cPads::NO_PAD ) {
		rumbles[player - 1]++;
	}
}

std::string cScriptedInputBackend::GetKeyName( int key ) const {
	const auto name = names.find( key );
	return name != names.end() ? name->second : cInputBackend::GetKeyName( key );
}
