// SPDX-License-Identifier: GPL-3.0-or-later
#include "LevelBuilder.h"

#include <fstream>

#include "world/Grid.h"

namespace {

const uint32_t SALT_GROUND = 1;
const uint32_t SALT_OBJECT = 2;
const uint32_t SALT_ROOF = 3;
const uint32_t SALT_CROWN = 4;

const int SIDE_STEPS[4][3] = {	// side bit, column step, row step
	{ SIDE_NORTH, 0, -1 }, { SIDE_EAST, 1, 0 }, { SIDE_SOUTH, 0, 1 }, { SIDE_WEST, -1, 0 },
};

bool WriteLayer( const std::string &path, const std::vector<int32_t> &layer ) {
	std::ofstream file( path );
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			file << layer[size_t( CellIndex( column, row ) )] << ( column + 1 < MAP_COLUMNS ? " " : "\n" );
		}
	}
	return bool( file );
}

}

// The cell's numbers are mixed until every bit of the result depends on all of them, so that
// neighbouring cells get unrelated looks.
uint32_t HashCell( int column, int row, uint32_t salt ) {
	uint32_t hash = uint32_t( column ) * 73856093u ^ uint32_t( row ) * 19349663u ^ salt * 83492791u;
	hash ^= hash >> 16;
	hash *= 0x85EBCA6Bu;
	hash ^= hash >> 13;
	hash *= 0xC2B2AE35u;
	hash ^= hash >> 16;
	return hash;
}

cLevelBuilder::cLevelBuilder( const cTownPlan &plan_ )
	: plan( plan_ ), baseMap( MAP_CELLS, 0 ), objectMap( MAP_CELLS, 0 ), walkMap( MAP_CELLS, 0 ), overMap( MAP_CELLS, 0 ) {
}

// Tiles are numbered in the order cells first ask for them, layer by layer, row by row; plain
// asphalt comes first, since the game draws a ground code of 0 as tile 1.
void cLevelBuilder::Build() {
	sGroundLook plain;
	sheet.Request( GetGroundCategory( plain.ground ), GetGroundTileName( plain ), [&plain]( cTileCanvas &tile ) { PaintGround( tile, plain ); } );
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			baseMap[size_t( CellIndex( column, row ) )] = ChooseBaseTile( column, row );
		}
	}
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			objectMap[size_t( CellIndex( column, row ) )] = ChooseObjectTile( column, row );
			walkMap[size_t( CellIndex( column, row ) )] = ChooseWalkCode( column, row );
		}
	}
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			overMap[size_t( CellIndex( column, row ) )] = ChooseOverTile( column, row );
		}
	}
}

int32_t cLevelBuilder::ChooseBaseTile( int column, int row ) {
	const sGroundLook look = DescribeGround( column, row );
	return sheet.Request( GetGroundCategory( look.ground ), GetGroundTileName( look ),
						[&look]( cTileCanvas &tile ) { PaintGround( tile, look ); } );
}

int32_t cLevelBuilder::ChooseObjectTile( int column, int row ) {
	if ( plan.GetCell( column, row ).object == OBJECT_NONE ) {
		return 0;
	}
	const sObjectLook look = DescribeObject( column, row );
	return sheet.Request( GetObjectCategory( look.object ), GetObjectTileName( look ),
						[&look]( cTileCanvas &tile ) { PaintObject( tile, look ); } );
}

int32_t cLevelBuilder::ChooseOverTile( int column, int row ) {
	const sTownCell &cell = plan.GetCell( column, row );
	if ( cell.over == OVER_ROOF ) {
		const sRoofLook look = DescribeRoof( column, row );
		return sheet.Request( "roof", GetRoofTileName( look ), [&look]( cTileCanvas &tile ) { PaintRoof( tile, look ); } );
	}
	if ( cell.over == OVER_CANOPY ) {
		const sCanopyLook look = DescribeCanopy( column, row );
		return sheet.Request( "canopy", GetCanopyTileName( look ), [&look]( cTileCanvas &tile ) { PaintCanopy( tile, look ); } );
	}
	if ( cell.over == OVER_GLOW ) {
		const sLamp &lamp = plan.GetLamps()[size_t( cell.overOwner )];
		sGlowLook look;
		look.partColumn = column - lamp.column;
		look.partRow = row - lamp.row;
		return sheet.Request( "glow", GetGlowTileName( look ), [&look]( cTileCanvas &tile ) { PaintGlow( tile, look ); } );
	}
	return 0;
}

int32_t cLevelBuilder::ChooseWalkCode( int column, int row ) const {
	const sTownCell &cell = plan.GetCell( column, row );
	if ( cell.object == OBJECT_DOOR ) {
		return WALK_DOOR;
	}
	if ( cell.object == OBJECT_BOX ) {
		return WALK_BOX;
	}
	if ( cell.object != OBJECT_NONE || cell.closed || !IsWalkableGround( cell.ground ) ) {
		return 0;
	}
	return WALK_FLOOR;
}

