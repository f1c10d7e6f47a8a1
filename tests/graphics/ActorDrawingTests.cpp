// The actors of the world as recorded draws: items bobbing while in view, bullets at fractional
// positions, players drawn anywhere and lumra see-through while hidden, enemies only in view,
// explosions animating as they are drawn, and the order in which the world's parts cover each other.

#include <gtest/gtest.h>

#include "GraphicsFixtures.h"
#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t CAMERA_X = 320;
const int32_t CAMERA_Y = 960;

class ActorDrawingTest : public cRecordedFrameTest {
protected:
	ActorDrawingTest() { SetCamera( CAMERA_X, CAMERA_Y ); }
};

// How far the item hangs below its place in each drawn frame, from its creation: it sinks a pixel
// every three frames down to 6, jumps back to 3 and runs a cycle of 28 frames from there.
TEST_F( ActorDrawingTest, ItemsBobInACycleOf28Frames ) {
	items.emplace_back( ITEM_HEALTH, CAMERA_X + 100, CAMERA_Y + 50 );
	const int32_t expected[] = {
		0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6,
		3, 2, 2, 2, 1, 1, 1, 0, 0, 0, 0, 0, 1, 1, 1, 2, 2, 2, 3, 3, 3, 4, 4, 4, 5, 5, 5, 6,
		3, 2,
	};
	for ( size_t frame = 0; frame < sizeof( expected ) / sizeof( expected[0] ); frame++ ) {
		Render();
		const std::vector<tDraw> draws = GetDraws( PNG_ITEMS );
		ASSERT_EQ( draws.size(), 1u );
		ASSERT_EQ( draws[0].y, 50.0f + static_cast<float>( expected[frame] ) ) << "drawn frame " << frame;
		ASSERT_EQ( draws[0].x, 100.0f );
	}
}

// The item sheet has one 32 x 32 picture per kind, side by side.
TEST_F( ActorDrawingTest, ItemPictureFollowsItsKind ) {
	items.emplace_back( ITEM_SPEED, CAMERA_X + 1, CAMERA_Y + 1 );
	Render();
	const std::vector<tDraw> draws = GetDraws( PNG_ITEMS );
	ASSERT_EQ( draws.size(), 1u );
	EXPECT_EQ( draws[0].source.left, 160 );
	EXPECT_EQ( draws[0].source.right, 192 );
	EXPECT_EQ( draws[0].source.top, 0 );
	EXPECT_EQ( draws[0].source.bottom, 32 );
}

// An item whose corner lies on the view's left or top edge is not drawn, and one out of view
// keeps its phase until it comes back.
TEST_F( ActorDrawingTest, ItemsOutOfViewAreNotDrawnAndKeepTheirPhase ) {
	items.emplace_back( ITEM_HEALTH, CAMERA_X, CAMERA_Y + 50 );
	items.emplace_back( ITEM_HEALTH, CAMERA_X + 50, CAMERA_Y );
	items.emplace_back( ITEM_HEALTH, CAMERA_X + 640, CAMERA_Y + 50 );
	items.emplace_back( ITEM_HEALTH, CAMERA_X + 639, CAMERA_Y + 479 );
	items[0].SetBobCounter( 4 );
	for ( int frame = 0; frame < 5; frame++ ) {
		Render();
	}
	const std::vector<tDraw> draws = GetDraws( PNG_ITEMS );
	ASSERT_EQ( draws.size(), 1u ) << "only the item at the far corner inside the view is drawn";
	EXPECT_EQ( draws[0].x, 639.0f );
	EXPECT_EQ( items[0].GetBobCounter(), 4 ) << "an item out of view does not bob";
	EXPECT_EQ( items[1].GetBobCounter(), 0 );
	EXPECT_EQ( items[3].GetBobCounter(), 5 ) << "the drawn item bobbed once per frame";
}

