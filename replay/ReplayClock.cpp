// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/ReplayClock.h"

#include "replay/Replay.h"

uint32_t cReplayClock::GetTickCount() {
	if ( !replay.IsPlaying() ) {
		return platform.GetTickCount() + shift;
	}
	const cTapeStep::cRead *read = replay.TakeRead( cTapeStep::TICK, cTapeStep::TICK );
	if ( read != nullptr ) {
		lastTick = static_cast<uint32_t>( read->time );
	}
	return lastTick;
}

std::time_t cReplayClock::GetCalendarTime() {
	if ( !replay.IsPlaying() ) {
		return platform.GetCalendarTime();
	}
	const cTapeStep::cRead *read = replay.TakeRead( cTapeStep::CALENDAR, cTapeStep::CALENDAR );
	if ( read != nullptr ) {
		lastCalendar = static_cast<std::time_t>( read->time );
	}
	return lastCalendar;
}

void cReplayClock::Hold() {
	shift = lastTick - platform.GetTickCount();
}
