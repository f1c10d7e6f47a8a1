// SPDX-License-Identifier: GPL-3.0-or-later
#include "actors/Player.h"

#include <algorithm>
#include <cstdlib>

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "platform/Clock.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t BULLET_OFFSET = 6;			// in pixels: centres the 20-pixel box on the 32-pixel body
const int32_t DOWN_TICKS = 25;				// a player lying down cycles its row slowly
const int32_t SKILL_ROWS = 128;				// in pixels: the rows drawn while the skill is on
const int32_t DOWN_ROW = 256;				// in pixels: the one row of a player who is down
const int32_t LUMRA_FIRE_DRAIN = 50;		// in msec of energy per step with fire held and the skill on
const int32_t REVIVE_HEALTH = 26;

// Damage of a weapon to a player; tavesh's skill halves the enemies' guns.
int32_t GetPlayerDamage( int32_t weapon, bool halved ) {
	switch ( weapon ) {
		case WEAPON_ENEMY_GUN:		return halved ? 5 : 10;
		case WEAPON_MACHINE_GUN:	return halved ? 10 : 20;
		default:					return 0;
	}
}

}

cPlayer::cPlayer( int32_t kind, int32_t x, int32_t y )
	: energy( START_ENERGY ),
	maxEnergy( START_ENERGY ),
	skillActive( false ),
	lastTick( GetTickCount() ),
	energyUpgraded( false ),
	dead( false ) {
	this->kind = kind;
	this->x = x;
	this->y = y;
	health = MAX_HEALTH;
	speed = START_SPEED;
	shotPeriod = SHOT_PERIOD;
	direction = DIR_UP;
	weapon = kind == KIND_TAVESH ? WEAPON_TAVESH : WEAPON_LUMRA;
}

void cPlayer::GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene ) const {
	GetScreenPosition( screenX, screenY, scene );
	const int32_t row = GetFacingRow( direction );
	if ( dead || row >= 0 ) {
		SetSheetColumn( rect );
		rect.top = dead ? DOWN_ROW : ( skillActive ? SKILL_ROWS : 0 ) + row;
		rect.bottom = rect.top + BODY_SIZE;
	}
}

void cPlayer::Animate( int32_t screen ) {
	shownFrame = animFrame;
	// The victory screen freezes the players as they stood.
	if ( screen == STATE_VICTORY ) {
		return;
	}
	if ( dead && !moving ) {
		AdvanceAnimation( DOWN_TICKS );
	} else {
		AnimateWalk();
	}
}

// Only the enemies' bullets hurt a player; one brought to 0 health is down.
bool cPlayer::TakeHit( const cBullet &bullet ) {
	if ( !IsPlayerKind( kind ) || !IsEnemyKind( bullet.GetOwnerKind() ) ) {
		return false;
	}
	const bool halved = kind == KIND_TAVESH && skillActive;
	health -= GetPlayerDamage( bullet.GetWeapon(), halved );
	if ( health <= 0 ) {
		health = 0;
		dead = true;
	}
	return true;
}

void cPlayer::Shoot( tBulletList &bullets, bool &shot ) {
	if ( shotCounter != 0 ) {
		shotCounter++;
		shot = false;
		justShot = false;
		if ( shotCounter == shotPeriod ) {
			shotCounter = 0;
		}
		return;
	}
	bullets.push_back( cBullet( x + BULLET_OFFSET, y + BULLET_OFFSET, direction, weapon, kind ) );
	shotCounter = 1;
	shot = true;
	justShot = true;
	// lumra's shot gives her away: it empties the energy, and the next update ends the skill.
	if ( kind == KIND_LUMRA && skillActive ) {
		energy = 0;
	}
}

// Each axis is tried alone, so a slanted push into a wall slides along it with the pressed facing
// kept; the diagonal target itself is never tested.
void cPlayer::Walk( const cScene &scene, int32_t dx, int32_t dy, int32_t newDirection ) {
	if ( dx != 0 && !scene.IsFree( x + dx * speed, y, false ) ) {
		dx = 0;
	}
	if ( dy != 0 && !scene.IsFree( x, y + dy * speed, false ) ) {
		dy = 0;
	}
	moving = dx != 0 || dy != 0;
	if ( moving ) {
		Move( newDirection, dx, dy );
	}
}

// Cooling down or not: holding the key is enough.
void cPlayer::PayForFiringHidden() {
	if ( kind == KIND_LUMRA && skillActive ) {
		energy = std::max( energy - LUMRA_FIRE_DRAIN, 0 );
	}
}

// The partner comes back when the player stands on its cell or one edge-adjacent to it.
void cPlayer::RevivePartner( cPlayer &partner ) const {
	int32_t cx = 0;
	int32_t cy = 0;
	int32_t ox = 0;
	int32_t oy = 0;
	GetCell( cx, cy );
	partner.GetCell( ox, oy );
	const int32_t distance = std::abs( cx - ox ) + std::abs( cy - oy );
	if ( distance <= 1 ) {
		partner.dead = false;
		partner.AddHealth( REVIVE_HEALTH );
	}
}

bool cPlayer::MayTake( int32_t itemKind ) const {
	switch ( itemKind ) {
		case ITEM_AMMO:
		case ITEM_TAVESH_ENERGY:	return kind == KIND_TAVESH;
		case ITEM_LUMRA_ENERGY:		return kind == KIND_LUMRA;
		case ITEM_HEALTH:
		case ITEM_SPEED:			return true;
		default:					return false;
	}
}

void cPlayer::ReleaseTrigger() {
	justShot = false;
	shotCounter = 0;
}

// Time in which the player was not updated counts in full, since lastTick is older by it. The
// sums are taken in 64 bits: the unsigned gap may be anything after a long pause.
void cPlayer::UpdateSkill() {
	const uint32_t now = GetTickCount();
	const int64_t elapsed = static_cast<int64_t>( now - lastTick );
	if ( skillActive ) {
		const int64_t left = energy - elapsed;
		energy = static_cast<int32_t>( std::max<int64_t>( left, 0 ) );
		if ( energy == 0 ) {
			ToggleSkill();
		}
	} else if ( energy < maxEnergy ) {
		energy = static_cast<int32_t>( std::min<int64_t>( energy + elapsed, maxEnergy ) );
	}
	lastTick = now;
}

void cPlayer::Move( int32_t newDirection, int32_t dx, int32_t dy ) {
	direction = newDirection;
	x += dx * speed;
	y += dy * speed;
}
