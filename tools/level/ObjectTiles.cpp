// SPDX-License-Identifier: GPL-3.0-or-later
#include "ObjectTiles.h"

#include <cmath>

#include "GroundTiles.h"
#include "tools/art/Palette.h"

namespace {

const uint32_t SHADOW_ALPHA = 0x78;		// the soft shadow loose things cast on the ground

// Walls join along their run: a wall that continues only up and down is painted across and turned.
bool RunsDownColumn( int joins ) {
	const bool vertical = ( joins & ( SIDE_NORTH | SIDE_SOUTH ) ) != 0;
	const bool horizontal = ( joins & ( SIDE_EAST | SIDE_WEST ) ) != 0;
	return vertical && !horizontal;
}

// The same joins seen on the tile turned a quarter: north swaps with west, south with east.
int TransposeSides( int sides ) {
	int turned = 0;
	if ( sides & SIDE_NORTH ) turned |= SIDE_WEST;
	if ( sides & SIDE_WEST ) turned |= SIDE_NORTH;
	if ( sides & SIDE_SOUTH ) turned |= SIDE_EAST;
	if ( sides & SIDE_EAST ) turned |= SIDE_SOUTH;
	return turned;
}

void PaintBrickCourses( cTileCanvas &tile, uint32_t &seed ) {
	tile.Fill( db32::PLUM );
	for ( int course = 0; course < 8; course++ ) {
		const int y = course * 4;
		for ( int x = ( course % 2 ) * -4; x < TILE_SIZE; x += 8 ) {
			const int roll = RandomBelow( seed, 12 );
			const uint32_t brick = roll < 8 ? db32::BROWN_DARK : roll < 10 ? db32::PLUM : db32::BROWN;
			tile.FillRect( x + 1, y + 1, 7, 3, brick );
			tile.DitherRect( x + 1, y + 1, 7, 1, LighterColour( brick ), 3 );
		}
	}
}

void PaintConcrete( cTileCanvas &tile, int variant, uint32_t &seed ) {
	// The cap of a concrete wall: lighter than the pavement below it, cast in sixteen-pixel sections.
	tile.Fill( db32::GREY );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::GREY_DARK, 50 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::STEEL, 10 );
	tile.FillRect( 0, 0, 1, TILE_SIZE, db32::GREY_DEEP );
	tile.FillRect( 16, 0, 1, TILE_SIZE, db32::GREY_DEEP );
	tile.FillRect( 1, 0, 1, TILE_SIZE, db32::STEEL );
	tile.FillRect( 17, 0, 1, TILE_SIZE, db32::STEEL );
	if ( variant == 1 ) {
		for ( int y = 10; y < 24; y++ ) {
			tile.Set( 20 + RandomBelow( seed, 2 ), y, db32::BROWN_DARK );
		}
	} else if ( variant == 2 ) {
		tile.Speckle( seed, 2, 20, 28, 10, db32::MOSS, 30 );
	}
}

void PaintStone( cTileCanvas &tile, uint32_t &seed ) {
	tile.Fill( db32::INK );
	for ( int course = 0; course < 4; course++ ) {
		const int y = course * 8;
		int x = -RandomBelow( seed, 8 );
		while ( x < TILE_SIZE ) {
			const int width = 10 + RandomBelow( seed, 8 );
			const uint32_t stone = RandomBelow( seed, 4 ) == 0 ? db32::SLATE : db32::INDIGO;
			tile.FillRect( x + 1, y + 1, width - 1, 7, stone );
			tile.Speckle( seed, x + 1, y + 1, width - 1, 7, DarkerColour( stone ), 16 );
			tile.DitherRect( x + 1, y + 1, width - 1, 1, LighterColour( stone ), 8 );
			x += width;
		}
	}
}

