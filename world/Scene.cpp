// SPDX-License-Identifier: GPL-3.0-or-later
#include "world/Scene.h"

#include <cassert>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <limits>

#include "log/Log.h"
#include "world/Grid.h"

namespace {

const char *const DEFAULT_MAP_FOLDER = "./resources/map/";
const size_t SHOWN_TOKEN_LENGTH = 24;		// a bad token is quoted in the log up to this length

// The indoor area whose roofs the drawing hides while a player is inside.
const int ROOF_FIRST_COLUMN = 53;
const int ROOF_LAST_COLUMN = 85;
const int ROOF_FIRST_ROW = 17;
const int ROOF_LAST_ROW = 39;

bool IsWalkable( int32_t code ) {
	return code == WALK_FLOOR || code == WALK_ENEMY;
}

// A decimal integer in the range of int32_t, with an optional sign, at the start of the token. The
// number must end where the token ends unless the rest is to be ignored, as it is after the last
// number of a layer; a zero byte inside a token does not end it.
bool ParseInteger( const std::string &token, bool ignoreRest, int32_t &value ) {
	errno = 0;
	char *end = nullptr;
	const long parsed = std::strtol( token.c_str(), &end, 10 );
	const bool wholeToken = end == token.c_str() + token.size();
	if ( end == token.c_str() || ( !wholeToken && !ignoreRest ) || errno == ERANGE ) {
		return false;
	}
	if ( parsed < std::numeric_limits<int32_t>::min() || parsed > std::numeric_limits<int32_t>::max() ) {
		return false;
	}
	value = static_cast<int32_t>( parsed );
	return true;
}

void LogMapError( const std::string &path, const std::string &problem ) {
	const std::string line = "Error loading map " + path + ": " + problem;
	cLog::Write( line.c_str() );
}

}

cScene::cScene( cEmptyTag )
	: baseMap( std::make_shared<const std::vector<int32_t>>( MAP_CELLS, 0 ) ),
	objectMap( MAP_CELLS, 0 ),
	overMap( baseMap ),
	walkMap( MAP_CELLS, 0 ),
	cameraCellX( START_CAMERA_X / CELL_SIZE ),
	cameraCellY( START_CAMERA_Y / CELL_SIZE ),
	cameraX( START_CAMERA_X ),
	cameraY( START_CAMERA_Y ),
	finalAreaLocked( false ),
	usable( true ) {
}

cScene::cScene()
	: cScene( std::string( DEFAULT_MAP_FOLDER ) ) {
}

std::string cScene::GetMapFolder( const std::string &root ) {
	return root + ( DEFAULT_MAP_FOLDER + 1 );	// the folder's path starts with "."
}

// Every file is tried, so that the log names each broken one.
cScene::cScene( const std::string &mapFolder )
	: cScene( cEmptyTag() ) {
	cLog::Instance();
	LoadBaseMap( mapFolder + "basemap.txt" );
	LoadObjectMap( mapFolder + "objectmap.txt" );
	LoadWalkMap( mapFolder + "walkmap.txt" );
	LoadOverMap( mapFolder + "overmap.txt" );
}

cScene::~cScene() = default;

std::unique_ptr<cScene> cScene::FromLayers( const std::vector<int32_t> &base, const std::vector<int32_t> &object,
										const std::vector<int32_t> &walk, const std::vector<int32_t> &over ) {
	std::unique_ptr<cScene> scene( new cScene( cEmptyTag() ) );
	scene->SetLayer( "base", base, scene->baseMap );
	scene->SetLayer( "object", object, scene->objectMap );
	scene->SetLayer( "walk", walk, scene->walkMap );
	scene->SetLayer( "over", over, scene->overMap );
	return scene;
}

bool cScene::SetLayer( const char *name, const std::vector<int32_t> &codes, std::vector<int32_t> &layer ) {
	if ( codes.size() != static_cast<size_t>( MAP_CELLS ) ) {
		char line[cLog::ENTRY_SIZE];
		std::snprintf( line, sizeof( line ), "Error building map: the %s layer holds %zu of %d numbers",
						name, codes.size(), MAP_CELLS );
		cLog::Write( line );
		usable = false;
		return false;
	}
	layer = codes;
	return true;
}

bool cScene::SetLayer( const char *name, const std::vector<int32_t> &codes, tDrawnLayer &layer ) {
	std::vector<int32_t> set( *layer );
	const bool done = SetLayer( name, codes, set );
	layer = std::make_shared<const std::vector<int32_t>>( std::move( set ) );
	return done;
}

bool cScene::LoadLayer( const std::string &path, tDrawnLayer &layer ) {
	std::vector<int32_t> loaded;
	const bool done = LoadLayer( path, loaded );
	layer = std::make_shared<const std::vector<int32_t>>( std::move( loaded ) );
	return done;
}

