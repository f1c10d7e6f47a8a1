#include "actors/Character.h"

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t WALK_TICKS = 5;				// steps per column of the walk animation
const int32_t HIT_OFFSET = 16;				// in pixels along the bullet's vector
const int32_t SHEET_BAND_WIDTH = 96;		// a kind's three columns in the characters sheet

}

void cCharacter::AddHealth( int32_t amount ) {
	health += amount;
	if ( health > MAX_HEALTH ) {
		health = MAX_HEALTH;
	}
}

// A counter of n pays for n + 1 shots: the gun goes back when it drops to -1.
void cCharacter::UseAmmo() {
	ammo--;
	if ( ammo == -1 ) {
		weapon = WEAPON_TAVESH;
	}
}

void cCharacter::GetCell( int32_t &cx, int32_t &cy ) const {
	cx = ( x + BODY_SIZE / 2 ) / CELL_SIZE;
	cy = ( y + BODY_SIZE / 2 ) / CELL_SIZE;
}

bool cCharacter::IsInView( int32_t camX, int32_t camY ) const {
	return camX < x && x < camX + VIEW_WIDTH && camY < y && y < camY + VIEW_HEIGHT;
}

bool cCharacter::Overlaps( int32_t px, int32_t py, int32_t size ) const {
	const int32_t corners[4][2] = { { px, py }, { px + size, py }, { px, py + size }, { px + size, py + size } };
	for ( const int32_t *corner : corners ) {
		if ( x < corner[0] && corner[0] < x + BODY_SIZE && y < corner[1] && corner[1] < y + BODY_SIZE ) {
			return true;
		}
	}
	return false;
}

// A bullet of the character's own side flies on. A dead enemy's explosion goes on its body; any
// other hit's goes 16 pixels along the bullet's vector from the body's corner.
bool cCharacter::HitByBullet( const cBullet &bullet, int32_t &hitX, int32_t &hitY, bool &killed ) {
	killed = false;
	float bx = 0.0f;
	float by = 0.0f;
	bullet.GetPosition( bx, by );
	if ( !Overlaps( static_cast<int32_t>( bx ), static_cast<int32_t>( by ), BULLET_SIZE ) ) {
		return false;
	}
	const bool taken = TakeHit( bullet );
	if ( !taken ) {
		return false;
	}
	if ( IsEnemyKind( kind ) && health < 1 ) {
		hitX = x;
		hitY = y;
		killed = true;
		return true;
	}
	float dirX = 0.0f;
	float dirY = 0.0f;
	bullet.GetDirection( dirX, dirY );
	hitX = x + static_cast<int32_t>( dirX * HIT_OFFSET );
	hitY = y + static_cast<int32_t>( dirY * HIT_OFFSET );
	return true;
}

int32_t cCharacter::GetFacingRow( int32_t facing ) {
	switch ( facing ) {
		case DIR_DOWN:			return 0;
		case DIR_LEFT:
		case DIR_UP_LEFT:
		case DIR_DOWN_LEFT:		return 32;
		case DIR_RIGHT:
		case DIR_UP_RIGHT:
		case DIR_DOWN_RIGHT:	return 64;
		case DIR_UP:			return 96;
		default:				return -1;
	}
}

void cCharacter::SetSheetColumn( cRect &rect ) const {
	rect.left = shownFrame * BODY_SIZE + kind * SHEET_BAND_WIDTH;
	rect.right = rect.left + BODY_SIZE;
}

void cCharacter::GetScreenPosition( int32_t &screenX, int32_t &screenY, const cScene &scene ) const {
	screenX = x - scene.GetCameraX();
	screenY = y - scene.GetCameraY();
}

void cCharacter::AnimateWalk() {
	if ( !moving ) {
		animFrame = 1;
		animTicks = 0;
		return;
	}
	AdvanceAnimation( WALK_TICKS );
}

void cCharacter::AdvanceAnimation( int32_t ticksPerFrame ) {
	animTicks++;
	if ( animTicks < ticksPerFrame ) {
		return;
	}
	animTicks = 0;
	if ( animFrame != 1 ) {
		animFrame = 1;
		return;
	}
	animFrame = animBackward ? 0 : 2;
	animBackward = !animBackward;
}
