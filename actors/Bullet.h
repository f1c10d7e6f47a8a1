// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cBullet is one shot in flight, a player's or an enemy's: a 20 x 20 box flying in a straight
// line at a fixed speed until it strikes a wall, leaves the view or hits a character.

#include <cstdint>

#include "actors/Rect.h"

class cScene;

class cBullet {
public:
	static const int32_t PLAYER_SPEED = 5;		// in pixels per frame

	// A player's shot along a facing (1 to 8); the travel vector is the facing's, not normalised.
						cBullet( int32_t x, int32_t y, int32_t direction, int32_t weapon, int32_t ownerKind );
	// An enemy's shot aimed along (vx, vy); its speed is the shooter's kind (2, 3 or 4). A zero
	// vector makes a bullet that goes nowhere, which the bullet pass removes.
						cBullet( int32_t x, int32_t y, int32_t vx, int32_t vy, int32_t weapon, int32_t ownerKind );
	virtual				~cBullet() = default;

	// One frame of flight: speed pixels along the travel vector.
	void				Move();
	bool				HasDirection() const { return dirX != 0.0f || dirY != 0.0f; }
	void				GetPosition( float &outX, float &outY ) const { outX = x; outY = y; }
	void				GetDirection( float &outX, float &outY ) const { outX = dirX; outY = dirY; }
	int32_t				GetWeapon() const { return weapon; }
	int32_t				GetOwnerKind() const { return ownerKind; }
	int32_t				GetSpeed() const { return speed; }
	// The picture of the bullet's weapon and where on the screen it goes, in fractional pixels.
	void				GetDrawInfo( cRect &rect, float &screenX, float &screenY, const cScene &scene ) const;

private:
	float				x;					// top-left corner of the 20 x 20 box, in world pixels
	float				y;
	float				dirX;				// travel vector, normalised when moving
	float				dirY;
	int32_t				weapon;				// the shooter's weapon code
	int32_t				ownerKind;			// the shooter's character kind
	int32_t				speed;				// in pixels per frame
};
