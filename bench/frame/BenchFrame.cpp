// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the frame loop over 2000 steps of an autoplay game (one player, tavesh, difficulty 2):
// - on simulated displays whose present waits for the next refresh at 50, 60, 75 and 144 Hz, and
//   on one whose present never waits: the steps per second of the display's time, and the hash of
//   the game's state after the last step, which must be the same on every display;
// - on the real monotonic clock with a present that never waits: the interval between the starts
//   of two steps, median, 99th percentile and longest.
// For comparison, the same games on the same displays under the pacing the game had before: a
// step, a frame, then a wait until 15 msec after the step began, however long the present took.
// The game's own millisecond clock moves 15 msec a step in all, as the headless game's does.
//   bench-frame [--resources=FOLDER] [--steps=N]

#include <unistd.h>

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "bench/BenchOptions.h"
#include "harness/AutoplayGame.h"
#include "harness/Bot.h"
#include "app/FrameClient.h"
#include "app/FrameLoop.h"
#include "app/FramePicture.h"
#include "actors/GameState.h"
#include "app/MenuEntries.h"
#include "app/StateHash.h"
#include "graphics/headless/SimulatedDisplayBackend.h"
#include "platform/MonotonicClock.h"
#include "harness/HeadlessGame.h"
#include "platform/headless/SimulatedClock.h"

namespace {

const int REFRESH_RATES[] = { 50, 60, 75, 144, 0 };		// 0: the present never waits
const double NANOSECONDS_PER_SECOND = 1e9;
const double STEPS_PER_SECOND = 1e9 / cFrameLoop::STEP_TIME;

// The bot at player 1's keys, one headless step per game step, a frame when the picture changed.
// The loop ends after the given number of steps.
class cAutoplayFrames : public cFrameClient {
public:
	cAutoplayFrames( cHeadlessGame &headless, cPacingClock &clock, int steps )
		: headless( headless ), clock( clock ), stepsLeft( steps ), bot( 0, cBotOptions() ) {}

	bool HandleEvents() override { return true; }
	bool Step() override {
		stepTimes.push_back( clock.GetNanoseconds() );
		if ( headless.GetGame().GetGameState() == STATE_PLAYING ) {
			PressBotKeys( headless, 0, bot.Think( headless.GetGame() ) );
		}
		return headless.Step() && --stepsLeft > 0;
	}
	bool IsFrameWanted() override { return picture.IsChanged( headless.GetGame() ); }
	void DrawFrame() override {
		headless.GetGame().RenderFrame();
		picture.Note( headless.GetGame() );
		frames++;
	}

	std::vector<int64_t>	stepTimes;		// in nsec on the pacing clock
	int						frames = 0;

private:
	cHeadlessGame &			headless;
	cPacingClock &			clock;
	int						stepsLeft;
	cBot					bot;
	cFramePicture			picture;
};

bool ClickEntry( cHeadlessGame &headless, int entry ) {
	const cRect &rect = MENU_ENTRIES[entry - 1];
	return headless.Click( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 );
}

// Main menu, difficulty 2, one player, tavesh: the game runs its first step.
bool StartGame( cHeadlessGame &headless ) {
	return headless.Start() && ClickEntry( headless, 3 ) && ClickEntry( headless, 3 ) && ClickEntry( headless, 3 )
		&& ClickEntry( headless, 1 ) && ClickEntry( headless, 3 ) && headless.GetGame().GetGameState() == STATE_PLAYING;
}

// A step, a frame, and a wait to 15 msec after the step's start: a slow present costs steps.
void RunWithFixedWait( cSimulatedClock &clock, cAutoplayFrames &frames ) {
	for ( ;; ) {
		const int64_t start = clock.GetNanoseconds();
		if ( !frames.Step() ) {
			return;
		}
		frames.DrawFrame();
		clock.SleepUntil( start + cFrameLoop::STEP_TIME );
	}
}

bool RunOnDisplay( int refreshRate, int steps, bool fixedWait, uint64_t &hash ) {
	cSimulatedClock clock;
	cSimulatedDisplayBackend display( clock, refreshRate );
	display.SetRecording( false );
	cHeadlessGame headless( nullptr, &display );
	if ( !StartGame( headless ) ) {
		return false;
	}
	cAutoplayFrames frames( headless, clock, steps );
	if ( fixedWait ) {
		RunWithFixedWait( clock, frames );
	} else {
		cFrameLoop loop( clock );
		loop.Run( frames );
	}
	const double seconds = ( frames.stepTimes.back() - frames.stepTimes.front() ) / NANOSECONDS_PER_SECOND;
	const double rate = ( frames.stepTimes.size() - 1 ) / seconds;
	hash = cStateHash( headless.GetGame() ).GetTotal();
	char name[16];
	std::snprintf( name, sizeof( name ), refreshRate > 0 ? "%d Hz" : "no wait", refreshRate );
	std::printf( "%s, display %-7s: %zu steps, %d frames in %.3f s: %.2f steps/s (%+.2f %%), state hash %016" PRIx64 "\n",
				 fixedWait ? "fixed wait" : "frame loop", name, frames.stepTimes.size(), frames.frames, seconds, rate, 100.0 * ( rate / STEPS_PER_SECOND - 1.0 ),
				 hash );
	return true;
}

bool RunOnRealClock( int steps ) {
	cHeadlessGame headless;
	headless.GetGraphics().SetRecording( false );
	if ( !StartGame( headless ) ) {
		return false;
	}
	cMonotonicClock clock;
	cAutoplayFrames frames( headless, clock, steps );
	cFrameLoop loop( clock );
	loop.Run( frames );
	std::vector<double> intervals;		// in msec
	for ( size_t i = 1; i < frames.stepTimes.size(); i++ ) {
		intervals.push_back( ( frames.stepTimes[i] - frames.stepTimes[i - 1] ) / 1e6 );
	}
	std::printf( "real clock, present never waits: step interval over %zu steps: median %.3f ms, p99 %.3f ms, "
				 "max %.3f ms\n", intervals.size() + 1, GetPercentile( intervals, 0.50 ),
				 GetPercentile( intervals, 0.99 ), GetPercentile( intervals, 1.0 ) );
	return true;
}

}

int main( int argc, char **argv ) {
	cBenchOptions options( "bench-frame", "steps", 2000, 2 );
	if ( !options.Read( argc, argv ) ) {
		return 2;
	}
	const int steps = options.GetCount();
	for ( int rate : REFRESH_RATES ) {
		uint64_t hash = 0;
		if ( !RunOnDisplay( rate, steps, true, hash ) ) {
			std::fprintf( stderr, "bench-frame: the game did not start\n" );
			return 1;
		}
	}
	uint64_t first = 0;
	bool same = true;
	for ( int rate : REFRESH_RATES ) {
		uint64_t hash = 0;
		if ( !RunOnDisplay( rate, steps, false, hash ) ) {
			std::fprintf( stderr, "bench-frame: the game did not start\n" );
			return 1;
		}
		same = same && ( rate == REFRESH_RATES[0] || hash == first );
		first = rate == REFRESH_RATES[0] ? hash : first;
	}
	std::printf( "final state on every display: %s\n", same ? "the same" : "DIFFERENT" );
	if ( !RunOnRealClock( steps ) ) {
		return 1;
	}
	return same ? 0 : 1;
}
