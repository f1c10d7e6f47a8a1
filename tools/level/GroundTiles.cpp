// SPDX-License-Identifier: GPL-3.0-or-later
#include "GroundTiles.h"

#include <algorithm>

#include "tools/art/Palette.h"

namespace {

const char *const GROUND_WORDS[GROUND_COUNT] = {
	"asphalt", "sidewalk", "plaza", "carpet", "indoor", "grass", "dirt", "lot"
};

// The looks of each kind of ground, by how often they show: a roll of 0 to 63 picks one.
const int VARIANT_ROLLS = 64;
const int VARIANT_WEIGHTS[GROUND_COUNT][6] = {
	{ 29, 24, 6, 2, 1, 2 },		// asphalt: plain, coarse, crack, patch, puddle, manhole
	{ 36, 12, 8, 6, 2, 0 },		// sidewalk: plain, stain, crack, leaves, drain
	{ 40, 10, 10, 4, 0, 0 },	// plaza: plain, crack, moss, inlay
	{ 64, 0, 0, 0, 0, 0 },		// carpet
	{ 26, 26, 12, 0, 0, 0 },	// indoor: two grains, dust
	{ 32, 16, 16, 0, 0, 0 },	// grass: plain, flowers, tufts
	{ 32, 32, 0, 0, 0, 0 },		// dirt
	{ 56, 8, 0, 0, 0, 0 },		// lot: plain, oil stain
};

void PaintAsphaltBase( cTileCanvas &tile, uint32_t &seed ) {
	tile.Fill( db32::SLATE );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::INK, 40 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::GREY_DEEP, 14 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::INDIGO, 8 );
}

void PaintCrack( cTileCanvas &tile, uint32_t &seed, uint32_t colour, uint32_t edge ) {
	int x = 4 + RandomBelow( seed, 24 );
	int y = 4 + RandomBelow( seed, 6 );
	const int length = 14 + RandomBelow( seed, 10 );
	for ( int i = 0; i < length && tile.IsInside( x, y ); i++ ) {
		tile.Set( x + 1, y, edge );
		tile.Set( x, y, colour );
		y++;
		x += RandomBelow( seed, 3 ) - 1;
	}
}

void PaintPuddle( cTileCanvas &tile, uint32_t &seed ) {
	const float cx = 12.0f + RandomBelow( seed, 8 );
	const float cy = 12.0f + RandomBelow( seed, 8 );
	// Water gathers in a few overlapping hollows, dark at the rim, catching the sky in the middle.
	tile.FillEllipse( cx, cy, 9.0f, 5.0f, db32::INDIGO );
	tile.FillEllipse( cx + 5.0f, cy + 3.0f, 6.0f, 4.0f, db32::INDIGO );
	tile.FillEllipse( cx - 5.0f, cy + 2.0f, 4.0f, 3.0f, db32::INDIGO );
	tile.FillEllipse( cx + 1.0f, cy + 1.0f, 6.0f, 3.0f, db32::NAVY );
	tile.Speckle( seed, int( cx ) - 9, int( cy ) - 5, 20, 12, db32::SLATE, 10 );
	// The lamps of the street glint in the water.
	tile.Set( int( cx ) - 3, int( cy ) - 2, db32::ICE );
	tile.Set( int( cx ) - 2, int( cy ) - 2, db32::SKY );
	tile.Set( int( cx ) + 3, int( cy ) + 1, db32::TAN );
	tile.Set( int( cx ) + 4, int( cy ) + 1, db32::GOLD_DARK );
}

void PaintManhole( cTileCanvas &tile ) {
	tile.FillDisc( 16.0f, 16.0f, 9.5f, db32::GREY_DEEP );
	tile.FillDisc( 16.0f, 16.0f, 8.0f, db32::INK );
	tile.FillDisc( 16.0f, 16.0f, 7.0f, db32::SLATE );
	for ( int i = 10; i <= 22; i += 3 ) {
		tile.DrawLine( i, 10, i, 22, db32::INK );
	}
	// Lit on its upper-left rim, in shadow on the lower right.
	for ( int a = 0; a < 8; a++ ) {
		tile.Set( 9 + a, 7 + ( a < 4 ? 3 - a : 0 ), db32::GREY );
	}
}

