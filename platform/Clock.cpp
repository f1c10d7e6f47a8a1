// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Clock.h"

#include <chrono>

namespace {

// Used until a platform installs its own clock, so that nothing ever reads a missing clock.
class cStandardClock : public cClock {
public:
	uint32_t GetTickCount() override {
		const auto sinceStart = std::chrono::steady_clock::now().time_since_epoch();
		return static_cast<uint32_t>( std::chrono::duration_cast<std::chrono::milliseconds>( sinceStart ).count() );
	}
	std::time_t GetCalendarTime() override { return std::time( nullptr ); }
};

cStandardClock standardClock;
cClock *currentClock = &standardClock;

}

cManualClock::cManualClock( uint32_t startMsec, std::time_t calendarSeconds )
	: now( startMsec ), calendar( calendarSeconds ) {
}

void SetClock( cClock *clock ) {
	currentClock = clock != nullptr ? clock : &standardClock;
}

cClock &GetClock() {
	return *currentClock;
}