bool cScene::LoadBaseMap( const std::string &path ) {
	return LoadLayer( path, baseMap );
}

bool cScene::LoadObjectMap( const std::string &path ) {
	return LoadLayer( path, objectMap );
}

bool cScene::LoadWalkMap( const std::string &path ) {
	return LoadLayer( path, walkMap );
}

bool cScene::LoadOverMap( const std::string &path ) {
	return LoadLayer( path, overMap );
}

// Numbers come row by row; whatever follows the 4500th is ignored, even text glued to it ("6junk"
// reads as 6). On failure the whole layer is cleared to 0, which every layer treats as nothing
// drawn and the walk layer as wall.
bool cScene::LoadLayer( const std::string &path, std::vector<int32_t> &layer ) {
	cLog::Instance();
	layer.assign( MAP_CELLS, 0 );
	std::ifstream file( path );
	if ( !file.is_open() ) {
		LogMapError( path, "the file cannot be opened" );
		usable = false;
		return false;
	}
	int count = 0;
	std::string token;
	while ( count < MAP_CELLS && file >> token ) {
		int32_t value = 0;
		if ( !ParseInteger( token, count == MAP_CELLS - 1, value ) ) {
			const std::string shown = token.substr( 0, SHOWN_TOKEN_LENGTH );
			LogMapError( path, "number " + std::to_string( count + 1 ) + " is not an integer: '" + shown + "'" );
			layer.assign( MAP_CELLS, 0 );
			usable = false;
			return false;
		}
		layer[count++] = value;
	}
	if ( count < MAP_CELLS ) {
		LogMapError( path, std::to_string( count ) + " of " + std::to_string( MAP_CELLS ) + " numbers" );
		layer.assign( MAP_CELLS, 0 );
		usable = false;
		return false;
	}
	return true;
}

int32_t cScene::GetWalkCode( int column, int row ) const {
	return IsInGrid( column, row ) ? walkMap[CellIndex( column, row )] : 0;
}

bool cScene::IsFree( int32_t x, int32_t y, bool small ) const {
	const int32_t side = small ? BULLET_SIZE : BODY_SIZE;
	const int32_t corners[4][2] = {
		{ x, y }, { x + side - 1, y }, { x, y + side - 1 }, { x + side - 1, y + side - 1 }
	};
	for ( const int32_t *corner : corners ) {
		// Pixels outside the world would truncate into the edge cells; they are never free.
		if ( corner[0] < 0 || corner[0] >= WORLD_WIDTH || corner[1] < 0 || corner[1] >= WORLD_HEIGHT ) {
			return false;
		}
		if ( !IsWalkable( walkMap[CellIndex( corner[0] / CELL_SIZE, corner[1] / CELL_SIZE )] ) ) {
			return false;
		}
	}
	return true;
}

// A door group may span many cells, so the flood runs on an explicit stack rather than by
// recursion. A cell turns to floor as it is pushed, which keeps it from being pushed twice.
void cScene::OpenDoor( int column, int row ) {
	if ( !IsInGrid( column, row ) ) {
		return;
	}
	static const int NEIGHBOURS[4][2] = { { 1, 0 }, { -1, 0 }, { 0, 1 }, { 0, -1 } };	// right, left, below, above
	std::vector<int> open;
	const int first = CellIndex( column, row );
	walkMap[first] = WALK_FLOOR;
	objectMap[first] = 0;
	open.push_back( first );
	while ( !open.empty() ) {
		const int cell = open.back();
		open.pop_back();
		const int c = cell % MAP_COLUMNS;
		const int r = cell / MAP_COLUMNS;
		for ( const int *step : NEIGHBOURS ) {
			if ( GetWalkCode( c + step[0], r + step[1] ) != WALK_DOOR ) {
				continue;
			}
			const int next = CellIndex( c + step[0], r + step[1] );
			walkMap[next] = WALK_FLOOR;
			objectMap[next] = 0;
			open.push_back( next );
		}
	}
}

void cScene::OpenBox( int column, int row ) {
	if ( !IsInGrid( column, row ) ) {
		return;
	}
	const int cell = CellIndex( column, row );
	walkMap[cell] = WALK_FLOOR;
	objectMap[cell] = 0;
}

bool cScene::IsUnderRoof( int column, int row ) const {
	return column >= ROOF_FIRST_COLUMN && column <= ROOF_LAST_COLUMN && row >= ROOF_FIRST_ROW && row <= ROOF_LAST_ROW;
}

void cScene::SetCameraPosition( int32_t x, int32_t y ) {
	cameraX = x;
	cameraY = y;
	cameraCellX = x / CELL_SIZE;
	cameraCellY = y / CELL_SIZE;
}