void PaintAsphalt( cTileCanvas &tile, int variant, uint32_t &seed ) {
	PaintAsphaltBase( tile, seed );
	switch ( variant ) {
	case 1:
		for ( int i = 0; i < 18; i++ ) {
			const int x = RandomBelow( seed, 31 );
			const int y = RandomBelow( seed, 32 );
			tile.FillRect( x, y, 2, 1, i % 3 == 0 ? db32::GREY_DEEP : db32::INK );
		}
		break;
	case 2:
		PaintCrack( tile, seed, db32::INK, db32::GREY_DEEP );
		break;
	case 3: {
		const int x = 4 + RandomBelow( seed, 8 );
		const int y = 5 + RandomBelow( seed, 8 );
		tile.DitherRect( x, y, 16, 12, db32::INK, 4 );
		tile.DitherRect( x, y, 16, 1, db32::GREY_DEEP, 10 );
		tile.DitherRect( x, y, 1, 12, db32::GREY_DEEP, 10 );
		break;
	}
	case 4:
		PaintPuddle( tile, seed );
		break;
	case 5:
		PaintManhole( tile );
		break;
	default:
		break;
	}
}

void PaintLaneMark( cTileCanvas &tile, eAxis axis, uint32_t &seed ) {
	for ( int along = 8; along < 24; along++ ) {
		for ( int across = 15; across <= 16; across++ ) {
			const uint32_t paint = RandomBelow( seed, 5 ) == 0 ? db32::GOLD_DARK : db32::TAN;
			if ( axis == AXIS_ROW ) {
				tile.Set( along, across, paint );
			} else {
				tile.Set( across, along, paint );
			}
		}
	}
}

// Zebra bars lie across the walking direction's crossing: walking along a row, the bars run
// down the column.
void PaintCrosswalk( cTileCanvas &tile, eAxis axis, uint32_t &seed ) {
	for ( int bar = 0; bar < 2; bar++ ) {
		for ( int across = 3 + 16 * bar; across < 11 + 16 * bar; across++ ) {
			for ( int along = 2; along < 30; along++ ) {
				const int roll = RandomBelow( seed, 16 );
				const uint32_t paint = roll == 0 ? db32::SLATE : roll < 3 ? db32::GREY : roll < 4 ? db32::ICE : db32::STEEL;
				if ( axis == AXIS_ROW ) {
					tile.Set( across, along, paint );
				} else {
					tile.Set( along, across, paint );
				}
			}
		}
	}
}

// What lies on a slab: a stain, a crack, fallen leaves, a drain.
void PaintSidewalkMarks( cTileCanvas &tile, int variant, uint32_t &seed ) {
	switch ( variant ) {
	case 1:
		tile.FillEllipse( 8.0f + RandomBelow( seed, 16 ), 8.0f + RandomBelow( seed, 16 ), 6.0f, 4.0f, db32::GREY_DEEP );
		tile.Speckle( seed, 4, 4, 24, 24, db32::SLATE, 6 );
		break;
	case 2:
		PaintCrack( tile, seed, db32::SLATE, db32::GREY_DEEP );
		break;
	case 3:
		for ( int i = 0; i < 7; i++ ) {
			const int x = 2 + RandomBelow( seed, 27 );
			const int y = 2 + RandomBelow( seed, 27 );
			tile.FillRect( x, y, 2, 1, i % 2 ? db32::BROWN : db32::GOLD_DARK );
			tile.Set( x, y + 1, db32::BROWN_DARK );
		}
		break;
	case 4:
		tile.FillRect( 9, 11, 14, 10, db32::INK );
		for ( int x = 10; x < 22; x += 2 ) {
			tile.FillRect( x, 12, 1, 8, db32::GREY_DEEP );
		}
		tile.FillRect( 9, 11, 14, 1, db32::GREY );
		break;
	default:
		break;
	}
}