// Edges of a wall's top that nothing continues from: lit towards the top-left, dark beyond.
void PaintWallEdges( cTileCanvas &tile, int joins ) {
	const int last = TILE_SIZE - 1;
	if ( !( joins & SIDE_NORTH ) ) {
		tile.LightRect( 0, 0, TILE_SIZE, 1, 16 );
		tile.LightRect( 0, 1, TILE_SIZE, 1, 8 );
	}
	if ( !( joins & SIDE_WEST ) ) {
		tile.LightRect( 0, 0, 1, TILE_SIZE, 16 );
		tile.LightRect( 1, 0, 1, TILE_SIZE, 8 );
	}
	if ( !( joins & SIDE_SOUTH ) ) {
		tile.FillRect( 0, last, TILE_SIZE, 1, db32::INK );
		tile.ShadeRect( 0, last - 2, TILE_SIZE, 2, 16 );
	}
	if ( !( joins & SIDE_EAST ) ) {
		tile.FillRect( last, 0, 1, TILE_SIZE, db32::INK );
		tile.ShadeRect( last - 2, 0, 2, TILE_SIZE, 16 );
	}
}

void PaintWall( cTileCanvas &tile, const sObjectLook &look, uint32_t &seed ) {
	const bool turned = RunsDownColumn( look.joins );
	switch ( look.material ) {
	case MATERIAL_BRICK:
		PaintBrickCourses( tile, seed );
		break;
	case MATERIAL_CONCRETE:
		PaintConcrete( tile, look.variant, seed );
		break;
	case MATERIAL_STONE:
		PaintStone( tile, seed );
		break;
	}
	if ( turned ) {
		tile = tile.Transposed();
	}
	PaintWallEdges( tile, look.joins );
}

// An iron fence: a rail towards each joined side, picket tops along it, a post in the middle.
void PaintFence( cTileCanvas &tile, int joins ) {
	const int centre = 15;
	const int runs[4][4] = {	// side, x, y, and whether the rail runs along a row
		{ SIDE_NORTH, centre, 0, 0 }, { SIDE_SOUTH, centre, centre, 0 },
		{ SIDE_WEST, 0, centre, 1 }, { SIDE_EAST, centre, centre, 1 },
	};
	for ( const int *run : runs ) {
		if ( !( joins & run[0] ) ) {
			continue;
		}
		const int w = run[3] ? 17 : 2;
		const int h = run[3] ? 2 : 17;
		tile.FillRect( run[1], run[2], w, h, db32::INK );
		for ( int i = 0; i < 17; i += 4 ) {
			const int px = run[3] ? run[1] + i : centre;
			const int py = run[3] ? centre : run[2] + i;
			tile.FillRect( px, py, 2, 2, db32::GREY_DEEP );
			tile.Set( px, py, db32::GREY );
		}
	}
	tile.FillRect( centre - 2, centre - 2, 6, 6, db32::GREY_DEEP );
	tile.FillRect( centre - 2, centre - 2, 5, 1, db32::GREY );
	tile.FillRect( centre - 2, centre - 2, 1, 5, db32::GREY );
	tile.Set( centre, centre, db32::STEEL );
	tile.CastShadow( 2, 2, SHADOW_ALPHA );
}