template <typename T>
int cLevelBuilder::GetSides( int column, int row, bool outside, T test ) const {
	int sides = 0;
	for ( const int *step : SIDE_STEPS ) {
		const int c = column + step[1];
		const int r = row + step[2];
		if ( plan.IsInside( c, r ) ? test( plan.GetCell( c, r ) ) : outside ) {
			sides |= step[0];
		}
	}
	return sides;
}

sGroundLook cLevelBuilder::DescribeGround( int column, int row ) const {
	const sTownCell &cell = plan.GetCell( column, row );
	sGroundLook look;
	look.ground = cell.ground;
	look.variant = PickGroundVariant( cell.ground, HashCell( column, row, SALT_GROUND ) );
	look.laneMark = cell.laneMark;
	look.crosswalk = cell.crosswalk;
	if ( cell.ground == GROUND_SIDEWALK ) {
		look.edges = GetSides( column, row, false, []( const sTownCell &n ) { return n.ground == GROUND_ASPHALT; } );
		look.corners = GetCurbCorners( column, row );
	} else if ( cell.ground == GROUND_CARPET ) {
		look.edges = GetSides( column, row, false, []( const sTownCell &n ) { return n.ground != GROUND_CARPET; } );
	}
	// A lane mark or a crossing is the look of its cell; the cell's roll adds no patch or lid.
	if ( look.laneMark != AXIS_NONE || look.crosswalk != AXIS_NONE ) {
		look.variant = 0;
	}
	const bool covered = cell.object == OBJECT_WALL || cell.object == OBJECT_DOOR;
	look.shadows = covered ? 0 : GetShadows( column, row );
	// The small corner shadow is kept for the ground players walk on.
	if ( !IsWalkableGround( cell.ground ) ) {
		look.shadows &= ~SHADOW_FROM_CORNER;
	}
	// Curbed or shaded cells keep to the plain look, which keeps the sheet small.
	if ( ( look.edges | look.corners | look.shadows ) != 0 ) {
		look.variant = 0;
	}
	return look;
}

sObjectLook cLevelBuilder::DescribeObject( int column, int row ) const {
	const sTownCell &cell = plan.GetCell( column, row );
	sObjectLook look;
	look.object = cell.object;
	look.material = cell.material;
	look.joins = GetJoins( column, row );
	look.variant = int( HashCell( column, row, SALT_OBJECT ) % uint32_t( GetObjectVariantCount( cell.object ) ) );
	// Only long straight runs of wall need a second look; stone is rough enough without.
	const bool straight = look.joins == ( SIDE_EAST | SIDE_WEST ) || look.joins == ( SIDE_NORTH | SIDE_SOUTH );
	if ( cell.object == OBJECT_WALL && ( cell.material == MATERIAL_STONE || !straight ) ) {
		look.variant = 0;
	}
	// The walls inside a solid building never show: they all share one tile.
	if ( cell.object == OBJECT_WALL && IsUnderSolidRoof( column, row ) ) {
		look.joins = SIDE_NORTH | SIDE_EAST | SIDE_SOUTH | SIDE_WEST;
		look.variant = 0;
	}
	if ( cell.object == OBJECT_DOOR ) {
		const int walls = GetSides( column, row, true, []( const sTownCell &n ) { return n.object == OBJECT_WALL; } );
		look.acrossColumn = ( look.joins & ( SIDE_NORTH | SIDE_SOUTH ) ) != 0
						|| ( look.joins == 0 && ( walls & ( SIDE_NORTH | SIDE_SOUTH ) ) != 0 );
	}
	if ( cell.object == OBJECT_CAR ) {
		const sCar &car = plan.GetCars()[size_t( cell.car )];
		look.colour = car.colour;
		look.facing = car.facing;
		look.front = column != car.column || row != car.row;
	}
	return look;
}

// Outside the grid a building or wall goes on, so the map's edge shows no wall end.
int cLevelBuilder::GetJoins( int column, int row ) const {
	switch ( plan.GetCell( column, row ).object ) {
	case OBJECT_WALL:
		return GetSides( column, row, true, []( const sTownCell &n ) { return n.object == OBJECT_WALL || n.object == OBJECT_DOOR; } );
	case OBJECT_FENCE:
		return GetSides( column, row, true, []( const sTownCell &n ) { return n.object == OBJECT_FENCE || n.object == OBJECT_WALL || n.object == OBJECT_HEDGE; } );
	case OBJECT_HEDGE:
		return GetSides( column, row, true, []( const sTownCell &n ) { return n.object == OBJECT_HEDGE || n.object == OBJECT_WALL; } );
	case OBJECT_BARRIER:
		return GetSides( column, row, false, []( const sTownCell &n ) { return n.object == OBJECT_BARRIER; } );
	case OBJECT_DOOR:
		return GetSides( column, row, false, []( const sTownCell &n ) { return n.object == OBJECT_DOOR; } );
	default:
		return 0;
	}
}