void PaintSidewalk( cTileCanvas &tile, int variant, uint32_t &seed ) {
	tile.Fill( db32::GREY_DARK );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::GREY_DEEP, 22 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::GREY, 10 );
	for ( int slab = 0; slab < 4; slab++ ) {
		const int x = 16 * ( slab % 2 );
		const int y = 16 * ( slab / 2 );
		const int tone = RandomBelow( seed, 8 );
		if ( tone == 0 ) {
			tile.Speckle( seed, x, y, 16, 16, db32::GREY, 40 );
		} else if ( tone == 1 ) {
			tile.Speckle( seed, x, y, 16, 16, db32::GREY_DEEP, 60 );
		}
		tile.DitherRect( x + 1, y + 1, 14, 1, db32::GREY, 6 );
	}
	// Joints on the top and left of every slab only, so that neighbouring tiles complete them.
	tile.FillRect( 0, 0, TILE_SIZE, 1, db32::GREY_DEEP );
	tile.FillRect( 0, 16, TILE_SIZE, 1, db32::GREY_DEEP );
	tile.FillRect( 0, 0, 1, TILE_SIZE, db32::GREY_DEEP );
	tile.FillRect( 16, 0, 1, TILE_SIZE, db32::GREY_DEEP );
	PaintSidewalkMarks( tile, variant, seed );
}

// The curb is the sidewalk's raised edge: its face towards the light (north, west) is lit, the
// others are dark, and a line of stone runs along its top.
void PaintCurbs( cTileCanvas &tile, int sides, int corners ) {
	const int last = TILE_SIZE - 1;
	if ( sides & SIDE_NORTH ) {
		tile.FillRect( 0, 0, TILE_SIZE, 3, db32::GREY );
		tile.FillRect( 0, 0, TILE_SIZE, 1, db32::STEEL );
		tile.FillRect( 0, 3, TILE_SIZE, 1, db32::GREY_DEEP );
	}
	if ( sides & SIDE_SOUTH ) {
		tile.FillRect( 0, last - 3, TILE_SIZE, 1, db32::GREY_DEEP );
		tile.FillRect( 0, last - 2, TILE_SIZE, 2, db32::GREY );
		tile.FillRect( 0, last, TILE_SIZE, 1, db32::INK );
	}
	if ( sides & SIDE_WEST ) {
		tile.FillRect( 0, 0, 3, TILE_SIZE, db32::GREY );
		tile.FillRect( 0, 0, 1, TILE_SIZE, db32::STEEL );
		tile.FillRect( 3, 0, 1, TILE_SIZE, db32::GREY_DEEP );
	}
	if ( sides & SIDE_EAST ) {
		tile.FillRect( last - 3, 0, 1, TILE_SIZE, db32::GREY_DEEP );
		tile.FillRect( last - 2, 0, 2, TILE_SIZE, db32::GREY );
		tile.FillRect( last, 0, 1, TILE_SIZE, db32::INK );
	}
	const int cornerBits[4] = { CORNER_NORTH_EAST, CORNER_SOUTH_EAST, CORNER_SOUTH_WEST, CORNER_NORTH_WEST };
	const int cornerX[4] = { last - 2, last - 2, 0, 0 };
	const int cornerY[4] = { 0, last - 2, last - 2, 0 };
	const uint32_t cornerEdge[4] = { db32::GREY_DEEP, db32::INK, db32::GREY_DEEP, db32::STEEL };
	for ( int i = 0; i < 4; i++ ) {
		if ( corners & cornerBits[i] ) {
			tile.FillRect( cornerX[i], cornerY[i], 3, 3, db32::GREY );
			tile.Set( cornerX[i] + ( i < 2 ? 2 : 0 ), cornerY[i] + ( i == 1 || i == 2 ? 2 : 0 ), cornerEdge[i] );
		}
	}
}