// A clipped hedge: a mass of leaf clumps, rounded where it ends.
void PaintHedge( cTileCanvas &tile, int joins, uint32_t &seed ) {
	const int left = ( joins & SIDE_WEST ) ? 0 : 3;
	const int top = ( joins & SIDE_NORTH ) ? 0 : 3;
	const int right = ( joins & SIDE_EAST ) ? TILE_SIZE : TILE_SIZE - 4;
	const int bottom = ( joins & SIDE_SOUTH ) ? TILE_SIZE : TILE_SIZE - 4;
	cTileCanvas mass( TILE_SIZE, TILE_SIZE );
	mass.FillRect( left, top, right - left, bottom - top, db32::MOSS );
	for ( int clump = 0; clump < 26; clump++ ) {
		const int x = left + RandomBelow( seed, right - left );
		const int y = top + RandomBelow( seed, bottom - top );
		mass.FillDisc( x + 0.5f, y + 0.5f, 3.0f, db32::OLIVE_DARK );
		mass.FillDisc( x - 0.5f, y - 0.5f, 2.2f, db32::MOSS );
		mass.Set( x - 1, y - 2, db32::TEAL );
		mass.Set( x - 2, y - 1, db32::TEAL );
	}
	for ( int y = 0; y < TILE_SIZE; y++ ) {
		for ( int x = 0; x < TILE_SIZE; x++ ) {
			if ( x >= left && x < right && y >= top && y < bottom ) {
				tile.Set( x, y, mass.Get( x, y ) );
			}
		}
	}
	// Round the free corners.
	const int cornerX[4] = { left, right - 1, left, right - 1 };
	const int cornerY[4] = { top, top, bottom - 1, bottom - 1 };
	const int cornerFree[4] = { SIDE_NORTH | SIDE_WEST, SIDE_NORTH | SIDE_EAST, SIDE_SOUTH | SIDE_WEST, SIDE_SOUTH | SIDE_EAST };
	for ( int i = 0; i < 4; i++ ) {
		if ( ( joins & cornerFree[i] ) == 0 ) {
			const int dx = i % 2 ? -1 : 1;
			const int dy = i / 2 ? -1 : 1;
			tile.Set( cornerX[i], cornerY[i], 0 );
			tile.Set( cornerX[i] + dx, cornerY[i], 0 );
			tile.Set( cornerX[i], cornerY[i] + dy, 0 );
		}
	}
	tile.LightEdges();
	tile.CastShadow( 3, 3, SHADOW_ALPHA );
}

// The handle and the lock sit where the two leaves meet, or away from the hinge of a single door;
// the lock's light spills on the floor plates either side.
void PaintDoorLock( cTileCanvas &tile, int joins ) {
	const int lockX = ( joins & SIDE_EAST ) ? 25 : ( joins & SIDE_WEST ) ? 4 : 22;
	tile.FillRect( lockX, 14, 3, 4, db32::STEEL );
	tile.Set( lockX, 14, db32::ICE );
	const int lightX = lockX < 16 ? lockX + 5 : lockX - 7;
	tile.FillRect( lightX, 14, 4, 4, db32::VIOLET );
	tile.FillRect( lightX + 1, 15, 2, 2, db32::PINK );
	tile.Set( lightX + 1, 15, db32::WHITE );
	tile.Set( lightX - 1, 15, db32::CYAN );
	tile.Set( lightX + 4, 16, db32::CYAN );
	for ( int side = 0; side < 2; side++ ) {
		const int y = side == 0 ? 4 : 23;
		tile.DitherRect( lightX - 3, y, 10, 5, db32::VIOLET, side == 0 ? 5 : 7 );
		tile.DitherRect( lightX - 1, y + ( side == 0 ? 3 : 0 ), 6, 2, db32::PINK, 4 );
	}
}

// A steel door seen from above, its leaf lying in the wall's run (here along the row). The lock
// glows in lumra's violet and teal: only she opens it.
void PaintDoorAlongRow( cTileCanvas &tile, int joins, uint32_t &seed ) {
	tile.Fill( db32::GREY_DEEP );
	for ( int y = 1; y < TILE_SIZE; y += 3 ) {
		for ( int x = ( y / 3 ) % 2 + 1; x < TILE_SIZE; x += 3 ) {
			tile.Set( x, y, db32::GREY_DARK );
		}
	}
	tile.FillRect( 0, 9, TILE_SIZE, 14, db32::INK );
	tile.FillRect( 0, 10, TILE_SIZE, 12, db32::NAVY );
	tile.FillRect( 0, 10, TILE_SIZE, 1, db32::SKY );
	tile.FillRect( 0, 21, TILE_SIZE, 1, db32::INDIGO );
	tile.FillRect( 0, 13, TILE_SIZE, 1, db32::INDIGO );
	tile.FillRect( 0, 18, TILE_SIZE, 1, db32::INDIGO );
	for ( int x = 3; x < TILE_SIZE; x += 6 ) {
		tile.Set( x, 11, db32::STEEL );
		tile.Set( x, 20, db32::STEEL );
	}
	// Frame posts where the door meets the wall.
	if ( !( joins & SIDE_WEST ) ) {
		tile.FillRect( 0, 6, 4, 20, db32::GREY );
		tile.FillRect( 0, 6, 4, 1, db32::STEEL );
		tile.FillRect( 3, 6, 1, 20, db32::SLATE );
	}
	if ( !( joins & SIDE_EAST ) ) {
		tile.FillRect( 28, 6, 4, 20, db32::GREY );
		tile.FillRect( 28, 6, 4, 1, db32::STEEL );
		tile.FillRect( 28, 6, 1, 20, db32::STEEL );
		tile.FillRect( 31, 6, 1, 20, db32::SLATE );
	}
	PaintDoorLock( tile, joins );
	tile.Speckle( seed, 0, 10, TILE_SIZE, 12, db32::INDIGO, 10 );
}

