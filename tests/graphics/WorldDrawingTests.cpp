// SPDX-License-Identifier: GPL-3.0-or-later
// The world as recorded draws: the tile layers' cells and codes, the actors in and out of view, the
// HUD's layouts, and the enemies' alert icons as their own perception moves them on an open floor.

#include <algorithm>
#include <cmath>
#include <iterator>

#include "GraphicsFixtures.h"

namespace {

const int32_t CAMERA_X = 320;
const int32_t CAMERA_Y = 960;
const int32_t SHEET_TILES = 12;		// the test's tile sheet

class WorldDrawingTest : public cRecordedFrameTest {
protected:
	WorldDrawingTest() {
		backend.SetTextureSize( PNG_TILES, CELL_SIZE, SHEET_TILES * CELL_SIZE );
		layer.LoadTextures();
		scene->SetCameraPosition( CAMERA_X, CAMERA_Y );
	}
};

// A scrolled view draws 21 x 16 cut cells; on cell edges the extra column and row are empty and
// 20 x 15 whole cells are drawn. A camera beyond its limits still draws (and reads) no cell
// outside the grid.
TEST_F( WorldDrawingTest, GroundCellsEachCameraDraws ) {
	const struct { int32_t x, y; size_t cells; } cameras[] = {
		{ 40, 360, 21 * 16 }, { 64, 64, 20 * 15 }, { 1280, 1920, 20 * 15 }, { 1290, 1930, 20 * 15 },
	};
	for ( const auto &camera : cameras ) {
		scene->SetCameraPosition( camera.x, camera.y );
		Render();
		EXPECT_EQ( GetDraws( PNG_TILES ).size(), camera.cells ) << "ground cells drawn with the camera at ("
			<< camera.x << ", " << camera.y << ")";
	}
}

// Ground code 0 shows tile 1; objects at 0 and below and over tiles at 0 show nothing; a code past
// the sheet's last tile shows nothing in any layer rather than whatever lies there.
TEST_F( WorldDrawingTest, TilesEachLayersCodesShow ) {
	const char *const names[] = { "ground", "object", "over" };
	const struct { int layer; int32_t code; std::vector<int32_t> tiles; } cases[] = {
		{ 0, 0, { 1 } }, { 0, SHEET_TILES, { SHEET_TILES } }, { 0, SHEET_TILES + 1, {} }, { 0, -2, {} },
		{ 1, 4, { 1, 4 } }, { 1, 0, { 1 } }, { 1, -4, { 1 } }, { 1, SHEET_TILES + 1, { 1 } },
		{ 2, 6, { 1, 6 } }, { 2, 0, { 1 } }, { 2, -1, { 1 } }, { 2, 1000000, { 1 } },
	};
	for ( const auto &test : cases ) {
		std::vector<int32_t> layers[] = { FilledLayer( 1 ), FilledLayer( 0 ), FilledLayer( 0 ) };
		layers[test.layer][CellIndex( 1, 0 )] = test.code;
		scene = MakeDrawnScene( layers[0], layers[1], layers[2] );
		Render();
		std::vector<int32_t> tiles;		// drawn at cell (1, 0), bottom layer first
		for ( const tDraw &draw : GetDraws( PNG_TILES ) ) {
			if ( draw.x == 32.0f && draw.y == 0.0f ) {
				tiles.push_back( draw.source.top / CELL_SIZE + 1 );
			}
		}
		EXPECT_EQ( tiles, test.tiles ) << names[test.layer] << " code " << test.code;
	}
}

// The tile cache draws every cell into its two textures once, then nothing while no code changes;
// opening a door group draws its two cells again, into the ground texture only. A frame copies the
// view out of the ground texture, and blends the over tiles in as few rectangles as their shape
// allows: a block of 3 x 2 cells cut by the view's corner is one rectangle.
TEST_F( WorldDrawingTest, TileCacheDrawsOnlyTheCellsThatChanged ) {
	backend.SetTargetTextures( true );
	layer.LoadTextures();
	std::vector<int32_t> object = FilledLayer( 0 ), walk = FilledLayer( WALK_FLOOR ), over = FilledLayer( 0 );
	for ( int32_t column : { 12, 13 } ) {
		object[CellIndex( column, 35 )] = 5;
		walk[CellIndex( column, 35 )] = WALK_DOOR;
	}
	for ( int32_t cell : { CellIndex( 9, 29 ), CellIndex( 10, 29 ), CellIndex( 11, 29 ), CellIndex( 9, 30 ),
						CellIndex( 10, 30 ), CellIndex( 11, 30 ) } ) {
		over[cell] = 7;
	}
	scene = cScene::FromLayers( FilledLayer( 2 ), object, walk, over );
	scene->SetCameraPosition( CAMERA_X - 8, CAMERA_Y - 8 );		// the view's corner at (312, 952): cuts cell (9, 29)
	const std::string ground = "target 1920x2400", roofs = "target 1920x2400 with alpha";
	const auto intoTexture = [this]( const std::string &target ) {
		std::vector<tDraw> found;
		std::copy_if( GetDraws().begin(), GetDraws().end(), std::back_inserter( found ),
					[&target]( const tDraw &draw ) { return draw.target == target; } );
		return found;
	};
	Render();
	EXPECT_EQ( intoTexture( ground ).size(), size_t( MAP_CELLS * 2 + 2 ) )
		<< "a fill and the ground of each cell, two doors";
	EXPECT_EQ( intoTexture( roofs ).size(), size_t( MAP_CELLS + 6 ) ) << "a fill of each cell, six over tiles";
	Render();
	EXPECT_EQ( intoTexture( ground ).size() + intoTexture( roofs ).size(), 0u ) << "nothing changed, nothing drawn again";
	const std::vector<tDraw> frame = intoTexture( "" );
	ASSERT_TRUE( frame.size() >= 2 && frame[0].path == ground && !frame[0].blend && frame[1].path == roofs )
		<< "the ground copied first, then the over tiles";
	EXPECT_TRUE( frame[0].source.left == CAMERA_X - 8 && frame[0].source.top == CAMERA_Y - 8 &&
				frame[0].source.GetWidth() == 640 && frame[0].source.GetHeight() == 480 )
		<< "the ground is the view's 640 x 480 pixels";
	EXPECT_TRUE( frame[1].source.left == 312 && frame[1].source.top == 952 && frame[1].source.right == 384 &&
				frame[1].source.bottom == 992 && frame[1].x == 0.0f && frame[1].y == 0.0f && GetDraws( roofs ).size() == 1u )
		<< "one rectangle of 72 x 40 pixels at (0, 0), not " << GetDraws( roofs ).size() << " from ("
		<< frame[1].source.left << ", " << frame[1].source.top << ")";
	scene->OpenDoor( 12, 35 );
	Render();
	const std::vector<tDraw> again = intoTexture( ground );
	ASSERT_EQ( again.size(), 4u ) << "a fill and the ground of the two door cells";
	EXPECT_TRUE( again[0].path == cRecordingGraphicsBackend::FILL && again[0].x == 384.0f && again[0].y == 1120.0f &&
				again[3].x == 416.0f ) << "the door cells (12, 35) and (13, 35)";
	EXPECT_EQ( intoTexture( roofs ).size(), 0u );
}

// How far an item hangs below its place in each step's frame: it sinks a pixel every three steps
// down to 6, jumps back to 3 and runs a cycle of 28 steps from there. Only the item at the view's
// far corner is inside; those on its left, top or right edge are neither drawn nor moved on.
TEST_F( WorldDrawingTest, ItemsBobInACycleOf28FramesWhileInView ) {
	items.emplace_back( ITEM_SPEED, CAMERA_X + 639, CAMERA_Y + 479 );
	items.emplace_back( ITEM_HEALTH, CAMERA_X, CAMERA_Y + 50 );
	items.emplace_back( ITEM_HEALTH, CAMERA_X + 50, CAMERA_Y );
	items.emplace_back( ITEM_HEALTH, CAMERA_X + 640, CAMERA_Y + 50 );
	items[1].SetBobCounter( 4 );
	const int32_t expected[] = {
		0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6,
		3, 2, 2, 2, 1, 1, 1, 0, 0, 0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6, 3, 2,
	};
	for ( size_t frame = 0; frame < std::size( expected ); frame++ ) {
		Render();
		const std::vector<tDraw> draws = GetDraws( PNG_ITEMS );
		ASSERT_EQ( draws.size(), 1u ) << "only the item at the far corner is in view, drawn frame " << frame;
		ASSERT_EQ( draws[0].y, 479.0f + static_cast<float>( expected[frame] ) ) << "drawn frame " << frame;
		ASSERT_EQ( draws[0].x, 639.0f );
		ASSERT_EQ( draws[0].source.left, 160 ) << "the speed item is the sheet's sixth picture";
	}
	EXPECT_TRUE( items[1].GetBobCounter() == 4 && items[2].GetBobCounter() == 0 && items[3].GetBobCounter() == 0 )
		<< "an item out of view keeps its phase";
}

// Bullets (at their fractional positions), players and explosions are drawn wherever they are, each
// step moving their animation on; an enemy on the view's edge or outside is neither drawn nor animated.
TEST_F( WorldDrawingTest, WhatIsDrawnOffTheScreen ) {
	bullets.emplace_back( CAMERA_X - 50, CAMERA_Y + 10, DIR_UP_RIGHT, WEAPON_LUMRA, KIND_LUMRA );
	bullets.back().Move();
	cPlayer &player = AddPlayer( KIND_TAVESH, CAMERA_X - 40, CAMERA_Y );
	cEnemy &onEdge = AddEnemy( KIND_SOLDIER, CAMERA_X, CAMERA_Y + 64, DIR_DOWN );
	cEnemy &inside = AddEnemy( KIND_MACHINE_GUNNER, CAMERA_X + 32, CAMERA_Y + 64, DIR_LEFT );
	cEnemy &below = AddEnemy( KIND_BOSS, CAMERA_X + 64, CAMERA_Y + 480, DIR_DOWN );
	for ( cCharacter *walker : std::initializer_list<cCharacter *>{ &player, &onEdge, &inside, &below } ) {
		walker->SetMoving( true );
	}
	explosions.emplace_back( CAMERA_X - 100, CAMERA_Y - 100, true );
	for ( int frame = 0; frame < 5; frame++ ) {
		Render();
	}
	const std::vector<tDraw> shots = GetDraws( PNG_BULLETS );
	ASSERT_EQ( shots.size(), 1u ) << "a bullet left of the view is still drawn";
	float x, y;
	bullets[0].GetPosition( x, y );
	EXPECT_NE( x, std::floor( x ) ) << "a diagonal shot moves by fractions";
	EXPECT_FLOAT_EQ( shots[0].x, x - CAMERA_X ) << "the shot should be drawn at its fractional position";
	EXPECT_FLOAT_EQ( shots[0].y, y - CAMERA_Y ) << "the shot should be drawn at its fractional position";

	const std::vector<tDraw> bodies = GetDraws( PNG_CHARACTERS );
	ASSERT_EQ( bodies.size(), 3u ) << "the player, the one enemy inside the view and the portrait";
	EXPECT_EQ( bodies[0].x, -40.0f ) << "a player left of the view is still drawn";
	EXPECT_TRUE( bodies[1].x == 32.0f && bodies[1].y == 64.0f ) << "the enemy inside the view";
	EXPECT_TRUE( player.GetAnimFrame() == 2 && inside.GetAnimFrame() == 2 )
		<< "five steps of walking should move the player's and the drawn enemy's animation on";
	EXPECT_TRUE( onEdge.GetAnimFrame() == 1 && below.GetAnimFrame() == 1 ) << "an enemy out of view does not animate";
	const std::vector<tDraw> blasts = GetDraws( PNG_EXPLOSION );
	ASSERT_EQ( blasts.size(), 1u );
	EXPECT_EQ( blasts[0].x, -100.0f ) << "an explosion off the view is still drawn";
}

// Player 1 on the left, player 2 on the right with its bars left of its portrait; the portrait is
// the standing frame, from the skill rows while the skill is on. One player leaves the right empty.
TEST_F( WorldDrawingTest, OneAndTwoPlayersLayouts ) {
	const float rightBarsX = 468.0f;
	scene->SetCameraPosition( 0, 1920 );
	AddPlayer( KIND_TAVESH, 224, 2240 );
	Render();
	for ( const tDraw &draw : GetDraws() ) {
		ASSERT_TRUE( draw.path == PNG_TILES || draw.x < rightBarsX ) << draw.path << " drawn on the right-hand side";
	}

	cPlayer &second = AddPlayer( KIND_LUMRA, 384, 2240 );
	second.ToggleSkill();
	second.SetHealth( 30 );
	Render();
	const std::vector<tDraw> characters = GetDraws( PNG_CHARACTERS );
	ASSERT_EQ( characters.size(), 4u ) << "two bodies and two portraits";
	EXPECT_EQ( characters[1].tint, 0x88FFFFFFu ) << "lumra hiding: alpha 0x88, every colour channel whole";
	const tDraw &left = characters[2];
	EXPECT_TRUE( left.x == 32.0f && left.y == 32.0f && left.source.left == 32 && left.source.top == 0 )
		<< "player 1's portrait: tavesh standing, at (32, 32)";
	const tDraw &right = characters[3];
	EXPECT_TRUE( right.x == 576.0f && right.y == 32.0f ) << "player 2's portrait at (576, 32)";
	EXPECT_EQ( right.source.left, 128 ) << "lumra's band, middle column";
	EXPECT_TRUE( right.source.top == 128 && right.source.bottom == 160 ) << "the skill rows";

	const std::vector<tDraw> health = GetDraws( PNG_HEALTH );
	ASSERT_EQ( health.size(), 101u + 31u );
	EXPECT_EQ( health[100].x, 172.0f ) << "player 1's full bar ends at x 172";
	EXPECT_EQ( health[101].x, rightBarsX ) << "player 2's bar starts at x 468";
	EXPECT_EQ( health.back().x, rightBarsX + 30.0f );
}

const int32_t ENEMY_X = CAMERA_X + 320;		// a cell corner, in view
const int32_t ENEMY_Y = CAMERA_Y + 64;

class AlertIconTest : public WorldDrawingTest {
protected:
	AlertIconTest()
		: enemy( AddEnemy( KIND_SOLDIER, ENEMY_X, ENEMY_Y, DIR_DOWN ) ),
		lumra( AddPlayer( KIND_LUMRA, ENEMY_X, ENEMY_Y + 200 ) ) {}

