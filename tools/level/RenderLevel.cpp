// SPDX-License-Identifier: GPL-3.0-or-later
// kmvt_level_render: pictures the level as the game draws it, for the documentation.
// Usage, from the repository's root: kmvt_level_render [picture folder] (default docs/images/).
// Reads the four map files and tiles.png through the game's scene, and writes level-full.png (a
// quarter of the size), level-full-large.png, and level-zone0.png to level-zone6.png: the view
// of each camera zone with a player standing in it, the camera placed by the game's own rule;
// level-indoor.png shows the hall with a player inside and its roof gone, and level-tiles.png
// every tile of the sheet, enlarged.

#include <SDL.h>

#include <algorithm>
#include <cstdio>
#include <string>

#include "LevelPicture.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int LARGE_PICTURE_LIMIT = 3 * 1024 * 1024;	// in bytes: a larger full-size picture is left out
const int CAMERA_FRAMES = 400;						// long enough for the final area's slide to end

struct sView {
	const char *	file;
	int				x, y;		// where the player stands, in world pixels
};

// A place on the route in each zone, and one inside the hall.
const sView VIEWS[] = {
	{ "level-zone0.png", 7 * CELL_SIZE, 58 * CELL_SIZE },
	{ "level-zone1.png", 600, 38 * CELL_SIZE },
	{ "level-zone2.png", 1100, 38 * CELL_SIZE },
	{ "level-zone3.png", 49 * CELL_SIZE, 24 * CELL_SIZE },
	{ "level-zone4.png", 45 * CELL_SIZE, 7 * CELL_SIZE },
	{ "level-zone5.png", 1000, 7 * CELL_SIZE },
	{ "level-zone6.png", 8 * CELL_SIZE, 7 * CELL_SIZE },
	{ "level-indoor.png", 56 * CELL_SIZE, 28 * CELL_SIZE },
};

const int CONTACT_COLUMNS = 16;		// tiles per row of the contact sheet
const int CONTACT_SCALE = 2;
const uint32_t CONTACT_BACKGROUND = 0xFF847E87;

// Every tile of the sheet twice its size, sixteen to a row, on grey so that transparency shows.
cTileCanvas DrawContactSheet( const cTileCanvas &sheet ) {
	const int count = sheet.GetHeight() / CELL_SIZE;
	const int pitch = CELL_SIZE * CONTACT_SCALE + 4;
	const int rows = ( count + CONTACT_COLUMNS - 1 ) / CONTACT_COLUMNS;
	cTileCanvas contact( CONTACT_COLUMNS * pitch + 4, rows * pitch + 4, CONTACT_BACKGROUND );
	for ( int tile = 0; tile < count; tile++ ) {
		const int left = 4 + ( tile % CONTACT_COLUMNS ) * pitch;
		const int top = 4 + ( tile / CONTACT_COLUMNS ) * pitch;
		for ( int y = 0; y < CELL_SIZE * CONTACT_SCALE; y++ ) {
			for ( int x = 0; x < CELL_SIZE * CONTACT_SCALE; x++ ) {
				BlendPicture( contact, sheet, x / CONTACT_SCALE, tile * CELL_SIZE + y / CONTACT_SCALE, 1, 1, left + x, top + y );
			}
		}
	}
	return contact;
}

long GetFileSize( const std::string &path ) {
	FILE *file = std::fopen( path.c_str(), "rb" );
	if ( file == nullptr ) {
		return -1;
	}
	std::fseek( file, 0, SEEK_END );
	const long size = std::ftell( file );
	std::fclose( file );
	return size;
}

// The camera starts around the player, as if it had followed it there, and then runs the
// game's rule frame after frame until it rests.
void PlaceCamera( cScene &scene, int32_t &x, int32_t &y ) {
	const int32_t startX = std::max( 0, std::min( x - VIEW_WIDTH / 2, WORLD_WIDTH - VIEW_WIDTH ) );
	const int32_t startY = std::max( 0, std::min( y - VIEW_HEIGHT / 2, WORLD_HEIGHT - VIEW_HEIGHT ) );
	scene.SetCameraPosition( startX, startY );
	int32_t unusedX = 0;
	int32_t unusedY = 0;
	for ( int frame = 0; frame < CAMERA_FRAMES; frame++ ) {
		scene.UpdateCamera( true, x, y, false, unusedX, unusedY );
	}
}

