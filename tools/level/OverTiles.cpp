// SPDX-License-Identifier: GPL-3.0-or-later
#include "OverTiles.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "GroundTiles.h"
#include "tools/art/Palette.h"

namespace {

const float PI = 3.14159265f;
const int FLAT_ROOF_WEIGHTS[6] = { 11, 1, 1, 1, 1, 1 };	// plain, vent, air conditioner, skylight, puddle, tar seams

int TransposeSides( int sides ) {
	int turned = 0;
	if ( sides & SIDE_NORTH ) turned |= SIDE_WEST;
	if ( sides & SIDE_WEST ) turned |= SIDE_NORTH;
	if ( sides & SIDE_SOUTH ) turned |= SIDE_EAST;
	if ( sides & SIDE_EAST ) turned |= SIDE_SOUTH;
	return turned;
}

// A raised rim along the roof's free edges: lit on its outer face towards the top-left, casting
// a short shadow on the roof below and right of it.
void PaintParapet( cTileCanvas &tile, int edges, uint32_t top, uint32_t lit, uint32_t dark ) {
	const int last = TILE_SIZE - 1;
	if ( edges & SIDE_NORTH ) {
		tile.ShadeRect( 0, 4, TILE_SIZE, 2, 16 );
		tile.ShadeRect( 0, 6, TILE_SIZE, 2, 6 );
	}
	if ( edges & SIDE_WEST ) {
		tile.ShadeRect( 4, 0, 2, TILE_SIZE, 16 );
		tile.ShadeRect( 6, 0, 2, TILE_SIZE, 6 );
	}
	if ( edges & SIDE_NORTH ) {
		tile.FillRect( 0, 0, TILE_SIZE, 4, top );
		tile.FillRect( 0, 0, TILE_SIZE, 1, lit );
		tile.FillRect( 0, 3, TILE_SIZE, 1, dark );
	}
	if ( edges & SIDE_WEST ) {
		tile.FillRect( 0, 0, 4, TILE_SIZE, top );
		tile.FillRect( 0, 0, 1, TILE_SIZE, lit );
		tile.FillRect( 3, ( edges & SIDE_NORTH ) ? 3 : 0, 1, TILE_SIZE, dark );
	}
	if ( edges & SIDE_SOUTH ) {
		tile.FillRect( 0, last - 3, TILE_SIZE, 4, top );
		tile.FillRect( 0, last - 3, TILE_SIZE, 1, lit );
		tile.FillRect( 0, last, TILE_SIZE, 1, dark );
	}
	if ( edges & SIDE_EAST ) {
		tile.FillRect( last - 3, 0, 4, TILE_SIZE, top );
		tile.FillRect( last - 3, ( edges & SIDE_NORTH ) ? 3 : 0, 1, TILE_SIZE - ( ( edges & SIDE_SOUTH ) ? 3 : 0 ), lit );
		tile.FillRect( last, 0, 1, TILE_SIZE, dark );
	}
}

// A box on the roof with its own light and shadow.
void PaintRoofBox( cTileCanvas &tile, int x, int y, int w, int h, uint32_t colour ) {
	tile.ShadeRect( x + 2, y + 2, w, h, 16 );
	tile.FillRect( x, y, w, h, colour );
	tile.FillRect( x, y, w, 1, LighterColour( colour ) );
	tile.FillRect( x, y, 1, h, LighterColour( colour ) );
	tile.FillRect( x + w - 1, y + 1, 1, h - 1, DarkerColour( colour ) );
	tile.FillRect( x + 1, y + h - 1, w - 1, 1, DarkerColour( colour ) );
}

void PaintFlatRoofFeature( cTileCanvas &tile, int variant, uint32_t &seed ) {
	switch ( variant ) {
	case 1:
		PaintRoofBox( tile, 12, 12, 7, 7, db32::GREY );
		tile.FillRect( 14, 14, 3, 3, db32::INK );
		break;
	case 2:
		PaintRoofBox( tile, 8, 10, 16, 12, db32::STEEL );
		tile.FillDisc( 16.0f, 16.0f, 4.5f, db32::GREY_DEEP );
		tile.FillDisc( 16.0f, 16.0f, 3.0f, db32::INK );
		tile.DrawLine( 14, 14, 18, 18, db32::GREY );
		break;
	case 3:
		PaintRoofBox( tile, 10, 8, 12, 16, db32::GREY );
		tile.FillRect( 11, 9, 10, 14, db32::INDIGO );
		tile.DrawLine( 12, 18, 17, 10, db32::ICE );
		tile.DrawLine( 14, 21, 19, 13, db32::NAVY );
		break;
	case 4:
		tile.FillEllipse( 15.0f + RandomBelow( seed, 4 ), 16.0f, 8.0f, 5.0f, db32::INDIGO );
		tile.Set( 12, 14, db32::ICE );
		tile.Set( 13, 14, db32::SKY );
		break;
	case 5:
		tile.DrawLine( 6, 8 + RandomBelow( seed, 6 ), 26, 18 + RandomBelow( seed, 6 ), db32::INK );
		tile.DrawLine( 10, 26, 24, 6, db32::INK );
		break;
	default:
		break;
	}
}

void PaintFlatRoof( cTileCanvas &tile, const sRoofLook &look, uint32_t &seed ) {
	tile.Fill( db32::GREY_DEEP );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::SLATE, 50 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::GREY_DARK, 20 );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::INDIGO, 14 );
	PaintFlatRoofFeature( tile, look.variant, seed );
	PaintParapet( tile, look.edges, db32::GREY, db32::STEEL, db32::SLATE );
}

