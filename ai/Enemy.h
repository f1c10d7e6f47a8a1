// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cEnemy is a computer-controlled character: a soldier (kind 2), a machine-gunner (kind 3) or
// the boss (kind 4), with the player it is after, where it last saw that player, and its alert
// state, which drives its behaviour and the icons drawn over it.

#include <cstdint>
#include <vector>

#include "actors/ActorLists.h"
#include "actors/Character.h"
#include "ai/Path.h"
#include "world/Grid.h"

class cPlayer;

// The players an enemy looks at in a frame, in the order of the game's list; not owned.
using tPlayerPointers = std::vector<cPlayer *>;

enum eAiState : int32_t {
	AI_UNAWARE				= 0,
	AI_CHASE				= 1,
	AI_ATTACK				= 2,
	AI_SEARCH				= 3,
	AI_LOOK_AROUND			= 4,
	AI_BOSS_WANDER			= 5
};

// The icon drawn over an enemy's head.
enum eAlertIcon : int32_t {
	ALERT_ICON_NONE,
	ALERT_ICON_EXCLAMATION,				// for a while after it noticed a player
	ALERT_ICON_QUERY,					// searching
	ALERT_ICON_WTF						// looking around
};

class cEnemy : public cCharacter {
public:
	static constexpr int32_t REPLAN_FRAMES = 8;			// a path request is made when replanTimer reaches it
	static constexpr int32_t NEAR_DISTANCE = 100;		// in pixels: closer is near
	static constexpr int32_t MIDDLE_DISTANCE = 101;		// in pixels: the middle band starts here
	static constexpr int32_t SIGHT_DISTANCE = 415;		// in pixels: this far or further is never noticed
	static constexpr int32_t BOSS_SIGHT_DISTANCE = 475;	// in pixels: the boss notices closer than this
	static constexpr int32_t BOSS_CHASE_HEALTH = 100;	// the boss leaves its wander at or below it
	static constexpr int32_t LOOK_AROUND_FRAMES = 60;	// then a looking-around enemy gives up
	static constexpr int32_t LOOK_TURN_FRAMES = 20;		// a looking-around enemy turns about this often
	static constexpr int32_t BOSS_AREA_COLUMNS = 19;	// the boss wanders columns 0 to 18
	static constexpr int32_t BOSS_AREA_ROWS = 14;		// and rows 0 to 13
	static constexpr int32_t MUZZLE_OFFSET = 6;			// in pixels: centres a 20-pixel shot on the body
	static constexpr uint32_t ALERT_TIME = 750;			// in msec the exclamation shows after noticing

	// Built on a cell corner with its facing; the kind and the difficulty (1 to 3) decide its
	// weapon, health, speed and shot period.
						cEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction, int32_t difficulty );
	~cEnemy() override = default;

	void				GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene ) const override;
	std::unique_ptr<cCharacter> Clone() const override { return std::make_unique<cEnemy>( *this ); }
	// The copy of a whole game points at the copy's target and walk layer.
	void				Relink( cPlayer *copiedTarget, const int32_t *copiedWalkMap );
	// Also stamps the alert and picks the icon over the enemy's head for this step's frame.
	void				Animate( int32_t screen ) override;
	// Fires at the player along (dx, dy) once the cool-down allows; fired is only ever set.
	// A player standing exactly on the enemy is shot at along the enemy's facing instead.
	virtual void		Shoot( tBulletList &bullets, int32_t dx, int32_t dy, bool &fired );

	// The enemy's frame: perceive the players (the target alone once it has one) and act.
	void				Update( const tPlayerPointers &players, tBulletList &bullets, const int32_t *walkMap, bool &fired );

	// Perception, one player at a time: moves the alert state by distance, sight and the
	// player's state. The boss has a table of its own.
	void				Perceive( const cPlayer &player, const int32_t *walkMap );
	void				PerceiveBoss( const cPlayer &player, const int32_t *walkMap );
	// Whether the player at (px, py) is in the field of view and no box, door or wall stands
	// between them.
	bool				CanSee( int32_t px, int32_t py, const int32_t *walkMap ) const;

	// Action by the alert state, for the same player.
	void				Act( cPlayer &player, tBulletList &bullets, const int32_t *walkMap, bool &fired );
	void				ActBoss( cPlayer &player, tBulletList &bullets, const int32_t *walkMap, bool &fired );
	// The boss chooses a floor cell of its area to walk to; false when there is none.
	bool				PickWanderCell( const int32_t *walkMap );
	// Eight shots at once, in the four straight and the four diagonal directions.
	void				FireBurst( tBulletList &bullets );

	// Plans from the enemy's cell when the path is idle, else changes the destination at the
	// next corner.
	void				RequestPath( const int32_t *walkMap, int32_t goalX, int32_t goalY );
	void				FollowPath();
	void				FaceCell( int32_t fromX, int32_t fromY, int32_t toX, int32_t toY );

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
	eAlertIcon			GetAlertIcon() const { return alertIcon; }
	bool				IsOnCorner() const { return x % CELL_SIZE == 0 && y % CELL_SIZE == 0; }
	void				GetCellCorner( int32_t &column, int32_t &row ) const { column = cellX; row = cellY; }
	void				GetLastSeen( int32_t &px, int32_t &py ) const { px = lastSeenX; py = lastSeenY; }
	int32_t				GetReplanTimer() const { return replanTimer; }
	int32_t				GetLookTimer() const { return lookTimer; }
	bool				IsWanderPending() const { return wanderPending; }
	const cPath &		GetPath() const { return path; }

