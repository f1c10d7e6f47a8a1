// SPDX-License-Identifier: GPL-3.0-or-later
#include "TownPlan.h"

#include <cassert>
#include <cstdlib>
#include <fstream>
#include <sstream>

#include "world/Grid.h"

namespace {

template <typename T>
struct sName {
	const char *	word;
	T				value;
};

const sName<eGround> GROUND_NAMES[] = {
	{ "asphalt", GROUND_ASPHALT }, { "sidewalk", GROUND_SIDEWALK }, { "plaza", GROUND_PLAZA },
	{ "carpet", GROUND_CARPET }, { "indoor", GROUND_INDOOR }, { "grass", GROUND_GRASS },
	{ "dirt", GROUND_DIRT }, { "lot", GROUND_LOT },
};
const sName<eRoof> ROOF_NAMES[] = {
	{ "flat", ROOF_FLAT }, { "tiled", ROOF_TILED }, { "slate", ROOF_SLATE }, { "metal", ROOF_METAL },
};
const sName<eMaterial> MATERIAL_NAMES[] = {
	{ "brick", MATERIAL_BRICK }, { "concrete", MATERIAL_CONCRETE }, { "stone", MATERIAL_STONE },
};
const sName<eAxis> AXIS_NAMES[] = {
	{ "row", AXIS_ROW }, { "column", AXIS_COLUMN },
};
const sName<eCarColour> CAR_NAMES[] = {
	{ "red", CAR_RED }, { "blue", CAR_BLUE }, { "olive", CAR_OLIVE }, { "grey", CAR_GREY },
	{ "white", CAR_WHITE }, { "taxi", CAR_TAXI }, { "police", CAR_POLICE }, { "wreck", CAR_WRECK },
};
const sName<eFacing> FACING_NAMES[] = {
	{ "right", FACING_RIGHT }, { "left", FACING_LEFT }, { "down", FACING_DOWN }, { "up", FACING_UP },
};

template <typename T, size_t N>
bool ReadName( const sName<T> ( &names )[N], const std::string &word, const char *what, T &value, std::string &problem ) {
	std::string known;
	for ( const sName<T> &name : names ) {
		if ( word == name.word ) {
			value = name.value;
			return true;
		}
		known += known.empty() ? "" : ", ";
		known += name.word;
	}
	problem = "unknown " + std::string( what ) + " '" + word + "' (known: " + known + ")";
	return false;
}

bool ReadNumber( const std::string &word, int &value ) {
	char *end = nullptr;
	const long parsed = std::strtol( word.c_str(), &end, 10 );
	if ( word.empty() || *end != '\0' || parsed < -100000 || parsed > 100000 ) {
		return false;
	}
	value = int( parsed );
	return true;
}

std::vector<std::string> SplitWords( const std::string &line ) {
	std::vector<std::string> words;
	std::istringstream stream( line.substr( 0, line.find( '#' ) ) );
	std::string word;
	while ( stream >> word ) {
		words.push_back( word );
	}
	return words;
}

// One cell a car takes up in front of its rear cell.
void GetFrontStep( eFacing facing, int &dc, int &dr ) {
	dc = facing == FACING_RIGHT ? 1 : facing == FACING_LEFT ? -1 : 0;
	dr = facing == FACING_DOWN ? 1 : facing == FACING_UP ? -1 : 0;
}

}

bool IsWalkableGround( eGround ground ) {
	return ground == GROUND_ASPHALT || ground == GROUND_SIDEWALK || ground == GROUND_PLAZA
		|| ground == GROUND_CARPET || ground == GROUND_INDOOR;
}

cTownPlan::cTownPlan() : cells( MAP_CELLS ) {
}

bool cTownPlan::Load( const std::string &path, std::string &error ) {
	std::ifstream file( path );
	if ( !file.is_open() ) {
		error = path + ": cannot be opened";
		return false;
	}
	std::stringstream text;
	text << file.rdbuf();
	return Parse( text.str(), path, error );
}