// Corrugated sheets: ridges every four pixels, a seam every sixteen rows, moonlight on the ridges.
void PaintMetalRoof( cTileCanvas &tile, const sRoofLook &look, uint32_t &seed ) {
	for ( int x = 0; x < TILE_SIZE; x++ ) {
		const int phase = x % 4;
		const uint32_t colour = phase == 0 ? db32::SLATE : phase == 1 ? db32::STEEL : db32::GREY;
		tile.FillRect( x, 0, 1, TILE_SIZE, colour );
	}
	tile.FillRect( 0, 0, TILE_SIZE, 1, db32::GREY_DEEP );
	tile.FillRect( 0, 16, TILE_SIZE, 1, db32::GREY_DEEP );
	tile.Speckle( seed, 0, 0, TILE_SIZE, TILE_SIZE, db32::GREY_DEEP, 14 );
	if ( look.variant == 1 ) {
		tile.FillEllipse( 9.0f + RandomBelow( seed, 14 ), 9.0f + RandomBelow( seed, 14 ), 5.0f, 3.5f, db32::BROWN_DARK );
		tile.Speckle( seed, 4, 4, 24, 24, db32::BROWN, 8 );
	} else if ( look.variant == 2 ) {
		PaintRoofBox( tile, 8, 6, 16, 20, db32::GREY );
		tile.FillRect( 9, 7, 14, 18, db32::INDIGO );
		tile.DrawLine( 10, 20, 17, 8, db32::ICE );
		tile.FillRect( 9, 15, 14, 1, db32::GREY );
	}
	PaintParapet( tile, look.edges, db32::GREY_DEEP, db32::GREY, db32::INK );
}

