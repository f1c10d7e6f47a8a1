// SPDX-License-Identifier: GPL-3.0-or-later
#include "TownMap.h"

#include <fstream>

#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int BLOCK_ROWS = 7;		// a street of two rows, then five rows of houses
const int BLOCK_COLUMNS = 8;	// a street of two columns, then six columns of houses
const int DIVIDING_ROW = 36;	// the wall across the town
const int GAP_COLUMN = 57;		// the one way through it

bool IsStreet( int column, int row ) {
	return row % BLOCK_ROWS == 1 || row % BLOCK_ROWS == 2 || column % BLOCK_COLUMNS == 1 || column % BLOCK_COLUMNS == 2;
}

// Some pieces of the north-south streets are closed, a fixed pattern over the town.
bool IsClosedPiece( int column, int row ) {
	const int band = row / BLOCK_ROWS;
	const int street = column / BLOCK_COLUMNS;
	const bool inBand = row % BLOCK_ROWS >= 3;
	return inBand && ( band * 5 + street * 3 ) % 4 == 0;
}

}

std::vector<int32_t> DrawTownWalkLayer() {
	std::vector<int32_t> walk( MAP_CELLS, 0 );
	for ( int row = 1; row < MAP_ROWS - 1; row++ ) {
		for ( int column = 1; column < MAP_COLUMNS - 1; column++ ) {
			const bool wall = row == DIVIDING_ROW && column != GAP_COLUMN;
			if ( IsStreet( column, row ) && !IsClosedPiece( column, row ) && !wall ) {
				walk[CellIndex( column, row )] = WALK_FLOOR;
			}
		}
	}
	return walk;
}

std::unique_ptr<cScene> LoadTownScene( const std::string &root, std::string &description ) {
	const std::string folder = root + "/resources/map/";
	if ( std::ifstream( folder + "walkmap.txt" ).good() ) {
		std::unique_ptr<cScene> level( new cScene( folder ) );
		if ( level->IsUsable() ) {
			description = "the level's walk layer (" + folder + "walkmap.txt)";
			return level;
		}
	}
	description = "the drawn town of street blocks";
	const std::vector<int32_t> empty( MAP_CELLS, 0 );
	return cScene::FromLayers( empty, empty, DrawTownWalkLayer(), empty );
}
