// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/AgreedClock.h"

#include "app/Game.h"

namespace {

const uint64_t MSEC_PER_SECOND = 1000;

}

uint32_t cAgreedClock::GetAgreedTick() const {
	return startTick + static_cast<uint32_t>( step * cGame::FRAME_TIME );
}

uint32_t cAgreedClock::GetTickCount() {
	return agreed ? GetAgreedTick() : platform.GetTickCount() + shift;
}

std::time_t cAgreedClock::GetCalendarTime() {
	if ( !agreed ) {
		return platform.GetCalendarTime();
	}
	return startCalendar + static_cast<std::time_t>( step * cGame::FRAME_TIME / MSEC_PER_SECOND );
}

void cAgreedClock::Agree( uint32_t tick, std::time_t calendar ) {
	agreed = true;
	startTick = tick;
	startCalendar = calendar;
	step = 0;
}

void cAgreedClock::Release() {
	if ( agreed ) {
		shift = GetAgreedTick() - platform.GetTickCount();
	}
	agreed = false;
}
