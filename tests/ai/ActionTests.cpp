// What enemies do in each alert state: stand, chase and shoot, attack, search, look around, the
// boss's wander and burst, the two-player frame, and the game's pass over its enemies.

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

#include "TestGame.h"
#include "TestMaps.h"
#include "actors/Bullet.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "platform/Clock.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t EX = 640;		// the enemy's corner on open ground
const int32_t EY = 640;

std::vector<int32_t> OpenWalk() {
	return std::vector<int32_t>( MAP_CELLS, WALK_FLOOR );
}

void ExpectBulletAlong( const cBullet &bullet, float dx, float dy, const char *what ) {
	float bx = 0.0f;
	float by = 0.0f;
	bullet.GetDirection( bx, by );
	const float length = std::sqrt( dx * dx + dy * dy );
	EXPECT_NEAR( bx, dx / length, 1e-4f ) << what;
	EXPECT_NEAR( by, dy / length, 1e-4f ) << what;
}

// One enemy on open ground and the frames of the game for it.
class EnemyActionTest : public testing::Test {
protected:
	EnemyActionTest() : walk( OpenWalk() ) {}

	void Frame( cEnemy &enemy, cPlayer &player ) { Frame( enemy, { &player } ); }
	void Frame( cEnemy &enemy, const tPlayerPointers &players ) {
		fired = false;
		enemy.Update( players, bullets, walk.data(), fired );
	}

	std::vector<int32_t>	walk;
	tBulletList				bullets;
	bool					fired = false;
};

