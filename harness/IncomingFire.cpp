// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/IncomingFire.h"

#include <algorithm>
#include <cassert>
#include <cstdlib>

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

// The bullet pass keeps a bullet while its box is on floor and its corner strictly inside the view.
bool StaysInFlight( const cScene &scene, int32_t cameraX, int32_t cameraY, float bx, float by ) {
	return scene.IsFree( static_cast<int32_t>( bx ), static_cast<int32_t>( by ), true )
		&& cameraX < bx && bx < cameraX + VIEW_WIDTH && cameraY < by && by < cameraY + VIEW_HEIGHT;
}

}

cIncomingFire::cIncomingFire() : probe( KIND_TAVESH, 0, 0 ) {
}

void cIncomingFire::Forecast( const cScene &scene, int32_t cameraX, int32_t cameraY, const tBulletList &bullets ) {
	flights.clear();
	keepAway.clear();
	for ( const cBullet &bullet : bullets ) {
		if ( !IsEnemyKind( bullet.GetOwnerKind() ) ) {
			continue;
		}
		cBullet ahead = bullet;
		cFlight flight;
		flight.frames = 0;
		for ( int frame = 1; frame <= HORIZON; frame++ ) {
			ahead.Move();
			float bx = 0.0f;
			float by = 0.0f;
			ahead.GetPosition( bx, by );
			if ( !StaysInFlight( scene, cameraX, cameraY, bx, by ) ) {
				break;
			}
			flight.xs[frame] = static_cast<int32_t>( bx );
			flight.ys[frame] = static_cast<int32_t>( by );
			flight.frames = frame;
		}
		if ( flight.frames > 0 ) {
			flights.push_back( flight );
		}
	}
}

void cIncomingFire::KeepAwayFrom( int32_t x, int32_t y, int32_t vx, int32_t vy ) {
	keepAway.push_back( { x, y, vx, vy } );
}

int cIncomingFire::FindFirstHit( const cBodyTrack &track ) const {
	int first = FindFirstContact( track );
	for ( const cFlight &flight : flights ) {
		const int last = flight.frames < track.frames ? flight.frames : track.frames;
		for ( int frame = 1; frame <= last && ( first == 0 || frame < first ); frame++ ) {
			probe.SetPosition( track.xs[frame - 1], track.ys[frame - 1] );
			if ( probe.Overlaps( flight.xs[frame], flight.ys[frame], BULLET_SIZE ) ) {
				first = frame;
				break;
			}
		}
	}
	return first;
}

// A body already near the boss has only the choice of how soon it gets away: the sooner it is
// out of reach, the later the "hit" it is given.
int cIncomingFire::FindFirstContact( const cBodyTrack &track ) const {
	const int last = std::min( track.frames, KEEP_AWAY_FRAMES );
	int firstNear = 0;
	int lastNear = 0;
	for ( int frame = 1; frame <= last; frame++ ) {
		for ( const cKeepAway &body : keepAway ) {
			const int32_t bx = body.x + body.vx * frame;
			const int32_t by = body.y + body.vy * frame;
			if ( std::abs( track.xs[frame - 1] - bx ) < KEEP_AWAY && std::abs( track.ys[frame - 1] - by ) < KEEP_AWAY ) {
				firstNear = firstNear == 0 ? frame : firstNear;
				lastNear = frame;
			}
		}
	}
	if ( firstNear != 1 ) {
		return firstNear;
	}
	return lastNear == last ? 1 : KEEP_AWAY_FRAMES - lastNear + 1;
}

void cIncomingFire::Walk( const cScene &scene, int32_t x, int32_t y, int32_t speed, int32_t dx, int32_t dy,
						  int holdFrames, int32_t dx2, int32_t dy2, int frames, cBodyTrack &track ) {
	assert( frames <= cBodyTrack::MAX_FRAMES );
	track.frames = frames;
	for ( int frame = 0; frame < frames; frame++ ) {
		const int32_t stepX = frame < holdFrames ? dx : dx2;
		const int32_t stepY = frame < holdFrames ? dy : dy2;
		const bool moveX = stepX != 0 && scene.IsFree( x + stepX * speed, y, false );
		const bool moveY = stepY != 0 && scene.IsFree( x, y + stepY * speed, false );
		x += moveX ? stepX * speed : 0;
		y += moveY ? stepY * speed : 0;
		x = std::min( std::max( x, scene.GetCameraX() ), scene.GetCameraX() + VIEW_WIDTH - BODY_SIZE );
		y = std::min( std::max( y, scene.GetCameraY() ), scene.GetCameraY() + VIEW_HEIGHT - BODY_SIZE );
		track.xs[frame] = x;
		track.ys[frame] = y;
	}
}