	// Each game step perceives before it animates, so a switch lies behind the enemy from the next one on.
	void Perceive( int32_t expectedState ) {
		enemy.Perceive( lumra, scene->GetWalkMap() );
		ASSERT_EQ( enemy.GetAiState(), expectedState ) << "the enemy's perception went another way than the test needs";
	}
	// The icons drawn in this step's frame, one after another: a single path when there is one icon.
	std::string RenderIcons() {
		Render();
		std::string icons;
		for ( const tDraw &draw : GetDraws() ) {
			if ( draw.path == PNG_EXCLAMATION || draw.path == PNG_QUERY || draw.path == PNG_WTF ) {
				icons += draw.path;
			}
		}
		return icons;
	}

	cEnemy &			enemy;
	cPlayer &			lumra;
};

// Noticing lumra 200 pixels ahead, 256 ms before the clock wraps to 0, shows the 16 x 16 exclamation
// at (x + 10, y - 20) for 750 ms from the first step in view after it, whatever the enemy does; then
// the query while it searches, the 32 x 32 WTF at (x, y - 20) while it looks around, nothing while it
// chases. Seeing lumra again is a new alert; chase to attack is none. A wandering boss shows nothing.
TEST_F( AlertIconTest, IconsThroughAnAlertAndASearch ) {
	const uint32_t noticed = 0xFFFFFF00u;
	clock.SetTickCount( noticed );
	cEnemy &boss = AddEnemy( KIND_BOSS, ENEMY_X + 64, ENEMY_Y, DIR_DOWN );
	boss.PerceiveBoss( lumra, scene->GetWalkMap() );
	ASSERT_EQ( boss.GetAiState(), AI_BOSS_WANDER );
	EXPECT_EQ( RenderIcons(), "" ) << "an unaware enemy and a wandering boss have no icon";
	enemies.pop_back();		// never alerted, stamped 0: it would show the exclamation the first 750 ms after the wrap
	ASSERT_NO_FATAL_FAILURE( Perceive( AI_CHASE ) );
	ASSERT_EQ( RenderIcons(), PNG_EXCLAMATION );
	EXPECT_EQ( enemy.GetAlertTime(), noticed ) << "stamped in the first step in view after the switch";
	const tDraw icon = GetDraws( PNG_EXCLAMATION )[0];
	EXPECT_TRUE( icon.x == 330.0f && icon.y == 44.0f && icon.source.GetWidth() == 16 && icon.source.GetHeight() == 16 )
		<< "the exclamation is 16 x 16 at (330, 44), not " << icon.source.GetWidth() << " wide at (" << icon.x << ", " << icon.y << ")";

	lumra.ToggleSkill();
	ASSERT_NO_FATAL_FAILURE( Perceive( AI_SEARCH ) );
	clock.Advance( 749 );
	EXPECT_EQ( RenderIcons(), PNG_EXCLAMATION ) << "749 ms after noticing, past the wrap, the exclamation outlasts the search";
	clock.Advance( 1 );
	EXPECT_EQ( RenderIcons(), PNG_QUERY ) << "750 ms after noticing, a searching enemy shows the query";
	ASSERT_NO_FATAL_FAILURE( Perceive( AI_LOOK_AROUND ) );	// a search with nowhere to go ends at once
	ASSERT_EQ( RenderIcons(), PNG_WTF );
	const tDraw wtf = GetDraws( PNG_WTF )[0];
	EXPECT_TRUE( wtf.x == 320.0f && wtf.y == 44.0f && wtf.source.GetWidth() == 32 )
		<< "the WTF is 32 wide at (320, 44), not " << wtf.source.GetWidth() << " at (" << wtf.x << ", " << wtf.y << ")";

	clock.Advance( 5000 );
	lumra.ToggleSkill();
	ASSERT_NO_FATAL_FAILURE( Perceive( AI_CHASE ) );
	EXPECT_EQ( RenderIcons(), PNG_EXCLAMATION ) << "looking around, then noticing again";
	EXPECT_EQ( enemy.GetAlertTime(), noticed + 5750 );
	clock.Advance( 750 );
	ASSERT_NO_FATAL_FAILURE( Perceive( AI_CHASE ) );
	EXPECT_EQ( RenderIcons(), "" ) << "750 ms after noticing, a chasing enemy shows nothing";
	lumra.SetPosition( ENEMY_X, ENEMY_Y + 64 );
	ASSERT_NO_FATAL_FAILURE( Perceive( AI_ATTACK ) );
	EXPECT_EQ( RenderIcons(), "" ) << "closing in from chase to attack is no new alert";
	EXPECT_EQ( enemy.GetAlertTime(), noticed + 5750 );
}

}
