// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/OnlineInput.h"

#include <algorithm>

void cOnlineInput::SetPlayer( int player ) {
	this->player = player;
	step = cStepInput();
	SetHolding( false );
}

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

// The partner's cursor stays at home: only the host's follows the game's.
void cOnlineInput::WarpMouse( int32_t x, int32_t y ) {
	if ( player == 2 ) {
		return;
	}
	if ( !holding ) {
		platform.WarpMouse( x, y );
		return;
	}
	held.warp = true;
	held.x = x;
	held.y = y;
}

bool cOnlineInput::TakePauseRequest() {
	return IsOnline() ? false : platform.TakePauseRequest();
}

// Online, only this machine's player's pad rumbles.
void cOnlineInput::Rumble( int hitPlayer ) {
	if ( !IsOnline() || ( hitPlayer == player && !holding ) ) {
		platform.Rumble( hitPlayer );
	} else if ( hitPlayer == player ) {
		held.rumbles++;
	}
}

cOnlineInput::cRequests cOnlineInput::TakeRequests() {
	const cRequests taken = held;
	held = cRequests();
	return taken;
}

void cOnlineInput::Do( const cRequests &requests ) {
	if ( requests.warp ) {
		platform.WarpMouse( requests.x, requests.y );
	}
	for ( int i = 0; i < requests.rumbles; i++ ) {
		platform.Rumble( player );
	}
}