protected:
	bool				TakeHit( const cBullet &bullet ) override;

private:
	// What the enemy makes of one player this frame.
	struct cSighting {
		int32_t			distance;			// in pixels, truncated
		bool			isNear;
		bool			isMiddle;
		bool			down;
		bool			seen;				// in sight, and not lumra hiding
		bool			seenLumra;			// lumra in sight with her skill off
		bool			hidden;				// lumra standing with her skill on
	};

	cSighting			Look( const cPlayer &player, const int32_t *walkMap, int32_t sightLimit ) const;
	int32_t				GetDistanceTo( int32_t px, int32_t py ) const;
	int32_t				NextUnawareState( const cSighting &sighting ) const;
	int32_t				NextChaseState( const cSighting &sighting ) const;
	int32_t				NextAttackState( const cSighting &sighting ) const;
	int32_t				NextSearchState( const cSighting &sighting ) const;
	int32_t				NextLookAroundState( const cSighting &sighting ) const;
	int32_t				NextBossState( const cSighting &sighting ) const;
	bool				IsInFieldOfView( float dx, float dy ) const;
	bool				HasJustNoticed() const;
	eAlertIcon			ChooseAlertIcon() const;

	void				RunSteps( cPlayer &player, tBulletList &bullets, const int32_t *walkMap, bool &fired );
	void				StandUnaware();
	void				Chase( cPlayer &player, const int32_t *walkMap );
	void				Attack( cPlayer &player, tBulletList &bullets, bool &fired );
	void				Search( const int32_t *walkMap );
	void				LookAround();
	void				Wander( tBulletList &bullets, const int32_t *walkMap, bool &fired );
	void				SeePlayer( cPlayer &player );
	void				CountToReplan( const int32_t *walkMap );

	int32_t				cellX;				// cell of the top-left corner, updated on cell corners
	int32_t				cellY;
	cPlayer *			target;				// not owned; null when the enemy is after no one
	int32_t				lastSeenX;			// the target's position when last seen, -1 when none
	int32_t				lastSeenY;
	cPath				path;
	int32_t				replanTimer;		// in frames, counts up to REPLAN_FRAMES
	int32_t				previousAiState;	// aiState at the start of this frame's perception
	int32_t				aiState;
	int32_t				lookTimer;			// in frames of looking around
	bool				wanderPending;		// the boss must choose where to walk next
	uint32_t			alertTime;			// GetTickCount when the exclamation began, in msec
	eAlertIcon			alertIcon;			// over the head in this step's frame
	bool				wasShot;			// hit by a player's bullet, not yet reacted to
};
