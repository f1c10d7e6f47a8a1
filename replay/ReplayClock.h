// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cReplayClock gives the game the recorded values of the tick count and the calendar second while
// the replay plays; once it stops, the platform's, the tick count shifted to go on from the last
// value the game was given.

#include "platform/Clock.h"

class cReplay;

class cReplayClock : public cClock {
public:
					cReplayClock( cClock &platform, cReplay &replay ) : platform( platform ), replay( replay ) {}

	uint32_t		GetTickCount() override;
	std::time_t		GetCalendarTime() override;
	void			Hold();			// the replay stopped: the tick count goes on from here

private:
	cClock &		platform;
	cReplay &		replay;
	uint32_t		lastTick = 0;
	std::time_t		lastCalendar = 0;
	uint32_t		shift = 0;		// in msec, added to the platform's tick count once held
};
