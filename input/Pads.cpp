// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/Pads.h"

#include <algorithm>

#include "input/PadMapping.h"

void cPads::Connect( int id, const std::string &identity ) {
	if ( IsConnected( id ) ) {
		return;
	}
	pads.push_back( cPad{ id, identity, cPadState(), false } );
	const int seat = ChooseSeat( identity );
	if ( seat >= 0 ) {
		Sit( seat, pads.back() );
	}
}

bool cPads::Disconnect( int id ) {
	const auto pad = std::find_if( pads.begin(), pads.end(), [id]( const cPad &p ) { return p.id == id; } );
	if ( pad == pads.end() ) {
		return false;
	}
	pads.erase( pad );
	for ( cSeat &seat : seats ) {
		if ( seat.pad == id ) {
			seat.pad = NO_PAD;
			return true;
		}
	}
	return false;
}

void cPads::SetState( int id, const cPadState &state ) {
	for ( cPad &pad : pads ) {
		if ( pad.id == id ) {
			pad.state = state;
			pad.firing = cPadMapping::IsClickHeld( state ) && ( inPlay || pad.firing );
		}
	}
}

void cPads::SetPlayerCount( int count ) {
	playerCount = count == 2 ? 2 : 1;
	seats[0] = cSeat();
	seats[1] = cSeat();
	const bool lonePadForPlayer2 = playerCount == 2 && pads.size() == 1;
	int seat = lonePadForPlayer2 ? 1 : 0;
	for ( size_t i = 0; i < pads.size() && seat < playerCount; i++, seat++ ) {
		Sit( seat, pads[i] );
	}
}

int cPads::GetPlayer( int id ) const {
	for ( int seat = 0; seat < 2; seat++ ) {
		if ( seats[seat].pad == id ) {
			return seat + 1;
		}
	}
	return 0;
}

int cPads::GetPad( int player ) const {
	return player == 1 || player == 2 ? seats[player - 1].pad : NO_PAD;
}

void cPads::PressKeys( uint8_t keys[256] ) const {
	for ( const cPad &pad : pads ) {
		cPadMapping::PressKeys( pad.state, GetPlayer( pad.id ), keys );
	}
}

void cPads::GetCursorStep( int32_t &dx, int32_t &dy ) const {
	dx = 0;
	dy = 0;
	if ( inPlay ) {
		return;
	}
	for ( const cPad &pad : pads ) {
		int32_t padX = 0;
		int32_t padY = 0;
		cPadMapping::GetCursorStep( pad.state, padX, padY );
		dx += padX;
		dy += padY;
	}
}

bool cPads::IsClickHeld() const {
	return !inPlay && std::any_of( pads.begin(), pads.end(), []( const cPad &pad ) {
		return cPadMapping::IsClickHeld( pad.state ) && !pad.firing;
	} );
}

const cPads::cPad *cPads::Find( int id ) const {
	const auto pad = std::find_if( pads.begin(), pads.end(), [id]( const cPad &p ) { return p.id == id; } );
	return pad == pads.end() ? nullptr : &*pad;
}

// The empty seat of the same pad, then any empty seat whose pad went away, then a seat nobody has
// taken (player 2 first for the first pad of a two-player game); -1 when every seat is filled.
int cPads::ChooseSeat( const std::string &identity ) const {
	for ( int seat = 0; seat < playerCount; seat++ ) {
		if ( seats[seat].taken && seats[seat].pad == NO_PAD && seats[seat].identity == identity ) {
			return seat;
		}
	}
	for ( int seat = 0; seat < playerCount; seat++ ) {
		if ( seats[seat].taken && seats[seat].pad == NO_PAD ) {
			return seat;
		}
	}
	const int first = playerCount == 2 && !seats[1].taken ? 1 : 0;
	for ( int i = 0; i < playerCount; i++ ) {
		const int seat = ( first + i ) % playerCount;
		if ( !seats[seat].taken ) {
			return seat;
		}
	}
	return -1;
}

void cPads::Sit( int seat, const cPad &pad ) {
	seats[seat].taken = true;
	seats[seat].identity = pad.identity;
	seats[seat].pad = pad.id;
}