bool cTownPlan::Parse( const std::string &text, const std::string &name, std::string &error ) {
	std::istringstream lines( text );
	std::string line;
	int number = 0;
	while ( std::getline( lines, line ) ) {
		number++;
		const tWords words = SplitWords( line );
		std::string problem;
		if ( !words.empty() && !RunCommand( words, problem ) ) {
			error = name + ":" + std::to_string( number ) + ": " + problem;
			return false;
		}
	}
	return true;
}

bool cTownPlan::IsInside( int column, int row ) const {
	return IsInGrid( column, row );
}

const sTownCell &cTownPlan::GetCell( int column, int row ) const {
	assert( IsInside( column, row ) );
	return cells[size_t( CellIndex( column, row ) )];
}

sTownCell &cTownPlan::At( int column, int row ) {
	assert( IsInside( column, row ) );
	return cells[size_t( CellIndex( column, row ) )];
}

// The commands of the description, each with what it paints.
bool cTownPlan::RunCommand( const tWords &words, std::string &problem ) {
	typedef bool ( *tRun )( cTownPlan &plan, const tWords &words, std::string &problem );
	static const struct {
		const char *	word;
		tRun			run;
	} COMMANDS[] = {
		{ "ground", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintGround( w, e ); } },
		{ "road", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintRoad( w, false, e ); } },
		{ "crosswalk", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintRoad( w, true, e ); } },
		{ "closed", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintClosed( w, e ); } },
		{ "building", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintBuilding( w, e ); } },
		{ "roof", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintRoof( w, e ); } },
		{ "wall", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintWall( w, e ); } },
		{ "fence", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintObjects( w, OBJECT_FENCE, e ); } },
		{ "hedge", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintObjects( w, OBJECT_HEDGE, e ); } },
		{ "door", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintObjects( w, OBJECT_DOOR, e ); } },
		{ "crates", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintObjects( w, OBJECT_CRATES, e ); } },
		{ "barrier", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintObjects( w, OBJECT_BARRIER, e ); } },
		{ "pillar", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PaintObjects( w, OBJECT_PILLAR, e ); } },
		{ "box", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PlaceOne( w, OBJECT_BOX, e ); } },
		{ "bin", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PlaceOne( w, OBJECT_BIN, e ); } },
		{ "throne", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PlaceOne( w, OBJECT_THRONE, e ); } },
		{ "car", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PlaceCar( w, e ); } },
		{ "tree", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PlaceTree( w, e ); } },
		{ "lamp", []( cTownPlan &p, const tWords &w, std::string &e ) { return p.PlaceLamp( w, e ); } },
	};
	for ( const auto &command : COMMANDS ) {
		if ( words[0] == command.word ) {
			return command.run( *this, words, problem );
		}
	}
	problem = "unknown command '" + words[0] + "'";
	return false;
}

bool cTownPlan::ReadCell( const tWords &words, size_t first, int &column, int &row, std::string &problem ) const {
	if ( words.size() != first + 2 ) {
		problem = "'" + words[0] + "' wants " + std::to_string( first + 1 ) + " words after it, found "
				+ std::to_string( words.size() - 1 );
		return false;
	}
	if ( !ReadNumber( words[first], column ) || !ReadNumber( words[first + 1], row ) ) {
		problem = "a cell is two whole numbers, column and row";
		return false;
	}
	if ( !IsInside( column, row ) ) {
		problem = "cell (" + words[first] + ", " + words[first + 1] + ") lies outside the 60 x 75 grid";
		return false;
	}
	return true;
}

