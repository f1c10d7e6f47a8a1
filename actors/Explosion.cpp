// SPDX-License-Identifier: GPL-3.0-or-later
#include "actors/Explosion.h"

#include "world/Scene.h"

namespace {

const int32_t TICKS_PER_FRAME = 9;		// a death shows each picture for 9 steps
const int32_t IMPACT_TICKS = 3;			// an impact runs three times as fast
const int32_t DEATH_TICKS = 1;
const int32_t PICTURE_SIZE = 32;		// in pixels

}

cExplosion::cExplosion( int32_t x, int32_t y, bool impact )
	: x( x ), y( y ), frame( 0 ), shownFrame( 0 ), ticks( 0 ), impact( impact ) {
}

void cExplosion::GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene ) const {
	screenX = x - scene.GetCameraX();
	screenY = y - scene.GetCameraY();
	rect.left = shownFrame * PICTURE_SIZE;
	rect.top = impact ? PICTURE_SIZE : 0;
	rect.right = rect.left + PICTURE_SIZE;
	rect.bottom = rect.top + PICTURE_SIZE;
}

void cExplosion::Animate() {
	shownFrame = frame;
	ticks += impact ? IMPACT_TICKS : DEATH_TICKS;
	if ( ticks % TICKS_PER_FRAME == 0 ) {
		frame++;
	}
}
