// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Paces the game: one step every 15 msec (cGame::FRAME_TIME) by a deadline on the pacing clock,
// so that lateness does not pile up, then at most one frame. When drawing or presenting took
// longer than a step (a display that makes the present wait for its refresh), the steps that fell
// due run before the next frame, at most MAX_STEPS_PER_FRAME, so that a stall never turns into a
// burst of play. A stall the window asked for (a switch to full screen) starts the deadline again
// from its end.

#include <cstdint>

#include "app/Game.h"

class cFrameClient;
class cPacingClock;

class cFrameLoop {
public:
	static constexpr int64_t NSEC_PER_MSEC = 1000000;
	static constexpr int64_t STEP_TIME = cGame::FRAME_TIME * NSEC_PER_MSEC;	// in nsec
	static constexpr int MAX_STEPS_PER_FRAME = 4;

	explicit			cFrameLoop( cPacingClock &clock ) : clock( clock ) {}

	// Until the window closes or the player quits.
	void				Run( cFrameClient &client );
	// One pass of Run without its sleep, for a host that calls the game at its own pace (the
	// browser, once a frame) after ResetDeadline: the events, the steps due, then a frame.
	// False once the window closed or the player quit.
	bool				RunPass( cFrameClient &client );
	// The steps due by now, at most MAX_STEPS_PER_FRAME; moves the deadline past them. Steps
	// beyond the most are dropped: the deadline starts again from now.
	int					TakeDueSteps();
	void				ResetDeadline();
	int64_t				GetDeadline() const { return deadline; }

private:
	cPacingClock &		clock;
	int64_t				deadline = 0;	// in nsec on the pacing clock: when the next step falls due
};
