// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The tiles of the over layer, drawn above the players: roofs (flat with a parapet, pitched clay
// or slate, corrugated metal), tree canopies that players walk under, and the warm light of the
// street lamps.

#include <string>

#include "TileCanvas.h"
#include "TownCell.h"

// Where a cell of a pitched roof lies: on the slope facing the light, on the one facing away, or
// on the ridge, which runs through the cell's middle or along its edge when the roof is an even
// number of cells across.
enum eRoofSlope {
	SLOPE_LIT,
	SLOPE_SHADED,
	SLOPE_RIDGE_MIDDLE,
	SLOPE_RIDGE_BELOW,
	SLOPE_RIDGE_ABOVE
};

struct sRoofLook {
	eRoof		roof = ROOF_FLAT;
	int			edges = 0;		// SIDE_ bits where the roof ends
	int			variant = 0;	// vents, air conditioners, skylights on flat roofs
	eRoofSlope	slope = SLOPE_LIT;		// pitched roofs: where this cell lies on the roof
	bool		ridgeDownColumn = false;	// the ridge runs top to bottom
};

struct sGlowLook {
	int			partColumn = 0;	// 0 or 1, the cell's place in the 2 x 2 pool of light
	int			partRow = 0;
};

struct sCanopyLook {
	int			variant = 0;
	int			partColumn = 0;	// 0 to 2, the cell's place in the tree's 3 x 3 crown
	int			partRow = 0;
};

// The look of a roof cell from a roll of the cell's hash; pitched roofs have one look.
int					PickRoofVariant( eRoof roof, uint32_t roll );
// The slope of the cell at place (0 on the lit side) of a pitched roof span cells across.
eRoofSlope			GetRoofSlope( int place, int span );
std::string			GetRoofTileName( const sRoofLook &look );
void				PaintRoof( cTileCanvas &tile, const sRoofLook &look );

const int			CANOPY_VARIANTS = 3;		// the last one in autumn colours
std::string			GetCanopyTileName( const sCanopyLook &look );
void				PaintCanopy( cTileCanvas &tile, const sCanopyLook &look );

std::string			GetGlowTileName( const sGlowLook &look );
void				PaintGlow( cTileCanvas &tile, const sGlowLook &look );
