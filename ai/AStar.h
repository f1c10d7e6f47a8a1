// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cAStar finds one enemy's way between two cells of the walk layer: an A* search over the
// 8-connected grid that never cuts a corner, on a snapshot of the walk layer taken when loaded.
// Each search runs on a fresh object, which the path that asked for it keeps until it ends. The
// search's working memory (about 190 KB) sits apart from the path it found: a copy holds the
// path alone, and cannot search.

#include <cstdint>
#include <memory>
#include <vector>

#include "world/Grid.h"

class cAStar {
public:
	static constexpr int32_t RESULT_FOUND = 1;
	static constexpr int32_t RESULT_NO_PATH = 0;
	static constexpr int32_t PASSABLE = 1;
	static constexpr int32_t NOT_PASSABLE = 0;
	static constexpr int32_t STRAIGHT_COST = 10;
	static constexpr int32_t DIAGONAL_COST = 14;
	static constexpr int32_t HEURISTIC_WEIGHT = 10;		// times the Manhattan distance in cells

						cAStar();
						cAStar( const cAStar &other );
	cAStar &			operator=( const cAStar & ) = delete;
	virtual				~cAStar();

	// Makes the path storage ready; it stays empty until a search succeeds.
	void				InitPathBuffer();
	// Takes the snapshot: only plain floor (walk code 1) can be walked. walkMap holds 4500
	// codes, cell (c, r) at r * 60 + c.
	void				SetPassability( const int32_t *walkMap );
	// RESULT_FOUND with the path stored, or RESULT_NO_PATH. Cells outside the grid find nothing.
	int32_t				FindPath( int32_t startX, int32_t startY, int32_t targetX, int32_t targetY );
	// The next cell of the path, from the first step on to the target.
	void				ReadNextStep( int32_t &x, int32_t &y );
	// Cell i of the path, 1 being the start's neighbour and GetPathLength() the target. Any
	// other index is refused: the target is given instead, or -1 when no path is held.
	int32_t				ReadStepX( int32_t i ) const;
	int32_t				ReadStepY( int32_t i ) const;
	void				FreePathBuffer();
	// Diagnostic dump to standard output: the length, then every cell as "(x,y),".
	void				PrintPath() const;

	int32_t				GetPathLength() const { return pathLength; }
	int32_t				GetNextStep() const { return nextStep; }

private:
	static constexpr int32_t CELL_COLUMNS = MAP_COLUMNS + 1;	// per-cell arrays keep a spare column
	static constexpr int32_t CELL_ROWS = MAP_ROWS + 1;			// and a spare row
	static constexpr int32_t ITEM_COUNT = MAP_CELLS + 2;		// item ids start at 1
	static constexpr int32_t MARK_LIMIT = 1000000;				// marks restart from 0 beyond it
	static constexpr int32_t FIRST_CLOSED_MARK = 10;

	void				PrepareMarks();
	// Takes the open list's top item off the heap; its cell goes to the closed list.
	void				TakeTopItem( int32_t openCount, int32_t &x, int32_t &y );
	void				SiftDown( int32_t openCount );
	void				BubbleUp( int32_t position );
	void				ExpandCell( int32_t x, int32_t y, int32_t targetX, int32_t targetY, int32_t &openCount,
									int32_t &lastItem );
	bool				CanEnter( int32_t x, int32_t y, int32_t a, int32_t b ) const;
	void				AddToOpenList( int32_t x, int32_t y, int32_t a, int32_t b, int32_t stepCost,
									int32_t targetX, int32_t targetY, int32_t &openCount, int32_t &lastItem );
	void				ImproveOpenCell( int32_t x, int32_t y, int32_t a, int32_t b, int32_t stepCost, int32_t openCount );
	void				StorePath( int32_t startX, int32_t startY, int32_t targetX, int32_t targetY );
	bool				IsStepIndex( int32_t i ) const { return i >= 1 && i <= pathLength; }
	int32_t				ClampStepIndex( int32_t i ) const;

	// The lists and the snapshot of one search; what a copy leaves behind.
	struct cWork {
		uint8_t			passable[MAP_COLUMNS][MAP_ROWS];
		int32_t			openHeap[ITEM_COUNT];			// item ids, a min-heap on F from position 1
		int32_t			listMark[CELL_COLUMNS][CELL_ROWS];
		int32_t			openX[ITEM_COUNT];
		int32_t			openY[ITEM_COUNT];
		int32_t			parentX[CELL_COLUMNS][CELL_ROWS];
		int32_t			parentY[CELL_COLUMNS][CELL_ROWS];
		int32_t			costF[ITEM_COUNT];
		int32_t			costG[CELL_COLUMNS][CELL_ROWS];
		int32_t			costH[ITEM_COUNT];
		int32_t			cellItem[CELL_COLUMNS][CELL_ROWS];	// item id of each cell on the open list
	};

	int32_t				closedMark;						// the closed list's mark; the open list's is one less
	std::unique_ptr<cWork>	work;						// null in a copy
	int32_t				pathLength;						// in cells, the start not counted
	std::vector<int32_t> pathCells;						// x then y of each cell, first step to target
	int32_t				nextStep;						// 1-based index of the cell ReadNextStep gives
};
