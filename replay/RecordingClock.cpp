// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/RecordingClock.h"

#include "replay/Recorder.h"

uint32_t cRecordingClock::GetTickCount() {
	const uint32_t now = platform.GetTickCount();
	if ( recorder.IsRecording() ) {
		recorder.GetTape().PutTick( now );
	}
	return now;
}

std::time_t cRecordingClock::GetCalendarTime() {
	const std::time_t now = platform.GetCalendarTime();
	if ( recorder.IsRecording() ) {
		recorder.GetTape().PutCalendar( now );
	}
	return now;
}
