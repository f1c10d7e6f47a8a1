// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestMaps.h"

#include <gtest/gtest.h>

#include "TempDir.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

// Walk code and object tile of one picture character; false for a character not in the legend.
bool DecodeCell( char symbol, int32_t &walk, int32_t &object ) {
	switch ( symbol ) {
		case '.': walk = WALK_FLOOR; object = 0; return true;
		case '#': walk = 0; object = TEST_WALL_TILE; return true;
		case 'B': walk = WALK_BOX; object = TEST_BOX_TILE; return true;
		case 'D': walk = WALK_DOOR; object = TEST_DOOR_TILE; return true;
		case 'E': walk = WALK_ENEMY; object = 0; return true;
		default: return false;
	}
}

}

std::unique_ptr<cScene> cTestLayers::Build() const {
	return cScene::FromLayers( base, object, walk, over );
}

void cTestLayers::WriteFiles( const cTempDir &folder, const std::string &under ) const {
	folder.WriteFile( under + "basemap.txt", FormatLayer( base ) );
	folder.WriteFile( under + "objectmap.txt", FormatLayer( object ) );
	folder.WriteFile( under + "walkmap.txt", FormatLayer( walk ) );
	folder.WriteFile( under + "overmap.txt", FormatLayer( over ) );
}

cTestLayers DrawLayers( const std::vector<std::string> &picture, int column, int row ) {
	cTestLayers layers;
	layers.base.assign( MAP_CELLS, TEST_GROUND_TILE );
	layers.object.assign( MAP_CELLS, TEST_WALL_TILE );
	layers.walk.assign( MAP_CELLS, 0 );
	layers.over.assign( MAP_CELLS, 0 );
	for ( size_t r = 0; r < picture.size(); r++ ) {
		for ( size_t c = 0; c < picture[r].size(); c++ ) {
			const int cellColumn = column + static_cast<int>( c );
			const int cellRow = row + static_cast<int>( r );
			if ( !IsInGrid( cellColumn, cellRow ) ) {
				ADD_FAILURE() << "test map: picture cell (" << c << ", " << r << ") lands outside the grid";
				continue;
			}
			int32_t walk = 0;
			int32_t object = 0;
			if ( !DecodeCell( picture[r][c], walk, object ) ) {
				ADD_FAILURE() << "test map: unknown character '" << picture[r][c] << "' in row " << r;
				continue;
			}
			const int index = CellIndex( cellColumn, cellRow );
			layers.walk[index] = walk;
			layers.object[index] = object;
		}
	}
	return layers;
}

std::unique_ptr<cScene> MakeScene( const std::vector<std::string> &picture, int column, int row ) {
	return DrawLayers( picture, column, row ).Build();
}

std::unique_ptr<cScene> MakeOpenScene() {
	cTestLayers layers = DrawLayers( {} );
	layers.walk.assign( MAP_CELLS, WALK_FLOOR );
	layers.object.assign( MAP_CELLS, 0 );
	return layers.Build();
}

std::string FormatLayer( const std::vector<int32_t> &codes ) {
	std::string text;
	for ( size_t i = 0; i < codes.size(); i++ ) {
		text += std::to_string( codes[i] );
		text += ( i + 1 ) % MAP_COLUMNS == 0 ? "\n" : " ";
	}
	return text;
}
