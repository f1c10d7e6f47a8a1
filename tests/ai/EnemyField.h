// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Open ground for the enemy tests: a soldier facing right with tavesh and lumra 200 pixels ahead,
// the bullets fired and the game's frame for one enemy, with small readers of positions and shots.

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "actors/Bullet.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "world/Grid.h"

const int32_t EX = 640;		// the soldier's corner
const int32_t EY = 640;

using tPoint = std::pair<int32_t, int32_t>;

inline std::vector<int32_t> OpenWalk() {
	return std::vector<int32_t>( MAP_CELLS, WALK_FLOOR );
}

inline tPoint GetPositionOf( const cCharacter &character ) {
	tPoint point;
	character.GetPosition( point.first, point.second );
	return point;
}

inline std::pair<float, float> GetPositionOf( const cBullet &bullet ) {
	std::pair<float, float> point;
	bullet.GetPosition( point.first, point.second );
	return point;
}

inline void ExpectBulletAlong( const cBullet &bullet, float dx, float dy, const char *what ) {
	float bx = 0.0f;
	float by = 0.0f;
	bullet.GetDirection( bx, by );
	const float length = std::sqrt( dx * dx + dy * dy );
	EXPECT_NEAR( bx, dx / length, 1e-4f ) << what;
	EXPECT_NEAR( by, dy / length, 1e-4f ) << what;
}

// One perception by the table of the enemy's kind; the alert state it leads to.
inline int32_t Perceived( cEnemy &enemy, const cPlayer &player, const std::vector<int32_t> &walk ) {
	if ( enemy.GetKind() == KIND_BOSS ) {
		enemy.PerceiveBoss( player, walk.data() );
	} else {
		enemy.Perceive( player, walk.data() );
	}
	return enemy.GetAiState();
}

class cEnemyField : public testing::Test {
protected:
	// The game's frame for one enemy: its whole update over the players.
	void Frame( cEnemy &enemy, const tPlayerPointers &players ) {
		fired = false;
		enemy.Update( players, bullets, walk.data(), fired );
	}
	void Frame( cEnemy &enemy, cPlayer &player ) { Frame( enemy, tPlayerPointers{ &player } ); }
	// Frames until the enemy reaches the state; false when it has not within the limit.
	bool FramesUntil( cEnemy &enemy, cPlayer &player, int32_t state, int32_t limit = 400 ) {
		for ( int32_t frame = 0; frame < limit && enemy.GetAiState() != state; frame++ ) {
			Frame( enemy, player );
		}
		return enemy.GetAiState() == state;
	}
	int32_t Perceived( cEnemy &enemy, const cPlayer &player ) { return ::Perceived( enemy, player, walk ); }

	std::vector<int32_t>	walk = OpenWalk();
	tBulletList				bullets;
	bool					fired = false;
	cEnemy					soldier{ KIND_SOLDIER, EX, EY, DIR_RIGHT, 1 };
	cPlayer					tavesh{ KIND_TAVESH, EX + 200, EY };
	cPlayer					lumra{ KIND_LUMRA, EX + 200, EY };
};
