// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The tiles of the object layer: what stands on a cell and blocks the way. Walls seen from above,
// fences and hedges that join their neighbours, the doors only lumra opens, the crate that opens,
// crates and barriers for cover, the courtyard's brazier pillars, bins, tree pits, lamp posts,
// parked cars, the boss's throne.

#include <string>

#include "TileCanvas.h"
#include "TownCell.h"

struct sObjectLook {
	eObject		object = OBJECT_NONE;
	eMaterial	material = MATERIAL_BRICK;
	int			joins = 0;				// SIDE_ bits: neighbours this wall, fence, hedge, barrier or door continues into
	int			variant = 0;
	bool		acrossColumn = false;	// a door in a wall that runs down a column (players pass left-right)
	eCarColour	colour = CAR_RED;
	eFacing		facing = FACING_RIGHT;
	bool		front = false;			// the car's front cell
};

// How many looks walls, crates and bins have; the level picks one by a hash of the cell.
int					GetObjectVariantCount( eObject object );
std::string			GetObjectTileName( const sObjectLook &look );
// wall, fence, door, box or prop.
const char *		GetObjectCategory( eObject object );
void				PaintObject( cTileCanvas &tile, const sObjectLook &look );