// Eaves along the slopes' lower ends, barge boards along the gables.
void PaintPitchedEdges( cTileCanvas &tile, bool clay, int edges ) {
	const int last = TILE_SIZE - 1;
	if ( edges & SIDE_NORTH ) tile.FillRect( 0, 0, TILE_SIZE, 2, db32::INK );
	if ( edges & SIDE_SOUTH ) tile.FillRect( 0, last - 1, TILE_SIZE, 2, db32::INK );
	if ( edges & SIDE_WEST ) {
		tile.FillRect( 0, 0, 3, TILE_SIZE, clay ? db32::BROWN : db32::GREY );
		tile.FillRect( 0, 0, 1, TILE_SIZE, db32::INK );
	}
	if ( edges & SIDE_EAST ) {
		tile.FillRect( last - 2, 0, 3, TILE_SIZE, db32::PLUM );
		tile.FillRect( last, 0, 1, TILE_SIZE, db32::INK );
	}
	// The eaves overhang the walls a little: their outer pixel lets the wall show through.
	for ( int i = 0; i < TILE_SIZE; i++ ) {
		if ( edges & SIDE_SOUTH ) tile.Set( i, last, db32::WithAlpha( db32::INK, 0xA0 ) );
		if ( edges & SIDE_EAST ) tile.Set( last, i, db32::WithAlpha( db32::INK, 0xA0 ) );
	}
}

// A pitched roof with its ridge along the row: clay or slate courses on the slope that faces the
// light, darker ones on the slope that faces away, a capped ridge between them.
void PaintPitchedAlongRow( cTileCanvas &tile, eRoof roof, eRoofSlope slope, int edges, uint32_t &seed ) {
	const bool clay = roof == ROOF_TILED;
	const uint32_t litTile = clay ? db32::BROWN_DARK : db32::NAVY;
	const uint32_t shadeTile = clay ? db32::PLUM : db32::INDIGO;
	const int ridge = slope == SLOPE_LIT ? 1000 : slope == SLOPE_SHADED ? -1000 : slope == SLOPE_RIDGE_MIDDLE ? 16
					: slope == SLOPE_RIDGE_BELOW ? TILE_SIZE : 0;
	for ( int y = 0; y < TILE_SIZE; y++ ) {
		const bool lit = y < ridge;
		const uint32_t base = lit ? litTile : shadeTile;
		const int course = y / 4;
		for ( int x = 0; x < TILE_SIZE; x++ ) {
			uint32_t colour = base;
			if ( y % 4 == ( lit ? 3 : 0 ) ) {
				colour = DarkerColour( base );
			} else if ( ( x + course * 3 ) % 7 == 0 ) {
				colour = DarkerColour( base );
			} else if ( y % 4 == ( lit ? 0 : 3 ) && RandomBelow( seed, 3 ) == 0 ) {
				colour = clay && lit ? db32::RED : LighterColour( base );
			}
			tile.Set( x, y, colour );
		}
		if ( std::abs( y - ridge ) <= 2 ) {
			const uint32_t cap = y < ridge - 1 ? ( clay ? db32::RED : db32::SKY ) : y > ridge ? db32::INK : ( clay ? db32::BROWN : db32::GREY );
			tile.FillRect( 0, y, TILE_SIZE, 1, cap );
		}
	}
	PaintPitchedEdges( tile, clay, edges );
}

void PaintPitchedRoof( cTileCanvas &tile, const sRoofLook &look, uint32_t &seed ) {
	if ( look.ridgeDownColumn ) {
		PaintPitchedAlongRow( tile, look.roof, look.slope, TransposeSides( look.edges ), seed );
		tile = tile.Transposed();
	} else {
		PaintPitchedAlongRow( tile, look.roof, look.slope, look.edges, seed );
	}
}

// The colours of a crown, from the leaves in shadow to the ones that catch the light.
struct sLeafRamp {
	uint32_t	colours[5];
};

const sLeafRamp LEAF_RAMPS[CANOPY_VARIANTS] = {
	{ { db32::SLATE, db32::OLIVE_DARK, db32::MOSS, db32::TEAL, db32::GREEN } },
	{ { db32::INK, db32::SLATE, db32::MOSS, db32::TEAL, db32::TEAL } },
	{ { db32::PLUM, db32::BROWN_DARK, db32::GOLD_DARK, db32::OLIVE, db32::TAN } },	// autumn
};

struct sClump {
	float		x, y, radius;
};

