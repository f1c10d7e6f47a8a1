// SPDX-License-Identifier: GPL-3.0-or-later
// The player and enemy objects: firing cadence, skill energy on the clock, and the sprite frame
// with its walk animation.

#include <gtest/gtest.h>

#include <vector>

#include "TestMaps.h"
#include "Where.h"
#include "actors/Bullet.h"
#include "actors/GameState.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "platform/Clock.h"
#include "world/Scene.h"

namespace {

// A manual clock for one test, put back afterwards, and the screen the characters are drawn on.
class CharacterTest : public ::testing::Test {
protected:
	void SetUp() override {
		SetClock( &clock );
	}
	void TearDown() override {
		SetClock( nullptr );
	}
	// Which of count steps with the fire key held create a bullet.
	std::vector<int> FiringSteps( cPlayer &player, int count ) {
		std::vector<int> fired;
		for ( int step = 0; step < count; step++ ) {
			bool shot = false;
			player.Shoot( bullets, shot );
			EXPECT_EQ( player.HasJustShot(), shot ) << "justShot follows the shot, step " << step;
			if ( shot ) {
				fired.push_back( step );
			}
		}
		return fired;
	}
	int32_t EnergyAfter( cPlayer &player, uint32_t msec ) {
		clock.Advance( msec );
		player.UpdateSkill();
		return player.GetEnergy();
	}
	cRect Draw( cCharacter &character ) {
		cRect rect = { -1, -1, -1, -1 };
		character.Animate( screen );
		character.GetDrawInfo( rect, screenX, screenY, *scene );
		return rect;
	}
	// The sheet column shown in each of count steps.
	std::vector<int32_t> Columns( cCharacter &character, int count ) {
		std::vector<int32_t> columns;
		for ( int i = 0; i < count; i++ ) {
			columns.push_back( ( Draw( character ).left % 96 ) / 32 );
		}
		return columns;
	}

