// SPDX-License-Identifier: GPL-3.0-or-later
// The game's start, pacing and shut-down: the layers' set-up order and failures, the steps' deadline
// and what a late frame does to it, and the state changes that need no level.

#include <gtest/gtest.h>

#include <algorithm>

#include <string>
#include <vector>

#include "LogCapture.h"
#include "actors/GameState.h"
#include "app/FrameClient.h"
#include "app/FrameLoop.h"
#include "harness/HeadlessGame.h"
#include "platform/headless/SimulatedClock.h"

TEST( GameStart, FailingGraphicsEndsTheStartWithItsLogLines ) {
	cLogCapture log;
	cHeadlessGame headless;
	headless.GetGraphics().SetFailDevice( true );
	EXPECT_FALSE( headless.Start() );
	const std::vector<std::string> expected = {
		"Error: Creating Direct3D device", "Code: scripted failure", "Description: the test made the device fail",
		"Error initializing Graphics!",
	};
	EXPECT_EQ( log.GetLines(), expected ) << "nothing may follow the graphics failure";
	EXPECT_EQ( headless.GetGraphics().GetLiveTextureCount(), 0 ) << "no picture is loaded after a failed start";
	headless.GetGame().Finalize();
	headless.GetGame().Finalize();	// shutting down twice, or after a failed start, is harmless
}

// Without a sound device the game starts silent, and a missing picture is only a gap: the cursor
// starts in the middle, the screen is full only when asked, and shut-down gives back every picture
// and the device.
TEST( GameStart, SilentGameWithAPictureMissingStartsAndGivesEverythingBack ) {
	for ( const bool fullscreen : { false, true } ) {
		cLogCapture log;
		cHeadlessGame headless;		// no sound backend: the device cannot be opened
		if ( fullscreen ) {
			headless.GetGraphics().SetMissingFile( "./resources/menu/credits.png" );
		}
		ASSERT_TRUE( headless.Start( fullscreen ) );
		EXPECT_TRUE( log.Contains( "Error initializing Sound!" ) );
		int32_t x = 0, y = 0;
		headless.GetGame().GetInputLayer().GetMousePosition( x, y );
		EXPECT_TRUE( x == 320 && y == 240 ) << "the cursor starts at (" << x << ", " << y << ")";
		EXPECT_EQ( headless.GetGraphics().WasFullscreenAsked(), fullscreen );
		EXPECT_EQ( headless.GetGraphics().GetLiveTextureCount(), fullscreen ? 22 : 23 ) << "all 23 pictures but the missing one";
		headless.GetGame().Finalize();
		EXPECT_EQ( headless.GetGraphics().GetLiveTextureCount(), 0 );
		EXPECT_FALSE( headless.GetGraphics().IsDeviceReady() );
	}
}

namespace {

// Steps and frames on a simulated clock, written down as they come: "s" a step, "F" a frame. Each
// present takes presentTime; the frame numbered stallFrame takes stallTime instead.
class cScriptedFrames : public cFrameClient {
public:
	cScriptedFrames( cSimulatedClock &clock, int steps, int64_t presentTime )
		: clock( clock ), stepsLeft( steps ), presentTime( presentTime ) {}
	bool HandleEvents() override {
		if ( passes++ == stallPass ) {
			clock.Advance( stallTime );
			NoteStall();
		}
		return passesLeft-- > 0;	// false: the window closed
	}
	bool Step() override {
		log += "s";
		stepTimes.push_back( clock.GetNanoseconds() );
		return --stepsLeft > 0;
	}
	bool IsFrameWanted() override { return true; }
	void DrawFrame() override {
		log += "F";
		clock.Advance( frames++ == stallFrame ? stallTime : presentTime );
	}

	cSimulatedClock &		clock;
	int						stepsLeft;
	int						passesLeft = 1000000;
	int64_t					presentTime;
	int						frames = 0;
	int						stallFrame = -1;
	int						stallPass = -1;		// the window's stall, in the events of this pass
	int64_t					stallTime = 0;
	int						passes = 0;
	std::string				log;
	std::vector<int64_t>	stepTimes;
};

const int64_t MSEC = 1000000;		// in nsec

}

