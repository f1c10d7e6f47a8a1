// The game's start, frame and shut-down: the layers' set-up order and failures, the frame's length
// on the millisecond clock (also across its wrap-around), and the state changes that need no level.

#include <gtest/gtest.h>

#include <algorithm>

#include "LogCapture.h"
#include "app/GameState.h"
#include "input/KeyCodes.h"
#include "platform/headless/HeadlessGame.h"

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

TEST( GameStart, SilentGameStartsWithTheCursorInTheMiddle ) {
	cLogCapture log;
	cHeadlessGame headless;	// no sound backend: the device cannot be opened
	ASSERT_TRUE( headless.Start() );
	EXPECT_TRUE( log.Contains( "Error initializing Sound!" ) );
	int32_t x = 0, y = 0;
	headless.GetGame().GetInputLayer().GetMousePosition( x, y );
	EXPECT_EQ( x, 320 );
	EXPECT_EQ( y, 240 );
	EXPECT_EQ( headless.GetGraphics().GetLiveTextureCount(), 22 ) << "all 22 pictures are loaded at start";
	EXPECT_FALSE( headless.GetGraphics().WasFullscreenAsked() );
}

TEST( GameStart, ShutDownGivesBackEveryPictureAndTheDevice ) {
	cHeadlessGame headless;
	headless.GetGraphics().SetMissingFile( "./resources/menu/credits.png" );
	cLogCapture log;
	ASSERT_TRUE( headless.Start( true ) );
	EXPECT_TRUE( headless.GetGraphics().WasFullscreenAsked() );
	EXPECT_EQ( headless.GetGraphics().GetLiveTextureCount(), 21 );
	const std::vector<std::string> lines = log.GetLines();
	const auto named = std::find_if( lines.begin(), lines.end(), []( const std::string &line ) {
		return line.rfind( "Error loading picture ./resources/menu/credits.png", 0 ) == 0;
	} );
	EXPECT_NE( named, lines.end() ) << "a missing picture is named in the log";
	headless.GetGame().Finalize();
	EXPECT_EQ( headless.GetGraphics().GetLiveTextureCount(), 0 );
	EXPECT_FALSE( headless.GetGraphics().IsDeviceReady() );
}

TEST( GameFrame, LastsFifteenMillisecondsAcrossTheClockWrapAround ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	const uint32_t start = 0xFFFFFFF5u;
	headless.GetClock().SetTickCount( start );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( headless.GetClock().GetTickCount(), start + 15u ) << "the frame ends 15 msec after it began";
	EXPECT_EQ( headless.GetClock().GetTickCount(), 4u ) << "and the clock wrapped meanwhile";
	EXPECT_EQ( headless.GetGraphics().GetFrameCount(), 1 );
}

TEST( GameFrame, WaitSleepsAllButTheLastMoments ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	const uint32_t sleptBefore = headless.GetClock().GetSleptTime();
	ASSERT_TRUE( headless.Frame() );
	// 14 msec asleep in one go, then one 1-msec spin: the wait does not hold the processor.
	EXPECT_EQ( headless.GetClock().GetSleptTime() - sleptBefore, 15u );
}

TEST( GameStates, EscapePausesAndThePauseScreenResumes ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	gameState = STATE_PLAYING;
	headless.SetKey( KEY_ESCAPE, true );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( gameState, STATE_PAUSE ) << "Escape pauses in the frame it is seen";
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( gameState, STATE_PAUSE ) << "Escape does nothing on the pause screen";
	headless.SetKey( KEY_ESCAPE, false );
	ASSERT_TRUE( headless.Click( 160, 360 ) );	// entry 4: resume
	EXPECT_EQ( gameState, STATE_PLAYING );
}

TEST( GameStates, EndScreenReturnsToTheMenuAfterSevenAndAHalfSeconds ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	gameState = STATE_DEFEAT;	// endTime is 0 until a game ends
	headless.GetClock().SetTickCount( 7485 );
	ASSERT_TRUE( headless.Frame() );	// at 7485
	ASSERT_TRUE( headless.Frame() );	// at 7500: not more than 7500 msec yet
	EXPECT_EQ( gameState, STATE_DEFEAT );
	ASSERT_TRUE( headless.Frame() );	// at 7515
	EXPECT_EQ( gameState, STATE_MAIN_MENU );
}

TEST( GameStates, EndScreenTakesNoClicksButEscapeLeavesIt ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	gameState = STATE_VICTORY;
	ASSERT_TRUE( headless.Click( 160, 392 ) );	// the quit entry's place
	EXPECT_EQ( gameState, STATE_VICTORY );
	EXPECT_FALSE( headless.GetGame().IsClickLatched() );
	headless.SetKey( KEY_ESCAPE, true );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( gameState, STATE_MAIN_MENU );
}

TEST( GameStates, QuitEntryEndsTheProgramInTheFrameOfTheRelease ) {
	cHeadlessGame headless;
	ASSERT_TRUE( headless.Start() );
	const int framesBefore = headless.GetGraphics().GetFrameCount();
	EXPECT_FALSE( headless.Click( 160, 392 ) );
	EXPECT_EQ( headless.GetGraphics().GetFrameCount(), framesBefore + 1 ) << "the quitting frame is not drawn";
}