TEST_F( EnemyActionTest, NoticedPlayerIsChasedAndShotAtOnceThenEveryShotPeriod ) {
	cEnemy soldier( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	soldier.SetShotCounter( 0 );	// as after any frame unaware
	cPlayer tavesh( KIND_TAVESH, EX + 200, EY + 40 );
	Frame( soldier, tavesh );
	ASSERT_EQ( soldier.GetAiState(), AI_CHASE );
	EXPECT_EQ( soldier.GetTarget(), &tavesh );
	EXPECT_TRUE( soldier.IsMoving() );
	int32_t x = 0;
	int32_t y = 0;
	soldier.GetPosition( x, y );
	EXPECT_EQ( x, EX + 1 ) << "one pixel along the path to tavesh's cell";
	EXPECT_EQ( y, EY + 1 ) << "the path's first step is diagonal";
	ASSERT_EQ( bullets.size(), 1u ) << "an enemy that notices a player fires in the same frame";
	EXPECT_TRUE( fired );
	float bx = 0.0f;
	float by = 0.0f;
	bullets[0].GetPosition( bx, by );
	EXPECT_EQ( bx, static_cast<float>( x + cEnemy::MUZZLE_OFFSET ) );
	EXPECT_EQ( by, static_cast<float>( y + cEnemy::MUZZLE_OFFSET ) );
	ExpectBulletAlong( bullets[0], static_cast<float>( EX + 200 - x ), static_cast<float>( EY + 40 - y ),
					   "aimed from the new position" );
	EXPECT_EQ( bullets[0].GetWeapon(), WEAPON_ENEMY_GUN );
	EXPECT_EQ( bullets[0].GetSpeed(), 2 ) << "a soldier's shot flies 2 pixels a frame";
	for ( int32_t frame = 2; frame <= 80; frame++ ) {
		Frame( soldier, tavesh );
		ASSERT_FALSE( fired ) << "frame " << frame << " is within the cool-down";
	}
	Frame( soldier, tavesh );
	EXPECT_TRUE( fired ) << "the 80th frame after a shot fires again";
	EXPECT_EQ( bullets.size(), 2u );
}

TEST_F( EnemyActionTest, ChasePlansAtOnceThenEveryEighthFrame ) {
	cEnemy gunner( KIND_MACHINE_GUNNER, EX, EY, DIR_RIGHT, 1 );
	cPlayer tavesh( KIND_TAVESH, EX + 300, EY );
	std::vector<int32_t> timers;
	for ( int32_t frame = 1; frame <= 10; frame++ ) {
		Frame( gunner, tavesh );
		timers.push_back( gunner.GetReplanTimer() );
	}
	EXPECT_EQ( timers, ( std::vector<int32_t>{ 1, 2, 3, 4, 5, 6, 7, 8, 1, 2 } ) );
	int32_t targetX = 0;
	int32_t targetY = 0;
	gunner.GetPath().GetTarget( targetX, targetY );
	EXPECT_EQ( targetX, ( EX + 300 ) / CELL_SIZE );
	tavesh.SetPosition( EX + 300, EY + 200 );
	for ( int32_t frame = 11; frame <= 17; frame++ ) {
		Frame( gunner, tavesh );
	}
	int32_t pendingX = 0;
	int32_t pendingY = 0;
	gunner.GetPath().GetPending( pendingX, pendingY );
	EXPECT_EQ( pendingX, -1 ) << "tavesh moved to another row of the same column: no new destination";
}

TEST_F( EnemyActionTest, AttackingEnemyStandsFacesThePlayersCellAndShoots ) {
	cEnemy soldier( KIND_SOLDIER, EX, EY, DIR_UP, 1 );
	cPlayer tavesh( KIND_TAVESH, EX + 64, EY - 40 );
	Frame( soldier, tavesh );
	ASSERT_EQ( soldier.GetAiState(), AI_CHASE );
	for ( int32_t frame = 0; frame < CELL_SIZE && soldier.GetAiState() != AI_ATTACK; frame++ ) {
		Frame( soldier, tavesh );
	}
	ASSERT_EQ( soldier.GetAiState(), AI_ATTACK );
	EXPECT_FALSE( soldier.IsMoving() );
	EXPECT_TRUE( soldier.GetPath().IsIdle() );
	int32_t column = 0;
	int32_t row = 0;
	soldier.GetCellCorner( column, row );
	EXPECT_EQ( soldier.GetDirection(), DIR_UP_RIGHT ) << "facing the cell of tavesh from (" << column << "," << row << ")";
	const size_t shots = bullets.size();
	soldier.SetShotCounter( 0 );
	Frame( soldier, tavesh );
	ASSERT_EQ( bullets.size(), shots + 1 );
	int32_t x = 0;
	int32_t y = 0;
	soldier.GetPosition( x, y );
	ExpectBulletAlong( bullets.back(), static_cast<float>( EX + 64 - x ), static_cast<float>( EY - 40 - y ), "at tavesh" );
}

// Once a player is out of range, a chasing soldier holds its fire; a weakened boss that chases
// shoots at any range.
TEST_F( EnemyActionTest, ChasingBossShootsAtAnyRangeWhereASoldierHoldsFire ) {
	cEnemy soldier( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	cEnemy boss( KIND_BOSS, EX, EY + 64, DIR_RIGHT, 1 );
	boss.SetHealth( cEnemy::BOSS_CHASE_HEALTH );
	cPlayer tavesh( KIND_TAVESH, EX + 300, EY );
	Frame( soldier, tavesh );
	Frame( boss, tavesh );
	boss.SetDirection( DIR_RIGHT );		// it turned to walk its wander; it looks back at tavesh
	Frame( boss, tavesh );
	ASSERT_EQ( soldier.GetAiState(), AI_CHASE );
	ASSERT_EQ( boss.GetAiState(), AI_CHASE ) << "noticed, then left its wander at 100 health";
	tavesh.SetPosition( EX + 900, EY );
	soldier.SetShotCounter( 0 );
	boss.SetShotCounter( 0 );
	bullets.clear();
	Frame( soldier, tavesh );
	EXPECT_EQ( soldier.GetAiState(), AI_CHASE ) << "a chase does not end with distance";
	EXPECT_FALSE( fired ) << "tavesh is 900 pixels away";
	Frame( boss, tavesh );
	EXPECT_TRUE( fired ) << "the boss fires anyway";
	EXPECT_EQ( bullets.size(), 1u );
}

// An enemy never aims at its own position: a player standing exactly on it is shot at along the
// enemy's facing; an enemy without a facing holds its fire.
TEST_F( EnemyActionTest, PlayerOnTheEnemysCornerIsShotAlongItsFacing ) {
	cEnemy soldier( KIND_SOLDIER, EX, EY, DIR_DOWN_LEFT, 1 );
	soldier.SetShotCounter( 0 );
	soldier.Shoot( bullets, 0, 0, fired );
	ASSERT_EQ( bullets.size(), 1u );
	EXPECT_TRUE( fired );
	ExpectBulletAlong( bullets[0], -1.0f, 1.0f, "down-left" );

	cEnemy lost( KIND_SOLDIER, EX, EY, DIR_IDLE, 1 );
	lost.SetShotCounter( 0 );
	fired = false;
	lost.Shoot( bullets, 0, 0, fired );
	EXPECT_EQ( bullets.size(), 1u ) << "no facing, no shot";
	EXPECT_FALSE( fired );

	cEnemy guard( KIND_MACHINE_GUNNER, EX, EY, DIR_LEFT, 1 );
	guard.SetShotCounter( 0 );
	cPlayer tavesh( KIND_TAVESH, EX, EY );
	Frame( guard, tavesh );
	EXPECT_EQ( guard.GetAiState(), AI_CHASE ) << "a player on the enemy's corner is near and in view";
	ASSERT_EQ( bullets.size(), 2u );
	ExpectBulletAlong( bullets[1], -1.0f, 0.0f, "along the guard's facing" );
}

TEST_F( EnemyActionTest, UnawareEnemyForgetsItsChase ) {
	cEnemy soldier( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	cPlayer tavesh( KIND_TAVESH, EX + 200, EY );
	Frame( soldier, tavesh );
	tavesh.SetDead( true );
	for ( int32_t frame = 0; frame < 2 * CELL_SIZE && soldier.GetAiState() != AI_UNAWARE; frame++ ) {
		Frame( soldier, tavesh );
	}
	ASSERT_EQ( soldier.GetAiState(), AI_UNAWARE );
	EXPECT_FALSE( soldier.HasTarget() );
	EXPECT_EQ( soldier.GetShotCounter(), 0 ) << "ready to fire at the next player it notices";
	int32_t lastX = 0;
	int32_t lastY = 0;
	soldier.GetLastSeen( lastX, lastY );
	EXPECT_EQ( lastX, -1 );
	EXPECT_EQ( lastY, -1 );
	EXPECT_FALSE( soldier.IsMoving() );
	EXPECT_TRUE( soldier.GetPath().IsIdle() );
	EXPECT_TRUE( soldier.IsOnCorner() );
}

// lumra hides while chased: the enemy walks to where it last saw her without shooting, then
// turns about at 0, 20 and 40 frames and ends facing away from where it looked first.
TEST_F( EnemyActionTest, SearchWalksWithoutShootingAndLookingAroundTurnsThreeTimes ) {
	cEnemy soldier( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	cPlayer lumra( KIND_LUMRA, EX + 128, EY );
	Frame( soldier, lumra );
	const size_t shots = bullets.size();
	lumra.ToggleSkill();
	lumra.SetPosition( EX + 600, EY );
	int32_t frames = 0;
	for ( ; frames < 400 && soldier.GetAiState() != AI_LOOK_AROUND; frames++ ) {
		Frame( soldier, lumra );
		ASSERT_NE( soldier.GetAiState(), AI_CHASE );
	}
	ASSERT_EQ( soldier.GetAiState(), AI_LOOK_AROUND );
	EXPECT_EQ( bullets.size(), shots ) << "a searching enemy does not shoot";
	int32_t x = 0;
	int32_t y = 0;
	soldier.GetPosition( x, y );
	EXPECT_EQ( x, EX + 128 ) << "the search ended on the cell where lumra was last seen";
	EXPECT_EQ( soldier.GetDirection(), DIR_LEFT ) << "turned about at once";
	std::vector<int32_t> facings;
	for ( int32_t frame = 1; frame < 60; frame++ ) {
		Frame( soldier, lumra );
		facings.push_back( soldier.GetDirection() );
	}
	EXPECT_EQ( facings[18], DIR_LEFT ) << "19 frames on";
	EXPECT_EQ( facings[19], DIR_RIGHT ) << "turned about at 20";
	EXPECT_EQ( facings[39], DIR_LEFT ) << "turned about at 40";
	EXPECT_EQ( facings[58], DIR_LEFT ) << "facing away from where it looked first";
	EXPECT_FALSE( soldier.IsMoving() );
	Frame( soldier, lumra );
	EXPECT_EQ( soldier.GetAiState(), AI_UNAWARE );
}

// With two players and no target, the enemy perceives and acts for the first player (not seen:
// it stays unaware and resets) and then for the second (seen: it chases).
TEST_F( EnemyActionTest, SecondPlayerIsNoticedAfterTheFirstIsLookedAt ) {
	cEnemy soldier( KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 );
	cPlayer behind( KIND_TAVESH, EX - 200, EY );
	cPlayer ahead( KIND_LUMRA, EX + 200, EY );
	Frame( soldier, { &behind, &ahead } );
	EXPECT_EQ( soldier.GetAiState(), AI_CHASE );
	EXPECT_EQ( soldier.GetPreviousAiState(), AI_UNAWARE );
	EXPECT_EQ( soldier.GetTarget(), &ahead );
	EXPECT_TRUE( fired ) << "the second pass fired at once";
	ASSERT_EQ( bullets.size(), 1u );
	ExpectBulletAlong( bullets[0], 199.0f, 0.0f, "at the second player" );
	Frame( soldier, { &behind, &ahead } );
	int32_t x = 0;
	int32_t y = 0;
	soldier.GetPosition( x, y );
	EXPECT_EQ( x, EX + 2 ) << "with a target only one step runs per frame";
}

// The boss's area here is two cells, (0,0) and (1,0): it walks to the other one, fires a burst
// where it stops and sets off back.
class BossWanderTest : public testing::Test {
protected:
	BossWanderTest() : clock( 0, 1700000000 ), open( OpenWalk() ), area( DrawLayers( { ".." } ).walk ),
		boss( KIND_BOSS, 0, 0, DIR_RIGHT, 1 ), tavesh( KIND_TAVESH, 200, 0 ) {
		SetClock( &clock );
		boss.PerceiveBoss( tavesh, open.data() );
	}
	~BossWanderTest() override { SetClock( nullptr ); }

	void Frame( const tPlayerPointers &players ) {
		fired = false;
		boss.Update( players, bullets, area.data(), fired );
	}

	cManualClock			clock;
	std::vector<int32_t>	open;
	std::vector<int32_t>	area;
	cEnemy					boss;
	cPlayer					tavesh;
	tBulletList				bullets;
	bool					fired = false;
};

TEST_F( BossWanderTest, WalksToItsCellThenFiresAnEightWayBurst ) {
	ASSERT_EQ( boss.GetAiState(), AI_BOSS_WANDER );
	ASSERT_TRUE( boss.IsWanderPending() ) << "a new boss has yet to choose where to go";
	Frame( { &tavesh } );
	EXPECT_FALSE( boss.IsWanderPending() );
	EXPECT_FALSE( boss.HasTarget() ) << "a wandering boss is after no one";
	int32_t x = 0;
	int32_t y = 0;
	boss.GetPosition( x, y );
	EXPECT_EQ( x, 2 ) << "two pixels towards (1,0)";
	for ( int32_t frame = 2; frame < 16; frame++ ) {
		Frame( { &tavesh } );
		ASSERT_TRUE( bullets.empty() ) << "no burst while walking, frame " << frame;
	}
	Frame( { &tavesh } );
	EXPECT_TRUE( fired );
	ASSERT_EQ( bullets.size(), 8u );
	const float vectors[8][2] = { { 1, 0 }, { -1, 0 }, { 0, 1 }, { 0, -1 }, { 1, 1 }, { 1, -1 }, { -1, 1 }, { -1, -1 } };
	for ( size_t i = 0; i < 8; i++ ) {
		ExpectBulletAlong( bullets[i], vectors[i][0], vectors[i][1], "burst order" );
		float bx = 0.0f;
		float by = 0.0f;
		bullets[i].GetPosition( bx, by );
		EXPECT_EQ( bx, 38.0f ) << "fired from (1,0)";
		EXPECT_EQ( by, 6.0f );
		EXPECT_EQ( bullets[i].GetWeapon(), WEAPON_MACHINE_GUN );
		EXPECT_EQ( bullets[i].GetOwnerKind(), KIND_BOSS );
		EXPECT_EQ( bullets[i].GetSpeed(), 4 );
	}
	boss.GetPosition( x, y );
	EXPECT_EQ( x, 30 ) << "and at once on its way back to (0,0)";
	EXPECT_EQ( boss.GetDirection(), DIR_LEFT );
	EXPECT_EQ( boss.GetShotCounter(), 1 ) << "the burst leaves the shot counter alone";
}

// With two players the boss runs both steps twice a frame: 4 pixels a frame. The burst at the end
// of the first way falls in the second pass and is heard; the one at the end of the way back falls
// in the first pass, whose fired flag the second pass clears.
TEST_F( BossWanderTest, WithTwoPlayersItWalksTwiceAFrame ) {
	cPlayer lumra( KIND_LUMRA, 300, 0 );
	Frame( { &tavesh, &lumra } );
	int32_t x = 0;
	int32_t y = 0;
	boss.GetPosition( x, y );
	EXPECT_EQ( x, 4 );
	for ( int32_t frame = 2; frame <= 8; frame++ ) {
		Frame( { &tavesh, &lumra } );
	}
	EXPECT_EQ( bullets.size(), 8u ) << "arrived at (1,0) in frame 8";
	EXPECT_TRUE( fired );
	for ( int32_t frame = 9; frame <= 16; frame++ ) {
		Frame( { &tavesh, &lumra } );
	}
	EXPECT_EQ( bullets.size(), 16u ) << "back at (0,0) in frame 16";
	EXPECT_FALSE( fired ) << "the second pass cleared the flag of the first pass's burst";
}

TEST_F( BossWanderTest, BossWhoseAreaOffersNoOtherCellStands ) {
	const std::vector<int32_t> cell = DrawLayers( { "." } ).walk;
	for ( int32_t frame = 0; frame < 10; frame++ ) {
		fired = false;
		boss.Update( { &tavesh }, bullets, cell.data(), fired );
	}
	EXPECT_TRUE( bullets.empty() ) << "no burst while it has nowhere to go";
	EXPECT_FALSE( fired );
	EXPECT_TRUE( boss.GetPath().IsIdle() );
	EXPECT_TRUE( boss.IsWanderPending() ) << "it keeps looking for a cell";
	EXPECT_FALSE( boss.IsMoving() );
	int32_t x = 0;
	int32_t y = 0;
	boss.GetPosition( x, y );
	EXPECT_EQ( x, 0 );
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
		int32_t column = 0;
		int32_t row = 0;
		pinned.GetPath().GetTarget( column, row );
		EXPECT_FALSE( pinned.GetPath().IsIdle() ) << "second " << second << ": the choice was an enemy's cell";
		EXPECT_EQ( column, 1 );

		cEnemy roaming( KIND_BOSS, 5 * CELL_SIZE, 5 * CELL_SIZE, DIR_RIGHT, 1 );
		ASSERT_TRUE( roaming.PickWanderCell( town.data() ) );
		roaming.GetPath().GetTarget( column, row );
		EXPECT_TRUE( column < cEnemy::BOSS_AREA_COLUMNS && row < cEnemy::BOSS_AREA_ROWS ) << column << "," << row;
		EXPECT_FALSE( column == 5 && row == 5 ) << "its own cell";
		EXPECT_FALSE( column == 3 && row == 3 ) << "a box";
	}
}

TEST( EnemyPathTest, RequestPlansWhenIdleAndRedirectsWhenMoving ) {
	const std::vector<int32_t> walk = OpenWalk();
	cEnemy soldier( KIND_SOLDIER, EX, EY, DIR_UP, 1 );
	soldier.RequestPath( walk.data(), 20, 25 );
	EXPECT_EQ( soldier.GetDirection(), DIR_DOWN ) << "turned towards the first step";
	soldier.FollowPath();
	EXPECT_TRUE( soldier.IsMoving() );
	soldier.RequestPath( walk.data(), 23, 28 );
	int32_t pendingX = 0;
	int32_t pendingY = 0;
	soldier.GetPath().GetPending( pendingX, pendingY );
	EXPECT_EQ( pendingX, 23 ) << "a moving path takes the new goal at its next corner";
	for ( int32_t frame = 0; frame < 400 && soldier.IsMoving(); frame++ ) {
		soldier.FollowPath();
	}
	int32_t x = 0;
	int32_t y = 0;
	soldier.GetPosition( x, y );
	EXPECT_EQ( x, 23 * CELL_SIZE );
	EXPECT_EQ( y, 28 * CELL_SIZE );
	EXPECT_TRUE( soldier.GetPath().IsIdle() ) << "arrival stops the path";
	int32_t column = 0;
	int32_t row = 0;
	soldier.GetCellCorner( column, row );
	EXPECT_EQ( column, 23 );
	EXPECT_EQ( row, 28 );
	soldier.FollowPath();
	EXPECT_FALSE( soldier.IsMoving() );
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
