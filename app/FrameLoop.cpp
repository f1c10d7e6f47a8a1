// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FrameLoop.h"

#include "app/FrameClient.h"
#include "platform/PacingClock.h"

void cFrameLoop::Run( cFrameClient &client ) {
	ResetDeadline();
	while ( RunPass( client ) ) {
		clock.SleepUntil( deadline );
	}
}

bool cFrameLoop::RunPass( cFrameClient &client ) {
	if ( !client.HandleEvents() ) {
		return false;
	}
	if ( client.TakeStall() ) {
		ResetDeadline();
	}
	const int due = TakeDueSteps();
	for ( int i = 0; i < due; i++ ) {
		if ( !client.Step() ) {
			return false;
		}
	}
	if ( due > 0 && client.IsFrameWanted() ) {
		client.DrawFrame();
	}
	return true;
}

void cFrameLoop::ResetDeadline() {
	deadline = clock.GetNanoseconds();
}

int cFrameLoop::TakeDueSteps() {
	const int64_t now = clock.GetNanoseconds();
	if ( now < deadline ) {
		return 0;
	}
	const int64_t due = ( now - deadline ) / STEP_TIME + 1;
	if ( due > MAX_STEPS_PER_FRAME ) {
		deadline = now + STEP_TIME;
		return MAX_STEPS_PER_FRAME;
	}
	deadline += due * STEP_TIME;
	return static_cast<int>( due );
}