// A rectangle is its two corner cells; one cell alone stands for itself.
bool cTownPlan::ReadRect( const tWords &words, size_t first, sRect &rect, std::string &problem ) const {
	if ( words.size() == first + 2 ) {
		int column = 0;
		int row = 0;
		if ( !ReadCell( words, first, column, row, problem ) ) {
			return false;
		}
		rect = { column, row, column, row };
		return true;
	}
	if ( words.size() != first + 4 ) {
		problem = "'" + words[0] + "' wants a cell or a rectangle after " + std::to_string( first - 1 ) + " words, found "
				+ std::to_string( words.size() - 1 );
		return false;
	}
	int values[4];
	for ( int i = 0; i < 4; i++ ) {
		if ( !ReadNumber( words[first + size_t( i )], values[i] ) ) {
			problem = "'" + words[first + size_t( i )] + "' is not a whole number";
			return false;
		}
	}
	rect = { values[0], values[1], values[2], values[3] };
	if ( !IsInside( rect.column0, rect.row0 ) || !IsInside( rect.column1, rect.row1 ) ) {
		problem = "the rectangle reaches outside the 60 x 75 grid";
		return false;
	}
	if ( rect.column1 < rect.column0 || rect.row1 < rect.row0 ) {
		problem = "a rectangle is given by its top-left and then its bottom-right cell";
		return false;
	}
	return true;
}

bool cTownPlan::PaintGround( const tWords &words, std::string &problem ) {
	eGround ground = GROUND_DIRT;
	sRect rect;
	if ( words.size() < 2 || !ReadName( GROUND_NAMES, words[1], "ground", ground, problem ) || !ReadRect( words, 2, rect, problem ) ) {
		if ( problem.empty() ) problem = "usage: ground KIND c0 r0 c1 r1";
		return false;
	}
	for ( int r = rect.row0; r <= rect.row1; r++ ) {
		for ( int c = rect.column0; c <= rect.column1; c++ ) {
			At( c, r ).ground = ground;
			At( c, r ).laneMark = AXIS_NONE;
			At( c, r ).crosswalk = AXIS_NONE;
		}
	}
	return true;
}

// A road is asphalt with its centre line on the middle row (or column) of the rectangle; a
// crossing is asphalt striped for walking along the axis.
bool cTownPlan::PaintRoad( const tWords &words, bool crossing, std::string &problem ) {
	eAxis axis = AXIS_NONE;
	sRect rect;
	if ( words.size() < 2 || !ReadName( AXIS_NAMES, words[1], "direction", axis, problem ) || !ReadRect( words, 2, rect, problem ) ) {
		if ( problem.empty() ) problem = "usage: " + words[0] + " row|column c0 r0 c1 r1";
		return false;
	}
	const int across = axis == AXIS_ROW ? rect.row1 - rect.row0 + 1 : rect.column1 - rect.column0 + 1;
	if ( !crossing && across % 2 == 0 ) {
		problem = "a road is an odd number of cells wide, so that its centre line falls on a cell";
		return false;
	}
	for ( int r = rect.row0; r <= rect.row1; r++ ) {
		for ( int c = rect.column0; c <= rect.column1; c++ ) {
			sTownCell &cell = At( c, r );
			cell.ground = GROUND_ASPHALT;
			cell.crosswalk = crossing ? axis : AXIS_NONE;
			const bool middle = axis == AXIS_ROW ? 2 * r == rect.row0 + rect.row1 : 2 * c == rect.column0 + rect.column1;
			cell.laneMark = !crossing && middle ? axis : AXIS_NONE;
		}
	}
	return true;
}

bool cTownPlan::PaintClosed( const tWords &words, std::string &problem ) {
	sRect rect;
	if ( !ReadRect( words, 1, rect, problem ) ) {
		return false;
	}
	for ( int r = rect.row0; r <= rect.row1; r++ ) {
		for ( int c = rect.column0; c <= rect.column1; c++ ) {
			At( c, r ).closed = true;
		}
	}
	return true;
}