// The clumps of leaves that make a crown, outer ones first so that the middle lies on top.
std::vector<sClump> PlaceClumps( int variant ) {
	uint32_t seed = HashText( "crown " + std::to_string( variant ) );
	std::vector<sClump> clumps;
	for ( int i = 0; i < 46; i++ ) {
		const float angle = 2.0f * PI * RandomBelow( seed, 1000 ) / 1000.0f;
		const float reach = 33.0f * std::sqrt( RandomBelow( seed, 1000 ) / 1000.0f );
		clumps.push_back( { 48.0f + reach * std::cos( angle ), 48.0f + reach * std::sin( angle ), 7.0f + RandomBelow( seed, 5 ) } );
	}
	std::sort( clumps.begin(), clumps.end(), []( const sClump &a, const sClump &b ) {
		return std::hypot( a.x - 48.0f, a.y - 48.0f ) > std::hypot( b.x - 48.0f, b.y - 48.0f );
	} );
	return clumps;
}

// The crown of a street tree, three cells across: clumps of leaves, each lit on its upper-left
// and the whole dome lit from the top-left, translucent at the rim so that players under it show.
cTileCanvas PaintCrown( int variant ) {
	const int size = 3 * TILE_SIZE;
	const sLeafRamp &ramp = LEAF_RAMPS[variant];
	cTileCanvas crown( size, size );
	for ( const sClump &clump : PlaceClumps( variant ) ) {
		for ( int y = int( clump.y - clump.radius ); y <= int( clump.y + clump.radius ); y++ ) {
			for ( int x = int( clump.x - clump.radius ); x <= int( clump.x + clump.radius ); x++ ) {
				const float dx = ( x + 0.5f - clump.x ) / clump.radius;
				const float dy = ( y + 0.5f - clump.y ) / clump.radius;
				if ( dx * dx + dy * dy > 1.0f ) {
					continue;
				}
				const float dome = -( ( x - 48.0f ) + ( y - 48.0f ) ) / 80.0f;
				const float own = -( dx + dy ) * 0.7071f;
				const float light = 0.6f * dome + 0.5f * own + ( DitherThreshold( x, y ) - 7.5f ) / 60.0f;
				const int step = light > 0.42f ? 4 : light > 0.12f ? 3 : light > -0.18f ? 2 : light > -0.45f ? 1 : 0;
				crown.Set( x, y, ramp.colours[step] );
			}
		}
	}
	crown.CastShadow( 5, 5, 0x48 );
	// Leaves at the rim let the street show through; the middle is nearly solid.
	const cTileCanvas shape = crown;
	auto isLeaf = [&shape]( int x, int y ) { return ( shape.Get( x, y ) >> 24 ) == 0xFF; };
	for ( int y = 0; y < size; y++ ) {
		for ( int x = 0; x < size; x++ ) {
			if ( !isLeaf( x, y ) ) {
				continue;
			}
			const bool rim = !isLeaf( x - 2, y ) || !isLeaf( x + 2, y ) || !isLeaf( x, y - 2 ) || !isLeaf( x, y + 2 );
			if ( rim && DitherThreshold( x, y ) < 4 ) {
				crown.Set( x, y, 0 );
			} else {
				crown.Set( x, y, db32::WithAlpha( shape.Get( x, y ), rim ? 0xA8 : 0xE8 ) );
			}
		}
	}
	return crown;
}

// A pool of warm light around a lamp's head, which hangs at the middle of the 2 x 2 cells.
cTileCanvas PaintLampLight() {
	const int size = 2 * TILE_SIZE;
	const float centre = float( TILE_SIZE );
	cTileCanvas light( size, size );
	for ( int y = 0; y < size; y++ ) {
		for ( int x = 0; x < size; x++ ) {
			const float distance = std::hypot( x + 0.5f - centre, y + 0.5f - centre );
			const float strength = 1.0f - distance / 31.0f;
			if ( strength <= 0.0f ) {
				continue;
			}
			// Rings of alpha with dithered borders keep the glow in the pixel style.
			const int level = int( strength * 5.0f * 16.0f ) + DitherThreshold( x, y ) - 8;
			const int ring = std::max( 0, std::min( 4, level / 16 ) );
			if ( ring > 0 ) {
				light.Set( x, y, db32::WithAlpha( ring > 2 ? db32::SKIN : db32::TAN, uint32_t( 0x1A * ring ) ) );
			}
		}
	}
	light.FillDisc( centre, centre, 4.5f, db32::GOLD_DARK );
	light.FillDisc( centre - 0.5f, centre - 0.5f, 3.2f, db32::SKIN );
	light.FillDisc( centre - 1.0f, centre - 1.0f, 1.5f, db32::WHITE );
	return light;
}

