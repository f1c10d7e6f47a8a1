// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/headless/SimulatedDisplayBackend.h"

#include "platform/headless/SimulatedClock.h"

namespace {

const int64_t NANOSECONDS_PER_SECOND = 1000000000;

}

cSimulatedDisplayBackend::cSimulatedDisplayBackend( cSimulatedClock &pacing, int refreshRate )
	: clock( pacing ), refreshPeriod( refreshRate > 0 ? NANOSECONDS_PER_SECOND / refreshRate : 0 ) {
}

// The refreshes fall on whole periods of the clock; a present made on one waits for the next.
void cSimulatedDisplayBackend::EndFrame() {
	cRecordingGraphicsBackend::EndFrame();
	if ( refreshPeriod > 0 ) {
		const int64_t now = clock.GetNanoseconds();
		clock.SleepUntil( ( now / refreshPeriod + 1 ) * refreshPeriod );
	}
}
