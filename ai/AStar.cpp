// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/AStar.h"

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <cstring>

// The snapshot starts all wall and the marks all clear, so a fresh object never mistakes
// leftover memory for a cell on one of its lists.
cAStar::cAStar()
	: closedMark( FIRST_CLOSED_MARK ),
	work( new cWork ),
	pathLength( 0 ),
	nextStep( 1 ) {
	std::memset( work->passable, NOT_PASSABLE, sizeof( work->passable ) );
	std::memset( work->listMark, 0, sizeof( work->listMark ) );
}

// A copy holds the path only: searching again needs a fresh object.
cAStar::cAStar( const cAStar &other )
	: closedMark( other.closedMark ),
	pathLength( other.pathLength ),
	pathCells( other.pathCells ),
	nextStep( other.nextStep ) {
}

cAStar::~cAStar() = default;

void cAStar::InitPathBuffer() {
	pathCells.clear();
	pathLength = 0;
}

void cAStar::SetPassability( const int32_t *walkMap ) {
	assert( walkMap != nullptr && work != nullptr && "a copy cannot search" );
	if ( work == nullptr ) {
		return;
	}
	cWork &w = *work;
	for ( int32_t x = 0; x < MAP_COLUMNS; x++ ) {
		const int32_t *cell = walkMap + x;
		for ( int32_t y = 0; y < MAP_ROWS; y++, cell += MAP_COLUMNS ) {
			w.passable[x][y] = ( *cell == WALK_FLOOR ) ? PASSABLE : NOT_PASSABLE;
		}
	}
}

// The search stops as soon as the target joins the open list, and the heuristic overrates
// diagonal ways, so enemies take the first way found rather than always the shortest one.
int32_t cAStar::FindPath( int32_t startX, int32_t startY, int32_t targetX, int32_t targetY ) {
	if ( work == nullptr || !IsInGrid( startX, startY ) || !IsInGrid( targetX, targetY ) ) {
		return RESULT_NO_PATH;
	}
	cWork &w = *work;
	if ( w.passable[targetX][targetY] == NOT_PASSABLE ) {
		return RESULT_NO_PATH;
	}
	PrepareMarks();
	const int32_t openMark = closedMark - 1;
	pathLength = 0;
	w.costG[startX][startY] = 0;
	// The start is item 1 and is taken at once; the first cell added after it reuses that id.
	int32_t openCount = 1;
	int32_t lastItem = 0;
	w.openHeap[1] = 1;
	w.openX[1] = startX;
	w.openY[1] = startY;
	while ( openCount > 0 ) {
		int32_t x = 0;
		int32_t y = 0;
		TakeTopItem( openCount, x, y );
		openCount--;
		ExpandCell( x, y, targetX, targetY, openCount, lastItem );
		if ( w.listMark[targetX][targetY] == openMark ) {
			StorePath( startX, startY, targetX, targetY );
			return RESULT_FOUND;
		}
	}
	return RESULT_NO_PATH;
}

// The neighbours row by row from the top-left; the cell itself is skipped as closed.
void cAStar::ExpandCell( int32_t x, int32_t y, int32_t targetX, int32_t targetY, int32_t &openCount, int32_t &lastItem ) {
	cWork &w = *work;
	const int32_t openMark = closedMark - 1;
	for ( int32_t b = y - 1; b <= y + 1; b++ ) {
		for ( int32_t a = x - 1; a <= x + 1; a++ ) {
			if ( !CanEnter( x, y, a, b ) ) {
				continue;
			}
			const int32_t stepCost = ( a != x && b != y ) ? DIAGONAL_COST : STRAIGHT_COST;
			if ( w.listMark[a][b] != openMark ) {
				AddToOpenList( x, y, a, b, stepCost, targetX, targetY, openCount, lastItem );
			} else {
				ImproveOpenCell( x, y, a, b, stepCost, openCount );
			}
		}
	}
}

// Each search moves the marks on by two instead of clearing its lists; only after a very long
// run of searches on one object are the marks wiped and started over.
void cAStar::PrepareMarks() {
	cWork &w = *work;
	if ( closedMark > MARK_LIMIT ) {
		std::memset( w.listMark, 0, sizeof( w.listMark ) );
		closedMark = FIRST_CLOSED_MARK;
	}
	closedMark += 2;
}

void cAStar::TakeTopItem( int32_t openCount, int32_t &x, int32_t &y ) {
	cWork &w = *work;
	const int32_t item = w.openHeap[1];
	x = w.openX[item];
	y = w.openY[item];
	w.listMark[x][y] = closedMark;
	w.openHeap[1] = w.openHeap[openCount];
	SiftDown( openCount - 1 );
}

// On equal F a child rises over its parent, and the right child over an equal left one.
void cAStar::SiftDown( int32_t openCount ) {
	cWork &w = *work;
	int32_t v = 1;
	for ( ;; ) {
		const int32_t u = v;
		if ( 2 * u + 1 <= openCount ) {
			if ( w.costF[w.openHeap[u]] >= w.costF[w.openHeap[2 * u]] ) {
				v = 2 * u;
			}
			if ( w.costF[w.openHeap[v]] >= w.costF[w.openHeap[2 * u + 1]] ) {
				v = 2 * u + 1;
			}
		} else if ( 2 * u <= openCount ) {
			if ( w.costF[w.openHeap[u]] >= w.costF[w.openHeap[2 * u]] ) {
				v = 2 * u;
			}
		}
		if ( u == v ) {
			return;
		}
		const int32_t item = w.openHeap[u];
		w.openHeap[u] = w.openHeap[v];
		w.openHeap[v] = item;
	}
}

