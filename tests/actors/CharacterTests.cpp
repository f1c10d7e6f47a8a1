// The character base and the player object: counters, firing cadence, skill energy on the
// clock, and the sprite frame with its walk animation.

#include <gtest/gtest.h>

#include <vector>

#include "TestMaps.h"
#include "actors/Bullet.h"
#include "actors/Player.h"
#include "app/GameState.h"
#include "platform/Clock.h"
#include "world/Scene.h"

namespace {

// A manual clock and the playing state for one test; both are put back afterwards.
class PlayerTest : public ::testing::Test {
protected:
	void SetUp() override {
		SetClock( &clock );
		savedState = gameState;
		gameState = STATE_PLAYING;
	}
	void TearDown() override {
		SetClock( nullptr );
		gameState = savedState;
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
	cRect Draw( cPlayer &player ) {
		cRect rect = { -1, -1, -1, -1 };
		player.GetDrawInfo( rect, screenX, screenY, *scene );
		return rect;
	}
	// The sheet column shown at each of count draws.
	std::vector<int32_t> Columns( cPlayer &player, int count ) {
		std::vector<int32_t> columns;
		for ( int i = 0; i < count; i++ ) {
			columns.push_back( Draw( player ).left / 32 );
		}
		return columns;
	}

	cManualClock clock { 1000 };
	int32_t savedState = 0;
	std::unique_ptr<cScene> scene = MakeOpenScene();
	tBulletList bullets;
	int32_t screenX = 0;
	int32_t screenY = 0;
};

TEST_F( PlayerTest, HealthIsCappedAndTheLastMachineGunRoundHandsBackTheGun ) {
	cPlayer player( KIND_TAVESH, 0, 0 );
	player.SetHealth( 0 );
	player.AddHealth( 26 );
	EXPECT_EQ( player.GetHealth(), 26 );
	player.SetHealth( 95 );
	player.AddHealth( 20 );
	EXPECT_EQ( player.GetHealth(), 100 );

	player.SetWeapon( WEAPON_MACHINE_GUN );
	player.SetAmmo( 1 );
	player.UseAmmo();
	EXPECT_EQ( player.GetWeapon(), WEAPON_MACHINE_GUN ) << "a counter of 1 pays for two shots";
	player.UseAmmo();
	EXPECT_EQ( player.GetAmmo(), -1 );
	EXPECT_EQ( player.GetWeapon(), WEAPON_TAVESH );
	player.SetWeapon( WEAPON_MACHINE_GUN );
	player.UseAmmo();
	EXPECT_EQ( player.GetAmmo(), -2 );
	EXPECT_EQ( player.GetWeapon(), WEAPON_MACHINE_GUN ) << "only the step to -1 changes the weapon";
}

TEST_F( PlayerTest, HeldFireShootsEveryTwentiethStepAndEveryFreshPressAtOnce ) {
	cPlayer player( KIND_TAVESH, 0, 0 );
	EXPECT_EQ( FiringSteps( player, 40 ), ( std::vector<int>{ 19, 39 } ) ) << "a new player's counter starts at 1";
	player.ReleaseTrigger();
	EXPECT_EQ( FiringSteps( player, 41 ), ( std::vector<int>{ 0, 20, 40 } ) );
	for ( int press = 0; press < 3; press++ ) {
		player.ReleaseTrigger();
		EXPECT_EQ( FiringSteps( player, 1 ), std::vector<int>{ 0 } ) << "press " << press;
	}
	EXPECT_EQ( bullets.size(), 8u );
}

TEST_F( PlayerTest, BulletLeavesFromTheBodysCentreAlongTheFacing ) {
	cPlayer lumra( KIND_LUMRA, 100, 200 );
	lumra.SetDirection( DIR_DOWN_LEFT );
	lumra.ReleaseTrigger();
	FiringSteps( lumra, 1 );
	ASSERT_EQ( bullets.size(), 1u );
	float values[4] = {};
	bullets[0].GetPosition( values[0], values[1] );
	bullets[0].GetDirection( values[2], values[3] );
	EXPECT_EQ( std::vector<float>( values, values + 4 ), ( std::vector<float>{ 106.0f, 206.0f, -1.0f, 1.0f } ) );
	EXPECT_EQ( bullets[0].GetWeapon(), WEAPON_LUMRA );
	EXPECT_EQ( bullets[0].GetOwnerKind(), KIND_LUMRA );
}

TEST_F( PlayerTest, LumrasShotWithTheSkillOnEmptiesHerEnergy ) {
	cPlayer lumra( KIND_LUMRA, 0, 0 );
	cPlayer tavesh( KIND_TAVESH, 0, 0 );
	for ( cPlayer *player : { &lumra, &tavesh } ) {
		player->SetEnergy( 2000 );
		player->ToggleSkill();
		player->ReleaseTrigger();
		FiringSteps( *player, 1 );
	}
	EXPECT_EQ( lumra.GetEnergy(), 0 );
	EXPECT_TRUE( lumra.IsSkillActive() ) << "the skill ends at the next update, not at the shot";
	lumra.UpdateSkill();
	EXPECT_FALSE( lumra.IsSkillActive() );
	EXPECT_EQ( tavesh.GetEnergy(), 2000 ) << "tavesh's shots cost no energy";
}

TEST_F( PlayerTest, SkillSpendsEnergyByTheClockAndRefillsWhileOff ) {
	clock.SetTickCount( 0xFFFFFC00u );
	cPlayer player( KIND_TAVESH, 0, 0 );
	player.UpdateSkill();
	player.ToggleSkill();
	clock.Advance( 2024 );
	player.UpdateSkill();
	EXPECT_EQ( player.GetEnergy(), 976 ) << "2024 msec spent, across the clock's wrap-around";
	EXPECT_TRUE( player.IsSkillActive() );
	clock.Advance( 2500 );
	player.UpdateSkill();
	EXPECT_EQ( player.GetEnergy(), 0 );
	EXPECT_FALSE( player.IsSkillActive() ) << "an empty skill switches itself off";
	clock.Advance( 1200 );
	player.UpdateSkill();
	EXPECT_EQ( player.GetEnergy(), 1200 ) << "it refills at the pace it is spent";
	player.SetEnergy( 2990 );
	clock.Advance( 25 );
	player.UpdateSkill();
	EXPECT_EQ( player.GetEnergy(), 3000 ) << "the refill stops at the maximum, not 3015";

	player.SetEnergy( 0 );
	player.ToggleSkill();
	player.UpdateSkill();
	EXPECT_FALSE( player.IsSkillActive() ) << "switched on empty, it goes off at the next update";
}

TEST_F( PlayerTest, SpriteRowFollowsFacingSkillAndBeingDown ) {
	cPlayer lumra( KIND_LUMRA, 300, 2000 );
	const cRect first = Draw( lumra );
	EXPECT_EQ( screenX, 300 );
	EXPECT_EQ( screenY, 80 ) << "the world y less the camera's 1920";
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
	lumra.SetDirection( DIR_RIGHT );
	lumra.SetDead( true );
	EXPECT_EQ( Draw( lumra ).top, 256 ) << "a player who is down has one row";
	lumra.SetDead( false );
	lumra.SetDirection( 0 );
	EXPECT_EQ( Draw( lumra ).top, -1 ) << "no facing leaves the rectangle as it was";
}

TEST_F( PlayerTest, WalkCyclesOneTwoOneZeroSlowerWhenDownFrozenByVictory ) {
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

	gameState = STATE_VICTORY;
	Columns( tavesh, 20 );
	EXPECT_EQ( tavesh.GetAnimFrame(), 1 ) << "the victory freezes the players";
	gameState = STATE_DEFEAT;
	Columns( tavesh, 5 );
	EXPECT_EQ( tavesh.GetAnimFrame(), 2 ) << "the defeat does not";
}

}