// An outer corner of a sidewalk: the street lies diagonally beyond it, not beside it.
int cLevelBuilder::GetCurbCorners( int column, int row ) const {
	const int corners[4][3] = {
		{ CORNER_NORTH_EAST, 1, -1 }, { CORNER_SOUTH_EAST, 1, 1 }, { CORNER_SOUTH_WEST, -1, 1 }, { CORNER_NORTH_WEST, -1, -1 },
	};
	auto isStreet = [this]( int c, int r ) { return plan.IsInside( c, r ) && plan.GetCell( c, r ).ground == GROUND_ASPHALT; };
	int mask = 0;
	for ( const int *corner : corners ) {
		const int c = column + corner[1];
		const int r = row + corner[2];
		if ( isStreet( c, r ) && !isStreet( c, row ) && !isStreet( column, r ) ) {
			mask |= corner[0];
		}
	}
	return mask;
}

bool cLevelBuilder::IsUnderSolidRoof( int column, int row ) const {
	const sTownCell &cell = plan.GetCell( column, row );
	return cell.over == OVER_ROOF && plan.GetBuildings()[size_t( cell.overOwner )].solid;
}

bool cLevelBuilder::IsRaised( int column, int row ) const {
	if ( !plan.IsInside( column, row ) ) {
		return false;
	}
	const eObject object = plan.GetCell( column, row ).object;
	return object == OBJECT_WALL || object == OBJECT_DOOR || object == OBJECT_HEDGE || object == OBJECT_PILLAR
		|| object == OBJECT_THRONE;
}

int cLevelBuilder::GetShadows( int column, int row ) const {
	int shadows = 0;
	if ( IsRaised( column, row - 1 ) ) shadows |= SHADOW_FROM_NORTH;
	if ( IsRaised( column - 1, row ) ) shadows |= SHADOW_FROM_WEST;
	if ( shadows == 0 && IsRaised( column - 1, row - 1 ) ) shadows |= SHADOW_FROM_CORNER;
	return shadows;
}

sRoofLook cLevelBuilder::DescribeRoof( int column, int row ) const {
	const sTownCell &cell = plan.GetCell( column, row );
	const int owner = cell.overOwner;
	const sBuilding &building = plan.GetBuildings()[size_t( owner )];
	sRoofLook look;
	look.roof = building.roof;
	look.edges = GetSides( column, row, false, [owner]( const sTownCell &n ) { return n.over != OVER_ROOF || n.overOwner != owner; } );
	// Things stand on a flat roof away from its rim only.
	look.variant = look.edges == 0 ? PickRoofVariant( building.roof, HashCell( column, row, SALT_ROOF ) ) : 0;
	const int width = building.column1 - building.column0 + 1;
	const int height = building.row1 - building.row0 + 1;
	look.ridgeDownColumn = height > width;
	const int span = look.ridgeDownColumn ? width : height;
	const int place = look.ridgeDownColumn ? column - building.column0 : row - building.row0;
	look.slope = GetRoofSlope( place, span );
	return look;
}

sCanopyLook cLevelBuilder::DescribeCanopy( int column, int row ) const {
	const sTree &tree = plan.GetTrees()[size_t( plan.GetCell( column, row ).overOwner )];
	sCanopyLook look;
	look.variant = int( HashCell( tree.column, tree.row, SALT_CROWN ) % CANOPY_VARIANTS );
	look.partColumn = column - tree.column + 1;
	look.partRow = row - tree.row + 1;
	return look;
}

bool cLevelBuilder::WriteFiles( const std::string &folder, std::string &error ) const {
	const std::pair<const char *, const std::vector<int32_t> *> layers[4] = {
		{ "basemap.txt", &baseMap }, { "objectmap.txt", &objectMap }, { "walkmap.txt", &walkMap }, { "overmap.txt", &overMap },
	};
	for ( const auto &layer : layers ) {
		if ( !WriteLayer( folder + layer.first, *layer.second ) ) {
			error = "cannot write " + folder + layer.first;
			return false;
		}
	}
	if ( !sheet.SavePng( folder + "tiles.png" ) ) {
		error = "cannot write " + folder + "tiles.png";
		return false;
	}
	if ( !sheet.SaveLegend( folder + "tiles.txt" ) ) {
		error = "cannot write " + folder + "tiles.txt";
		return false;
	}
	return true;
}
