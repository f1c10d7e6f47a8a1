// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/OnlineInput.h"

#include <algorithm>

cStepInput cOnlineInput::Sample() {
	platform.TakePauseRequest();
	uint8_t state[cStepInput::KEY_COUNT] = {};
	if ( !platform.ReadKeyboard( state ) ) {
		std::fill( state, state + cStepInput::KEY_COUNT, 0 );
	}
	cMouseReading mouse;
	if ( !platform.ReadMouse( mouse ) ) {
		mouse = cMouseReading();
	}
	// Only the host's mouse drives the menus; the partner's stays at home.
	return cStepInput::FromPoll( player, state, player == HOST ? mouse : cMouseReading() );
}

bool cOnlineInput::ReadKeyboard( uint8_t state[256] ) {
	if ( !IsOnline() ) {
		return platform.ReadKeyboard( state );
	}
	step.ToKeyboard( state );
	return true;
}

bool cOnlineInput::ReadMouse( cMouseReading &reading ) {
	if ( !IsOnline() ) {
		return platform.ReadMouse( reading );
	}
	reading = step.mouse;
	return true;
}

void cOnlineInput::WarpMouse( int32_t x, int32_t y ) {
	if ( player != 2 && !quiet ) {
		platform.WarpMouse( x, y );
	}
}

bool cOnlineInput::TakePauseRequest() {
	return IsOnline() ? false : platform.TakePauseRequest();
}

void cOnlineInput::Rumble( int hitPlayer ) {
	if ( !IsOnline() || ( hitPlayer == player && !quiet ) ) {
		platform.Rumble( hitPlayer );
	}
}
