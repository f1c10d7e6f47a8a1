// How an enemy takes in a player: distance bands, the field of view of its facing, the line of
// sight over the walk layer, and the alert-state tables of the regular enemies and of the boss.

#include "ai/Enemy.h"

#include <cmath>

#include "actors/ActorTypes.h"
#include "actors/Player.h"
#include "world/Grid.h"

namespace {

const float SIGHT_STEP = 16.0f;		// in pixels between two samples of the line of sight
// A march of SIGHT_STEP pixels a sample leaves the world long before this many samples.
const int32_t MAX_SIGHT_STEPS = ( WORLD_WIDTH + WORLD_HEIGHT ) / 16 + 2;

// Floor lets sight through, and so do the cells other enemies stand on; boxes, doors and walls
// block it.
bool LetsSightThrough( int32_t walkCode ) {
	return walkCode == WALK_FLOOR || walkCode == WALK_ENEMY;
}

}

void cEnemy::Perceive( const cPlayer &player, const int32_t *walkMap ) {
	previousAiState = aiState;
	// A searching enemy that was shot turns on whoever it is looking at.
	if ( aiState == AI_SEARCH && wasShot ) {
		int32_t px = 0;
		int32_t py = 0;
		player.GetPosition( px, py );
		aiState = AI_CHASE;
		wasShot = false;
		RequestPath( walkMap, px / CELL_SIZE, py / CELL_SIZE );
	}
	const cSighting sighting = Look( player, walkMap, SIGHT_DISTANCE );
	switch ( aiState ) {
		case AI_UNAWARE:		aiState = NextUnawareState( sighting ); break;
		case AI_CHASE:			aiState = NextChaseState( sighting ); break;
		case AI_ATTACK:			aiState = NextAttackState( sighting ); break;
		case AI_SEARCH:			aiState = NextSearchState( sighting ); break;
		case AI_LOOK_AROUND:	aiState = NextLookAroundState( sighting ); break;
		default:				break;
	}
}

void cEnemy::PerceiveBoss( const cPlayer &player, const int32_t *walkMap ) {
	previousAiState = aiState;
	aiState = NextBossState( Look( player, walkMap, BOSS_SIGHT_DISTANCE ) );
}

// Sight matters only within sightLimit, where every rule that asks for it starts, so the march
// is left out for players further away.
cEnemy::cSighting cEnemy::Look( const cPlayer &player, const int32_t *walkMap, int32_t sightLimit ) const {
	int32_t px = 0;
	int32_t py = 0;
	player.GetPosition( px, py );
	cSighting sighting;
	sighting.distance = GetDistanceTo( px, py );
	sighting.isNear = sighting.distance < NEAR_DISTANCE;
	sighting.isMiddle = sighting.distance >= MIDDLE_DISTANCE && sighting.distance < SIGHT_DISTANCE;
	sighting.down = player.IsDead();
	const bool lumra = player.GetKind() == KIND_LUMRA;
	const bool skillOn = player.IsSkillActive();
	sighting.hidden = lumra && !sighting.down && skillOn;
	const bool inSight = sighting.distance < sightLimit && CanSee( px, py, walkMap );
	sighting.seen = inSight && ( player.GetKind() == KIND_TAVESH || ( lumra && !skillOn ) );
	sighting.seenLumra = inSight && lumra && !skillOn;
	return sighting;
}

// Between the two top-left corners, truncated to whole pixels.
int32_t cEnemy::GetDistanceTo( int32_t px, int32_t py ) const {
	const double dx = static_cast<double>( px ) - x;
	const double dy = static_cast<double>( py ) - y;
	return static_cast<int32_t>( std::sqrt( dx * dx + dy * dy ) );
}

// A far player is never noticed; a player exactly 100 pixels away is neither near nor middle.
int32_t cEnemy::NextUnawareState( const cSighting &sighting ) const {
	if ( !sighting.down && ( sighting.isNear || sighting.isMiddle ) && sighting.seen ) {
		return AI_CHASE;
	}
	return AI_UNAWARE;
}

// A chasing enemy finishes its step to the next corner before it stops to attack or gives up.
int32_t cEnemy::NextChaseState( const cSighting &sighting ) const {
	if ( sighting.hidden ) {
		return AI_SEARCH;
	}
	if ( sighting.isNear && !sighting.down && IsOnCorner() && sighting.seen ) {
		return AI_ATTACK;
	}
	if ( sighting.down && IsOnCorner() ) {
		return AI_UNAWARE;
	}
	return AI_CHASE;
}

int32_t cEnemy::NextAttackState( const cSighting &sighting ) const {
	if ( sighting.down ) {
		return AI_UNAWARE;
	}
	if ( sighting.hidden ) {
		return AI_SEARCH;
	}
	if ( sighting.isMiddle && sighting.seen ) {
		return AI_CHASE;
	}
	return AI_ATTACK;
}

// Only lumra showing herself again ends a search early: tavesh being seen does not.
int32_t cEnemy::NextSearchState( const cSighting &sighting ) const {
	if ( sighting.isNear && !sighting.down && IsOnCorner() && sighting.seenLumra ) {
		return AI_ATTACK;
	}
	if ( sighting.isMiddle && !sighting.down && sighting.seenLumra ) {
		return AI_CHASE;
	}
	if ( path.IsIdle() ) {
		return AI_LOOK_AROUND;
	}
	return AI_SEARCH;
}

