// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/MonotonicClock.h"

#include <cerrno>
#include <ctime>

namespace {

const int64_t NANOSECONDS_PER_SECOND = 1000000000;

}

int64_t cMonotonicClock::GetNanoseconds() {
	timespec now;
	clock_gettime( CLOCK_MONOTONIC, &now );
	return static_cast<int64_t>( now.tv_sec ) * NANOSECONDS_PER_SECOND + now.tv_nsec;
}

// The sleep aims at the moment less the spin time, by an absolute deadline so that a signal or a
// late wake-up does not add up; the spin then waits out what is left.
void cMonotonicClock::SleepUntil( int64_t moment ) {
	const int64_t wake = moment - SPIN_TIME;
	if ( wake > GetNanoseconds() ) {
		timespec until;
		until.tv_sec = static_cast<time_t>( wake / NANOSECONDS_PER_SECOND );
		until.tv_nsec = static_cast<long>( wake % NANOSECONDS_PER_SECOND );
		while ( clock_nanosleep( CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr ) == EINTR ) {
		}
	}
	while ( GetNanoseconds() < moment ) {
	}
}
