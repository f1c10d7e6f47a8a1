// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cPath walks one enemy from cell corner to cell corner along a path found by a fresh cAStar,
// turning it at each corner and taking up a new destination only when it stands on a corner.

#include <cstdint>
#include <memory>

#include "ai/AStar.h"

class cPath {
public:
	static constexpr int32_t STEP_MOVING = 1;		// between cells, or turned towards the next one
	static constexpr int32_t STEP_ARRIVED = 2;		// standing on the destination's corner

						cPath();
	// A copy takes the path found, not the search's working memory.
						cPath( const cPath &other );
	cPath &				operator=( const cPath &other );
	virtual				~cPath();
	// The walk layer a later search reads, once the scene it belonged to was copied.
	void				Relink( const int32_t *newWalkMap );

	// Searches a way between two cells; when one is found it becomes the current path and the
	// mover's facing turns towards the first step. From a cell to itself nothing changes.
	void				Make( const int32_t *walkMap, int32_t startX, int32_t startY, int32_t goalX, int32_t goalY,
							int32_t &facing );
	// A new destination, searched for at the next corner; ignored when it shares the current
	// destination's column or row.
	void				SetNewTarget( const int32_t *walkMap, int32_t goalX, int32_t goalY );
	// Moves the mover speed pixels along the path (speed must divide the cell size). On a cell
	// corner the mover's cell is updated and it turns towards the next cell.
	int32_t				Step( int32_t speed, int32_t &x, int32_t &y, int32_t &cellX, int32_t &cellY, int32_t &facing );
	// At a corner: STEP_ARRIVED at the destination, else turns towards the next cell.
	int32_t				NextStep( int32_t &facing );
	void				PointTo( int32_t fromX, int32_t fromY, int32_t toX, int32_t toY, int32_t &facing );
	bool				IsIdle() const { return direction == 0; }
	// Makes the path idle; the next Make replaces what it still holds.
	void				Stop() { direction = 0; }
	void				Release();

	// The facing of a straight or exactly diagonal line (dy = 0 with dx <= 0 counts as left);
	// any other line keeps the current facing.
	static int32_t		GetLineDirection( int32_t dx, int32_t dy, int32_t current );
	static bool			IsValidSpeed( int32_t speed );

	int32_t				GetDirection() const { return direction; }
	void				GetCell( int32_t &x, int32_t &y ) const { x = cellX; y = cellY; }
	void				GetTarget( int32_t &x, int32_t &y ) const { x = targetX; y = targetY; }
	void				GetPending( int32_t &x, int32_t &y ) const { x = pendingX; y = pendingY; }
	const cAStar *		GetSearch() const { return search.get(); }

private:
	void				ClearPending() { pendingX = -1; pendingY = -1; }
	bool				HasPending() const { return pendingX != -1 || pendingY != -1; }
	int32_t				Replan( int32_t &facing );

	int32_t				cellX;				// the cell whose corner the mover last stood on
	int32_t				cellY;
	int32_t				targetX;			// the current destination
	int32_t				targetY;
	int32_t				pendingX;			// a destination for the next corner, -1 when none
	int32_t				pendingY;
	int32_t				direction;			// of the current step, 1 to 8; 0 when idle
	std::unique_ptr<cAStar>	search;			// holds the current path; null when none is held
	const int32_t *		walkMap;			// the scene's walk layer, not owned
};
