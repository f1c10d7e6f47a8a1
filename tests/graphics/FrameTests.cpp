// What each screen of the game draws: a menu picture with the cursor on top, the world, or the
// world under an end-screen picture; and what a missing picture does to the start-up and the frame.

#include <gtest/gtest.h>

#include "GraphicsFixtures.h"
#include "actors/ActorTypes.h"
#include "app/GameState.h"

namespace {

const int32_t MOUSE_X = 200;
const int32_t MOUSE_Y = 150;

struct cMenuScreen {
	int32_t		state;
	const char *picture;
};

const cMenuScreen MENU_SCREENS[] = {
	{ STATE_MAIN_MENU, "./resources/menu/main.png" },
	{ STATE_SETTINGS, "./resources/menu/settings.png" },
	{ STATE_DIFFICULTY, "./resources/menu/difficulty.png" },
	{ STATE_CONTROLS, "./resources/menu/controls.png" },
	{ STATE_CREDITS, "./resources/menu/credits.png" },
	{ STATE_SELECT_ONE, "./resources/menu/charselection.png" },
	{ STATE_SELECT_TWO, "./resources/menu/charselection.png" },
	{ STATE_PAUSE, "./resources/menu/pause.png" },
};

class FrameTest : public cRecordedFrameTest {
protected:
	FrameTest() {
		AddPlayer( KIND_TAVESH, 224, 2240 );
		SetCamera( 0, 1920 );
	}
};

// Screens used with the mouse: the whole picture at the origin, then the cursor at the mouse, and
// nothing else; the world is not drawn behind the pause screen.
TEST_F( FrameTest, MenuScreensDrawTheirPictureThenTheCursor ) {
	for ( const cMenuScreen &screen : MENU_SCREENS ) {
		gameState = screen.state;
		Render( MOUSE_X, MOUSE_Y );
		const std::vector<tDraw> &draws = GetDraws();
		ASSERT_EQ( draws.size(), 2u ) << "state " << screen.state << " should draw its picture and the cursor only";
		EXPECT_EQ( draws[0].path, screen.picture ) << "state " << screen.state;
		EXPECT_TRUE( draws[0].wholeTexture ) << "state " << screen.state << " draws its picture whole";
		EXPECT_EQ( draws[0].x, 0.0f );
		EXPECT_EQ( draws[0].y, 0.0f );
		EXPECT_EQ( draws[1].path, PNG_CURSOR ) << "state " << screen.state << " puts the cursor last";
		EXPECT_EQ( draws[1].x, static_cast<float>( MOUSE_X ) );
		EXPECT_EQ( draws[1].y, static_cast<float>( MOUSE_Y ) );
		EXPECT_EQ( draws[1].source.GetWidth(), 32 );
		EXPECT_EQ( draws[1].source.GetHeight(), 32 );
		EXPECT_EQ( draws[1].tint, cGraphicsLayer::WHITE );
	}
	EXPECT_EQ( backend.GetFrameCount(), 8 ) << "every Render presents one frame";
}

TEST_F( FrameTest, PlayingDrawsTheWorldWithoutCursor ) {
	gameState = STATE_PLAYING;
	Render( MOUSE_X, MOUSE_Y );
	const std::vector<std::string> runs = GetPictureRuns();
	ASSERT_FALSE( runs.empty() );
	EXPECT_EQ( runs.front(), PNG_TILES ) << "the world starts with the ground";
	EXPECT_TRUE( GetDraws( PNG_CURSOR ).empty() ) << "no cursor during play";
	EXPECT_EQ( GetDraws( PNG_CHARACTERS ).size(), 2u ) << "the player and its portrait";
}

// The end screens lie over a world that goes on being drawn, and have no cursor.
TEST_F( FrameTest, EndScreensDrawTheWorldUnderTheirPicture ) {
	const cMenuScreen endScreens[] = {
		{ STATE_DEFEAT, "./resources/menu/youlose.png" },
		{ STATE_VICTORY, "./resources/menu/youwin.png" },
	};
	for ( const cMenuScreen &screen : endScreens ) {
		gameState = screen.state;
		Render( MOUSE_X, MOUSE_Y );
		const std::vector<tDraw> &draws = GetDraws();
		ASSERT_GT( draws.size(), 300u ) << "state " << screen.state << " should draw the world first";
		EXPECT_EQ( draws.front().path, PNG_TILES ) << "state " << screen.state;
		EXPECT_EQ( draws.back().path, screen.picture ) << "state " << screen.state << " puts its picture last";
		EXPECT_TRUE( draws.back().wholeTexture );
		EXPECT_TRUE( GetDraws( PNG_CURSOR ).empty() ) << "state " << screen.state << " has no cursor";
	}
}

// Before the first game there is no world to draw; a frame in a world state draws nothing.
TEST_F( FrameTest, WorldStateWithoutAGameDrawsNothing ) {
	gameState = STATE_PLAYING;
	EXPECT_TRUE( layer.Render( MOUSE_X, MOUSE_Y, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr ) );
	EXPECT_TRUE( GetDraws().empty() );
	EXPECT_EQ( backend.GetFrameCount(), 1 ) << "the frame is still presented";
}

// A picture that cannot be loaded is named in the log once; its screen is black with the cursor.
TEST_F( FrameTest, MissingPictureIsLoggedAndLeavesOnlyTheCursor ) {
	backend.SetMissingFile( "./resources/menu/pause.png" );
	Reload();
	EXPECT_TRUE( log.Contains( "Error loading picture ./resources/menu/pause.png: the test made the device fail" ) )
		<< "log was: " << log.GetText();
	EXPECT_EQ( log.GetLines().size(), 1u ) << "only the missing picture is logged: " << log.GetText();
	gameState = STATE_PAUSE;
	Render( MOUSE_X, MOUSE_Y );
	ASSERT_EQ( GetDraws().size(), 1u );
	EXPECT_EQ( GetDraws()[0].path, PNG_CURSOR );
}

TEST_F( FrameTest, LoadingTwiceKeepsOneSetOfPictures ) {
	Reload();
	EXPECT_EQ( backend.GetLiveTextureCount(), cGraphicsLayer::TEXTURE_COUNT );
	layer.ReleaseTextures();
	EXPECT_EQ( backend.GetLiveTextureCount(), 0 );
	EXPECT_TRUE( log.GetText().empty() ) << "a clean start logs nothing: " << log.GetText();
}

// Released before any picture was loaded, after a failed device: nothing to give back, no crash.
TEST( FrameLifecycleTest, ReleaseAfterAFailedDeviceTouchesNothing ) {
	cLogCapture log;
	cRecordingGraphicsBackend backend;
	backend.SetFailDevice( true );
	cGraphicsLayer layer;
	EXPECT_FALSE( layer.Init( &backend, true ) );
	EXPECT_TRUE( backend.WasFullscreenAsked() );
	EXPECT_FALSE( log.GetText().empty() ) << "the failed device is logged";
	layer.ReleaseTextures();
	layer.Release();
	EXPECT_EQ( backend.GetLiveTextureCount(), 0 );
}

}
