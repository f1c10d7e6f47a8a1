// SPDX-License-Identifier: GPL-3.0-or-later
// What enemies do beyond their tables: shots in a chase, aim, the boss's wander and burst, the
// two-player frame and the game's pass over its enemies. The chase's cadence (a shot every 80
// frames, a new plan every 8) and paths asked for play out in the recorded games.

#include <ctime>
#include <utility>
#include <vector>

#include "EnemyField.h"
#include "TestGame.h"
#include "TestMaps.h"
#include "platform/Clock.h"
#include "sound/SoundIds.h"
#include "world/Scene.h"

namespace {

using EnemyActionTest = cEnemyField;

// Out of range a chasing soldier holds its fire; a weakened boss that chases shoots at any range.
TEST_F( EnemyActionTest, ChasingBossShootsAtAnyRangeWhereASoldierHoldsFire ) {
	cEnemy boss( KIND_BOSS, EX, EY + 64, DIR_RIGHT, 1 );
	boss.SetHealth( cEnemy::BOSS_CHASE_HEALTH );
	tavesh.SetPosition( EX + 300, EY );
	Frame( soldier, tavesh );
	Frame( boss, tavesh );
	boss.SetDirection( DIR_RIGHT );		// it turned to walk its wander; it looks back at tavesh
	Frame( boss, tavesh );
	ASSERT_EQ( soldier.GetAiState(), AI_CHASE );
	ASSERT_EQ( boss.GetAiState(), AI_CHASE ) << "noticed, then left its wander at 100 health";
	tavesh.SetPosition( EX + 900, EY );
	soldier.SetShotCounter( 0 );
	boss.SetShotCounter( 0 );
	Frame( soldier, tavesh );
	EXPECT_EQ( soldier.GetAiState(), AI_CHASE ) << "a chase does not end with distance";
	EXPECT_FALSE( fired ) << "tavesh is 900 pixels away";
	Frame( boss, tavesh );
	EXPECT_TRUE( fired ) << "the boss fires anyway";
	std::vector<int32_t> shots;
	for ( int32_t frame = 1; frame <= 40; frame++ ) {
		Frame( boss, tavesh );
		if ( fired ) {
			shots.push_back( frame );
		}
	}
	EXPECT_EQ( shots, ( std::vector<int32_t>{ 20, 40 } ) ) << "the chasing boss fires every 20th frame";
}

// An enemy never aims at its own position: a player standing exactly on it is shot at along the
// enemy's facing; an enemy without a facing holds its fire.
TEST_F( EnemyActionTest, PlayerOnTheEnemysCornerIsShotAlongItsFacing ) {
	cEnemy aiming( KIND_SOLDIER, EX, EY, DIR_DOWN_LEFT, 1 );
	aiming.SetShotCounter( 0 );
	aiming.Shoot( bullets, 0, 0, fired );
	ASSERT_EQ( bullets.size(), 1u );
	ExpectBulletAlong( bullets[0], -1.0f, 1.0f, "down-left" );
	cEnemy lost( KIND_SOLDIER, EX, EY, DIR_IDLE, 1 );
	lost.SetShotCounter( 0 );
	fired = false;
	lost.Shoot( bullets, 0, 0, fired );
	EXPECT_FALSE( fired || bullets.size() != 1u ) << "no facing, no shot";

	cEnemy guard( KIND_MACHINE_GUNNER, EX, EY, DIR_LEFT, 1 );
	guard.SetShotCounter( 0 );
	tavesh.SetPosition( EX, EY );
	Frame( guard, tavesh );
	EXPECT_EQ( guard.GetAiState(), AI_CHASE ) << "a player on the enemy's corner is near and in view";
	ASSERT_EQ( bullets.size(), 2u );
	ExpectBulletAlong( bullets[1], -1.0f, 0.0f, "along the guard's facing" );
}

// With two players and no target, the enemy perceives and acts for the first player (not seen:
// it stays unaware) and then for the second (seen: it chases). A player noticed in the first
// pass is the only one looked at.
TEST_F( EnemyActionTest, SecondPlayerIsNoticedAfterTheFirstIsLookedAt ) {
	tavesh.SetPosition( EX - 200, EY );
	Frame( soldier, { &tavesh, &lumra } );
	EXPECT_EQ( soldier.GetTarget(), &lumra );
	EXPECT_EQ( soldier.GetPreviousAiState(), AI_UNAWARE );
	EXPECT_TRUE( fired ) << "the second pass fired at once";
	ASSERT_EQ( bullets.size(), 1u );
	ExpectBulletAlong( bullets[0], 199.0f, 0.0f, "at the second player" );
	Frame( soldier, { &tavesh, &lumra } );
	EXPECT_EQ( GetPositionOf( soldier ).first, EX + 2 ) << "with a target only one step runs per frame";

	cEnemy other( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	Frame( other, { &lumra, &tavesh } );
	EXPECT_EQ( other.GetTarget(), &lumra ) << "the second player was looked at after the first was noticed";
	EXPECT_EQ( GetPositionOf( other ).first, EX + 1 ) << "one step for the player noticed first";
}

// The boss's area here is two cells, (0,0) and (1,0): it walks to the other one, fires a burst
// where it stops and sets off back.
class BossWanderTest : public cEnemyField {
protected:
	BossWanderTest() {
		SetClock( &clock );
		Perceived( boss, cPlayer( KIND_TAVESH, 200, 0 ) );
		walk = DrawLayers( { ".." } ).walk;
	}
	~BossWanderTest() override { SetClock( nullptr ); }

	cManualClock			clock{ 0, 1700000000 };
	cEnemy					boss{ KIND_BOSS, 0, 0, DIR_RIGHT, 1 };
};

TEST_F( BossWanderTest, WalksToItsCellThenFiresAnEightWayBurst ) {
	ASSERT_EQ( boss.GetAiState(), AI_BOSS_WANDER );
	ASSERT_TRUE( boss.IsWanderPending() ) << "a new boss has yet to choose where to go";
	Frame( boss, tavesh );
	EXPECT_FALSE( boss.IsWanderPending() );
	EXPECT_FALSE( boss.HasTarget() ) << "a wandering boss is after no one";
	EXPECT_EQ( GetPositionOf( boss ).first, 2 ) << "two pixels towards (1,0)";
	for ( int32_t frame = 2; frame < 16; frame++ ) {
		Frame( boss, tavesh );
		ASSERT_TRUE( bullets.empty() ) << "no burst while walking, frame " << frame;
	}
	Frame( boss, tavesh );
	EXPECT_TRUE( fired );
	ASSERT_EQ( bullets.size(), 8u );
	const float vectors[8][2] = { { 1, 0 }, { -1, 0 }, { 0, 1 }, { 0, -1 }, { 1, 1 }, { 1, -1 }, { -1, 1 }, { -1, -1 } };
	for ( size_t i = 0; i < 8; i++ ) {
		ExpectBulletAlong( bullets[i], vectors[i][0], vectors[i][1], "burst order" );
		EXPECT_EQ( GetPositionOf( bullets[i] ), std::make_pair( 38.0f, 6.0f ) ) << "fired from (1,0)";
		EXPECT_TRUE( bullets[i].GetWeapon() == WEAPON_MACHINE_GUN && bullets[i].GetOwnerKind() == KIND_BOSS )
			<< "the boss's machine gun";
	}
	EXPECT_EQ( GetPositionOf( boss ).first, 30 ) << "and at once on its way back to (0,0)";
	EXPECT_EQ( boss.GetDirection(), DIR_LEFT );
	EXPECT_EQ( boss.GetShotCounter(), 1 ) << "the burst leaves the shot counter alone";
}

// With two players the boss runs both steps twice a frame: 4 pixels a frame. The burst at the end
// of the first way falls in the second pass and is heard; the one at the end of the way back falls
// in the first pass, whose fired flag the second pass clears.
TEST_F( BossWanderTest, WithTwoPlayersItWalksTwiceAFrame ) {
	Frame( boss, { &tavesh, &lumra } );
	EXPECT_EQ( GetPositionOf( boss ).first, 4 );
	for ( int32_t frame = 2; frame <= 8; frame++ ) {
		Frame( boss, { &tavesh, &lumra } );
	}
	EXPECT_EQ( bullets.size(), 8u ) << "arrived at (1,0) in frame 8";
	EXPECT_TRUE( fired );
	for ( int32_t frame = 9; frame <= 16; frame++ ) {
		Frame( boss, { &tavesh, &lumra } );
	}
	EXPECT_EQ( bullets.size(), 16u ) << "back at (0,0) in frame 16";
	EXPECT_FALSE( fired ) << "the second pass cleared the flag of the first pass's burst";
}

TEST_F( BossWanderTest, BossWhoseAreaOffersNoOtherCellStands ) {
	walk = DrawLayers( { "." } ).walk;
	for ( int32_t frame = 0; frame < 10; frame++ ) {
		Frame( boss, tavesh );
	}
	EXPECT_TRUE( bullets.empty() ) << "no burst while it has nowhere to go";
	EXPECT_TRUE( boss.IsWanderPending() ) << "it keeps looking for a cell";
	EXPECT_FALSE( boss.IsMoving() || !boss.GetPath().IsIdle() ) << "it stands";
	EXPECT_EQ( GetPositionOf( boss ), tPoint( 0, 0 ) );
}

// Whatever the second, the choice is plain floor of columns 0 to 18 and rows 0 to 13 other than
// the boss's own cell; cells other enemies stand on are left out.
TEST_F( BossWanderTest, WanderCellIsFloorOfTheAreaAndNotTheBosssOwn ) {
	const std::vector<int32_t> blocked = DrawLayers( { "..E" } ).walk;
	std::vector<int32_t> town = OpenWalk();
	town[CellIndex( 3, 3 )] = WALK_BOX;
	for ( std::time_t second = 1700000000; second < 1700000020; second++ ) {
		clock.SetCalendarTime( second );
		cEnemy pinned( KIND_BOSS, 0, 0, DIR_RIGHT, 1 );
		ASSERT_TRUE( pinned.PickWanderCell( blocked.data() ) );
		tPoint cell;
		pinned.GetPath().GetTarget( cell.first, cell.second );
		EXPECT_EQ( cell, tPoint( 1, 0 ) ) << "second " << second << ": not its own cell nor an enemy's";

		cEnemy roaming( KIND_BOSS, 5 * CELL_SIZE, 5 * CELL_SIZE, DIR_RIGHT, 1 );
		ASSERT_TRUE( roaming.PickWanderCell( town.data() ) );
		roaming.GetPath().GetTarget( cell.first, cell.second );
		EXPECT_TRUE( cell.first <= 18 && cell.second <= 13 ) << cell.first << "," << cell.second << " is outside the area";
		EXPECT_NE( cell, tPoint( 5, 5 ) ) << "its own cell";
		EXPECT_NE( cell, tPoint( 3, 3 ) ) << "a box";
	}
}

// The game's pass: every enemy runs on the scene's walk layer and a shot is heard by its weapon.
TEST( EnemiesUpdateTest, EachEnemyRunsAndItsShotIsHeard ) {
	cTestGame game( MakeScene( { "..........", "..........", "..........", ".........." } ) );
	cPlayer &tavesh = game.AddPlayer( KIND_TAVESH, 5 * CELL_SIZE, 0 );
	cEnemy &soldier = game.AddEnemy( KIND_SOLDIER, 0, 0, DIR_RIGHT );
	cEnemy &gunner = game.AddEnemy( KIND_MACHINE_GUNNER, 9 * CELL_SIZE, 3 * CELL_SIZE, DIR_LEFT );
	cEnemy &sleeper = game.AddEnemy( KIND_SOLDIER, 0, 3 * CELL_SIZE, DIR_DOWN );
	soldier.SetShotCounter( 0 );	// as after any frame unaware
	gunner.SetShotCounter( 0 );
	game.GetGame().UpdateEnemies();
	EXPECT_EQ( soldier.GetTarget(), &tavesh );
	EXPECT_EQ( gunner.GetTarget(), &tavesh );
	EXPECT_EQ( sleeper.GetAiState(), AI_UNAWARE ) << "facing away";
	EXPECT_EQ( game.GetPlayedSounds(), ( std::vector<int>{ SOUND_ENEMY_SHOT, SOUND_MACHINE_GUN } ) );
	EXPECT_EQ( game.GetGame().GetBullets()->size(), 2u );
	game.ForgetSounds();
	game.GetGame().UpdateEnemies();
	EXPECT_TRUE( game.GetPlayedSounds().empty() ) << "both are cooling down";
}

}
