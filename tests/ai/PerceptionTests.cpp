// SPDX-License-Identifier: GPL-3.0-or-later
// How enemies notice players and what each alert state does: the distance bands, the field of
// view of each facing, the line of sight over the walk layer, and the tables of the regular
// enemies and of the boss, driven by placing players and running the enemy's frames. A regular
// enemy's attack (from a corner, standing, facing the player) plays out in the recorded games.

#include <string>
#include <vector>

#include "EnemyField.h"
#include "TestMaps.h"

namespace {

using PerceptionTest = cEnemyField;
using RegularTableTest = cEnemyField;
using BossTableTest = cEnemyField;

TEST_F( PerceptionTest, DistanceBandsDecideWhetherAPlayerIsNoticed ) {
	struct cCase { int32_t kind, dx, dy, state; const char *what; };
	const cCase cases[] = {
		{ KIND_SOLDIER, 99, 0, AI_CHASE, "99 pixels: near" },
		{ KIND_SOLDIER, 100, 0, AI_UNAWARE, "exactly 100 pixels is neither near nor middle" },
		{ KIND_SOLDIER, 71, 71, AI_UNAWARE, "100.4 pixels truncates to 100" },
		{ KIND_SOLDIER, 70, 71, AI_CHASE, "99.7 pixels truncates to 99" },
		{ KIND_SOLDIER, 101, 0, AI_CHASE, "101 pixels: middle" },
		{ KIND_SOLDIER, 414, 0, AI_CHASE, "414 pixels: the far edge of the middle band" },
		{ KIND_SOLDIER, 415, 0, AI_UNAWARE, "415 pixels is too far" },
		{ KIND_BOSS, 474, 0, AI_BOSS_WANDER, "the boss notices at 474 pixels" },
		{ KIND_BOSS, 475, 0, AI_UNAWARE, "but not at 475" },
		{ KIND_BOSS, 100, 0, AI_BOSS_WANDER, "the boss has no gap at 100" },
	};
	for ( const cCase &c : cases ) {
		cEnemy enemy( c.kind, EX, EY, DIR_RIGHT, 1 );
		EXPECT_EQ( Perceived( enemy, cPlayer( KIND_TAVESH, EX + c.dx, EY + c.dy ) ), c.state ) << c.what;
	}
}

TEST_F( PerceptionTest, FieldOfViewIsTheHalfPlaneTheEnemyFaces ) {
	struct cCase { int32_t facing, dx, dy; bool seen; const char *what; };
	const cCase cases[] = {
		{ DIR_UP, -200, 0, true, "facing up: level on the left" },
		{ DIR_UP, 200, 0, true, "facing up: level on the right" },
		{ DIR_UP, 0, 64, false, "facing up: below" },
		{ DIR_DOWN, 30, 0, true, "facing down: level" },
		{ DIR_DOWN, 0, -64, false, "facing down: above" },
		{ DIR_RIGHT, 0, -200, true, "facing right: straight above" },
		{ DIR_RIGHT, -1, 100, false, "facing right: a pixel behind" },
		{ DIR_LEFT, 0, 100, true, "facing left: straight below" },
		{ DIR_LEFT, 64, 0, false, "facing left: to the right" },
		{ DIR_UP_RIGHT, 200, 0, false, "facing up-right: straight right" },
		{ DIR_UP_RIGHT, 0, -200, false, "facing up-right: straight up" },
		{ DIR_UP_RIGHT, 100, -150, true, "facing up-right: up and right" },
		{ DIR_UP_RIGHT, 150, 100, true, "facing up-right: right and a little down" },
		{ DIR_UP_RIGHT, 100, 100, false, "facing up-right: on the boundary diagonal" },
		{ DIR_UP_RIGHT, -100, -150, true, "facing up-right: up and a little left" },
		{ DIR_UP_RIGHT, -100, 150, false, "facing up-right: behind" },
		{ DIR_UP_LEFT, -150, 100, true, "facing up-left: left and a little down" },
		{ DIR_UP_LEFT, 100, -150, true, "facing up-left: up and a little right" },
		{ DIR_UP_LEFT, 150, -100, false, "facing up-left: mostly right" },
		{ DIR_UP_LEFT, -200, 0, false, "facing up-left: straight left" },
		{ DIR_DOWN_RIGHT, 150, -100, true, "facing down-right: right and a little up" },
		{ DIR_DOWN_RIGHT, -100, 150, true, "facing down-right: down and a little left" },
		{ DIR_DOWN_RIGHT, -150, 100, false, "facing down-right: mostly left" },
		{ DIR_DOWN_LEFT, -150, -100, true, "facing down-left: left and a little up" },
		{ DIR_DOWN_LEFT, 100, 150, true, "facing down-left: down and a little right" },
		{ DIR_DOWN_LEFT, -100, -100, false, "facing down-left: on the boundary diagonal" },
		{ DIR_DOWN_LEFT, 100, 100, false, "facing down-left: on the other boundary diagonal" },
		{ 0, 100, 100, true, "no facing sees all round" },
	};
	for ( const cCase &c : cases ) {
		cEnemy enemy( KIND_SOLDIER, EX, EY, c.facing, 1 );
		EXPECT_EQ( enemy.CanSee( EX + c.dx, EY + c.dy, walk.data() ), c.seen ) << c.what;
	}
}

// A street with the enemy at its left end facing right and tavesh 256 pixels away at the right.
TEST_F( PerceptionTest, SightPassesOverEnemiesAndStopsAtBoxesDoorsAndWalls ) {
	struct cCase { char middle; bool seen; const char *what; };
	const cCase cases[] = {
		{ '.', true, "floor" },
		{ 'E', true, "a cell another enemy stands on" },
		{ 'B', false, "a closed box" },
		{ 'D', false, "a closed door" },
		{ '#', false, "a wall" },
	};
	for ( const cCase &c : cases ) {
		std::string street = ".........";
		street[4] = c.middle;
		walk = DrawLayers( { street } ).walk;
		cEnemy enemy( KIND_SOLDIER, 0, 0, DIR_RIGHT, 1 );
		EXPECT_EQ( enemy.CanSee( 8 * CELL_SIZE, 0, walk.data() ), c.seen ) << "across " << c.what;
	}
}

// From (64, 64) towards (93, 96) the samples fall in (2,2), (2,2), (3,3): the goal cell (2,3) is
// stepped over, and the march runs on over open ground until it leaves the grid.
TEST_F( PerceptionTest, MarchThatMissesTheGoalCellEndsAtTheGridEdge ) {
	cEnemy enemy( KIND_SOLDIER, 64, 64, DIR_DOWN_RIGHT, 1 );
	EXPECT_FALSE( enemy.CanSee( 93, 96, walk.data() ) ) << "the goal cell's corner is skipped";
	EXPECT_TRUE( enemy.CanSee( 96, 96, walk.data() ) ) << "a clean diagonal reaches it";
	EXPECT_FALSE( enemy.CanSee( 64, 64, walk.data() ) ) << "a diagonal facing does not see its own corner";
	cEnemy facingDown( KIND_SOLDIER, 64, 64, DIR_DOWN, 1 );
	EXPECT_TRUE( facingDown.CanSee( 64, 64, walk.data() ) ) << "a straight facing sees a player on its corner";
	// From row 73 towards (31, 2368): samples in (0,73), (0,73), (1,74), (1,74), (1,74), then row 75.
	cEnemy bottom( KIND_SOLDIER, 0, WORLD_HEIGHT - 2 * CELL_SIZE, DIR_DOWN, 1 );
	EXPECT_FALSE( bottom.CanSee( 31, WORLD_HEIGHT - CELL_SIZE, walk.data() ) )
		<< "a march that skips its goal in the bottom row leaves the grid";
}

TEST_F( RegularTableTest, PlayerGoingDownEndsAChaseOnACornerAndAnAttackAtOnce ) {
	Frame( soldier, tavesh );
	tavesh.SetDead( true );
	Frame( soldier, tavesh );
	EXPECT_EQ( soldier.GetAiState(), AI_CHASE ) << "down, but the chaser is between cells";
	for ( int32_t frame = 0; frame < CELL_SIZE && !soldier.IsOnCorner(); frame++ ) {
		Frame( soldier, tavesh );
	}
	EXPECT_EQ( soldier.GetAiState(), AI_CHASE ) << "the frame's perception came before its step";
	Frame( soldier, tavesh );
	EXPECT_EQ( soldier.GetAiState(), AI_UNAWARE ) << "down, and the chaser stands on a corner";
	EXPECT_FALSE( soldier.HasTarget() );
	EXPECT_EQ( soldier.GetShotCounter(), 0 ) << "an unaware enemy is ready to fire at the next player it notices";
	tPoint lastSeen;
	soldier.GetLastSeen( lastSeen.first, lastSeen.second );
	EXPECT_EQ( lastSeen, tPoint( -1, -1 ) ) << "an unaware enemy forgets where it saw the player";
	EXPECT_FALSE( soldier.IsMoving() || !soldier.GetPath().IsIdle() ) << "an unaware enemy stands";
	Frame( soldier, tavesh );
	EXPECT_EQ( soldier.GetAiState(), AI_UNAWARE ) << "a player who is down is not noticed again";

	cEnemy attacker( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	cPlayer close( KIND_TAVESH, EX + 64, EY );
	ASSERT_TRUE( FramesUntil( attacker, close, AI_ATTACK, 2 * CELL_SIZE ) );
	close.SetDead( true );
	EXPECT_EQ( Perceived( attacker, close ), AI_UNAWARE ) << "the attacked player went down";
}

// Only lumra hiding starts a search, only lumra showing herself ends it early, and a shot ends it
// at once: the enemy chases whoever it is looking at.
TEST_F( RegularTableTest, LumraHidingTurnsAChaseOrAnAttackIntoASearch ) {
	Frame( soldier, lumra );
	ASSERT_EQ( soldier.GetAiState(), AI_CHASE );
	lumra.ToggleSkill();
	Frame( soldier, lumra );
	EXPECT_EQ( soldier.GetAiState(), AI_SEARCH ) << "lumra hid from the chaser";
	EXPECT_EQ( Perceived( soldier, tavesh ), AI_SEARCH ) << "tavesh seen by a searching enemy is not chased";
	lumra.ToggleSkill();
	EXPECT_EQ( Perceived( soldier, lumra ), AI_CHASE ) << "lumra showed herself in the middle band";
	lumra.ToggleSkill();
	ASSERT_EQ( Perceived( soldier, lumra ), AI_SEARCH );
	soldier.SetWasShot( true );
	EXPECT_EQ( Perceived( soldier, cPlayer( KIND_TAVESH, EX - 300, EY + 64 ) ), AI_CHASE )
		<< "shot while searching, it chases a player behind it";
	EXPECT_FALSE( soldier.WasShot() ) << "the hit has been reacted to";
	EXPECT_EQ( soldier.GetPreviousAiState(), AI_SEARCH );

	cEnemy attacker( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	cPlayer close( KIND_LUMRA, EX + 64, EY );
	ASSERT_TRUE( FramesUntil( attacker, close, AI_ATTACK, 2 * CELL_SIZE ) );
	close.ToggleSkill();
	EXPECT_EQ( Perceived( attacker, close ), AI_SEARCH ) << "lumra hid while attacked";
}

// The searching enemy walks to where it last saw lumra without shooting, then turns about at 0,
// 20 and 40 frames, ends facing away from where it looked first and gives up after 60 frames.
TEST_F( RegularTableTest, SearchWalksToTheLastSightingThenLooksAroundForSixtyFrames ) {
	lumra.SetPosition( EX + 128, EY );
	Frame( soldier, lumra );
	const size_t shots = bullets.size();
	lumra.ToggleSkill();
	lumra.SetPosition( EX + 600, EY );
	ASSERT_TRUE( FramesUntil( soldier, lumra, AI_LOOK_AROUND ) ) << "the search path ended";
	EXPECT_EQ( bullets.size(), shots ) << "a searching enemy does not shoot";
	EXPECT_EQ( GetPositionOf( soldier ), tPoint( EX + 128, EY ) ) << "the search ended where lumra was last seen";
	EXPECT_EQ( soldier.GetLookTimer(), 1 ) << "the frame that ended the search looked around once";
	EXPECT_EQ( soldier.GetDirection(), DIR_LEFT ) << "turned about at once";
	EXPECT_EQ( Perceived( soldier, cPlayer( KIND_TAVESH, EX + 64, EY ) ), AI_LOOK_AROUND )
		<< "tavesh near and in front does not end looking around";
	std::vector<int32_t> facings;
	for ( int32_t frame = 1; frame < 60; frame++ ) {
		Frame( soldier, lumra );
		facings.push_back( soldier.GetDirection() );
	}
	EXPECT_EQ( facings[18], DIR_LEFT ) << "19 frames on";
	EXPECT_EQ( facings[19], DIR_RIGHT ) << "turned about at 20";
	EXPECT_EQ( facings[39], DIR_LEFT ) << "turned about at 40";
	EXPECT_EQ( facings[58], DIR_LEFT ) << "facing away from where it looked first";
	EXPECT_EQ( soldier.GetAiState(), AI_LOOK_AROUND ) << "59 frames later";
	EXPECT_EQ( soldier.GetLookTimer(), 60 );
	Frame( soldier, lumra );
	EXPECT_EQ( soldier.GetAiState(), AI_UNAWARE ) << "after 60 frames of looking around";
}

TEST_F( RegularTableTest, LookingAroundEnemyTakesUpLumraAgain ) {
	lumra.SetPosition( EX + 128, EY );
	Frame( soldier, lumra );
	lumra.ToggleSkill();
	ASSERT_TRUE( FramesUntil( soldier, lumra, AI_LOOK_AROUND ) );
	lumra.ToggleSkill();
	EXPECT_EQ( Perceived( soldier, lumra ), AI_ATTACK ) << "lumra showed herself on the enemy's corner";
}

// The boss only wanders until its health is 100 or less; it ignores being shot, and where a
// soldier would search or stand, it wanders.
TEST_F( BossTableTest, BossWandersUntilWeakenedAndGoesBackToWandering ) {
	cEnemy boss( KIND_BOSS, EX, EY, DIR_RIGHT, 1 );
	ASSERT_EQ( Perceived( boss, tavesh ), AI_BOSS_WANDER );
	EXPECT_EQ( Perceived( boss, tavesh ), AI_BOSS_WANDER ) << "at full health the boss only wanders";
	boss.SetHealth( 101 );
	EXPECT_EQ( Perceived( boss, tavesh ), AI_BOSS_WANDER ) << "101 health";
	boss.SetHealth( 100 );
	EXPECT_EQ( Perceived( boss, tavesh ), AI_CHASE ) << "100 health, player in the middle band";
	boss.SetWasShot( true );
	EXPECT_EQ( Perceived( boss, tavesh ), AI_CHASE );
	EXPECT_TRUE( boss.WasShot() ) << "the boss leaves the flag alone";
	lumra.ToggleSkill();
	EXPECT_EQ( Perceived( boss, lumra ), AI_BOSS_WANDER ) << "lumra hid from the chasing boss";
	ASSERT_EQ( Perceived( boss, tavesh ), AI_CHASE );
	tavesh.SetDead( true );
	EXPECT_EQ( Perceived( boss, tavesh ), AI_BOSS_WANDER ) << "player down, boss on a corner";

	cEnemy attacker( KIND_BOSS, EX, EY, DIR_RIGHT, 1 );
	attacker.SetHealth( 60 );
	cPlayer close( KIND_LUMRA, EX + 50, EY );
	Perceived( attacker, close );
	EXPECT_EQ( Perceived( attacker, close ), AI_ATTACK ) << "weakened, player near, boss on a corner";
	EXPECT_EQ( Perceived( attacker, close ), AI_ATTACK ) << "near and in sight, it keeps attacking";
	close.ToggleSkill();
	EXPECT_EQ( Perceived( attacker, close ), AI_BOSS_WANDER ) << "lumra hid from the attacking boss";
}

}