const char *const ROOF_WORDS[] = { "flat", "tiled", "slate", "metal" };

}

eRoofSlope GetRoofSlope( int place, int span ) {
	const int half = span / 2;
	if ( span % 2 == 1 && place == half ) {
		return SLOPE_RIDGE_MIDDLE;
	}
	if ( span % 2 == 0 && place == half - 1 ) {
		return SLOPE_RIDGE_BELOW;
	}
	if ( span % 2 == 0 && place == half ) {
		return SLOPE_RIDGE_ABOVE;
	}
	return place < half ? SLOPE_LIT : SLOPE_SHADED;
}

std::string GetRoofTileName( const sRoofLook &look ) {
	std::string name = std::string( ROOF_WORDS[look.roof] ) + " edges-" + std::to_string( look.edges );
	if ( look.roof == ROOF_FLAT || look.roof == ROOF_METAL ) {
		name += " v" + std::to_string( look.variant );
	} else {
		static const char *const SLOPE_WORDS[] = { "lit", "shaded", "ridge-middle", "ridge-below", "ridge-above" };
		name += std::string( " " ) + SLOPE_WORDS[look.slope] + ( look.ridgeDownColumn ? " turned" : "" );
	}
	return name;
}

void PaintRoof( cTileCanvas &tile, const sRoofLook &look ) {
	uint32_t seed = HashText( GetRoofTileName( look ) );
	switch ( look.roof ) {
	case ROOF_FLAT:
		PaintFlatRoof( tile, look, seed );
		break;
	case ROOF_METAL:
		PaintMetalRoof( tile, look, seed );
		break;
	default:
		PaintPitchedRoof( tile, look, seed );
		break;
	}
}

// Flat roofs: mostly plain, with vents, air conditioners, skylights and puddles here and there.
// Metal roofs: mostly bare sheets, some rust, a skylight now and then.
int PickRoofVariant( eRoof roof, uint32_t roll ) {
	if ( roof == ROOF_METAL ) {
		const int metal = int( roll % 16 );
		return metal < 13 ? 0 : metal < 14 ? 1 : 2;
	}
	if ( roof != ROOF_FLAT ) {
		return 0;
	}
	int left = int( roll % 16 );
	for ( int feature = 0; feature < 6; feature++ ) {
		left -= FLAT_ROOF_WEIGHTS[feature];
		if ( left < 0 ) {
			return feature;
		}
	}
	return 0;
}

std::string GetCanopyTileName( const sCanopyLook &look ) {
	return "crown." + std::to_string( look.variant ) + " part-" + std::to_string( look.partColumn ) + "-" + std::to_string( look.partRow );
}

void PaintCanopy( cTileCanvas &tile, const sCanopyLook &look ) {
	const cTileCanvas crown = PaintCrown( look.variant );
	tile = crown.Crop( look.partColumn * TILE_SIZE, look.partRow * TILE_SIZE, TILE_SIZE, TILE_SIZE );
}

std::string GetGlowTileName( const sGlowLook &look ) {
	return "lamp-light part-" + std::to_string( look.partColumn ) + "-" + std::to_string( look.partRow );
}

void PaintGlow( cTileCanvas &tile, const sGlowLook &look ) {
	tile = PaintLampLight().Crop( look.partColumn * TILE_SIZE, look.partRow * TILE_SIZE, TILE_SIZE, TILE_SIZE );
}
