#pragma once
// cEnemy is a computer-controlled character: a soldier (kind 2), a machine-gunner (kind 3) or
// the boss (kind 4), with the player it is after, where it last saw that player, and its alert
// state, which drives its behaviour and the icons drawn over it.

#include <cstdint>

#include "actors/Character.h"

class cPlayer;

enum eAiState : int32_t {
	AI_UNAWARE				= 0,
	AI_CHASE				= 1,
	AI_ATTACK				= 2,
	AI_SEARCH				= 3,
	AI_LOOK_AROUND			= 4,
	AI_BOSS_WANDER			= 5
};

class cEnemy : public cCharacter {
public:
	static const int32_t REPLAN_FRAMES = 8;		// a path request is made when replanTimer reaches it

	// Built on a cell corner with its facing; the kind and the difficulty (1 to 3) decide its
	// weapon, health, speed and shot period.
						cEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction, int32_t difficulty );
	~cEnemy() override = default;

	void				GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene ) override;

	bool				HasTarget() const { return target != nullptr; }
	cPlayer *			GetTarget() const { return target; }
	void				SetTarget( cPlayer *player ) { target = player; }
	// Faces the vector's main axis; (-1, -1), or any vector with a -1, turns the enemy about instead.
	void				TurnTowards( int32_t dx, int32_t dy );
	bool				WasShot() const { return wasShot; }
	void				SetWasShot( bool shot ) { wasShot = shot; }
	int32_t				GetAiState() const { return aiState; }
	int32_t				GetPreviousAiState() const { return previousAiState; }
	// The exclamation over the enemy is timed from the moment it noticed a player.
	void				MarkAlert();
	uint32_t			GetAlertTime() const { return alertTime; }

private:
	int32_t				cellX;				// cell of the top-left corner, updated on cell corners
	int32_t				cellY;
	cPlayer *			target;				// not owned; null when the enemy is after no one
	int32_t				lastSeenX;			// the target's position when last seen, -1 when none
	int32_t				lastSeenY;
	int32_t				replanTimer;		// in frames, counts up to REPLAN_FRAMES
	int32_t				previousAiState;	// aiState at the start of this frame's perception
	int32_t				aiState;
	int32_t				lookTimer;			// in frames of looking around
	bool				wanderPending;		// the boss must choose where to walk next
	uint32_t			alertTime;			// GetTickCount when the exclamation began, in msec
	bool				wasShot;			// hit by a player's bullet, not yet reacted to
};