void PaintPlaza( cTileCanvas &tile, int variant, uint32_t &seed ) {
	tile.Fill( db32::PLUM );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::INK, 12 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::VIOLET, 5 );
	// Flagstones in running bond: one long stone above, two below.
	const int flags[3][3] = { { 0, 0, 32 }, { 0, 16, 16 }, { 16, 16, 16 } };
	for ( const int *flag : flags ) {
		const int tone = RandomBelow( seed, 5 );
		if ( tone == 0 ) {
			tile.Speckle( seed, flag[0], flag[1], flag[2], 16, db32::INK, 30 );
		} else if ( tone == 1 ) {
			tile.Speckle( seed, flag[0], flag[1], flag[2], 16, db32::VIOLET, 18 );
		}
		tile.DitherRect( flag[0] + 1, flag[1] + 1, flag[2] - 2, 1, db32::VIOLET, 8 );
		tile.DitherRect( flag[0] + 1, flag[1] + 1, 1, 14, db32::VIOLET, 6 );
	}
	tile.FillRect( 0, 0, TILE_SIZE, 1, db32::INK );
	tile.FillRect( 0, 16, TILE_SIZE, 1, db32::INK );
	tile.FillRect( 0, 0, 1, 16, db32::INK );
	tile.FillRect( 16, 16, 1, 16, db32::INK );
	if ( variant == 1 ) {
		PaintCrack( tile, seed, db32::INK, db32::BROWN_DARK );
	} else if ( variant == 2 ) {
		for ( int x = 0; x < TILE_SIZE; x++ ) {
			if ( RandomBelow( seed, 3 ) == 0 ) tile.Set( x, 16 + RandomBelow( seed, 2 ), db32::MOSS );
			if ( RandomBelow( seed, 4 ) == 0 ) tile.Set( x, RandomBelow( seed, 2 ), db32::OLIVE_DARK );
		}
	} else if ( variant == 3 ) {
		for ( int d = 0; d <= 4; d++ ) {
			tile.FillRect( 16 - d, 8 - 4 + d, 2 * d + 1, 1, db32::GOLD_DARK );
			tile.FillRect( 16 - d, 8 + 4 - d, 2 * d + 1, 1, db32::GOLD_DARK );
		}
		tile.FillRect( 15, 7, 3, 3, db32::TAN );
	}
}

void PaintCarpet( cTileCanvas &tile, int edges, uint32_t &seed ) {
	tile.Fill( db32::BROWN_DARK );
	tile.DitherRect( 0, 0, TILE_SIZE, TILE_SIZE, db32::RED, 6 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::PLUM, 20 );
	for ( int motif = 0; motif < 2; motif++ ) {
		const int cx = 8 + 16 * motif;
		for ( int d = 0; d <= 3; d++ ) {
			tile.FillRect( cx - d, 16 - 3 + d, 2 * d + 1, 1, db32::RED );
			tile.FillRect( cx - d, 16 + 3 - d, 2 * d + 1, 1, db32::RED );
		}
		tile.Set( cx, 16, db32::GOLD_DARK );
	}
	const int last = TILE_SIZE - 1;
	if ( edges & SIDE_NORTH ) {
		tile.FillRect( 0, 0, TILE_SIZE, 3, db32::BROWN_DARK );
		tile.FillRect( 0, 1, TILE_SIZE, 1, db32::GOLD_DARK );
		tile.DitherRect( 0, 4, TILE_SIZE, 1, db32::TAN, 8 );
	}
	if ( edges & SIDE_SOUTH ) {
		tile.FillRect( 0, last - 2, TILE_SIZE, 3, db32::BROWN_DARK );
		tile.FillRect( 0, last - 1, TILE_SIZE, 1, db32::GOLD_DARK );
		tile.DitherRect( 0, last - 4, TILE_SIZE, 1, db32::TAN, 8 );
	}
	if ( edges & SIDE_WEST ) {
		tile.FillRect( 0, 0, 3, TILE_SIZE, db32::BROWN_DARK );
		tile.FillRect( 1, 0, 1, TILE_SIZE, db32::GOLD_DARK );
	}
	if ( edges & SIDE_EAST ) {
		tile.FillRect( last - 2, 0, 3, TILE_SIZE, db32::BROWN_DARK );
		tile.FillRect( last - 1, 0, 1, TILE_SIZE, db32::GOLD_DARK );
	}
}

