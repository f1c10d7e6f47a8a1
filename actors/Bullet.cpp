#include "actors/Bullet.h"

#include <cmath>

#include "actors/ActorTypes.h"
#include "world/Grid.h"
#include "world/Scene.h"

// Shots are the one thing of the game that moves on floats, and every build must move them alike.
// Their flight uses only what IEEE 754 rounds exactly, the same on every processor: + - * /,
// sqrt and comparisons, with each operation rounded on its own (the build forbids fusing a
// multiply and an add into one instruction, see CMakeLists.txt). Their positions turn into
// integers only inside the world and the view, far within int32_t.

cBullet::cBullet( int32_t x, int32_t y, int32_t direction, int32_t weapon, int32_t ownerKind )
	: x( static_cast<float>( x ) ), y( static_cast<float>( y ) ), dirX( 0.0f ), dirY( 0.0f ),
	weapon( weapon ), ownerKind( ownerKind ), speed( PLAYER_SPEED ) {
	int32_t dx = 0;
	int32_t dy = 0;
	GetDirectionVector( direction, dx, dy );
	dirX = static_cast<float>( dx );
	dirY = static_cast<float>( dy );
}

// An enemy's kind doubles as its bullets' speed: 2 for soldiers, 3 for machine-gunners, 4 for the boss.
cBullet::cBullet( int32_t x, int32_t y, int32_t vx, int32_t vy, int32_t weapon, int32_t ownerKind )
	: x( static_cast<float>( x ) ), y( static_cast<float>( y ) ), dirX( 0.0f ), dirY( 0.0f ),
	weapon( weapon ), ownerKind( ownerKind ), speed( ownerKind ) {
	const float fx = static_cast<float>( vx );
	const float fy = static_cast<float>( vy );
	const float length = std::sqrt( fx * fx + fy * fy );
	if ( length > 0.0f ) {
		dirX = fx / length;
		dirY = fy / length;
	}
}

void cBullet::Move() {
	const float length = std::sqrt( dirX * dirX + dirY * dirY );
	if ( length == 0.0f ) {
		return;
	}
	x += dirX / length * static_cast<float>( speed );
	y += dirY / length * static_cast<float>( speed );
}

void cBullet::GetDrawInfo( cRect &rect, float &screenX, float &screenY, const cScene &scene ) const {
	screenX = x - static_cast<float>( scene.GetCameraX() );
	screenY = y - static_cast<float>( scene.GetCameraY() );
	rect.left = weapon * BULLET_SIZE;
	rect.top = 0;
	rect.right = rect.left + BULLET_SIZE;
	rect.bottom = BULLET_SIZE;
}
