// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cAgreedClock is the clock both machines of an online game read: every tick count and calendar
// second is derived from the step being run and the start the host chose when the game began, so
// both games read the same values at the same steps. Outside an online game it gives the platform's
// clock, the tick count going on from the last value it gave, as a replay's clock does.

#include <cstdint>
#include <ctime>

#include "platform/Clock.h"

class cAgreedClock : public cClock {
public:
	explicit			cAgreedClock( cClock &platform ) : platform( platform ) {}

	uint32_t			GetTickCount() override;
	std::time_t			GetCalendarTime() override;

	// The online game begins: step 0 reads these.
	void				Agree( uint32_t startTick, std::time_t startCalendar );
	void				SetStep( uint64_t step ) { this->step = step; }
	// The online game ended: the platform's clock again.
	void				Release();
	bool				IsAgreed() const { return agreed; }

private:
	uint32_t			GetAgreedTick() const;

	cClock &			platform;
	bool				agreed = false;
	uint32_t			startTick = 0;
	std::time_t			startCalendar = 0;
	uint64_t			step = 0;
	uint32_t			shift = 0;		// msec added to the platform's tick count outside online games
};
