// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Whether a player's shot would hit: the bullet flown ahead as the bullet pass flies it, against
// the enemies where they stand or walking on the way they walk now, until it strikes a wall or
// leaves the view.

#include <cstdint>
#include <vector>

#include "harness/Situation.h"
#include "actors/Player.h"

class cLineOfFire {
public:
	static constexpr int MAX_FLIGHT = 140;		// in frames: more than a shot needs to cross the view

	explicit			cLineOfFire( const cSituation &situation );

	// The index in the situation's enemies of the first enemy that a shot from a body at (x, y) in
	// the facing would hit, or -1; frames tells after how many frames.
	int					FindTarget( int32_t x, int32_t y, int32_t direction, int &frames ) const;
	// Whether such a shot hits this one enemy, standing where it stands now, before anything else.
	bool				Hits( int32_t x, int32_t y, int32_t direction, int enemyIndex ) const;
	// How many of the places (x, y pairs) a shot's path crosses with a body standing there: an
	// enemy that walks back and forth over those places is met wherever it is when the shot comes.
	int					CountCrossed( int32_t x, int32_t y, int32_t direction, const std::vector<int32_t> &places ) const;

private:
	bool				IsInView( float fx, float fy ) const;
	bool				HitsBody( const cEnemySighting &enemy, int32_t bx, int32_t by, int ahead ) const;
	int					Fly( int32_t x, int32_t y, int32_t direction, bool predict, int only, int &frames ) const;

	const cSituation &	situation;
	mutable cPlayer		probe;				// a body placed on an enemy's path to use the game's hit test
};

// The facing (1 to 8) of the straight or slanted line from a body at (x, y) to a body at
// (toX, toY) that a shot could follow, or 0 when the bodies are not near any such line.
int32_t GetAimDirection( int32_t x, int32_t y, int32_t toX, int32_t toY );
// How far inside the band of that line the body stands, in pixels: the steps it needs to leave it,
// and to leave the path of anything fired back along the same line.
int32_t GetLineDepth( int32_t x, int32_t y, int32_t toX, int32_t toY, int32_t direction );
