#pragma once
// The game's clocks over SDL: the tick count from SDL's millisecond timer, sleeps through SDL.

#include "platform/Clock.h"

class cSdlClock : public cClock {
public:
	uint32_t		GetTickCount() override;
	std::time_t		GetCalendarTime() override;
	void			Sleep( uint32_t msec ) override;
};