int32_t cEnemy::NextLookAroundState( const cSighting &sighting ) const {
	if ( sighting.isNear && !sighting.down && sighting.seenLumra ) {
		return AI_ATTACK;
	}
	if ( sighting.isMiddle && !sighting.down && sighting.seenLumra ) {
		return AI_CHASE;
	}
	if ( lookTimer == LOOK_AROUND_FRAMES ) {
		return AI_UNAWARE;
	}
	return AI_LOOK_AROUND;
}

// The boss notices from further away, but while its health is above BOSS_CHASE_HEALTH it only
// wanders; it never searches or looks around.
int32_t cEnemy::NextBossState( const cSighting &sighting ) const {
	const bool weakened = health <= BOSS_CHASE_HEALTH;
	switch ( aiState ) {
		case AI_UNAWARE:
			return sighting.distance < BOSS_SIGHT_DISTANCE && !sighting.down && sighting.seen ? AI_BOSS_WANDER : AI_UNAWARE;
		case AI_CHASE:
			if ( sighting.hidden ) {
				return AI_BOSS_WANDER;
			}
			if ( sighting.isNear && !sighting.down && IsOnCorner() && sighting.seen ) {
				return AI_ATTACK;
			}
			return sighting.down && IsOnCorner() ? AI_BOSS_WANDER : AI_CHASE;
		case AI_ATTACK:
			if ( sighting.down || sighting.hidden ) {
				return AI_BOSS_WANDER;
			}
			return sighting.isMiddle && sighting.seen ? AI_CHASE : AI_ATTACK;
		case AI_BOSS_WANDER:
			if ( weakened && sighting.isMiddle && !sighting.down && sighting.seen ) {
				return AI_CHASE;
			}
			return weakened && sighting.isNear && IsOnCorner() && !sighting.down && sighting.seen ? AI_ATTACK : AI_BOSS_WANDER;
		default:
			return aiState;
	}
}

// Samples the straight line between the two top-left corners every 16 pixels, from the cell
// after the enemy's own. A march that passes the goal cell without entering it goes on until a
// cell blocks it or it leaves the grid. Its floats are exact on every build: squares and sums of
// pixel distances (integers far below 2^24), a square root and a quotient rounded once, and
// multiples and quotients of the powers of two 16 and 32; at most MAX_SIGHT_STEPS steps of 16
// pixels keep the march well inside int32_t.
bool cEnemy::CanSee( int32_t px, int32_t py, const int32_t *walkMap ) const {
	const float dx = static_cast<float>( px - x );
	const float dy = static_cast<float>( py - y );
	if ( !IsInFieldOfView( dx, dy ) ) {
		return false;
	}
	const float dist = std::sqrt( dx * dx + dy * dy );
	const int32_t goalX = px / CELL_SIZE;
	const int32_t goalY = py / CELL_SIZE;
	float fx = static_cast<float>( x );
	float fy = static_cast<float>( y );
	int32_t cx = x / CELL_SIZE;
	int32_t cy = y / CELL_SIZE;
	for ( int32_t step = 0; step <= MAX_SIGHT_STEPS; step++ ) {
		if ( cx == goalX && cy == goalY ) {
			return true;
		}
		fx += dx / dist * SIGHT_STEP;
		fy += dy / dist * SIGHT_STEP;
		cx = static_cast<int32_t>( fx / CELL_SIZE );
		cy = static_cast<int32_t>( fy / CELL_SIZE );
		if ( !IsInGrid( cx, cy ) || !LetsSightThrough( walkMap[CellIndex( cx, cy )] ) ) {
			return false;
		}
	}
	return false;
}

// The half plane in front of the enemy. For a straight facing the line through the enemy
// counts as in front; for a diagonal one neither axis nor the boundary diagonal does.
bool cEnemy::IsInFieldOfView( float dx, float dy ) const {
	const float ax = std::fabs( dx );
	const float ay = std::fabs( dy );
	switch ( direction ) {
		case DIR_UP:			return dy <= 0.0f;
		case DIR_DOWN:			return dy >= 0.0f;
		case DIR_RIGHT:			return dx >= 0.0f;
		case DIR_LEFT:			return dx <= 0.0f;
		case DIR_UP_RIGHT:
			return ( dx > 0 && dy < 0 ) || ( dx > 0 && dy > 0 && ay < ax ) || ( dx < 0 && dy < 0 && ax < ay );
		case DIR_UP_LEFT:
			return ( dx < 0 && dy < 0 ) || ( dx > 0 && dy < 0 && ax < ay ) || ( dx < 0 && dy > 0 && ay < ax );
		case DIR_DOWN_RIGHT:
			return ( dx > 0 && dy > 0 ) || ( dx > 0 && dy < 0 && ay < ax ) || ( dx < 0 && dy > 0 && ax < ay );
		case DIR_DOWN_LEFT:
			return ( dx < 0 && dy > 0 ) || ( dx < 0 && dy < 0 && ay < ax ) || ( dx > 0 && dy > 0 && ax < ay );
		default:				return true;
	}
}
