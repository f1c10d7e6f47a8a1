// SPDX-License-Identifier: GPL-3.0-or-later
#include "SearchPeers.h"

#include <libtcod/path.h>

#include <cstdlib>
#include <random>

#include "ai/AStar.h"
#include "world/Grid.h"

bool SearchLikeTheGame( const int32_t *walkMap, const cSearchPair &pair, tPathCells *cells ) {
	cAStar *search = new cAStar();
	search->InitPathBuffer();
	search->SetPassability( walkMap );
	const bool found = search->FindPath( pair.startX, pair.startY, pair.goalX, pair.goalY ) == cAStar::RESULT_FOUND;
	if ( found && cells != nullptr ) {
		cells->clear();
		for ( int32_t i = 1; i <= search->GetPathLength(); i++ ) {
			cells->push_back( search->ReadStepX( i ) );
			cells->push_back( search->ReadStepY( i ) );
		}
	}
	search->FreePathBuffer();
	delete search;
	return found;
}

cTcodSearch::cTcodSearch( const int32_t *walkMap )
	: floor( MAP_CELLS ),
	path( nullptr ) {
	for ( int i = 0; i < MAP_CELLS; i++ ) {
		floor[i] = walkMap[i] == WALK_FLOOR ? 1 : 0;
	}
	path = TCOD_path_new_using_function( MAP_COLUMNS, MAP_ROWS, &cTcodSearch::GetCost, this, DIAGONAL_COST );
}

cTcodSearch::~cTcodSearch() {
	TCOD_path_delete( path );
}

bool cTcodSearch::Compute( const cSearchPair &pair ) {
	return TCOD_path_compute( path, pair.startX, pair.startY, pair.goalX, pair.goalY );
}

tPathCells cTcodSearch::GetCells() const {
	tPathCells cells;
	const int size = TCOD_path_size( path );
	for ( int i = 0; i < size; i++ ) {
		int x = 0;
		int y = 0;
		TCOD_path_get( path, i, &x, &y );
		cells.push_back( x );
		cells.push_back( y );
	}
	return cells;
}

// Plain floor only, and a diagonal step only with both cells beside it free, as in the game.
float cTcodSearch::GetCost( int xFrom, int yFrom, int xTo, int yTo, void *data ) {
	const cTcodSearch *self = static_cast<const cTcodSearch *>( data );
	const uint8_t *floor = self->floor.data();
	if ( !floor[CellIndex( xTo, yTo )] ) {
		return 0.0f;
	}
	if ( xFrom != xTo && yFrom != yTo && ( !floor[CellIndex( xTo, yFrom )] || !floor[CellIndex( xFrom, yTo )] ) ) {
		return 0.0f;
	}
	return 1.0f;
}

double GetPathCost( int32_t startX, int32_t startY, const tPathCells &cells ) {
	double cost = 0.0;
	int32_t x = startX;
	int32_t y = startY;
	for ( size_t i = 0; i + 1 < cells.size(); i += 2 ) {
		cost += ( cells[i] != x && cells[i + 1] != y ) ? 1.4 : 1.0;
		x = cells[i];
		y = cells[i + 1];
	}
	return cost;
}

std::vector<cSearchPair> MakeSearchPairs( const int32_t *walkMap, int count ) {
	std::vector<int32_t> floorCells;
	for ( int i = 0; i < MAP_CELLS; i++ ) {
		if ( walkMap[i] == WALK_FLOOR ) {
			floorCells.push_back( i );
		}
	}
	std::vector<cSearchPair> pairs;
	if ( floorCells.size() < 2 ) {
		return pairs;
	}
	std::mt19937 random( 20240601u );
	std::uniform_int_distribution<size_t> pick( 0, floorCells.size() - 1 );
	const int attempts = count * 50;
	for ( int attempt = 0; attempt < attempts && static_cast<int>( pairs.size() ) < count; attempt++ ) {
		const int32_t from = floorCells[pick( random )];
		const int32_t to = floorCells[pick( random )];
		const cSearchPair pair = { from % MAP_COLUMNS, from / MAP_COLUMNS, to % MAP_COLUMNS, to / MAP_COLUMNS };
		if ( from != to && SearchLikeTheGame( walkMap, pair, nullptr ) ) {
			pairs.push_back( pair );
		}
	}
	return pairs;
}