void PaintDoor( cTileCanvas &tile, const sObjectLook &look, uint32_t &seed ) {
	if ( look.acrossColumn ) {
		PaintDoorAlongRow( tile, TransposeSides( look.joins ), seed );
		tile = tile.Transposed();
	} else {
		PaintDoorAlongRow( tile, look.joins, seed );
	}
}

// The crate that opens: light new wood, a lid of boards on hinges, steel corners, an orange
// strap and a yellow hasp at the front.
void PaintBox( cTileCanvas &tile, uint32_t &seed ) {
	const int x0 = 3;
	const int y0 = 3;
	const int size = 26;
	tile.FillRect( x0, y0, size, size, db32::BROWN_DARK );
	for ( int board = 0; board < 4; board++ ) {
		const int y = y0 + 3 + board * 5;
		tile.FillRect( x0 + 3, y, size - 6, 4, db32::BROWN );
		tile.FillRect( x0 + 3, y, size - 6, 1, db32::TAN );
		tile.Speckle( seed, x0 + 3, y + 1, size - 6, 3, db32::BROWN_DARK, 30 );
	}
	tile.FillRect( x0 + 12, y0, 3, size, db32::ORANGE );
	tile.FillRect( x0 + 12, y0, 1, size, db32::TAN );
	tile.FillRect( x0 + 14, y0, 1, size, db32::BROWN );
	const int corners[4][2] = { { x0, y0 }, { x0 + size - 4, y0 }, { x0, y0 + size - 4 }, { x0 + size - 4, y0 + size - 4 } };
	for ( const int *corner : corners ) {
		tile.FillRect( corner[0], corner[1], 4, 4, db32::GREY );
		tile.Set( corner[0], corner[1], db32::STEEL );
		tile.Set( corner[0] + 2, corner[1] + 2, db32::INK );
	}
	tile.FillRect( x0 + 6, y0, 3, 2, db32::STEEL );
	tile.FillRect( x0 + 17, y0, 3, 2, db32::STEEL );
	tile.FillRect( x0 + 10, y0 + size - 6, 7, 6, db32::GOLD_DARK );
	tile.FillRect( x0 + 11, y0 + size - 5, 5, 4, db32::YELLOW );
	tile.Set( x0 + 13, y0 + size - 4, db32::INK );
	tile.Set( x0 + 13, y0 + size - 3, db32::INK );
	tile.LightEdges();
	tile.CastShadow( 3, 3, SHADOW_ALPHA );
}

void PaintCrateAt( cTileCanvas &tile, int x, int y, int size, uint32_t wood, bool brace ) {
	tile.FillRect( x, y, size, size, DarkerColour( wood ) );
	tile.FillRect( x + 2, y + 2, size - 4, size - 4, wood );
	for ( int line = y + 2 + 4; line < y + size - 2; line += 4 ) {
		tile.FillRect( x + 2, line, size - 4, 1, DarkerColour( wood ) );
	}
	if ( brace ) {
		tile.DrawLine( x + 2, y + 2, x + size - 3, y + size - 3, DarkerColour( wood ) );
		tile.DrawLine( x + 2, y + size - 3, x + size - 3, y + 2, DarkerColour( wood ) );
	}
}

