// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The pacing clock of the real game: the system's monotonic clock, a sleep to an absolute moment
// on it, and a short spin for the last fraction of a millisecond that the sleep may overshoot.

#include "platform/PacingClock.h"

class cMonotonicClock : public cPacingClock {
public:
	static constexpr int64_t SPIN_TIME = 200000;		// in nsec: awake for at most the last 0.2 msec

	int64_t				GetNanoseconds() override;
	void				SleepUntil( int64_t moment ) override;
};