void PaintIndoor( cTileCanvas &tile, int variant, uint32_t &seed ) {
	for ( int plank = 0; plank < 4; plank++ ) {
		const int y = plank * 8;
		const uint32_t wood = ( plank + variant ) % 2 ? db32::BROWN : db32::BROWN_DARK;
		tile.FillRect( 0, y, TILE_SIZE, 8, wood );
		for ( int streak = 0; streak < 5; streak++ ) {
			const int sx = RandomBelow( seed, 28 );
			const int sy = y + 2 + RandomBelow( seed, 5 );
			tile.FillRect( sx, sy, 3 + RandomBelow( seed, 8 ), 1, DarkerColour( wood ) );
		}
		tile.FillRect( 0, y, TILE_SIZE, 1, db32::PLUM );
		tile.FillRect( RandomBelow( seed, TILE_SIZE ), y, 1, 8, db32::PLUM );
	}
	if ( variant == 2 ) {
		tile.Speckle( seed, 2, 2, 28, 28, db32::GOLD_DARK, 14 );
	}
}

void PaintGrass( cTileCanvas &tile, int variant, uint32_t &seed ) {
	tile.Fill( db32::MOSS );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::OLIVE_DARK, 110 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::SLATE, 30 );
	for ( int blade = 0; blade < 14; blade++ ) {
		const int x = RandomBelow( seed, TILE_SIZE );
		const int y = RandomBelow( seed, TILE_SIZE - 1 );
		tile.Set( x, y, blade % 4 == 0 ? db32::TEAL : db32::MOSS );
		tile.Set( x, y + 1, db32::OLIVE_DARK );
	}
	if ( variant == 1 ) {
		for ( int flower = 0; flower < 4; flower++ ) {
			tile.Set( 3 + RandomBelow( seed, 26 ), 3 + RandomBelow( seed, 26 ), flower % 2 ? db32::PINK : db32::ICE );
		}
	} else if ( variant == 2 ) {
		for ( int tuft = 0; tuft < 4; tuft++ ) {
			tile.FillEllipse( 4.0f + RandomBelow( seed, 24 ), 4.0f + RandomBelow( seed, 24 ), 3.0f, 2.0f, db32::OLIVE_DARK );
		}
	}
}

void PaintDirt( cTileCanvas &tile, int variant, uint32_t &seed ) {
	tile.Fill( db32::OLIVE_DARK );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::SLATE, 50 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::BROWN_DARK, 30 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::GOLD_DARK, 8 );
	for ( int pebble = 0; pebble < 3 + 3 * variant; pebble++ ) {
		const int x = RandomBelow( seed, 30 );
		const int y = RandomBelow( seed, 30 );
		tile.FillRect( x, y, 2, 2, db32::GREY_DEEP );
		tile.Set( x, y, db32::GREY );
	}
}

void PaintLot( cTileCanvas &tile, int variant, uint32_t &seed ) {
	PaintAsphaltBase( tile, seed );
	tile.ShadeRect( 0, 0, TILE_SIZE, TILE_SIZE, 3 );
	for ( int y = 0; y < TILE_SIZE; y++ ) {
		tile.Set( 0, y, RandomBelow( seed, 6 ) == 0 ? db32::GREY : db32::STEEL );
	}
	if ( variant == 1 ) {
		tile.FillEllipse( 17.0f, 15.0f, 7.0f, 5.0f, db32::INK );
		tile.Set( 15, 13, db32::VIOLET );
		tile.Set( 19, 16, db32::NAVY );
	}
}

