// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cCharacter is the base of everything that walks the map, the players and the enemies: kind,
// health, weapon, position and facing, fire cool-down and walk animation.

#include <cstdint>
#include <memory>

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Rect.h"

class cScene;

class cCharacter {
public:
	static const int32_t MAX_HEALTH = 100;

	virtual				~cCharacter() = default;

	// A copy of the same kind; what it points at (an enemy's target) is the caller's to relink.
	virtual std::unique_ptr<cCharacter> Clone() const = 0;

	// The picture the character shows in this step's frame, in the characters sheet, and its
	// screen position.
	virtual void		GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene ) const = 0;
	// Once per step while the character is on the shown world: takes the picture for this step's
	// frame, then moves the walk animation on. screen is the game's (actors/GameState.h).
	virtual void		Animate( int32_t screen ) = 0;

	int32_t				GetKind() const { return kind; }
	void				SetKind( int32_t newKind ) { kind = newKind; }
	int32_t				GetHealth() const { return health; }
	void				SetHealth( int32_t newHealth ) { health = newHealth; }
	// Adds health up to MAX_HEALTH.
	void				AddHealth( int32_t amount );
	int32_t				GetWeapon() const { return weapon; }
	void				SetWeapon( int32_t newWeapon ) { weapon = newWeapon; }
	int32_t				GetAmmo() const { return ammo; }
	void				SetAmmo( int32_t newAmmo ) { ammo = newAmmo; }
	// Pays for one machine-gun shot; the last one hands back the character's own gun.
	void				UseAmmo();
	int32_t				GetSpeed() const { return speed; }
	void				GetPosition( int32_t &outX, int32_t &outY ) const { outX = x; outY = y; }
	void				SetPosition( int32_t newX, int32_t newY ) { x = newX; y = newY; }
	// The cell under the body's centre.
	void				GetCell( int32_t &cx, int32_t &cy ) const;
	// Tested on the top-left corner, strictly inside the view.
	bool				IsInView( int32_t camX, int32_t camY ) const;
	int32_t				GetDirection() const { return direction; }
	void				SetDirection( int32_t newDirection ) { direction = newDirection; }
	bool				IsMoving() const { return moving; }
	void				SetMoving( bool isMoving ) { moving = isMoving; }
	bool				HasJustShot() const { return justShot; }
	void				SetJustShot( bool shot ) { justShot = shot; }
	int32_t				GetShotPeriod() const { return shotPeriod; }
	int32_t				GetShotCounter() const { return shotCounter; }
	void				SetShotCounter( int32_t counter ) { shotCounter = counter; }
	bool				IsWounded() const { return wounded; }
	int32_t				GetAnimFrame() const { return animFrame; }
	int32_t				GetShownFrame() const { return shownFrame; }
	bool				IsAnimBackward() const { return animBackward; }
	int32_t				GetAnimTicks() const { return animTicks; }

	// Whether a corner of a square of the given side at (px, py) lies strictly inside the body.
	bool				Overlaps( int32_t px, int32_t py, int32_t size ) const;
	// The hit and damage rule of one bullet against this character. On a hit, (hitX, hitY) is
	// where the explosion goes and killed tells whether an enemy died of it.
	bool				HitByBullet( const cBullet &bullet, int32_t &hitX, int32_t &hitY, bool &killed );

protected:
						cCharacter() = default;

	// Top of a facing's row in the characters sheet, or -1 for anything but a facing.
	static int32_t		GetFacingRow( int32_t facing );
	// Source rectangle of a body in the characters sheet: the kind's band, the animation column.
	void				SetSheetColumn( cRect &rect ) const;
	// Screen position of the body under the scene's camera.
	void				GetScreenPosition( int32_t &screenX, int32_t &screenY, const cScene &scene ) const;
	// The walk cycle 1, 2, 1, 0, ...: one column per WALK_TICKS steps while moving, column 1 at rest.
	void				AnimateWalk();
	// Moves the cycle on by one column once ticksPerFrame steps have been counted.
	void				AdvanceAnimation( int32_t ticksPerFrame );
	// The damage rule of the character's side for a bullet that overlaps its body; false when
	// the bullet flies on (a shot of the character's own side, or a kind of neither side).
	virtual bool		TakeHit( const cBullet &bullet ) = 0;

	int32_t				kind = 0;
	int32_t				health = 0;
	int32_t				weapon = 0;
	int32_t				ammo = -1;			// machine-gun shots left minus one; -1 when none
	int32_t				speed = 0;			// in pixels per step along each axis
	int32_t				x = 0;				// top-left corner of the 32 x 32 body, in world pixels
	int32_t				y = 0;
	int32_t				direction = 0;		// facing, a direction code 1 to 8
	bool				moving = false;		// moved in the last step
	int32_t				animFrame = 1;		// walk animation column, 0 to 2
	int32_t				shownFrame = 1;		// the column drawn in this step's frame: animFrame before it moved on
	bool				animBackward = false;
	int32_t				animTicks = 0;		// steps since animFrame changed
	int32_t				shotPeriod = 0;		// in steps between two shots
	int32_t				shotCounter = 1;	// fire cool-down, 0 when ready
	bool				justShot = false;	// fired in the current step
	bool				wounded = false;	// health fell below 50 once; enemies only
};
