// SPDX-License-Identifier: GPL-3.0-or-later
// kmvt_level: builds the level from the town's description.
// Usage, from the repository's root: kmvt_level [town description] [map folder]
// (defaults tools/level/town.txt and resources/map/). Writes the four map files, tiles.png and
// the sheet's legend tiles.txt. The same description always gives byte-identical files.

#include <SDL.h>

#include <cstdio>
#include <string>

#include "LevelBuilder.h"
#include "TownPlan.h"
#include "world/Grid.h"

int main( int argc, char **argv ) {
	const std::string townPath = argc > 1 ? argv[1] : "tools/level/town.txt";
	std::string folder = argc > 2 ? argv[2] : "resources/map/";
	if ( !folder.empty() && folder.back() != '/' ) {
		folder += '/';
	}
	cTownPlan plan;
	std::string error;
	if ( !plan.Load( townPath, error ) ) {
		std::fprintf( stderr, "kmvt_level: %s\n", error.c_str() );
		return 1;
	}
	cLevelBuilder builder( plan );
	builder.Build();
	if ( !builder.WriteFiles( folder, error ) ) {
		std::fprintf( stderr, "kmvt_level: %s\n", error.c_str() );
		return 1;
	}
	int floorCells = 0;
	for ( int32_t code : builder.GetWalkMap() ) {
		floorCells += code == WALK_FLOOR ? 1 : 0;
	}
	std::printf( "kmvt_level: %s -> %s: %d tiles, %d floor cells, %zu buildings, %zu trees, %zu cars\n",
				townPath.c_str(), folder.c_str(), builder.GetSheet().GetCount(), floorCells,
				plan.GetBuildings().size(), plan.GetTrees().size(), plan.GetCars().size() );
	return 0;
}