// Crates that only give cover: darker, older wood than the box, with no lock.
void PaintCrates( cTileCanvas &tile, int variant, uint32_t &seed ) {
	switch ( variant ) {
	case 0:
		PaintCrateAt( tile, 3, 3, 26, db32::BROWN_DARK, true );
		break;
	case 1:
		PaintCrateAt( tile, 2, 2, 14, db32::BROWN_DARK, false );
		PaintCrateAt( tile, 16, 3, 13, db32::PLUM, true );
		PaintCrateAt( tile, 4, 16, 13, db32::PLUM, true );
		PaintCrateAt( tile, 17, 17, 12, db32::BROWN_DARK, false );
		break;
	case 2:
		tile.FillRect( 3, 4, 26, 24, db32::INDIGO );
		for ( int fold = 0; fold < 5; fold++ ) {
			const int y = 6 + RandomBelow( seed, 20 );
			tile.FillRect( 4, y, 24, 1, db32::NAVY );
		}
		tile.FillRect( 3, 10, 26, 1, db32::TAN );
		tile.FillRect( 3, 21, 26, 1, db32::TAN );
		tile.FillRect( 12, 4, 1, 24, db32::GOLD_DARK );
		break;
	default:
		tile.FillDisc( 11.0f, 11.0f, 8.5f, db32::RED );
		tile.FillDisc( 11.0f, 11.0f, 6.5f, db32::BROWN_DARK );
		tile.FillDisc( 11.0f, 11.0f, 5.5f, db32::RED );
		tile.FillDisc( 11.0f, 11.0f, 1.5f, db32::INK );
		PaintCrateAt( tile, 15, 15, 14, db32::BROWN_DARK, true );
		break;
	}
	tile.LightEdges();
	tile.CastShadow( 3, 3, SHADOW_ALPHA );
}

// A concrete road barrier with red and white reflectors, painted along a row and turned.
void PaintBarrier( cTileCanvas &tile, int joins ) {
	const bool turned = RunsDownColumn( joins );
	const int sides = turned ? TransposeSides( joins ) : joins;
	const int left = ( sides & SIDE_WEST ) ? 0 : 2;
	const int right = ( sides & SIDE_EAST ) ? TILE_SIZE : TILE_SIZE - 2;
	cTileCanvas body( TILE_SIZE, TILE_SIZE );
	body.FillRect( left, 9, right - left, 14, db32::GREY );
	body.FillRect( left, 15, right - left, 2, db32::STEEL );
	for ( int x = left; x < right; x++ ) {
		const int phase = x % 16;
		if ( phase >= 2 && phase < 6 ) body.FillRect( x, 11, 1, 3, db32::RED );
		if ( phase >= 10 && phase < 14 ) body.FillRect( x, 11, 1, 3, db32::ICE );
	}
	if ( turned ) {
		body = body.Transposed();
	}
	tile = body;
	tile.LightEdges();
	tile.CastShadow( 2, 2, SHADOW_ALPHA );
}

// A stone pillar of the courtyard with a brazier burning on top.
void PaintPillar( cTileCanvas &tile ) {
	for ( int y = 0; y < TILE_SIZE; y++ ) {
		for ( int x = 0; x < TILE_SIZE; x++ ) {
			const float dx = x + 0.5f - 16.0f;
			const float dy = y + 0.5f - 16.0f;
			const float distance = std::sqrt( dx * dx + dy * dy );
			if ( distance < 16.0f && DitherThreshold( x, y ) < int( 8.0f - distance / 2.0f ) ) {
				tile.Set( x, y, db32::WithAlpha( db32::ORANGE, 0x50 ) );
			}
		}
	}
	tile.FillRect( 5, 5, 22, 22, db32::GREY_DEEP );
	tile.FillRect( 5, 5, 22, 3, db32::GREY );
	tile.FillRect( 5, 5, 3, 22, db32::GREY );
	tile.FillRect( 5, 5, 22, 1, db32::STEEL );
	tile.FillRect( 5, 5, 1, 22, db32::STEEL );
	tile.FillRect( 24, 8, 3, 19, db32::SLATE );
	tile.FillRect( 8, 24, 19, 3, db32::SLATE );
	tile.FillDisc( 16.0f, 16.0f, 7.5f, db32::INK );
	tile.FillDisc( 16.0f, 16.0f, 5.5f, db32::RED );
	tile.FillDisc( 15.5f, 15.5f, 4.0f, db32::ORANGE );
	tile.FillDisc( 15.0f, 15.0f, 2.2f, db32::YELLOW );
	tile.Set( 14, 14, db32::WHITE );
	tile.CastShadow( 3, 3, SHADOW_ALPHA );
}