// Bullets keep their fractions and are drawn even when off the screen.
TEST_F( ActorDrawingTest, BulletsAtFractionalPositionsAnywhere ) {
	bullets.emplace_back( CAMERA_X + 100, CAMERA_Y + 100, DIR_UP_RIGHT, WEAPON_LUMRA, KIND_LUMRA );
	bullets.back().Move();
	bullets.emplace_back( CAMERA_X - 50, CAMERA_Y + 10, DIR_LEFT, WEAPON_MACHINE_GUN, KIND_TAVESH );
	Render();
	const std::vector<tDraw> draws = GetDraws( PNG_BULLETS );
	ASSERT_EQ( draws.size(), 2u );
	float x, y;
	bullets[0].GetPosition( x, y );
	EXPECT_NE( x, static_cast<float>( static_cast<int32_t>( x ) ) ) << "a diagonal shot moves by fractions";
	EXPECT_FLOAT_EQ( draws[0].x, x - CAMERA_X );
	EXPECT_FLOAT_EQ( draws[0].y, y - CAMERA_Y );
	EXPECT_EQ( draws[0].source.left, 20 ) << "lumra's bullet picture";
	EXPECT_EQ( draws[1].x, -50.0f ) << "a bullet left of the view is still drawn";
	EXPECT_EQ( draws[1].source.left, 60 ) << "the machine gun's bullet picture";
}

// lumra with her skill on is drawn at alpha 0x88; tavesh's skill does not show that way.
TEST_F( ActorDrawingTest, HiddenLumraIsSeeThrough ) {
	cPlayer &tavesh = AddPlayer( KIND_TAVESH, CAMERA_X + 100, CAMERA_Y + 100 );
	cPlayer &lumra = AddPlayer( KIND_LUMRA, CAMERA_X + 200, CAMERA_Y + 100 );
	tavesh.ToggleSkill();
	lumra.ToggleSkill();
	Render();
	std::vector<tDraw> draws = GetDraws( PNG_CHARACTERS );
	ASSERT_EQ( draws.size(), 4u ) << "two bodies and two portraits";
	EXPECT_EQ( draws[0].tint, cGraphicsLayer::WHITE ) << "tavesh's skill leaves him opaque";
	EXPECT_EQ( draws[1].tint, 0x88FFFFFFu ) << "lumra hides";
	EXPECT_EQ( draws[3].tint, cGraphicsLayer::WHITE ) << "her portrait stays opaque";

	lumra.ToggleSkill();
	Render();
	draws = GetDraws( PNG_CHARACTERS );
	EXPECT_EQ( draws[1].tint, cGraphicsLayer::WHITE ) << "lumra with her skill off";
}

// Players are drawn wherever they are, and each draw moves their walk on.
TEST_F( ActorDrawingTest, PlayersAreDrawnOutOfViewToo ) {
	cPlayer &player = AddPlayer( KIND_TAVESH, CAMERA_X - 40, CAMERA_Y );
	player.SetMoving( true );
	for ( int frame = 0; frame < 5; frame++ ) {
		Render();
	}
	const std::vector<tDraw> draws = GetDraws( PNG_CHARACTERS );
	ASSERT_EQ( draws.size(), 2u );
	EXPECT_EQ( draws[0].x, -40.0f );
	EXPECT_EQ( player.GetAnimFrame(), 2 ) << "five drawn frames of walking move the animation on";
}

