// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One player's bot: every frame it reads the game and chooses that player's keys. It walks the
// route over the walk layer from the start to the boss, turns to the enemies in view and fires
// when a shot would hit, steps out of the way of the enemies' shots, picks up what lies near,
// opens boxes, revives a partner who is down and hides lumra when cornered. It never presses the
// use key next to a door.

#include <cstdint>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "harness/IncomingFire.h"
#include "harness/LineOfFire.h"
#include "harness/Situation.h"
#include "harness/WalkLattice.h"

class cGame;

// The keys of one player for one frame.
struct cBotKeys {
	int32_t				dx = 0;				// -1, 0 or 1
	int32_t				dy = 0;				// -1, 0 or 1, y downwards
	bool				fire = false;
	bool				skill = false;
	bool				use = false;
};

struct cBotOptions {
	int					tapFrames = 10;		// the fire key is pressed at most once in this many frames
	int					leadLimit = 240;	// in route cost: how far a player walks ahead of its partner
	bool				openDoors = false;	// lumra opens the doors in view as the boxes
	bool				reckless = false;	// walks into the enemies' shots
};

class cBot {
public:
						cBot( int playerIndex, const cBotOptions &options );

	cBotKeys			Think( const cGame &game );
	int					GetShotsFired() const { return shotsFired; }
	int					GetSkillPresses() const { return skillPresses; }

private:
	// What the bot is after this frame, and which way that lies.
	struct cIntent {
		int32_t			direction = 0;		// 0: stay
		bool			use = false;
		int				target = -1;		// index of the enemy fought
	};
	// The lattice for one offset and the route's distance field over it.
	struct cPlan {
		std::unique_ptr<cWalkLattice>	lattice;
		std::vector<int32_t>			route;
	};

	cPlan &				GetPlan();
	cIntent				ChooseIntent();
	bool				Fight( cIntent &intent );
	bool				Regroup( cIntent &intent );
	bool				IsNearPartner( int32_t x, int32_t y ) const;
	bool				Revive( cIntent &intent );
	bool				CollectPickup( cIntent &intent, int32_t reach );
	bool				OpenNearBox( cIntent &intent );
	bool				OpensDoors() const;
	void				FollowRoute( cIntent &intent );

	int					ChooseTarget() const;
	void				RememberTargetPlace();
	bool				SweepsTarget( int32_t x, int32_t y, int32_t direction ) const;
	int32_t				FindFiringSpot( int target );
	int32_t				ScoreSpot( int32_t node, int target, int32_t cost ) const;
	bool				WantsItem( const cItemSighting &item ) const;

	// Walking: a direction towards the best place of a distance field, or towards goal nodes.
	int32_t				StepAlong( const std::vector<int32_t> &field ) const;
	int32_t				StepTowards( const std::vector<int32_t> &goals, int64_t key, int32_t maxCost );
	int32_t				GetNearestNode() const;
	int32_t				GetFieldCost( const std::vector<int32_t> &field, int32_t x, int32_t y ) const;
	void				CollectCellNodes( int32_t cellX, int32_t cellY, std::vector<int32_t> &nodes ) const;
	bool				IsNextToDoor() const;
	static bool			IsDoorBeside( const cScene &scene, int32_t cellX, int32_t cellY );

	int32_t				ChooseMove( const cIntent &intent, bool &fire, int &danger );
	int32_t				Retreat() const;
	bool				IsHiding() const;
	void				RateMoves( int danger[9], bool hits[9] );
	bool				ChooseSkill( int danger ) const;
	int32_t				Unstick( int32_t direction );

	int					playerIndex;
	cBotOptions			options;
	int					frame = 0;
	cSituation			situation;
	cLineOfFire			lineOfFire { situation };
	cIncomingFire		incoming;
	const cScene *		planScene = nullptr;
	int					closedCells = 0;	// boxes and doors still closed when the plans were made
	std::map<std::pair<int32_t, int32_t>, cPlan>	plans;
	cPlan *				plan = nullptr;		// the plan for the player's present offset
	cLocalSearch		search;
	std::vector<int32_t>	goalField;
	int64_t				goalKey = -1;
	int					goalFrame = 0;
	int					target = -1;
	const cEnemy *		targetEnemy = nullptr;
	std::vector<int32_t>	targetPlaces;	// x, y pairs, oldest first
	int32_t				spot = cWalkLattice::NO_NODE;
	int					spotFrame = -1000;
	int					lastFireFrame = -1000;
	int					lastSkillFrame = -1000;
	int32_t				lastX = -1, lastY = -1;
	int					stillFrames = 0;
	int					unstickFrames = 0;
	int32_t				unstickDirection = 0;
	int					shotsFired = 0;
	int					skillPresses = 0;
};