void PaintBin( cTileCanvas &tile, int variant ) {
	if ( variant == 0 ) {
		tile.FillDisc( 16.0f, 16.0f, 8.5f, db32::GREY_DEEP );
		tile.FillDisc( 16.0f, 16.0f, 7.0f, db32::GREY_DARK );
		tile.FillDisc( 16.0f, 16.0f, 4.0f, db32::SLATE );
		tile.FillRect( 13, 15, 7, 2, db32::GREY );
	} else {
		tile.FillRect( 8, 7, 17, 19, db32::MOSS );
		tile.FillRect( 8, 7, 17, 5, db32::TEAL );
		tile.FillRect( 8, 12, 17, 1, db32::OLIVE_DARK );
		tile.FillRect( 14, 8, 5, 2, db32::MOSS );
	}
	tile.LightEdges();
	tile.CastShadow( 2, 2, SHADOW_ALPHA );
}

// The pit a street tree grows from: an iron grate around the trunk.
void PaintTrunk( cTileCanvas &tile ) {
	tile.FillRect( 4, 4, 24, 24, db32::GREY_DEEP );
	tile.FillRect( 6, 6, 20, 20, db32::INK );
	for ( int i = 8; i < 25; i += 3 ) {
		tile.FillRect( i, 6, 1, 20, db32::SLATE );
	}
	tile.FillRect( 4, 4, 24, 1, db32::GREY );
	tile.FillRect( 4, 4, 1, 24, db32::GREY );
	tile.FillDisc( 16.0f, 16.0f, 6.0f, db32::PLUM );
	tile.FillDisc( 16.0f, 16.0f, 5.0f, db32::BROWN_DARK );
	tile.FillDisc( 15.0f, 15.0f, 2.5f, db32::BROWN );
	tile.Set( 9, 19, db32::BROWN_DARK );
	tile.Set( 22, 11, db32::BROWN_DARK );
}

// A street lamp's post seen from above: a foot, the pole's top and the arm that carries the
// head out over the cell's bottom-right corner (the head and its light are drawn above).
void PaintLampPost( cTileCanvas &tile ) {
	tile.FillDisc( 22.0f, 22.0f, 4.5f, db32::GREY_DEEP );
	tile.FillDisc( 21.5f, 21.5f, 2.5f, db32::GREY );
	tile.Set( 21, 21, db32::STEEL );
	for ( int i = 0; i < 9; i++ ) {
		tile.Set( 23 + i, 23 + i, db32::INK );
		tile.Set( 24 + i, 23 + i, db32::GREY_DEEP );
	}
	tile.CastShadow( 3, 3, SHADOW_ALPHA );
}

// The boss's throne seen from above, its back to the west and its seat towards the gate: a gold
// frame, a red cushion, dark violet armrests.
void PaintThrone( cTileCanvas &tile ) {
	tile.FillRect( 2, 3, 8, 26, db32::GOLD_DARK );
	tile.FillRect( 3, 4, 6, 24, db32::TAN );
	tile.FillRect( 5, 6, 2, 20, db32::GOLD_DARK );
	tile.FillRect( 10, 5, 18, 22, db32::BROWN_DARK );
	tile.FillRect( 11, 8, 15, 16, db32::RED );
	tile.FillRect( 11, 8, 15, 1, db32::ROSE );
	tile.FillRect( 11, 8, 1, 16, db32::ROSE );
	tile.Set( 18, 15, db32::BROWN_DARK );
	tile.FillRect( 10, 3, 19, 4, db32::PLUM );
	tile.FillRect( 10, 25, 19, 4, db32::PLUM );
	tile.FillRect( 26, 3, 3, 4, db32::GOLD_DARK );
	tile.FillRect( 26, 25, 3, 4, db32::GOLD_DARK );
	tile.Set( 5, 4, db32::YELLOW );
	tile.Set( 5, 27, db32::YELLOW );
	tile.LightEdges();
	tile.CastShadow( 3, 3, SHADOW_ALPHA );
}