// The player is drawn as the game draws tavesh standing; a box when the sheet is missing.
void DrawPlayer( cTileCanvas &view, const cTileCanvas *characters, int x, int y ) {
	if ( characters != nullptr ) {
		BlendPicture( view, *characters, CELL_SIZE, 0, CELL_SIZE, CELL_SIZE, x, y );
		return;
	}
	view.FillRect( x, y, CELL_SIZE, 2, 0xFFFBF236 );
	view.FillRect( x, y + CELL_SIZE - 2, CELL_SIZE, 2, 0xFFFBF236 );
	view.FillRect( x, y, 2, CELL_SIZE, 0xFFFBF236 );
	view.FillRect( x + CELL_SIZE - 2, y, 2, CELL_SIZE, 0xFFFBF236 );
}

bool SaveView( cScene &scene, const cLevelPicture &picture, const cTileCanvas *characters, const sView &spot, const std::string &folder ) {
	int32_t x = spot.x;
	int32_t y = spot.y;
	PlaceCamera( scene, x, y );
	const bool inside = scene.IsUnderRoof( ( x + CELL_SIZE / 2 ) / CELL_SIZE, ( y + CELL_SIZE / 2 ) / CELL_SIZE );
	const cTileCanvas world = picture.DrawWorld( inside );
	cTileCanvas view = world.Crop( scene.GetCameraX(), scene.GetCameraY(), VIEW_WIDTH, VIEW_HEIGHT );
	DrawPlayer( view, characters, x - scene.GetCameraX(), y - scene.GetCameraY() );
	std::printf( "kmvt_level_render: %s: player at (%d, %d), zone %d, camera (%d, %d)\n", spot.file, x, y,
				scene.GetCameraZone( x, y ), scene.GetCameraX(), scene.GetCameraY() );
	return view.SavePng( folder + spot.file );
}

}

int main( int argc, char **argv ) {
	std::string folder = argc > 1 ? argv[1] : "docs/images/";
	if ( !folder.empty() && folder.back() != '/' ) {
		folder += '/';
	}
	cScene scene;
	if ( !scene.IsUsable() ) {
		std::fprintf( stderr, "kmvt_level_render: the map files cannot be read (see log.txt)\n" );
		return 1;
	}
	cTileCanvas sheet( 1, 1 );
	std::string error;
	if ( !cTileCanvas::LoadPng( "resources/map/tiles.png", sheet, error ) ) {
		std::fprintf( stderr, "kmvt_level_render: %s\n", error.c_str() );
		return 1;
	}
	cTileCanvas characterSheet( 1, 1 );
	const bool haveCharacters = cTileCanvas::LoadPng( "resources/sprites/characters_trans.png", characterSheet, error );
	const cLevelPicture picture( scene, sheet );
	const cTileCanvas world = picture.DrawWorld( false );
	if ( picture.GetMissingTileCount() > 0 ) {
		std::fprintf( stderr, "kmvt_level_render: %d cells name tiles the sheet does not have\n", picture.GetMissingTileCount() );
	}
	bool saved = Shrink( world, 4 ).SavePng( folder + "level-full.png" );
	saved = saved && DrawContactSheet( sheet ).SavePng( folder + "level-tiles.png" );
	const std::string large = folder + "level-full-large.png";
	saved = saved && world.SavePng( large );
	if ( GetFileSize( large ) > LARGE_PICTURE_LIMIT ) {
		std::printf( "kmvt_level_render: %s is over %d bytes; left out\n", large.c_str(), LARGE_PICTURE_LIMIT );
		std::remove( large.c_str() );
	}
	for ( const sView &spot : VIEWS ) {
		saved = saved && SaveView( scene, picture, haveCharacters ? &characterSheet : nullptr, spot, folder );
	}
	if ( !saved ) {
		std::fprintf( stderr, "kmvt_level_render: cannot write the pictures into %s\n", folder.c_str() );
		return 1;
	}
	return picture.GetMissingTileCount() > 0 ? 1 : 0;
}
