// SPDX-License-Identifier: GPL-3.0-or-later
// What each game state draws: a menu picture with the cursor on top, the world in its order, or
// the world under an end-screen picture; and what missing pictures and a failed device leave.

#include "GraphicsFixtures.h"

namespace {

const int32_t MOUSE_X = 200;
const int32_t MOUSE_Y = 150;

typedef cRecordedFrameTest FrameTest;

// The whole picture at the origin, then the 32 x 32 cursor at the mouse, and nothing else: the
// world is not drawn behind the pause screen, and both selection screens show the same picture.
TEST_F( FrameTest, MenuStatesDrawTheirPictureThenTheCursor ) {
	const std::pair<int32_t, const char *> screens[] = {
		{ STATE_MAIN_MENU, "./resources/menu/main.png" }, { STATE_SETTINGS, "./resources/menu/settings.png" },
		{ STATE_DIFFICULTY, "./resources/menu/difficulty.png" }, { STATE_CONTROLS, "./resources/menu/controls.png" },
		{ STATE_CREDITS, "./resources/menu/credits.png" }, { STATE_SELECT_ONE, "./resources/menu/charselection.png" },
		{ STATE_SELECT_TWO, "./resources/menu/charselection.png" }, { STATE_PAUSE, "./resources/menu/pause.png" },
	};
	AddPlayer( KIND_TAVESH, 224, 2240 );
	for ( const auto &[state, picture] : screens ) {
		screen = state;
		Render( MOUSE_X, MOUSE_Y );
		const std::vector<tDraw> &draws = GetDraws();
		ASSERT_EQ( draws.size(), 2u ) << "state " << state << " should draw its picture and the cursor only";
		EXPECT_EQ( draws[0].path, picture ) << "state " << state;
		EXPECT_TRUE( draws[0].wholeTexture && draws[0].x == 0.0f && draws[0].y == 0.0f )
			<< "state " << state << " should draw its picture whole at the origin";
		EXPECT_EQ( draws[1].path, PNG_CURSOR ) << "state " << state << " should put the cursor last";
		EXPECT_TRUE( draws[1].x == MOUSE_X && draws[1].y == MOUSE_Y && draws[1].source.GetWidth() == 32 &&
					draws[1].source.GetHeight() == 32 ) << "state " << state << ": the cursor is 32 x 32 at the mouse";
	}
}

// Later parts cover earlier ones: ground, objects, items, bullets, players, enemies, explosions,
// over tiles, HUD; the end screens put their picture on top. No world state shows the cursor.
TEST_F( FrameTest, WorldStatesDrawTheWorldInOrderUnderTheirPicture ) {
	const int32_t cameraX = 320, cameraY = 960;
	std::vector<int32_t> object = FilledLayer( 0 ), over = FilledLayer( 0 );
	object[CellIndex( 12, 32 )] = 2;
	over[CellIndex( 13, 33 )] = 3;
	scene = MakeDrawnScene( FilledLayer( 1 ), object, over );
	scene->SetCameraPosition( cameraX, cameraY );
	items.emplace_back( ITEM_HEALTH, cameraX + 100, cameraY + 100 );
	bullets.emplace_back( cameraX + 150, cameraY + 100, DIR_UP, WEAPON_TAVESH, KIND_TAVESH );
	AddPlayer( KIND_TAVESH, cameraX + 200, cameraY + 100 );
	AddEnemy( KIND_SOLDIER, cameraX + 256, cameraY + 128, DIR_DOWN );
	explosions.emplace_back( cameraX + 300, cameraY + 100, false );
	const std::pair<int32_t, const char *> states[] = {
		{ STATE_PLAYING, nullptr }, { STATE_DEFEAT, "./resources/menu/youlose.png" },
		{ STATE_VICTORY, "./resources/menu/youwin.png" },
	};
	for ( const auto &[state, picture] : states ) {
		screen = state;
		Render( MOUSE_X, MOUSE_Y );
		std::vector<std::string> expected = { PNG_TILES, PNG_ITEMS, PNG_BULLETS, PNG_CHARACTERS, PNG_EXPLOSION,
											PNG_TILES, PNG_CHARACTERS, PNG_HEALTH, PNG_ENERGY };
		if ( picture != nullptr ) {
			expected.push_back( picture );
			EXPECT_TRUE( GetDraws().back().wholeTexture ) << "state " << state << " draws its picture whole";
		}
		EXPECT_EQ( GetPictureRuns(), expected ) << "state " << state;
		const std::vector<tDraw> tiles = GetDraws( PNG_TILES );
		ASSERT_EQ( tiles.size(), 302u ) << "300 ground cells, one object and one over tile";
		EXPECT_EQ( tiles[300].source.top, 32 ) << "the object tile should follow the ground";
		EXPECT_EQ( tiles[301].source.top, 64 ) << "the over tile should come after the explosions";
	}
}

// Before the first game there is no world to draw; a frame in a world state draws nothing.
TEST_F( FrameTest, WorldStateWithoutAGameDrawsNothing ) {
	EXPECT_TRUE( layer.Render( screen, MOUSE_X, MOUSE_Y, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr ) );
	EXPECT_TRUE( GetDraws().empty() );
	EXPECT_EQ( backend.GetFrameCount(), 1 ) << "the frame is still presented";
}

// Each picture that cannot be loaded is named in the log once; its draws draw nothing, the
// others still draw: a black pause screen with the cursor, a world without ground.
TEST_F( FrameTest, MissingPicturesAreLoggedAndLeaveTheRest ) {
	backend.SetMissingFile( "./resources/menu/pause.png" );
	backend.SetMissingFile( PNG_TILES );
	layer.LoadTextures();
	EXPECT_TRUE( log.Contains( "Error loading picture ./resources/menu/pause.png: the test made the device fail" ) &&
				log.Contains( "Error loading picture ./resources/map/tiles.png: the test made the device fail" ) &&
				log.GetLines().size() == 2u ) << "the two missing pictures only, log was: " << log.GetText();
	screen = STATE_PAUSE;
	Render( MOUSE_X, MOUSE_Y );
	ASSERT_EQ( GetPictureRuns(), std::vector<std::string>{ PNG_CURSOR } );
	screen = STATE_PLAYING;
	AddPlayer( KIND_TAVESH, 100, 100 );
	Render();
	EXPECT_TRUE( GetDraws( PNG_TILES ).empty() );
	EXPECT_EQ( GetDraws( PNG_CHARACTERS ).size(), 2u ) << "the player and its portrait";
}

// Loading again gives the first set back, and a clean start logs nothing.
TEST_F( FrameTest, LoadingAgainGivesTheFirstPicturesBack ) {
	layer.LoadTextures();
	EXPECT_EQ( backend.GetLiveTextureCount(), cGraphicsLayer::TEXTURE_COUNT ) << "the first set should be given back";
	layer.ReleaseTextures();
	EXPECT_EQ( backend.GetLiveTextureCount(), 0 );
	EXPECT_TRUE( log.GetText().empty() ) << "a clean start logs nothing: " << log.GetText();
}

}
