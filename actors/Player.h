// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cPlayer is a character steered from the keyboard: tavesh (kind 0) or lumra (kind 1), with a
// gun of its own, a timed skill and the state of being down until a partner revives it.

#include <cstdint>

#include "actors/ActorLists.h"
#include "actors/Character.h"

class cPlayer : public cCharacter {
public:
	static const int32_t START_ENERGY = 3000;		// in msec of skill use
	static const int32_t UPGRADED_ENERGY = 6000;	// in msec of skill use
	static const int32_t START_SPEED = 2;			// in pixels per step
	static const int32_t SHOT_PERIOD = 20;			// in steps

						cPlayer( int32_t kind, int32_t x, int32_t y );
	~cPlayer() override = default;

	void				GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene ) const override;
	std::unique_ptr<cCharacter> Clone() const override { return std::make_unique<cPlayer>( *this ); }
	void				Animate( int32_t screen ) override;

	// One firing attempt while the fire key is held; shot tells whether a bullet came out.
	void				Shoot( tBulletList &bullets, bool &shot );
	// The fire key is up: the next press fires at once.
	void				ReleaseTrigger();
	void				ToggleSkill() { skillActive = !skillActive; }
	bool				IsSkillActive() const { return skillActive; }
	// Spends the energy while the skill is on and refills it while off, by the clock.
	void				UpdateSkill();
	// A step of speed pixels per axis; dx and dy are -1, 0 or 1.
	void				Move( int32_t newDirection, int32_t dx, int32_t dy );
	// The step of the movement keys over the walk layer: each axis is tried alone from where the
	// player stands, and an axis that would end in a wall is dropped.
	void				Walk( const cScene &scene, int32_t dx, int32_t dy, int32_t newDirection );
	// lumra holding fire with the skill on pays energy for it on every step.
	void				PayForFiringHidden();
	// The use key next to a partner who is down brings it back.
	void				RevivePartner( cPlayer &partner ) const;
	// Whether the item kind is one this character may pick up.
	bool				MayTake( int32_t itemKind ) const;

	int32_t				GetEnergy() const { return energy; }
	void				SetEnergy( int32_t value ) { energy = value; }
	int32_t				GetMaxEnergy() const { return maxEnergy; }
	void				SetMaxEnergy( int32_t value ) { maxEnergy = value; }
	void				SetSpeed( int32_t value ) { speed = value; }
	bool				IsEnergyUpgraded() const { return energyUpgraded; }
	void				SetEnergyUpgraded( bool upgraded ) { energyUpgraded = upgraded; }
	bool				IsDead() const { return dead; }
	uint32_t			GetLastTick() const { return lastTick; }
	void				SetDead( bool isDead ) { dead = isDead; }

protected:
	bool				TakeHit( const cBullet &bullet ) override;

private:
	int32_t				energy;				// in msec of skill use
	int32_t				maxEnergy;			// in msec
	bool				skillActive;
	uint32_t			lastTick;			// GetTickCount at the last UpdateSkill, in msec
	bool				energyUpgraded;
	bool				dead;				// down until the partner revives it
};
