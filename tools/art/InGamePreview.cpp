// SPDX-License-Identifier: GPL-3.0-or-later
#include "InGamePreview.h"

#include "Canvas.h"
#include "CharacterArt.h"
#include "SpriteArt.h"

#include <SDL.h>
#include <SDL_image.h>

#include <fstream>
#include <vector>

namespace {

const int COLUMNS = 60;
const int ROWS = 75;
const int CAMERA_X = 0;			// the camera where the game starts
const int CAMERA_Y = 1920;

bool LoadCanvas( const std::string &path, cCanvas &canvas ) {
	SDL_Surface *loaded = IMG_Load( path.c_str() );
	if ( loaded == nullptr ) {
		return false;
	}
	SDL_Surface *argb = SDL_ConvertSurfaceFormat( loaded, SDL_PIXELFORMAT_ARGB8888, 0 );
	SDL_FreeSurface( loaded );
	if ( argb == nullptr ) {
		return false;
	}
	canvas = cCanvas( argb->w, argb->h );
	for ( int y = 0; y < argb->h; y++ ) {
		const uint32_t *row = reinterpret_cast<const uint32_t *>( static_cast<const uint8_t *>( argb->pixels ) + size_t( y ) * argb->pitch );
		for ( int x = 0; x < argb->w; x++ ) {
			canvas.Set( x, y, row[x] );
		}
	}
	SDL_FreeSurface( argb );
	return true;
}

bool LoadLayer( const std::string &path, std::vector<int> &layer ) {
	std::ifstream in( path );
	layer.assign( COLUMNS * ROWS, 0 );
	for ( int &code : layer ) {
		if ( !( in >> code ) ) {
			return false;
		}
	}
	return true;
}

void DrawLayer( cCanvas &frame, const cCanvas &tiles, const std::vector<int> &layer, bool ground ) {
	for ( int row = CAMERA_Y / 32; row < CAMERA_Y / 32 + 15; row++ ) {
		for ( int column = CAMERA_X / 32; column < CAMERA_X / 32 + 20; column++ ) {
			int code = layer[row * COLUMNS + column];
			if ( ground && code == 0 ) {
				code = 1;
			}
			if ( code > 0 && code * 32 <= tiles.GetHeight() ) {
				frame.PasteRect( tiles, 0, ( code - 1 ) * 32, 32, 32, column * 32 - CAMERA_X, row * 32 - CAMERA_Y );
			}
		}
	}
}

void DrawHudBar( cCanvas &frame, const cCanvas &bar, int x, int y, int length ) {
	for ( int i = 0; i <= length; i++ ) {
		frame.PasteRect( bar, 0, 0, 1, 8, x + i, y );
	}
}

}	// namespace

bool WriteInGamePreview( const std::string &root ) {
	cCanvas tiles( 1, 1 );
	std::vector<int> base, objects, over;
	if ( !LoadCanvas( root + "/resources/map/tiles.png", tiles ) || !LoadLayer( root + "/resources/map/basemap.txt", base ) ||
		!LoadLayer( root + "/resources/map/objectmap.txt", objects ) || !LoadLayer( root + "/resources/map/overmap.txt", over ) ) {
		return true;
	}
	const cCanvas characters = MakeCharacterSheet();
	const cCanvas items = MakeItemSheet();
	const cCanvas bullets = MakeBulletSheet();
	const cCanvas explosions = MakeExplosionSheet();
	cCanvas frame( 640, 480, 0xFF000000 );
	DrawLayer( frame, tiles, base, true );
	DrawLayer( frame, tiles, objects, false );
	frame.PasteRect( items, 64, 0, 32, 32, 300, 380 );				// health
	frame.PasteRect( items, 0, 0, 32, 32, 120, 250 );				// ammunition
	frame.PasteRect( items, 160, 0, 32, 32, 520, 300 );			// speed
	frame.PasteRect( bullets, 0, 0, 20, 20, 230, 250 );
	frame.PasteRect( bullets, 20, 0, 20, 20, 420, 230 );
	frame.PasteRect( bullets, 40, 0, 20, 20, 330, 170 );
	frame.PasteRect( bullets, 60, 0, 20, 20, 470, 150 );
	frame.PasteRect( characters, 32, 96, 32, 32, 224, 320 );		// tavesh walking up
	frame.PasteRect( characters, 96 + 64, 224, 32, 32, 384, 320 );	// lumra up, skill on
	frame.PasteRect( characters, 192 + 32, 0, 32, 32, 320, 100 );	// soldier facing down
	frame.PasteRect( characters, 288, 32, 32, 32, 500, 110 );		// machine-gunner facing left
	frame.PasteRect( characters, 384 + 32, 0, 32, 32, 150, 60 );	// the boss
	frame.PasteRect( characters, 0, 256, 32, 32, 100, 400 );		// a downed tavesh
	frame.PasteRect( MakeExclamationIcon(), 0, 0, 16, 16, 330, 80 );
	frame.PasteRect( MakeQueryIcon(), 0, 0, 16, 16, 510, 90 );
	frame.PasteRect( MakePuzzledIcon(), 0, 0, 32, 32, 150, 40 );
	frame.PasteRect( explosions, 64, 0, 32, 32, 560, 200 );
	frame.PasteRect( explosions, 32, 32, 32, 32, 300, 200 );
	DrawLayer( frame, tiles, over, false );
	frame.PasteRect( characters, 32, 0, 32, 32, 32, 32 );			// the HUD portraits and bars
	DrawHudBar( frame, MakeBar( BAR_HEALTH ), 72, 32, 80 );
	DrawHudBar( frame, MakeBar( BAR_ENERGY ), 72, 42, 50 );
	DrawHudBar( frame, MakeBar( BAR_AMMO ), 72, 52, 20 );
	frame.PasteRect( characters, 128, 128, 32, 32, 576, 32 );
	DrawHudBar( frame, MakeBar( BAR_LOW_HEALTH ), 468, 32, 20 );
	DrawHudBar( frame, MakeBar( BAR_ENERGY ), 468, 42, 12 );
	cCanvas enlarged( 1280, 960 );
	enlarged.Paste( frame, 0, 0, 2 );
	return enlarged.SavePng( root + "/docs/images/sheet-in-game.png" );
}