// A newly added cell rises over parents of equal F.
void cAStar::BubbleUp( int32_t position ) {
	cWork &w = *work;
	int32_t m = position;
	while ( m != 1 && w.costF[w.openHeap[m]] <= w.costF[w.openHeap[m / 2]] ) {
		const int32_t item = w.openHeap[m / 2];
		w.openHeap[m / 2] = w.openHeap[m];
		w.openHeap[m] = item;
		m /= 2;
	}
}

// A diagonal step needs both cells beside it free: corners are never cut.
bool cAStar::CanEnter( int32_t x, int32_t y, int32_t a, int32_t b ) const {
	cWork &w = *work;
	if ( a == -1 || b == -1 || a == MAP_COLUMNS || b == MAP_ROWS ) {
		return false;
	}
	if ( w.listMark[a][b] == closedMark ) {
		return false;
	}
	if ( w.passable[a][b] == NOT_PASSABLE ) {
		return false;
	}
	if ( a != x && b != y ) {
		return w.passable[a][y] == PASSABLE && w.passable[x][b] == PASSABLE;
	}
	return true;
}

void cAStar::AddToOpenList( int32_t x, int32_t y, int32_t a, int32_t b, int32_t stepCost,
							int32_t targetX, int32_t targetY, int32_t &openCount, int32_t &lastItem ) {
	cWork &w = *work;
	lastItem++;
	const int32_t position = openCount + 1;
	w.openHeap[position] = lastItem;
	w.openX[lastItem] = a;
	w.openY[lastItem] = b;
	w.cellItem[a][b] = lastItem;
	w.costG[a][b] = w.costG[x][y] + stepCost;
	w.costH[lastItem] = HEURISTIC_WEIGHT * ( std::abs( a - targetX ) + std::abs( b - targetY ) );
	w.costF[lastItem] = w.costG[a][b] + w.costH[lastItem];
	w.parentX[a][b] = x;
	w.parentY[a][b] = y;
	BubbleUp( position );
	openCount++;
	w.listMark[a][b] = closedMark - 1;
}

// A shorter way to a cell already on the open list: the cell's item is found by a scan of the
// heap and only rises while strictly cheaper than its parent. A cell has one item in a search,
// so the scan looks for that item's id rather than comparing cells.
void cAStar::ImproveOpenCell( int32_t x, int32_t y, int32_t a, int32_t b, int32_t stepCost, int32_t openCount ) {
	cWork &w = *work;
	const int32_t newG = w.costG[x][y] + stepCost;
	if ( newG >= w.costG[a][b] ) {
		return;
	}
	w.parentX[a][b] = x;
	w.parentY[a][b] = y;
	w.costG[a][b] = newG;
	const int32_t item = w.cellItem[a][b];
	for ( int32_t i = 1; i <= openCount; i++ ) {
		if ( w.openHeap[i] == item ) {
			w.costF[item] = newG + w.costH[item];
			int32_t m = i;
			while ( m != 1 && w.costF[w.openHeap[m]] < w.costF[w.openHeap[m / 2]] ) {
				w.openHeap[m] = w.openHeap[m / 2];
				w.openHeap[m / 2] = item;
				m /= 2;
			}
			return;
		}
	}
}

// Walks the parent links from the target back to the start twice: once to count, once to fill
// the cells from the end, so that cell 1 is the start's neighbour.
void cAStar::StorePath( int32_t startX, int32_t startY, int32_t targetX, int32_t targetY ) {
	cWork &w = *work;
	int32_t count = 0;
	for ( int32_t x = targetX, y = targetY; x != startX || y != startY; count++ ) {
		const int32_t px = w.parentX[x][y];
		y = w.parentY[x][y];
		x = px;
	}
	pathLength = count;
	pathCells.resize( 2 * static_cast<size_t>( count ) );
	int32_t x = targetX;
	int32_t y = targetY;
	for ( int32_t i = count; i >= 1; i-- ) {
		pathCells[2 * i - 2] = x;
		pathCells[2 * i - 1] = y;
		const int32_t px = w.parentX[x][y];
		y = w.parentY[x][y];
		x = px;
	}
	nextStep = 1;
}

void cAStar::ReadNextStep( int32_t &x, int32_t &y ) {
	assert( IsStepIndex( nextStep ) && "read past the end of the path" );
	x = ReadStepX( nextStep );
	y = ReadStepY( nextStep );
	if ( IsStepIndex( nextStep ) ) {
		nextStep++;
	}
}

int32_t cAStar::ReadStepX( int32_t i ) const {
	assert( IsStepIndex( i ) && "path cell out of range" );
	if ( pathLength == 0 ) {
		return -1;
	}
	return pathCells[2 * ClampStepIndex( i ) - 2];
}

int32_t cAStar::ReadStepY( int32_t i ) const {
	assert( IsStepIndex( i ) && "path cell out of range" );
	if ( pathLength == 0 ) {
		return -1;
	}
	return pathCells[2 * ClampStepIndex( i ) - 1];
}

int32_t cAStar::ClampStepIndex( int32_t i ) const {
	return IsStepIndex( i ) ? i : pathLength;
}

void cAStar::FreePathBuffer() {
	std::vector<int32_t>().swap( pathCells );
	pathLength = 0;
}

void cAStar::PrintPath() const {
	std::printf( "Path length: " );
	std::printf( "%d ", pathLength );
	std::printf( "\n" );
	for ( int32_t i = 1; i <= pathLength; i++ ) {
		std::printf( "(%d,%d),", ReadStepX( i ), ReadStepY( i ) );
	}
}
