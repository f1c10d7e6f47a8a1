// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the town description says about one cell of the level, before any tile is chosen: the
// ground, the thing standing on it and what covers it from above.

#include <cstdint>

enum eGround {
	GROUND_ASPHALT,
	GROUND_SIDEWALK,
	GROUND_PLAZA,		// the courtyard's flagstones
	GROUND_CARPET,		// the red runner through the courtyard
	GROUND_INDOOR,		// wooden floor inside a building
	GROUND_GRASS,		// the kinds below are never walked on
	GROUND_DIRT,
	GROUND_LOT,			// a fenced parking lot
	GROUND_COUNT
};

enum eObject {
	OBJECT_NONE,
	OBJECT_WALL,
	OBJECT_FENCE,
	OBJECT_HEDGE,
	OBJECT_DOOR,
	OBJECT_BOX,			// a crate that opens
	OBJECT_CRATES,		// crates that only give cover
	OBJECT_BARRIER,
	OBJECT_PILLAR,
	OBJECT_BIN,
	OBJECT_CAR,
	OBJECT_TRUNK,
	OBJECT_LAMP,		// a street lamp's post
	OBJECT_THRONE		// the boss's seat at the end of the courtyard
};

enum eMaterial {
	MATERIAL_BRICK,
	MATERIAL_CONCRETE,
	MATERIAL_STONE
};

enum eRoof {
	ROOF_FLAT,			// concrete with a parapet
	ROOF_TILED,			// red clay, pitched
	ROOF_SLATE,			// blue-grey slate, pitched
	ROOF_METAL			// corrugated sheets
};

enum eOver {
	OVER_NONE,
	OVER_ROOF,
	OVER_CANOPY,
	OVER_GLOW			// the light of a street lamp
};

// The direction a line on the ground runs in.
enum eAxis {
	AXIS_NONE,
	AXIS_ROW,			// left to right
	AXIS_COLUMN			// top to bottom
};

enum eCarColour {
	CAR_RED,
	CAR_BLUE,
	CAR_OLIVE,
	CAR_GREY,
	CAR_WHITE,
	CAR_TAXI,
	CAR_POLICE,
	CAR_WRECK,
	CAR_COLOUR_COUNT
};

// Facing of a parked car: where its front points.
enum eFacing {
	FACING_RIGHT,
	FACING_LEFT,
	FACING_DOWN,
	FACING_UP
};

struct sTownCell {
	eGround		ground = GROUND_DIRT;
	eAxis		laneMark = AXIS_NONE;		// the dashed centre line of a road
	eAxis		crosswalk = AXIS_NONE;		// zebra stripes for walking along this axis
	bool		closed = false;				// nobody walks here, whatever the ground
	eObject		object = OBJECT_NONE;
	eMaterial	material = MATERIAL_BRICK;	// of a wall
	int			car = -1;					// the car standing here, an index into the plan's cars
	eOver		over = OVER_NONE;
	int			overOwner = -1;				// the building, tree or lamp above, an index into the plan
};

// A roof seen from above: over a solid building, or over a room whose floor and walls show
// when the game lifts the roof.
struct sBuilding {
	int			column0, row0, column1, row1;	// corners, inclusive
	eRoof		roof;
	bool		solid;							// wall under the whole roof
};

struct sTree {
	int			column, row;					// the trunk; the canopy covers the 3 x 3 cells around it
};

// A street lamp: its post stands in the cell, its head hangs over the cell's bottom-right
// corner and lights the 2 x 2 cells around that corner.
struct sLamp {
	int			column, row;
};

struct sCar {
	int			column, row;					// the rear cell
	eFacing		facing;
	eCarColour	colour;
};
