#include "actors/Player.h"

#include <algorithm>

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/GameState.h"
#include "platform/Clock.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t BULLET_OFFSET = 6;			// in pixels: centres the 20-pixel box on the 32-pixel body
const int32_t DOWN_TICKS = 25;				// a player lying down cycles its row slowly
const int32_t SKILL_ROWS = 128;				// in pixels: the rows drawn while the skill is on
const int32_t DOWN_ROW = 256;				// in pixels: the one row of a player who is down

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

void cPlayer::Animate() {
	shownFrame = animFrame;
	// The victory screen freezes the players as they stood.
	if ( gameState == STATE_VICTORY ) {
		return;
	}
	if ( dead && !moving ) {
		AdvanceAnimation( DOWN_TICKS );
	} else {
		AnimateWalk();
	}
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