// The deadline: one step every 15 msec whatever the present costs, the missed steps run before
// the next frame, never more than four, and what is beyond four is dropped rather than owed. The
// window's own stall (a switch to full screen) owes nothing and drops nothing. The ninth step quits;
// the window closing ends the loop before the next step.
TEST( FrameLoop, StepsKeepTheirDeadlineAndCatchUpAtMostFourBeforeAFrame ) {
	struct cCase {
		const char *	name;
		int64_t			present;		// in nsec
		int64_t			stall;			// in nsec, taken by the second frame
		int				passes;			// of the loop before the window closes
		const char *	expected;
		bool			byWindow;		// the stall is the window's, in the third pass's events
	};
	const cCase cases[] = {
		{ "a present that does not wait", 0, 0, 100, "sFsFsFsFsFsFsFsFs", false },
		{ "a 50 Hz present, 20 msec: two steps every third frame", 20 * MSEC, 20 * MSEC, 100, "sFsFsFssFsFsFss", false },
		{ "a 40 msec stall after the second step", 0, 40 * MSEC, 100, "sFsFssFsFsFsFsFs", false },
		{ "a 200 msec stall: four steps, the rest dropped", 0, 200 * MSEC, 100, "sFsFssssFsFsFs", false },
		{ "a 200 msec switch to full screen", 0, 200 * MSEC, 100, "sFsFsFsFsFsFsFsFs", true },
		{ "the window closed in the third pass", 0, 0, 2, "sFsF", false },
	};
	for ( const cCase &c : cases ) {
		cSimulatedClock clock;
		cScriptedFrames frames( clock, 9, c.present );
		( c.byWindow ? frames.stallPass : frames.stallFrame ) = c.byWindow ? 2 : 1;
		frames.stallTime = c.stall;
		frames.passesLeft = c.passes;
		cFrameLoop loop( clock );
		loop.Run( frames );
		EXPECT_EQ( frames.log, c.expected ) << c.name;
	}
}

TEST( FrameLoop, ARunOfStepsKeepsSixtySixAndTwoThirdsAStepOnASlowDisplay ) {
	cSimulatedClock clock;
	cScriptedFrames frames( clock, 2001, 20 * MSEC );	// every present waits for a 50 Hz refresh
	cFrameLoop loop( clock );
	loop.Run( frames );
	const int64_t span = frames.stepTimes.back() - frames.stepTimes.front();
	EXPECT_EQ( span / 2000, cFrameLoop::STEP_TIME ) << "2000 steps in 30 s of the display's time";
	EXPECT_LE( std::count( frames.log.begin(), frames.log.end(), 'F' ), 2000 * 15 / 20 + 1 ) << "one frame a refresh";
}

// The game's tick count is the game's: the loop never reads it, so its wrap-around holds nothing up.
TEST( FrameLoop, TheTickCountWrappingDuringPlayStallsNothing ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	headless.GetClock().SetTickCount( 0xFFFFFFF5u );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( headless.GetClock().GetTickCount(), 4u ) << "a step ends 15 msec after it began, past the wrap";
	headless.GetGame().SetGameState( STATE_DEFEAT );		// ended at tick 0 by the game's clock
	ASSERT_TRUE( headless.Frames( 400 ) );
	EXPECT_EQ( headless.GetGame().GetGameState(), STATE_DEFEAT ) << "the end screen waits its 7500 msec across the wrap";
	ASSERT_TRUE( headless.Frames( 101 ) );
	EXPECT_EQ( headless.GetGame().GetGameState(), STATE_MAIN_MENU );
}

TEST( GameStates, QuitEntryEndsTheProgramInTheFrameOfTheRelease ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	const int framesBefore = headless.GetGraphics().GetFrameCount();
	EXPECT_FALSE( headless.Click( 160, 392 ) );
	EXPECT_EQ( headless.GetGraphics().GetFrameCount(), framesBefore + 1 ) << "the quitting frame is not drawn";
}
