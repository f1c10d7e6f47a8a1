// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sdl/SdlClock.h"

#include <SDL.h>

uint32_t cSdlClock::GetTickCount() {
	return SDL_GetTicks();
}

std::time_t cSdlClock::GetCalendarTime() {
	return std::time( nullptr );
}