struct sCarColours {
	uint32_t	light;
	uint32_t	body;
	uint32_t	dark;
};

const sCarColours CAR_COLOURS[CAR_COLOUR_COUNT] = {
	{ db32::ROSE, db32::RED, db32::BROWN_DARK },
	{ db32::BLUE, db32::NAVY, db32::INDIGO },
	{ db32::OLIVE, db32::MOSS, db32::OLIVE_DARK },
	{ db32::STEEL, db32::GREY, db32::GREY_DEEP },
	{ db32::WHITE, db32::ICE, db32::STEEL },
	{ db32::YELLOW, db32::TAN, db32::GOLD_DARK },
	{ db32::WHITE, db32::ICE, db32::STEEL },
	{ db32::BROWN_DARK, db32::PLUM, db32::INK },
};

// A car two cells long seen from above, its front to the right, before light and shadow.
cTileCanvas PaintCarFacingRight( eCarColour colour, uint32_t &seed ) {
	const sCarColours &paint = CAR_COLOURS[colour];
	const bool wreck = colour == CAR_WRECK;
	cTileCanvas car( 2 * TILE_SIZE, TILE_SIZE );
	car.FillRect( 10, 3, 8, 26, db32::INK );		// tyres
	car.FillRect( 46, 3, 8, 26, db32::INK );
	car.FillRect( 3, 5, 58, 22, paint.body );
	car.FillRect( 2, 7, 60, 18, paint.body );
	car.FillRect( 4, 25, 56, 1, paint.dark );
	car.FillRect( 20, 8, 20, 16, paint.light );
	car.DitherRect( 20, 8, 20, 16, paint.body, 3 );
	const uint32_t glass = wreck ? db32::INK : db32::INDIGO;
	car.FillRect( 40, 8, 7, 16, glass );
	car.FillRect( 14, 9, 6, 14, glass );
	if ( !wreck ) {
		car.DrawLine( 41, 20, 45, 11, db32::ICE );
		car.DrawLine( 42, 22, 46, 13, db32::NAVY );
		car.Set( 15, 11, db32::SKY );
		car.FillRect( 60, 8, 2, 3, db32::SKIN );
		car.FillRect( 60, 21, 2, 3, db32::SKIN );
		car.FillRect( 2, 8, 2, 3, db32::RED );
		car.FillRect( 2, 21, 2, 3, db32::RED );
	}
	car.FillRect( 40, 3, 2, 2, paint.dark );		// mirrors
	car.FillRect( 40, 27, 2, 2, paint.dark );
	car.DitherRect( 49, 15, 10, 2, paint.dark, 8 );
	if ( colour == CAR_POLICE ) {
		car.FillRect( 47, 6, 14, 20, db32::INK );
		car.FillRect( 3, 7, 10, 18, db32::INK );
		car.FillRect( 28, 9, 4, 7, db32::RED );
		car.FillRect( 28, 16, 4, 7, db32::BLUE );
		car.Set( 29, 11, db32::ROSE );
		car.Set( 29, 18, db32::SKY );
	}
	if ( wreck ) {
		car.Speckle( seed, 3, 5, 58, 22, db32::BROWN, 30 );
		car.Speckle( seed, 3, 5, 58, 22, db32::GOLD_DARK, 10 );
		car.Speckle( seed, 3, 5, 58, 22, db32::INK, 40 );
	}
	return car;
}