// An enemy on the view's edge or outside is neither drawn nor animated.
TEST_F( ActorDrawingTest, EnemiesOnlyInView ) {
	cEnemy &onEdge = AddEnemy( KIND_SOLDIER, CAMERA_X, CAMERA_Y + 64, DIR_DOWN );
	cEnemy &inside = AddEnemy( KIND_MACHINE_GUNNER, CAMERA_X + 32, CAMERA_Y + 64, DIR_LEFT );
	cEnemy &below = AddEnemy( KIND_BOSS, CAMERA_X + 64, CAMERA_Y + 480, DIR_DOWN );
	onEdge.SetMoving( true );
	inside.SetMoving( true );
	below.SetMoving( true );
	for ( int frame = 0; frame < 6; frame++ ) {
		Render();
	}
	const std::vector<tDraw> draws = GetDraws( PNG_CHARACTERS );
	ASSERT_EQ( draws.size(), 1u );
	EXPECT_EQ( draws[0].x, 32.0f );
	EXPECT_EQ( draws[0].y, 64.0f );
	EXPECT_EQ( draws[0].source.left, 3 * 96 + 2 * 32 ) << "the machine-gunner's band, its walk moved on after five frames";
	EXPECT_EQ( draws[0].source.top, 32 ) << "facing left";
	EXPECT_EQ( onEdge.GetAnimFrame(), 1 ) << "an enemy out of view does not animate";
	EXPECT_EQ( below.GetAnimFrame(), 1 );
	EXPECT_TRUE( GetDraws( PNG_EXCLAMATION ).empty() ) << "an unaware enemy shows no icon";
}

// Explosions are drawn wherever they are, each draw moving the animation on.
TEST_F( ActorDrawingTest, ExplosionsAnimateAsTheyAreDrawn ) {
	explosions.emplace_back( CAMERA_X + 10, CAMERA_Y + 20, true );
	explosions.emplace_back( CAMERA_X - 100, CAMERA_Y - 100, false );
	for ( int frame = 0; frame < 3; frame++ ) {
		Render();
	}
	const std::vector<tDraw> draws = GetDraws( PNG_EXPLOSION );
	ASSERT_EQ( draws.size(), 2u );
	EXPECT_EQ( draws[0].x, 10.0f );
	EXPECT_EQ( draws[0].source.top, 32 ) << "an impact's row";
	EXPECT_EQ( draws[0].source.left, 0 ) << "the third draw still shows the first picture";
	EXPECT_EQ( explosions[0].GetFrame(), 1 ) << "an impact moves on every third draw";
	EXPECT_EQ( draws[1].x, -100.0f );
	EXPECT_EQ( draws[1].source.top, 0 ) << "a death's row";
}

// Later parts cover earlier ones: ground, objects, items, bullets, players, enemies with their
// icons, explosions, over tiles, HUD.
TEST_F( ActorDrawingTest, WorldPartsInTheirOrder ) {
	std::vector<int32_t> object = FilledLayer( 0 );
	std::vector<int32_t> over = FilledLayer( 0 );
	object[CellIndex( 12, 32 )] = 2;
	over[CellIndex( 13, 33 )] = 3;
	scene = MakeDrawnScene( FilledLayer( 1 ), object, over );
	SetCamera( CAMERA_X, CAMERA_Y );
	items.emplace_back( ITEM_HEALTH, CAMERA_X + 100, CAMERA_Y + 100 );
	bullets.emplace_back( CAMERA_X + 150, CAMERA_Y + 100, DIR_UP, WEAPON_TAVESH, KIND_TAVESH );
	AddPlayer( KIND_TAVESH, CAMERA_X + 200, CAMERA_Y + 100 );
	AddEnemy( KIND_SOLDIER, CAMERA_X + 256, CAMERA_Y + 128, DIR_DOWN );
	explosions.emplace_back( CAMERA_X + 300, CAMERA_Y + 100, false );
	Render();
	const std::vector<std::string> expected = {
		PNG_TILES, PNG_ITEMS, PNG_BULLETS, PNG_CHARACTERS, PNG_EXPLOSION, PNG_TILES,
		PNG_CHARACTERS, PNG_HEALTH, PNG_ENERGY,
	};
	EXPECT_EQ( GetPictureRuns(), expected );
	const std::vector<tDraw> tiles = GetDraws( PNG_TILES );
	ASSERT_EQ( tiles.size(), 302u );
	EXPECT_EQ( tiles[300].source.top, 32 ) << "the object tile follows the ground";
	EXPECT_EQ( tiles[301].source.top, 64 ) << "the over tile comes after the explosions";
}

}
