// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/WalkLattice.h"

#include <cassert>
#include <functional>
#include <queue>
#include <utility>

#include "actors/ActorTypes.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

using tQueueEntry = std::pair<int32_t, int32_t>;		// cost, node
using tQueue = std::priority_queue<tQueueEntry, std::vector<tQueueEntry>, std::greater<tQueueEntry>>;

// Floor division, so that positions left of the offset fall into the square before it.
int32_t FloorDiv( int32_t value, int32_t divisor ) {
	return value >= 0 ? value / divisor : -( ( -value + divisor - 1 ) / divisor );
}

// Visits the neighbours of a node with the cost of the move to each.
template <typename tVisit>
void ForEachMove( const cWalkLattice &lattice, int32_t node, tVisit visit ) {
	for ( int32_t direction = DIR_UP; direction <= DIR_DOWN_LEFT; direction++ ) {
		const int32_t next = lattice.GetNeighbour( node, direction );
		if ( next != cWalkLattice::NO_NODE ) {
			visit( next, direction >= DIR_UP_RIGHT ? cWalkLattice::DIAGONAL_COST : cWalkLattice::STRAIGHT_COST );
		}
	}
}

}

cWalkLattice::cWalkLattice( const cScene &scene, int32_t offsetX, int32_t offsetY )
	: scene( scene ), offsetX( offsetX ), offsetY( offsetY ) {
	assert( offsetX >= 0 && offsetX < STEP && offsetY >= 0 && offsetY < STEP );
	columns = ( WORLD_WIDTH - BODY_SIZE - offsetX ) / STEP + 1;
	rows = ( WORLD_HEIGHT - BODY_SIZE - offsetY ) / STEP + 1;
}

void cWalkLattice::GetPosition( int32_t node, int32_t &x, int32_t &y ) const {
	assert( node >= 0 && node < GetNodeCount() );
	x = offsetX + ( node % columns ) * STEP;
	y = offsetY + ( node / columns ) * STEP;
}

int32_t cWalkLattice::FindNode( int32_t x, int32_t y ) const {
	if ( x < offsetX || y < offsetY || ( x - offsetX ) % STEP != 0 || ( y - offsetY ) % STEP != 0 ) {
		return NO_NODE;
	}
	const int32_t i = ( x - offsetX ) / STEP;
	const int32_t j = ( y - offsetY ) / STEP;
	return i < columns && j < rows ? j * columns + i : NO_NODE;
}

int cWalkLattice::GetSurroundingNodes( int32_t x, int32_t y, int32_t nodes[4] ) const {
	const int32_t i0 = FloorDiv( x - offsetX, STEP );
	const int32_t j0 = FloorDiv( y - offsetY, STEP );
	const int32_t i1 = ( x - offsetX ) % STEP == 0 ? i0 : i0 + 1;
	const int32_t j1 = ( y - offsetY ) % STEP == 0 ? j0 : j0 + 1;
	int count = 0;
	for ( int32_t j = j0; j <= j1; j++ ) {
		for ( int32_t i = i0; i <= i1; i++ ) {
			if ( i >= 0 && i < columns && j >= 0 && j < rows && IsOpen( j * columns + i ) ) {
				nodes[count++] = j * columns + i;
			}
		}
	}
	return count;
}

bool cWalkLattice::IsOpen( int32_t node ) const {
	int32_t x = 0;
	int32_t y = 0;
	GetPosition( node, x, y );
	return scene.IsFree( x, y, false );
}

int32_t cWalkLattice::GetNeighbour( int32_t node, int32_t direction ) const {
	int32_t dx = 0;
	int32_t dy = 0;
	GetDirectionVector( direction, dx, dy );
	const int32_t i = node % columns + dx;
	const int32_t j = node / columns + dy;
	if ( ( dx == 0 && dy == 0 ) || i < 0 || i >= columns || j < 0 || j >= rows ) {
		return NO_NODE;
	}
	const int32_t next = j * columns + i;
	if ( !IsOpen( next ) ) {
		return NO_NODE;
	}
	// The player step tries each axis alone, so a slanted move needs both of its straight halves.
	if ( dx != 0 && dy != 0 && ( !IsOpen( node + dx ) || !IsOpen( node + dy * columns ) ) ) {
		return NO_NODE;
	}
	return next;
}

void cWalkLattice::FillDistances( const std::vector<int32_t> &goals, std::vector<int32_t> &distances,
								  int32_t maxCost ) const {
	distances.assign( GetNodeCount(), UNREACHED );
	tQueue open;
	for ( int32_t goal : goals ) {
		if ( goal != NO_NODE && IsOpen( goal ) ) {
			distances[goal] = 0;
			open.push( { 0, goal } );
		}
	}
	while ( !open.empty() ) {
		const tQueueEntry entry = open.top();
		open.pop();
		if ( entry.first > distances[entry.second] ) {
			continue;
		}
		ForEachMove( *this, entry.second, [&]( int32_t next, int32_t cost ) {
			const int32_t total = entry.first + cost;
			if ( total < distances[next] && total <= maxCost ) {
				distances[next] = total;
				open.push( { total, next } );
			}
		} );
	}
}

void cLocalSearch::Run( const cWalkLattice &lattice, int32_t startNode, int32_t maxCost ) {
	for ( int32_t node : reached ) {
		costs[node] = cWalkLattice::UNREACHED;
	}
	reached.clear();
	if ( static_cast<int32_t>( costs.size() ) != lattice.GetNodeCount() ) {
		costs.assign( lattice.GetNodeCount(), cWalkLattice::UNREACHED );
		parents.assign( lattice.GetNodeCount(), cWalkLattice::NO_NODE );
	}
	start = startNode;
	if ( start == cWalkLattice::NO_NODE ) {
		return;
	}
	tQueue open;
	costs[start] = 0;
	parents[start] = cWalkLattice::NO_NODE;
	open.push( { 0, start } );
	while ( !open.empty() ) {
		const tQueueEntry entry = open.top();
		open.pop();
		if ( entry.first > costs[entry.second] ) {
			continue;
		}
		reached.push_back( entry.second );
		ForEachMove( lattice, entry.second, [&]( int32_t next, int32_t cost ) {
			const int32_t total = entry.first + cost;
			if ( total < costs[next] && total <= maxCost ) {
				costs[next] = total;
				parents[next] = entry.second;
				open.push( { total, next } );
			}
		} );
	}
}

int32_t cLocalSearch::GetCost( int32_t node ) const {
	return node >= 0 && node < static_cast<int32_t>( costs.size() ) ? costs[node] : cWalkLattice::UNREACHED;
}

int32_t cLocalSearch::GetFirstStep( int32_t node ) const {
	if ( GetCost( node ) == cWalkLattice::UNREACHED ) {
		return cWalkLattice::NO_NODE;
	}
	while ( parents[node] != cWalkLattice::NO_NODE && parents[node] != start ) {
		node = parents[node];
	}
	return node;
}