// A solid building is wall under its whole roof.
bool cTownPlan::PaintBuilding( const tWords &words, std::string &problem ) {
	eMaterial wall = MATERIAL_BRICK;
	if ( words.size() < 3 || !ReadName( MATERIAL_NAMES, words[2], "wall", wall, problem ) ) {
		if ( problem.empty() ) problem = "usage: building ROOF WALL c0 r0 c1 r1";
		return false;
	}
	sRect rect;
	if ( !ReadRect( words, 3, rect, problem ) || !AddRoof( words[1], rect, true, problem ) ) {
		return false;
	}
	for ( int r = rect.row0; r <= rect.row1; r++ ) {
		for ( int c = rect.column0; c <= rect.column1; c++ ) {
			sTownCell &cell = At( c, r );
			cell.ground = GROUND_INDOOR;
			cell.laneMark = AXIS_NONE;
			cell.crosswalk = AXIS_NONE;
			cell.object = OBJECT_WALL;
			cell.material = wall;
		}
	}
	return true;
}

// A roof alone lies over a room painted beneath it, and the game may lift it.
bool cTownPlan::PaintRoof( const tWords &words, std::string &problem ) {
	sRect rect;
	if ( words.size() < 2 || !ReadRect( words, 2, rect, problem ) ) {
		if ( problem.empty() ) problem = "usage: roof ROOF c0 r0 c1 r1";
		return false;
	}
	return AddRoof( words[1], rect, false, problem );
}

bool cTownPlan::AddRoof( const std::string &word, const sRect &rect, bool solid, std::string &problem ) {
	sBuilding building = {};
	if ( !ReadName( ROOF_NAMES, word, "roof", building.roof, problem ) ) {
		return false;
	}
	building.column0 = rect.column0;
	building.row0 = rect.row0;
	building.column1 = rect.column1;
	building.row1 = rect.row1;
	building.solid = solid;
	const int owner = int( buildings.size() );
	buildings.push_back( building );
	for ( int r = rect.row0; r <= rect.row1; r++ ) {
		for ( int c = rect.column0; c <= rect.column1; c++ ) {
			At( c, r ).over = OVER_ROOF;
			At( c, r ).overOwner = owner;
		}
	}
	return true;
}

bool cTownPlan::PaintWall( const tWords &words, std::string &problem ) {
	eMaterial material = MATERIAL_BRICK;
	sRect rect;
	if ( words.size() < 2 || !ReadName( MATERIAL_NAMES, words[1], "wall", material, problem ) || !ReadRect( words, 2, rect, problem ) ) {
		if ( problem.empty() ) problem = "usage: wall MATERIAL c0 r0 c1 r1";
		return false;
	}
	for ( int r = rect.row0; r <= rect.row1; r++ ) {
		for ( int c = rect.column0; c <= rect.column1; c++ ) {
			At( c, r ).object = OBJECT_WALL;
			At( c, r ).material = material;
		}
	}
	return true;
}

// Doors keep a floor under them, since an opened door shows the ground.
bool cTownPlan::PaintObjects( const tWords &words, eObject object, std::string &problem ) {
	sRect rect;
	if ( !ReadRect( words, 1, rect, problem ) ) {
		return false;
	}
	for ( int r = rect.row0; r <= rect.row1; r++ ) {
		for ( int c = rect.column0; c <= rect.column1; c++ ) {
			sTownCell &cell = At( c, r );
			cell.object = object;
			if ( object == OBJECT_DOOR && !IsWalkableGround( cell.ground ) ) {
				cell.ground = GROUND_INDOOR;
			}
		}
	}
	return true;
}

bool cTownPlan::PlaceOne( const tWords &words, eObject object, std::string &problem ) {
	int column = 0;
	int row = 0;
	if ( !ReadCell( words, 1, column, row, problem ) ) {
		return false;
	}
	sTownCell &cell = At( column, row );
	if ( object == OBJECT_BOX && !IsWalkableGround( cell.ground ) ) {
		problem = "a box stands on floor, which its opening uncovers";
		return false;
	}
	cell.object = object;
	return true;
}