void PaintCar( cTileCanvas &tile, const sObjectLook &look, uint32_t &seed ) {
	cTileCanvas car = PaintCarFacingRight( look.colour, seed );
	switch ( look.facing ) {
	case FACING_LEFT: car = car.FlippedX(); break;
	case FACING_DOWN: car = car.Transposed(); break;
	case FACING_UP: car = car.Transposed().FlippedY(); break;
	default: break;
	}
	car.LightEdges();
	car.CastShadow( 2, 2, SHADOW_ALPHA );
	// The rear cell holds the back half: right-facing and down-facing cars start with it.
	const bool rearFirst = look.facing == FACING_RIGHT || look.facing == FACING_DOWN;
	const int part = ( look.front == rearFirst ) ? 1 : 0;
	const bool along = look.facing == FACING_RIGHT || look.facing == FACING_LEFT;
	tile = car.Crop( along ? part * TILE_SIZE : 0, along ? 0 : part * TILE_SIZE, TILE_SIZE, TILE_SIZE );
}

const char *const MATERIAL_WORDS[] = { "brick", "concrete", "stone" };
const char *const CAR_WORDS[CAR_COLOUR_COUNT] = { "red", "blue", "olive", "grey", "white", "taxi", "police", "wreck" };
const char *const FACING_WORDS[] = { "right", "left", "down", "up" };

}

int GetObjectVariantCount( eObject object ) {
	switch ( object ) {
	case OBJECT_WALL: return 2;
	case OBJECT_CRATES: return 4;
	case OBJECT_BIN: return 2;
	default: return 1;
	}
}

const char *GetObjectCategory( eObject object ) {
	switch ( object ) {
	case OBJECT_WALL: return "wall";
	case OBJECT_FENCE: return "fence";
	case OBJECT_DOOR: return "door";
	case OBJECT_BOX: return "box";
	default: return "prop";
	}
}

std::string GetObjectTileName( const sObjectLook &look ) {
	const std::string joins = " joins-" + std::to_string( look.joins );
	switch ( look.object ) {
	case OBJECT_WALL: return std::string( "wall." ) + MATERIAL_WORDS[look.material] + "." + std::to_string( look.variant ) + joins;
	case OBJECT_FENCE: return "fence" + joins;
	case OBJECT_HEDGE: return "hedge" + joins;
	case OBJECT_DOOR: return std::string( "door." ) + ( look.acrossColumn ? "column" : "row" ) + joins;
	case OBJECT_BOX: return "box";
	case OBJECT_CRATES: return "crates." + std::to_string( look.variant );
	case OBJECT_BARRIER: return "barrier" + joins;
	case OBJECT_PILLAR: return "brazier";
	case OBJECT_BIN: return "bin." + std::to_string( look.variant );
	case OBJECT_TRUNK: return "tree-pit";
	case OBJECT_LAMP: return "lamp-post";
	case OBJECT_THRONE: return "throne";
	case OBJECT_CAR:
		return std::string( "car." ) + CAR_WORDS[look.colour] + "." + FACING_WORDS[look.facing] + ( look.front ? ".front" : ".rear" );
	default: return "nothing";
	}
}

void PaintObject( cTileCanvas &tile, const sObjectLook &look ) {
	uint32_t seed = HashText( GetObjectTileName( look ) );
	switch ( look.object ) {
	case OBJECT_WALL: PaintWall( tile, look, seed ); break;
	case OBJECT_FENCE: PaintFence( tile, look.joins ); break;
	case OBJECT_HEDGE: PaintHedge( tile, look.joins, seed ); break;
	case OBJECT_DOOR: PaintDoor( tile, look, seed ); break;
	case OBJECT_BOX: PaintBox( tile, seed ); break;
	case OBJECT_CRATES: PaintCrates( tile, look.variant, seed ); break;
	case OBJECT_BARRIER: PaintBarrier( tile, look.joins ); break;
	case OBJECT_PILLAR: PaintPillar( tile ); break;
	case OBJECT_BIN: PaintBin( tile, look.variant ); break;
	case OBJECT_TRUNK: PaintTrunk( tile ); break;
	case OBJECT_LAMP: PaintLampPost( tile ); break;
	case OBJECT_THRONE: PaintThrone( tile ); break;
	case OBJECT_CAR: PaintCar( tile, look, seed ); break;
	default: break;
	}
}
