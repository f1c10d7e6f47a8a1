// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/DelayControl.h"

#include <algorithm>

#include "app/Game.h"
#include "net/Lockstep.h"

uint32_t cDelayControl::ForRoundTrip( int64_t roundTripMsec, uint32_t maxDelay ) {
	const int64_t steps = ( std::max<int64_t>( roundTripMsec, 0 ) + MARGIN ) / cGame::FRAME_TIME + 1;
	return static_cast<uint32_t>( std::min<int64_t>( steps, maxDelay ) );
}

cDelayControl::cDelayControl( uint32_t delay, uint32_t maxDelay )
	: delay( delay ), maxDelay( maxDelay ), sentAt( cLockstep::WINDOW, 0 ), acknowledged( delay ), sentEnd( delay ) {
}

void cDelayControl::Sent( uint64_t step, int64_t at ) {
	while ( sentEnd <= step ) {
		sentAt[sentEnd % sentAt.size()] = at;
		sentEnd++;
	}
}

void cDelayControl::Acknowledged( uint64_t partnerHolds, int64_t at ) {
	if ( partnerHolds <= acknowledged || partnerHolds > sentEnd ) {
		return;
	}
	acknowledged = partnerHolds;
	roundTrips.push_back( { at, at - sentAt[( partnerHolds - 1 ) % sentAt.size()] } );
	while ( roundTrips.front().at < at - ROUND_TRIP_TIME ) {
		roundTrips.pop_front();
	}
}

void cDelayControl::Slot( bool waited, int64_t at ) {
	if ( waited ) {
		waits.push_back( at );
		calmSince = at;
	}
	while ( !waits.empty() && waits.front() < at - WAIT_TIME ) {
		waits.pop_front();
	}
}

int64_t cDelayControl::GetRoundTrip() const {
	int64_t longest = 0;
	for ( const cSample &sample : roundTrips ) {
		longest = std::max( longest, sample.value );
	}
	return longest;
}

uint32_t cDelayControl::Choose( int64_t at ) const {
	const uint32_t wanted = ForRoundTrip( GetRoundTrip(), maxDelay );
	if ( static_cast<int>( waits.size() ) >= RAISE_WAITS ) {
		return std::min( std::max( wanted, delay + 1 ), maxDelay );
	}
	if ( wanted < delay && at - calmSince >= CALM_TIME && !roundTrips.empty() ) {
		return delay - 1;
	}
	return delay;
}

// After a fall the line is still calm: the next may follow in FALL_TIME.
void cDelayControl::Switched( uint32_t newDelay, int64_t at ) {
	calmSince = newDelay < delay ? at - CALM_TIME + FALL_TIME : at;
	delay = newDelay;
	waits.clear();
}
