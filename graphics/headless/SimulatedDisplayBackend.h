// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A display for benchmarks: the drawing is recorded as by the recording backend, and presenting a
// frame waits, on a simulated pacing clock, for the display's next refresh, as a present with vsync
// does. A refresh rate of 0 presents at once.

#include "graphics/headless/RecordingGraphicsBackend.h"

class cSimulatedClock;

class cSimulatedDisplayBackend : public cRecordingGraphicsBackend {
public:
						cSimulatedDisplayBackend( cSimulatedClock &clock, int refreshRate );

	void				EndFrame() override;

private:
	cSimulatedClock &	clock;
	int64_t				refreshPeriod;		// in nsec, 0 when presenting never waits
};
