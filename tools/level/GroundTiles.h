// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The ground tiles of the base layer: asphalt with lane marks and crossings, sidewalks with their
// curbs, the courtyard's flagstones and runner, wooden floors, grass, dirt and parking lots, each
// with the soft shadow that raised things to its top-left cast on it.

#include <string>

#include "TileCanvas.h"
#include "TownCell.h"

// Sides of a cell, as bits of a mask.
const int SIDE_NORTH	= 1;
const int SIDE_EAST		= 2;
const int SIDE_SOUTH	= 4;
const int SIDE_WEST		= 8;
// Corners of a cell, as bits of a mask.
const int CORNER_NORTH_EAST	= 1;
const int CORNER_SOUTH_EAST	= 2;
const int CORNER_SOUTH_WEST	= 4;
const int CORNER_NORTH_WEST	= 8;
// Shadows falling on a cell from its raised neighbours.
const int SHADOW_FROM_NORTH		= 1;
const int SHADOW_FROM_WEST		= 2;
const int SHADOW_FROM_CORNER	= 4;	// only the cell to the top-left is raised

struct sGroundLook {
	eGround		ground = GROUND_ASPHALT;
	int			variant = 0;
	eAxis		laneMark = AXIS_NONE;
	eAxis		crosswalk = AXIS_NONE;
	int			edges = 0;				// SIDE_ bits: curbs of a sidewalk, the border of a runner
	int			corners = 0;			// CORNER_ bits: outer curb corners of a sidewalk
	int			shadows = 0;			// SHADOW_ bits
};

// How many looks each kind of ground has; the level picks one by a hash of the cell.
int					GetGroundVariantCount( eGround ground );
// The look a roll of 0 to 15 gives, common looks taking more of the rolls.
int					PickGroundVariant( eGround ground, uint32_t roll );
std::string			GetGroundTileName( const sGroundLook &look );
// "floor" for ground players walk on, "ground" for the rest.
const char *		GetGroundCategory( eGround ground );
void				PaintGround( cTileCanvas &tile, const sGroundLook &look );