	cManualClock clock { 1000 };
	int32_t screen = STATE_PLAYING;
	std::unique_ptr<cScene> scene = MakeOpenScene();
	tBulletList bullets;
	int32_t screenX = 0;
	int32_t screenY = 0;
};

TEST_F( CharacterTest, HeldFireShootsEveryTwentiethStepAFreshPressAtOnceFromTheBodysCentre ) {
	cPlayer lumra( KIND_LUMRA, 100, 200 );
	lumra.SetDirection( DIR_DOWN_LEFT );
	EXPECT_EQ( FiringSteps( lumra, 40 ), ( std::vector<int>{ 19, 39 } ) ) << "a new player's counter starts at 1";
	lumra.ReleaseTrigger();
	EXPECT_EQ( FiringSteps( lumra, 41 ), ( std::vector<int>{ 0, 20, 40 } ) );
	for ( int press = 0; press < 3; press++ ) {
		lumra.ReleaseTrigger();
		EXPECT_EQ( FiringSteps( lumra, 1 ), std::vector<int>{ 0 } ) << "press " << press;
	}
	ASSERT_EQ( bullets.size(), 8u );
	EXPECT_EQ( Where( bullets[0] ), "(106, 206)" ) << "the 20-pixel shot is centred on the 32-pixel body";
	float dx = 0.0f;
	float dy = 0.0f;
	bullets[0].GetDirection( dx, dy );
	EXPECT_TRUE( dx == -1.0f && dy == 1.0f ) << "along the facing, down-left";
	EXPECT_TRUE( bullets[0].GetWeapon() == WEAPON_LUMRA && bullets[0].GetOwnerKind() == KIND_LUMRA );
}

TEST_F( CharacterTest, CellIsTheOneUnderTheBodysCentre ) {
	const int32_t cases[][4] = { { 15, 15, 0, 0 }, { 16, 16, 1, 1 }, { 48, 79, 2, 2 } };
	for ( const int32_t *c : cases ) {
		int32_t cx = -1;
		int32_t cy = -1;
		cPlayer( KIND_TAVESH, c[0], c[1] ).GetCell( cx, cy );
		EXPECT_TRUE( cx == c[2] && cy == c[3] ) << "(" << c[0] << ", " << c[1] << ") gave (" << cx << ", " << cy << ")";
	}
}

// The clock starts 1024 msec before it wraps around.
TEST_F( CharacterTest, SkillSpendsEnergyByTheClockAndRefillsWhileOff ) {
	clock.SetTickCount( 0xFFFFFC00u );
	cPlayer player( KIND_TAVESH, 0, 0 );
	player.ToggleSkill();
	EXPECT_EQ( EnergyAfter( player, 2024 ), 976 ) << "2024 msec spent, across the clock's wrap-around";
	EXPECT_EQ( EnergyAfter( player, 2500 ), 0 );
	EXPECT_FALSE( player.IsSkillActive() ) << "an empty skill switches itself off";
	EXPECT_EQ( EnergyAfter( player, 1200 ), 1200 ) << "it refills at the pace it is spent";
	player.SetEnergy( 2990 );
	EXPECT_EQ( EnergyAfter( player, 25 ), 3000 ) << "the refill stops at the maximum, not 3015";
}

TEST_F( CharacterTest, SpriteRowFollowsFacingSkillAndBeingDown ) {
	cPlayer lumra( KIND_LUMRA, 300, 2000 );
	const cRect first = Draw( lumra );
	EXPECT_TRUE( screenX == 300 && screenY == 80 ) << "the world position less the camera's (0, 1920)";
	EXPECT_TRUE( first.left == 128 && first.right == 160 && first.top == 96 && first.bottom == 128 )
		<< "lumra's band starts at 96; column 1, facing up: (" << first.left << ", " << first.top << ")";
	const int32_t rows[][2] = { { DIR_DOWN, 0 }, { DIR_LEFT, 32 }, { DIR_UP_LEFT, 32 }, { DIR_DOWN_LEFT, 32 },
								{ DIR_RIGHT, 64 }, { DIR_UP_RIGHT, 64 }, { DIR_DOWN_RIGHT, 64 } };
	for ( const int32_t *row : rows ) {
		lumra.SetDirection( row[0] );
		EXPECT_EQ( Draw( lumra ).top, row[1] ) << "facing " << row[0];
	}
	lumra.SetDirection( DIR_UP );
	lumra.ToggleSkill();
	EXPECT_EQ( Draw( lumra ).top, 224 ) << "the skill's rows start at 128";
	lumra.SetDead( true );
	EXPECT_EQ( Draw( lumra ).top, 256 ) << "a player who is down has one row";
	lumra.SetDead( false );
	lumra.SetDirection( 0 );
	EXPECT_EQ( Draw( lumra ).top, -1 ) << "no facing leaves the rectangle as it was";
}

TEST_F( CharacterTest, WalkCyclesOneTwoOneZeroSlowerWhenDownFrozenByVictory ) {
	cPlayer tavesh( KIND_TAVESH, 0, 0 );
	tavesh.SetMoving( true );
	std::vector<int32_t> walk;
	for ( int32_t column : { 1, 2, 1, 0, 1, 2 } ) {
		walk.insert( walk.end(), 5, column );
	}
	EXPECT_EQ( Columns( tavesh, 30 ), walk );
	tavesh.SetMoving( false );
	Columns( tavesh, 1 );
	EXPECT_EQ( tavesh.GetAnimFrame(), 1 ) << "standing still shows column 1";
	tavesh.SetDead( true );
	const std::vector<int32_t> down = Columns( tavesh, 26 );
	EXPECT_TRUE( down[24] == 1 && down[25] == 0 ) << "25 draws per column while lying still";
	tavesh.SetMoving( true );
	Columns( tavesh, 5 );
	EXPECT_EQ( tavesh.GetAnimFrame(), 1 ) << "still flagged as moving, it cycles at the walking pace";
	screen = STATE_VICTORY;
	EXPECT_EQ( Columns( tavesh, 6 ), std::vector<int32_t>( 6, 1 ) ) << "the victory freezes the players";
	screen = STATE_DEFEAT;
	Columns( tavesh, 5 );
	EXPECT_EQ( tavesh.GetAnimFrame(), 2 ) << "the defeat does not";
}

// Enemies have no skill and no down row; they freeze on the defeat instead of the victory.
TEST_F( CharacterTest, EnemyFrameComesFromTheKindsBandAndTheFacingsRow ) {
	cEnemy gunner( KIND_MACHINE_GUNNER, 100, 2000, DIR_UP_LEFT, 1 );
	gunner.SetMoving( true );
	EXPECT_EQ( Columns( gunner, 6 ), ( std::vector<int32_t>{ 1, 1, 1, 1, 1, 2 } ) );
	const cRect rect = Draw( gunner );
	EXPECT_TRUE( rect.left == 352 && rect.top == 32 && screenY == 80 )
		<< "column 2 of the band at 288, the left row: (" << rect.left << ", " << rect.top << ")";
	screen = STATE_DEFEAT;
	EXPECT_EQ( Columns( gunner, 10 ), std::vector<int32_t>( 10, 2 ) ) << "the defeat freezes the enemies";
	screen = STATE_VICTORY;
	EXPECT_EQ( Columns( gunner, 4 ), ( std::vector<int32_t>{ 2, 2, 2, 1 } ) ) << "the victory does not";
	gunner.SetDirection( DIR_DOWN );
	EXPECT_EQ( Draw( gunner ).top, 0 ) << "the down row is the sheet's first";
}

}
