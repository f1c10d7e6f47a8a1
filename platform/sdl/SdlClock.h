// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The game's clocks over SDL: the tick count from SDL's millisecond timer.

#include "platform/Clock.h"

class cSdlClock : public cClock {
public:
	uint32_t		GetTickCount() override;
	std::time_t		GetCalendarTime() override;
};