// Raised neighbours to the top-left cast a shadow band on this cell's top and left, soft at
// its inner edge.
void PaintShadows( cTileCanvas &tile, int shadows ) {
	for ( int y = 0; y < TILE_SIZE; y++ ) {
		for ( int x = 0; x < TILE_SIZE; x++ ) {
			int level = 0;
			if ( shadows & SHADOW_FROM_NORTH ) level = std::max( level, y < 6 ? 16 : y < 9 ? 7 : 0 );
			if ( shadows & SHADOW_FROM_WEST ) level = std::max( level, x < 6 ? 16 : x < 9 ? 7 : 0 );
			if ( shadows & SHADOW_FROM_CORNER ) level = std::max( level, x < 6 && y < 6 ? 16 : x < 9 && y < 9 ? 7 : 0 );
			if ( DitherThreshold( x, y ) < level ) {
				tile.Set( x, y, DarkerColour( tile.Get( x, y ) ) );
			}
		}
	}
}

}

int GetGroundVariantCount( eGround ground ) {
	int count = 0;
	for ( int weight : VARIANT_WEIGHTS[ground] ) {
		count += weight > 0 ? 1 : 0;
	}
	return count;
}

int PickGroundVariant( eGround ground, uint32_t roll ) {
	int left = int( roll % VARIANT_ROLLS );
	for ( int variant = 0; variant < 6; variant++ ) {
		left -= VARIANT_WEIGHTS[ground][variant];
		if ( left < 0 ) {
			return variant;
		}
	}
	return 0;
}

const char *GetGroundCategory( eGround ground ) {
	return ground <= GROUND_INDOOR ? "floor" : "ground";
}

std::string GetGroundTileName( const sGroundLook &look ) {
	static const char *const AXIS_WORDS[] = { "none", "row", "column" };
	std::string name = std::string( GROUND_WORDS[look.ground] ) + "." + std::to_string( look.variant );
	if ( look.laneMark != AXIS_NONE ) name += " lane-" + std::string( AXIS_WORDS[look.laneMark] );
	if ( look.crosswalk != AXIS_NONE ) name += " crossing-" + std::string( AXIS_WORDS[look.crosswalk] );
	if ( look.edges != 0 ) name += " edges-" + std::to_string( look.edges );
	if ( look.corners != 0 ) name += " corners-" + std::to_string( look.corners );
	if ( look.shadows != 0 ) name += " shadow-" + std::to_string( look.shadows );
	return name;
}

void PaintGround( cTileCanvas &tile, const sGroundLook &look ) {
	uint32_t seed = HashText( GetGroundTileName( look ) );
	switch ( look.ground ) {
	case GROUND_ASPHALT:
		PaintAsphalt( tile, look.variant, seed );
		if ( look.crosswalk != AXIS_NONE ) PaintCrosswalk( tile, look.crosswalk, seed );
		if ( look.laneMark != AXIS_NONE ) PaintLaneMark( tile, look.laneMark, seed );
		break;
	case GROUND_SIDEWALK:
		PaintSidewalk( tile, look.variant, seed );
		PaintCurbs( tile, look.edges, look.corners );
		break;
	case GROUND_PLAZA:
		PaintPlaza( tile, look.variant, seed );
		break;
	case GROUND_CARPET:
		PaintCarpet( tile, look.edges, seed );
		break;
	case GROUND_INDOOR:
		PaintIndoor( tile, look.variant, seed );
		break;
	case GROUND_GRASS:
		PaintGrass( tile, look.variant, seed );
		break;
	case GROUND_DIRT:
		PaintDirt( tile, look.variant, seed );
		break;
	case GROUND_LOT:
		PaintLot( tile, look.variant, seed );
		break;
	default:
		break;
	}
	PaintShadows( tile, look.shadows );
}
