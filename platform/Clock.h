// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The game's two clocks: the millisecond tick count that times skills, alerts and end screens, and the calendar second that seeds the random draws. Tests and headless tools
// install a clock of their own; the game installs the SDL one.

#include <cstdint>
#include <ctime>

class cClock {
public:
	virtual				~cClock() = default;
	virtual uint32_t	GetTickCount() = 0;		// in msec, wraps around after 49.7 days
	virtual std::time_t	GetCalendarTime() = 0;	// in whole seconds
};

// A clock that moves only when told to.
class cManualClock : public cClock {
public:
	explicit			cManualClock( uint32_t startMsec = 0, std::time_t calendar = 1700000000 );
	uint32_t			GetTickCount() override { return now; }
	std::time_t			GetCalendarTime() override { return calendar; }

	void				SetTickCount( uint32_t msec ) { now = msec; }
	void				Advance( uint32_t msec ) { now += msec; }
	void				SetCalendarTime( std::time_t seconds ) { calendar = seconds; }

private:
	uint32_t			now;
	std::time_t			calendar;
};

// The clock everything reads. SetClock( nullptr ) returns to the standard library's clock.
void					SetClock( cClock *clock );	// not owned
cClock &				GetClock();

inline uint32_t			GetTickCount() { return GetClock().GetTickCount(); }
inline std::time_t		GetCalendarTime() { return GetClock().GetCalendarTime(); }
