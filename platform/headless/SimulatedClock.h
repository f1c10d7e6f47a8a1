// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A pacing clock for tests and benchmarks: time stands still until someone moves it. Sleeping
// jumps to the moment; a simulated display's present moves it to its next refresh.

#include "platform/PacingClock.h"

class cSimulatedClock : public cPacingClock {
public:
	int64_t				GetNanoseconds() override { return now; }
	void				SleepUntil( int64_t moment ) override { now = moment > now ? moment : now; }
	void				Advance( int64_t nanoseconds ) { now += nanoseconds; }

private:
	int64_t				now = 0;
};
