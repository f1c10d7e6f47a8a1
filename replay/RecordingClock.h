// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRecordingClock gives the game the platform's clock and notes on the recorder's tape every value
// of the tick count and of the calendar second that the game read.

#include "platform/Clock.h"

class cRecorder;

class cRecordingClock : public cClock {
public:
					cRecordingClock( cClock &platform, cRecorder &recorder ) : platform( platform ), recorder( recorder ) {}

	uint32_t		GetTickCount() override;
	std::time_t		GetCalendarTime() override;

private:
	cClock &		platform;
	cRecorder &		recorder;
};