bool cTownPlan::PlaceCar( const tWords &words, std::string &problem ) {
	sCar car = {};
	if ( words.size() < 3 || !ReadName( CAR_NAMES, words[1], "car colour", car.colour, problem )
		|| !ReadName( FACING_NAMES, words[2], "facing", car.facing, problem ) || !ReadCell( words, 3, car.column, car.row, problem ) ) {
		if ( problem.empty() ) problem = "usage: car COLOUR FACING c r";
		return false;
	}
	int dc = 0;
	int dr = 0;
	GetFrontStep( car.facing, dc, dr );
	const int cellsTaken[2][2] = { { car.column, car.row }, { car.column + dc, car.row + dr } };
	for ( const int *taken : cellsTaken ) {
		if ( !IsInside( taken[0], taken[1] ) || At( taken[0], taken[1] ).object != OBJECT_NONE ) {
			problem = "the car's cell (" + std::to_string( taken[0] ) + ", " + std::to_string( taken[1] )
					+ ") is outside the grid or taken";
			return false;
		}
	}
	for ( const int *taken : cellsTaken ) {
		At( taken[0], taken[1] ).object = OBJECT_CAR;
		At( taken[0], taken[1] ).car = int( cars.size() );
	}
	cars.push_back( car );
	return true;
}

// A tree's canopy must not cover a roof, another canopy or a lamp's light: one cell holds one
// tile above.
bool cTownPlan::PlaceTree( const tWords &words, std::string &problem ) {
	sTree tree = {};
	if ( !ReadCell( words, 1, tree.column, tree.row, problem ) ) {
		return false;
	}
	if ( At( tree.column, tree.row ).object != OBJECT_NONE ) {
		problem = "the trunk's cell is taken";
		return false;
	}
	if ( !IsFreeAbove( tree.column - 1, tree.row - 1, tree.column + 1, tree.row + 1, "canopy", problem ) ) {
		return false;
	}
	At( tree.column, tree.row ).object = OBJECT_TRUNK;
	for ( int r = tree.row - 1; r <= tree.row + 1; r++ ) {
		for ( int c = tree.column - 1; c <= tree.column + 1; c++ ) {
			if ( IsInside( c, r ) ) {
				At( c, r ).over = OVER_CANOPY;
				At( c, r ).overOwner = int( trees.size() );
			}
		}
	}
	trees.push_back( tree );
	return true;
}

bool cTownPlan::PlaceLamp( const tWords &words, std::string &problem ) {
	sLamp lamp = {};
	if ( !ReadCell( words, 1, lamp.column, lamp.row, problem ) ) {
		return false;
	}
	if ( At( lamp.column, lamp.row ).object != OBJECT_NONE ) {
		problem = "the lamp's cell is taken";
		return false;
	}
	if ( !IsFreeAbove( lamp.column, lamp.row, lamp.column + 1, lamp.row + 1, "lamp's light", problem ) ) {
		return false;
	}
	At( lamp.column, lamp.row ).object = OBJECT_LAMP;
	for ( int r = lamp.row; r <= lamp.row + 1; r++ ) {
		for ( int c = lamp.column; c <= lamp.column + 1; c++ ) {
			if ( IsInside( c, r ) ) {
				At( c, r ).over = OVER_GLOW;
				At( c, r ).overOwner = int( lamps.size() );
			}
		}
	}
	lamps.push_back( lamp );
	return true;
}

bool cTownPlan::IsFreeAbove( int column0, int row0, int column1, int row1, const char *what, std::string &problem ) const {
	for ( int r = row0; r <= row1; r++ ) {
		for ( int c = column0; c <= column1; c++ ) {
			if ( IsInside( c, r ) && GetCell( c, r ).over != OVER_NONE ) {
				problem = "the " + std::string( what ) + " meets something above cell ("
						+ std::to_string( c ) + ", " + std::to_string( r ) + ")";
				return false;
			}
		}
	}
	return true;
}
