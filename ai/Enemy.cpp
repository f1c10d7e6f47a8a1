// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/Enemy.h"

#include <cassert>
#include <cstdlib>

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/GameState.h"
#include "platform/Clock.h"
#include "world/Grid.h"

namespace {

// What each enemy kind carries; health grows with the difficulty.
struct cEnemyKindInfo {
	int32_t		kind;
	int32_t		weapon;
	int32_t		healthPerLevel;
	int32_t		speed;				// in pixels per frame
	int32_t		shotPeriod;			// in frames
};
const cEnemyKindInfo ENEMY_KINDS[] = {
	{ KIND_SOLDIER, WEAPON_ENEMY_GUN, 50, 1, 80 },
	{ KIND_MACHINE_GUNNER, WEAPON_MACHINE_GUN, 75, 1, 80 },
	{ KIND_BOSS, WEAPON_MACHINE_GUN, 250, 2, 20 },
};

const int32_t WOUNDED_HEALTH = 50;			// an enemy below it fires twice as often
const int32_t BOSS_TURN_HEALTH = 50;		// a boss above it does not turn round when shot

// Damage of a player's weapon to an enemy.
int32_t GetEnemyDamage( int32_t weapon ) {
	switch ( weapon ) {
		case WEAPON_TAVESH:			return 25;
		case WEAPON_LUMRA:			return 15;
		case WEAPON_MACHINE_GUN:	return 50;
		default:					return 0;
	}
}

int32_t GetReverse( int32_t facing ) {
	switch ( facing ) {
		case DIR_UP:			return DIR_DOWN;
		case DIR_DOWN:			return DIR_UP;
		case DIR_RIGHT:			return DIR_LEFT;
		case DIR_LEFT:			return DIR_RIGHT;
		case DIR_UP_RIGHT:		return DIR_DOWN_LEFT;
		case DIR_DOWN_LEFT:		return DIR_UP_RIGHT;
		case DIR_UP_LEFT:		return DIR_DOWN_RIGHT;
		case DIR_DOWN_RIGHT:	return DIR_UP_LEFT;
		default:				return facing;
	}
}

}

// A kind the level never builds keeps the base's zero weapon, health, speed and shot period.
cEnemy::cEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction, int32_t difficulty )
	: cellX( x / CELL_SIZE ),
	cellY( y / CELL_SIZE ),
	target( nullptr ),
	lastSeenX( -1 ),
	lastSeenY( -1 ),
	replanTimer( REPLAN_FRAMES ),
	previousAiState( AI_UNAWARE ),
	aiState( AI_UNAWARE ),
	lookTimer( 0 ),
	wanderPending( kind == KIND_BOSS ),
	alertTime( 0 ),
	alertIcon( ALERT_ICON_NONE ),
	wasShot( false ) {
	this->kind = kind;
	this->x = x;
	this->y = y;
	this->direction = direction;
	for ( const cEnemyKindInfo &info : ENEMY_KINDS ) {
		if ( info.kind == kind ) {
			weapon = info.weapon;
			health = info.healthPerLevel * difficulty;
			speed = info.speed;
			shotPeriod = info.shotPeriod;
		}
	}
	assert( ( !IsEnemyKind( kind ) || cPath::IsValidSpeed( speed ) ) && "an enemy's speed must divide the cell size" );
}

void cEnemy::GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene ) const {
	GetScreenPosition( screenX, screenY, scene );
	const int32_t row = GetFacingRow( direction );
	if ( row >= 0 ) {
		SetSheetColumn( rect );
		rect.top = row;
		rect.bottom = row + BODY_SIZE;
	}
}

// Only the players' bullets hurt an enemy. The wounded enemy fires twice as often, once; it turns
// round to face an unseen shooter, unless it is a boss still strong enough to ignore the shot.
bool cEnemy::TakeHit( const cBullet &bullet ) {
	if ( !IsEnemyKind( kind ) || !IsPlayerKind( bullet.GetOwnerKind() ) ) {
		return false;
	}
	health -= GetEnemyDamage( bullet.GetWeapon() );
	if ( health < WOUNDED_HEALTH && !wounded ) {
		shotPeriod /= 2;
		wounded = true;
	}
	wasShot = true;
	const bool steadyBoss = kind == KIND_BOSS && health > BOSS_TURN_HEALTH;
	if ( !HasTarget() && !steadyBoss ) {
		TurnTowards( -1, -1 );
	}
	return true;
}

