// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The two searches the benchmark compares on the same start and goal cells: the game's A*, run
// as a path runs it (a fresh search object per search), and libtcod's A* with a cost function
// that forbids cut corners as the game does, its path object kept for every search.

#include <cstdint>
#include <vector>

struct TCOD_Path;

struct cSearchPair {
	int32_t		startX, startY, goalX, goalY;
};

// Cells of a path from the first step to the goal, x then y.
using tPathCells = std::vector<int32_t>;

// New object, InitPathBuffer, SetPassability, FindPath, FreePathBuffer, delete. The cells are
// copied out only when asked for (not in timed runs).
bool						SearchLikeTheGame( const int32_t *walkMap, const cSearchPair &pair, tPathCells *cells );

class cTcodSearch {
public:
	static constexpr float DIAGONAL_COST = 1.4f;

	explicit				cTcodSearch( const int32_t *walkMap );
							~cTcodSearch();
	cTcodSearch( const cTcodSearch & ) = delete;
	cTcodSearch &operator=( const cTcodSearch & ) = delete;

	bool					Compute( const cSearchPair &pair );
	tPathCells				GetCells() const;

private:
	static float			GetCost( int xFrom, int yFrom, int xTo, int yTo, void *data );

	std::vector<uint8_t>	floor;			// 1 where the walk layer holds plain floor, row by row
	TCOD_Path *				path;
};

// Length of a walk from the start through the cells: 1 per straight step, 1.4 per diagonal one.
double						GetPathCost( int32_t startX, int32_t startY, const tPathCells &cells );
// Start and goal cells of plain floor, drawn from a fixed seed, that the game's search connects.
std::vector<cSearchPair>	MakeSearchPairs( const int32_t *walkMap, int count );
