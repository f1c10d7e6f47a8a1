// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The clock that paces the game's steps: a monotonic count of nanoseconds and a sleep until a
// moment on it. It is not the game's millisecond tick count, which only the game's rules read.

#include <cstdint>

class cPacingClock {
public:
	virtual				~cPacingClock() = default;
	virtual int64_t		GetNanoseconds() = 0;
	// Returns at the moment or soon after it; at once when it has passed.
	virtual void		SleepUntil( int64_t moment ) = 0;
};