void cEnemy::Relink( cPlayer *copiedTarget, const int32_t *copiedWalkMap ) {
	target = copiedTarget;
	path.Relink( copiedWalkMap );
}

void cEnemy::Animate( int32_t screen ) {
	shownFrame = animFrame;
	// The defeat screen freezes the enemies as they stood.
	if ( screen != STATE_DEFEAT ) {
		AnimateWalk();
	}
	if ( HasJustNoticed() ) {
		MarkAlert();
	}
	alertIcon = ChooseAlertIcon();
}

// The enemy has just noticed a player: it was unaware, searching or looking around and now chases
// or attacks.
bool cEnemy::HasJustNoticed() const {
	const bool wasCalm = previousAiState == AI_UNAWARE || previousAiState == AI_SEARCH || previousAiState == AI_LOOK_AROUND;
	return wasCalm && ( aiState == AI_CHASE || aiState == AI_ATTACK );
}

// At most one icon: the exclamation for a while after the enemy noticed a player, else the query
// while it searches or the WTF while it looks around. The elapsed time is taken as an unsigned
// difference, so the clock's wrap-around does not stop the exclamation early.
eAlertIcon cEnemy::ChooseAlertIcon() const {
	const uint32_t sinceAlert = GetTickCount() - alertTime;		// in msec
	if ( sinceAlert < ALERT_TIME ) {
		return ALERT_ICON_EXCLAMATION;
	}
	if ( aiState == AI_SEARCH ) {
		return ALERT_ICON_QUERY;
	}
	return aiState == AI_LOOK_AROUND ? ALERT_ICON_WTF : ALERT_ICON_NONE;
}

void cEnemy::TurnTowards( int32_t dx, int32_t dy ) {
	if ( dx == -1 || dy == -1 ) {
		direction = GetReverse( direction );
		return;
	}
	const int64_t ax = std::llabs( static_cast<int64_t>( dx ) );
	const int64_t ay = std::llabs( static_cast<int64_t>( dy ) );
	if ( ay > ax ) {
		direction = dy < 0 ? DIR_UP : DIR_DOWN;
	} else if ( ax > ay ) {
		direction = dx < 0 ? DIR_LEFT : DIR_RIGHT;
	}
}

void cEnemy::MarkAlert() {
	alertTime = GetTickCount();
}

// The cool-down counts up to shotPeriod between shots; unaware enemies set it to 0, so a newly
// alerted enemy fires at once. An enemy never aims at its own position: a player standing exactly
// on it is shot at along its facing. A kind the level never builds has no period and never fires.
void cEnemy::Shoot( tBulletList &bullets, int32_t dx, int32_t dy, bool &fired ) {
	if ( shotPeriod <= 0 ) {
		return;
	}
	if ( shotCounter % shotPeriod != 0 ) {
		shotCounter++;
		return;
	}
	if ( dx == 0 && dy == 0 ) {
		GetDirectionVector( direction, dx, dy );
		if ( dx == 0 && dy == 0 ) {
			return;
		}
	}
	bullets.emplace_back( x + MUZZLE_OFFSET, y + MUZZLE_OFFSET, dx, dy, weapon, kind );
	shotCounter = 1;
	fired = true;
}

void cEnemy::RequestPath( const int32_t *walkMap, int32_t goalX, int32_t goalY ) {
	if ( path.IsIdle() ) {
		path.Make( walkMap, x / CELL_SIZE, y / CELL_SIZE, goalX, goalY, direction );
	} else {
		path.SetNewTarget( walkMap, goalX, goalY );
	}
}

// The only way an enemy moves; it therefore stands on a cell corner whenever its path is idle.
void cEnemy::FollowPath() {
	if ( path.IsIdle() ) {
		moving = false;
		return;
	}
	moving = true;
	if ( path.Step( speed, x, y, cellX, cellY, direction ) == cPath::STEP_ARRIVED ) {
		path.Stop();
		moving = false;
	}
}

void cEnemy::FaceCell( int32_t fromX, int32_t fromY, int32_t toX, int32_t toY ) {
	direction = cPath::GetLineDirection( toX - fromX, toY - fromY, direction );
}
