// What the hit rule and the drawing need of an enemy: its make-up by kind and difficulty, its
// turns, and its sprite frame.

#include <gtest/gtest.h>

#include "TestMaps.h"
#include "ai/Enemy.h"
#include "app/GameState.h"
#include "world/Scene.h"

namespace {

TEST( EnemyMakeUpTest, KindAndDifficultyDecideWeaponHealthSpeedAndCadence ) {
	struct cCase { int32_t kind, difficulty, weapon, health, speed, period; };
	const cCase cases[] = {
		{ KIND_SOLDIER, 3, WEAPON_ENEMY_GUN, 150, 1, 80 },
		{ KIND_MACHINE_GUNNER, 2, WEAPON_MACHINE_GUN, 150, 1, 80 },
		{ KIND_BOSS, 1, WEAPON_MACHINE_GUN, 250, 2, 20 },
		{ KIND_BOSS, 3, WEAPON_MACHINE_GUN, 750, 2, 20 },
	};
	for ( const cCase &c : cases ) {
		cEnemy enemy( c.kind, 96, 224, DIR_RIGHT, c.difficulty );
		EXPECT_EQ( enemy.GetWeapon(), c.weapon ) << "kind " << c.kind << ", difficulty " << c.difficulty;
		EXPECT_EQ( enemy.GetHealth(), c.health ) << "kind " << c.kind << ", difficulty " << c.difficulty;
		EXPECT_EQ( enemy.GetSpeed(), c.speed ) << "kind " << c.kind;
		EXPECT_EQ( enemy.GetShotPeriod(), c.period ) << "kind " << c.kind;
		EXPECT_EQ( enemy.GetKind(), c.kind );
		EXPECT_EQ( enemy.GetDirection(), DIR_RIGHT );
		EXPECT_FALSE( enemy.HasTarget() || enemy.WasShot() || enemy.IsWounded() );
		EXPECT_EQ( enemy.GetAiState(), AI_UNAWARE );
	}
}

TEST( EnemyTurnTest, FacesTheMainAxisOfAVector ) {
	struct cCase { int32_t from, dx, dy, to; const char *what; };
	const cCase cases[] = {
		{ DIR_LEFT, 2, -3, DIR_UP, "mostly up" },
		{ DIR_LEFT, -2, 3, DIR_DOWN, "mostly down" },
		{ DIR_UP, -4, 3, DIR_LEFT, "mostly left" },
		{ DIR_UP, 400, -399, DIR_RIGHT, "mostly right" },
		{ DIR_UP_LEFT, 5, -5, DIR_UP_LEFT, "an exact diagonal leaves the facing" },
		{ DIR_DOWN, 0, 0, DIR_DOWN, "no vector leaves the facing" },
		{ DIR_DOWN, -1, 7, DIR_UP, "a -1 asks to turn about, not to face down" },
		{ DIR_UP_RIGHT, -1, -1, DIR_DOWN_LEFT, "turn about" },
		{ DIR_UP_LEFT, -1, -1, DIR_DOWN_RIGHT, "turn about" },
		{ DIR_DOWN_RIGHT, 3, -1, DIR_UP_LEFT, "turn about" },
		{ DIR_LEFT, -1, -1, DIR_RIGHT, "turn about" },
	};
	for ( const cCase &c : cases ) {
		cEnemy enemy( KIND_SOLDIER, 0, 0, c.from, 1 );
		enemy.TurnTowards( c.dx, c.dy );
		EXPECT_EQ( enemy.GetDirection(), c.to ) << c.what << ": from " << c.from << " by (" << c.dx << ", " << c.dy << ")";
	}
}

TEST( EnemyDrawTest, FrameComesFromTheKindsBandAndTheFacingsRow ) {
	std::unique_ptr<cScene> scene = MakeOpenScene();
	const int32_t savedState = gameState;
	gameState = STATE_PLAYING;
	cEnemy gunner( KIND_MACHINE_GUNNER, 100, 2000, DIR_UP_LEFT, 1 );
	gunner.SetMoving( true );
	cRect rect;
	int32_t sx = 0;
	int32_t sy = 0;
	for ( int i = 0; i < 6; i++ ) {
		gunner.GetDrawInfo( rect, sx, sy, *scene );
	}
	EXPECT_EQ( gunner.GetAnimFrame(), 2 );
	EXPECT_EQ( rect.left, 352 ) << "column 2 of the band at 288";
	EXPECT_EQ( rect.top, 32 ) << "up-left uses the left row";
	EXPECT_EQ( rect.right, 384 );
	EXPECT_EQ( rect.bottom, 64 );
	EXPECT_EQ( sx, 100 );
	EXPECT_EQ( sy, 80 );

	gameState = STATE_DEFEAT;
	for ( int i = 0; i < 10; i++ ) {
		gunner.GetDrawInfo( rect, sx, sy, *scene );
	}
	EXPECT_EQ( gunner.GetAnimFrame(), 2 ) << "the defeat freezes the enemies";
	gameState = STATE_VICTORY;
	for ( int i = 0; i < 5; i++ ) {
		gunner.GetDrawInfo( rect, sx, sy, *scene );
	}
	EXPECT_EQ( gunner.GetAnimFrame(), 1 ) << "the victory does not";
	gameState = savedState;
}

}
