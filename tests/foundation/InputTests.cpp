// SPDX-License-Identifier: GPL-3.0-or-later
// Keyboard and mouse: a key pressed while no state is saved, the cursor following the platform,
// and failed reads with their log lines. The skill key's tests drive the newly pressed test in play.

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "input/InputLayer.h"
#include "input/KeyCodes.h"
#include "input/headless/ScriptedInputBackend.h"

namespace {

class InputLayerTest : public ::testing::Test {
protected:
	void SetUp() override {
		ASSERT_TRUE( input.Init( &backend, true, cInputLayer::DEVICE_KEYBOARD | cInputLayer::DEVICE_MOUSE ) );
	}
	bool Pressed( int key ) const {
		const cKeyboard &keyboard = *input.GetKeyboard();
		return keyboard.KeyDown( key ) && keyboard.KeyChanged( key );
	}

	cScriptedInputBackend	backend;
	cInputLayer				input;
};

}

// The saved state is the one of the last in-game step: a key that went down while no step saved
// the state (a pause) counts as newly pressed in the first step after.
TEST_F( InputLayerTest, KeyPressedWhileNoStateIsSavedCountsAsNewLater ) {
	cKeyboard &keyboard = *input.GetKeyboard();
	input.Read();
	keyboard.SaveState();
	backend.SetKey( KEY_NUMPAD2, true );
	for ( int pausedFrame = 0; pausedFrame < 5; pausedFrame++ ) {
		input.Read();
	}
	EXPECT_TRUE( Pressed( KEY_NUMPAD2 ) );
}

TEST_F( InputLayerTest, OutOfRangeKeysAreNeverDown ) {
	const cKeyboard &keyboard = *input.GetKeyboard();
	EXPECT_FALSE( keyboard.KeyDown( -1 ) );
	EXPECT_FALSE( keyboard.KeyDown( 256 ) );
	EXPECT_TRUE( keyboard.KeyUp( 999 ) );
	EXPECT_FALSE( keyboard.KeyChanged( 256 ) );
}

TEST_F( InputLayerTest, MouseFollowsThePlatformAndButtonsUseTheHighBit ) {
	backend.SetMousePosition( 600, 12 );
	backend.SetButton( 0, true );
	input.Read();
	int32_t x = 0, y = 0;
	input.GetMousePosition( x, y );
	EXPECT_EQ( x, 600 );
	EXPECT_EQ( y, 12 );
	EXPECT_TRUE( input.MouseButtonDown( 0 ) );
	EXPECT_TRUE( input.MouseButtonUp( 1 ) );

	input.SetMousePosition( 320, 240 );
	EXPECT_EQ( backend.GetWarpCount(), 1 ) << "the game moving the cursor moves the pointer";
	input.Read();
	input.GetMousePosition( x, y );
	EXPECT_EQ( x, 320 ) << "the pointer stays where the game put it";
}

TEST_F( InputLayerTest, FailedReadIsLoggedAndKeepsTheLastState ) {
	backend.SetKey( KEY_W, true );
	input.Read();
	cLogCapture log;
	backend.SetFailReads( true );
	EXPECT_FALSE( input.Read() );
	EXPECT_TRUE( input.KeyDown( KEY_W ) ) << "the frame goes on with the state the device last held";
	const std::vector<std::string> expected = {
		"Error: Getting keyboard device state", "Code: scripted failure", "Description: the script made the device fail",
		"Error: Acquiring keyboard!", "Code: scripted failure", "Description: the script made the device fail",
		"Error reading from keyboard device!",
	};
	EXPECT_EQ( log.GetLines(), expected );
}

TEST( InputLayer, MissingBackendFailsInitAndQueriesAreSafe ) {
	cLogCapture log;
	cInputLayer input;
	EXPECT_FALSE( input.Init( nullptr, true, 3 ) );
	EXPECT_EQ( log.GetLines().front(), "Error: Creating DI object" );
	EXPECT_TRUE( input.Read() ) << "no devices, nothing to fail";
	EXPECT_FALSE( input.KeyDown( KEY_ESCAPE ) );
	EXPECT_TRUE( input.Release() );
	EXPECT_TRUE( input.Release() ) << "releasing twice is harmless";
}
