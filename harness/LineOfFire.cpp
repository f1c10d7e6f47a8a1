// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/LineOfFire.h"

#include <algorithm>
#include <cstdlib>

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "ai/Enemy.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t STRAIGHT_REACH = 25;		// in pixels off a straight line a shot still overlaps a body
const int32_t SLANTED_REACH = 36;		// in pixels of |dx| - |dy| off a slanted line
const int PREDICTED_FRAMES = 24;		// an enemy's walk is guessed no further ahead

}

cLineOfFire::cLineOfFire( const cSituation &situation ) : situation( situation ), probe( KIND_TAVESH, 0, 0 ) {
}

int cLineOfFire::FindTarget( int32_t x, int32_t y, int32_t direction, int &frames ) const {
	return Fly( x, y, direction, true, -1, frames );
}

bool cLineOfFire::Hits( int32_t x, int32_t y, int32_t direction, int enemyIndex ) const {
	int frames = 0;
	return Fly( x, y, direction, false, enemyIndex, frames ) == enemyIndex;
}

// The shot leaves the body's centre and moves once in the frame it is fired, like every bullet;
// the enemies have walked their step of that frame before the hit test.
int cLineOfFire::Fly( int32_t x, int32_t y, int32_t direction, bool predict, int only, int &frames ) const {
	const cScene &scene = *situation.scene;
	cBullet bullet( x + cEnemy::MUZZLE_OFFSET, y + cEnemy::MUZZLE_OFFSET, direction, 0, KIND_TAVESH );
	for ( int frame = 1; frame <= MAX_FLIGHT; frame++ ) {
		bullet.Move();
		float fx = 0.0f;
		float fy = 0.0f;
		bullet.GetPosition( fx, fy );
		const int32_t bx = static_cast<int32_t>( fx );
		const int32_t by = static_cast<int32_t>( fy );
		if ( !scene.IsFree( bx, by, true ) || !IsInView( fx, fy ) ) {
			return -1;
		}
		for ( size_t i = 0; i < situation.enemies.size(); i++ ) {
			if ( situation.enemies[i].inView && HitsBody( situation.enemies[i], bx, by, predict ? std::min( frame, PREDICTED_FRAMES ) : 0 ) ) {
				frames = frame;
				return only < 0 || static_cast<int>( i ) == only ? static_cast<int>( i ) : -1;
			}
		}
	}
	return -1;
}

int cLineOfFire::CountCrossed( int32_t x, int32_t y, int32_t direction, const std::vector<int32_t> &places ) const {
	const cScene &scene = *situation.scene;
	std::vector<bool> crossed( places.size() / 2, false );
	cBullet bullet( x + cEnemy::MUZZLE_OFFSET, y + cEnemy::MUZZLE_OFFSET, direction, 0, KIND_TAVESH );
	for ( int frame = 1; frame <= MAX_FLIGHT; frame++ ) {
		bullet.Move();
		float fx = 0.0f;
		float fy = 0.0f;
		bullet.GetPosition( fx, fy );
		const int32_t bx = static_cast<int32_t>( fx );
		const int32_t by = static_cast<int32_t>( fy );
		if ( !scene.IsFree( bx, by, true ) || !IsInView( fx, fy ) ) {
			break;
		}
		for ( size_t i = 0; i < crossed.size(); i++ ) {
			probe.SetPosition( places[2 * i], places[2 * i + 1] );
			crossed[i] = crossed[i] || probe.Overlaps( bx, by, BULLET_SIZE );
		}
	}
	return static_cast<int>( std::count( crossed.begin(), crossed.end(), true ) );
}

bool cLineOfFire::IsInView( float fx, float fy ) const {
	return situation.cameraX < fx && fx < situation.cameraX + VIEW_WIDTH && situation.cameraY < fy
		&& fy < situation.cameraY + VIEW_HEIGHT;
}

// The enemy where it stands, or where it will have walked if it keeps its way for a while: a path
// turns at cell corners, and the boss walks back and forth, so the guess goes no further.
bool cLineOfFire::HitsBody( const cEnemySighting &enemy, int32_t bx, int32_t by, int ahead ) const {
	probe.SetPosition( enemy.x, enemy.y );
	if ( probe.Overlaps( bx, by, BULLET_SIZE ) ) {
		return true;
	}
	probe.SetPosition( enemy.x + enemy.vx * ahead, enemy.y + enemy.vy * ahead );
	return ahead > 0 && probe.Overlaps( bx, by, BULLET_SIZE );
}

int32_t GetAimDirection( int32_t x, int32_t y, int32_t toX, int32_t toY ) {
	const int32_t dx = toX - x;
	const int32_t dy = toY - y;
	if ( std::abs( dy ) <= STRAIGHT_REACH && dx != 0 ) {
		return dx > 0 ? DIR_RIGHT : DIR_LEFT;
	}
	if ( std::abs( dx ) <= STRAIGHT_REACH && dy != 0 ) {
		return dy > 0 ? DIR_DOWN : DIR_UP;
	}
	if ( std::abs( std::abs( dx ) - std::abs( dy ) ) <= SLANTED_REACH ) {
		if ( dy < 0 ) {
			return dx > 0 ? DIR_UP_RIGHT : DIR_UP_LEFT;
		}
		return dx > 0 ? DIR_DOWN_RIGHT : DIR_DOWN_LEFT;
	}
	return 0;
}

int32_t GetLineDepth( int32_t x, int32_t y, int32_t toX, int32_t toY, int32_t direction ) {
	const int32_t dx = std::abs( toX - x );
	const int32_t dy = std::abs( toY - y );
	switch ( direction ) {
		case DIR_LEFT:
		case DIR_RIGHT:
			return std::max( STRAIGHT_REACH - dy, 0 );
		case DIR_UP:
		case DIR_DOWN:
			return std::max( STRAIGHT_REACH - dx, 0 );
		default:
			return std::max( SLANTED_REACH - std::abs( dx - dy ), 0 ) / 2;
	}
}
