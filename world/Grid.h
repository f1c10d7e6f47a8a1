#pragma once
// The level's grid and the codes of its walk layer.

#include <cstdint>

#include "platform/ScreenSize.h"

const int MAP_COLUMNS		= 60;
const int MAP_ROWS			= 75;
const int MAP_CELLS			= MAP_COLUMNS * MAP_ROWS;
const int CELL_SIZE			= 32;						// in pixels
const int WORLD_WIDTH		= MAP_COLUMNS * CELL_SIZE;	// in pixels
const int WORLD_HEIGHT		= MAP_ROWS * CELL_SIZE;		// in pixels
const int BODY_SIZE			= 32;						// side of a character or item, in pixels
const int BULLET_SIZE		= 20;						// side of a bullet's box, in pixels

enum eWalkCode : int32_t {
	WALK_FLOOR				= 1,
	WALK_BOX				= 2,	// closed box: anyone next to it opens it
	WALK_DOOR				= 3,	// closed door: only lumra opens it
	WALK_ENEMY				= 99	// floor an enemy stands on this frame; blocks path search only
};

inline bool IsInGrid( int column, int row ) {
	return column >= 0 && column < MAP_COLUMNS && row >= 0 && row < MAP_ROWS;
}

inline int CellIndex( int column, int row ) {
	return row * MAP_COLUMNS + column;
}
