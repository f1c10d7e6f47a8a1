// SPDX-License-Identifier: GPL-3.0-or-later
// kmvt_art: draws every picture of the game into a resource tree.
// Usage: kmvt_art <repository root>. Writes resources/menu,
// resources/sprites and resources/icon, the menu background the resource tests compare with,
// the contact sheets under docs/images and the desktop icons under packaging/icons.

#include "CharacterArt.h"
#include "ContactSheets.h"
#include "IconFile.h"
#include "InGamePreview.h"
#include "MenuArt.h"
#include "Palette.h"
#include "SpriteArt.h"

#include <SDL.h>
#include <SDL_image.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace {

// The small pictures side by side on one strip, for the contact sheet.
cCanvas MakeSmallPictureStrip( const std::vector<cCanvas> &pictures ) {
	cCanvas strip( 32 * int( pictures.size() ), 32 );
	for ( size_t i = 0; i < pictures.size(); i++ ) {
		strip.Paste( pictures[i], int( i ) * 32, 0 );
	}
	return strip;
}

// The cursor as the game shows it: key pixels made transparent.
cCanvas WithoutKey( const cCanvas &cursor ) {
	cCanvas shown = cursor;
	for ( int y = 0; y < shown.GetHeight(); y++ ) {
		for ( int x = 0; x < shown.GetWidth(); x++ ) {
			if ( shown.Get( x, y ) == CURSOR_KEY ) {
				shown.Set( x, y, 0 );
			}
		}
	}
	return shown;
}

bool WriteSprites( const std::string &root ) {
	const std::string sprites = root + "/resources/sprites/";
	const std::string images = root + "/docs/images/";
	bool ok = true;
	const cCanvas characters = MakeCharacterSheet();
	ok &= characters.SavePng( sprites + "characters_trans.png" );
	ok &= MakeContactSheet( characters, 4, 32, 32 ).SavePng( images + "sheet-characters.png" );

	const cCanvas items = MakeItemSheet();
	const cCanvas bullets = MakeBulletSheet();
	const cCanvas explosions = MakeExplosionSheet();
	ok &= items.SavePng( sprites + "items_trans.png" );
	ok &= bullets.SavePng( sprites + "bullets_trans.png" );
	ok &= explosions.SavePng( sprites + "explosion_trans.png" );
	ok &= MakeBar( BAR_HEALTH ).SavePng( sprites + "health.png" );
	ok &= MakeBar( BAR_LOW_HEALTH ).SavePng( sprites + "low_health.png" );
	ok &= MakeBar( BAR_ENERGY ).SavePng( sprites + "energy.png" );
	ok &= MakeBar( BAR_AMMO ).SavePng( sprites + "ammo.png" );
	const cCanvas exclamation = MakeExclamationIcon();
	const cCanvas query = MakeQueryIcon();
	const cCanvas puzzled = MakePuzzledIcon();
	ok &= exclamation.SavePng( sprites + "exclamation.png" );
	ok &= query.SavePng( sprites + "query.png" );
	ok &= puzzled.SavePng( sprites + "WTF.png" );
	const cCanvas cursor = MakeCursor();
	ok &= cursor.SavePng( root + "/resources/menu/mouse.png" );
	const std::vector<cCanvas> icons = { MakeGameIcon( 64 ), MakeGameIcon( 32 ) };
	ok &= WriteIconFile( root + "/resources/icon/kmvt.ico", icons );

	ok &= MakeContactSheet( items, 6, 32, 32 ).SavePng( images + "sheet-items.png" );
	ok &= MakeContactSheet( bullets, 8, 20, 20 ).SavePng( images + "sheet-bullets.png" );
	ok &= MakeContactSheet( explosions, 5, 32, 32 ).SavePng( images + "sheet-explosions.png" );
	std::vector<cCanvas> smalls;
	for ( eBar bar : { BAR_HEALTH, BAR_LOW_HEALTH, BAR_ENERGY, BAR_AMMO } ) {
		cCanvas cell( 32, 32 );
		cell.PasteRect( MakeBar( bar ), 0, 0, 8, 8, 4, 12, 1 );
		for ( int x = 4; x < 28; x++ ) {		// a stretch of bar as the HUD draws it
			cell.PasteRect( MakeBar( bar ), 0, 0, 1, 8, x, 12 );
		}
		smalls.push_back( cell );
	}
	cCanvas smallIcons( 32, 32 );
	smallIcons.Paste( exclamation, 0, 8 );
	smallIcons.Paste( query, 16, 8 );
	smalls.push_back( smallIcons );
	smalls.push_back( puzzled );
	smalls.push_back( WithoutKey( cursor ) );
	smalls.push_back( icons[1] );
	ok &= MakeContactSheet( MakeSmallPictureStrip( smalls ), 6, 32, 32 ).SavePng( images + "sheet-icons.png" );
	ok &= MakeContactSheet( icons[0], 4, 64, 64 ).SavePng( images + "sheet-app-icon.png" );
	return ok;
}

// The icon of the desktop entry, in the sizes of the hicolor theme that desktops ask for.
bool WriteDesktopIcons( const std::string &root ) {
	bool ok = true;
	for ( int size : { 32, 48, 64, 128, 256 } ) {
		const std::string name = std::to_string( size ) + "x" + std::to_string( size );
		const std::string folder = root + "/packaging/icons/" + name;
		std::error_code error;
		std::filesystem::create_directories( folder, error );
		ok &= MakeGameIcon( size ).SavePng( folder + "/kormaveth2d.png" );
	}
	return ok;
}

bool WriteMenus( const std::string &root ) {
	cMenuArt art;
	if ( !art.Open() ) {
		return false;
	}
	bool ok = true;
	const std::string menu = root + "/resources/menu/";
	ok &= art.GetBackdrop().SavePng( root + "/tests/resources/menu_background.png" );
	for ( const sMenuScreen &screen : MENU_SCREENS ) {
		const cCanvas picture = art.MakeScreen( screen );
		ok &= picture.SavePng( menu + screen.file );
		ok &= art.MakeShownScreen( screen ).SavePng( root + "/docs/images/menu-" + screen.file );
	}
	for ( bool victory : { true, false } ) {
		const cCanvas overlay = art.MakeEndOverlay( victory );
		const char *file = victory ? "youwin.png" : "youlose.png";
		ok &= overlay.SavePng( menu + file );
		// on the contact sheet the overlay lies over a piece of the town, as in the game
		cCanvas shown = art.GetBackdrop();
		shown.Paste( overlay, 0, 0 );
		ok &= shown.SavePng( root + "/docs/images/menu-" + file );
	}
	const cCanvas waiting = art.MakeWaitingOverlay();
	ok &= waiting.SavePng( menu + "waiting.png" );
	cCanvas shown = art.GetBackdrop();
	shown.Paste( waiting, 0, 0 );
	ok &= shown.SavePng( root + "/docs/images/menu-waiting.png" );
	ok &= art.MakeGlyphSheet().SavePng( menu + "glyphs.png" );
	const cCanvas lost = art.MakeConnectionLostOverlay();
	ok &= lost.SavePng( menu + "connection-lost.png" );
	ok &= art.MakeCountdownGlyphs().SavePng( menu + "countdown.png" );
	return ok;
}

}	// namespace

int main( int argc, char **argv ) {
	if ( argc != 2 ) {
		std::fprintf( stderr, "usage: %s <repository root>\n", argv[0] );
		return 2;
	}
	const std::string root = argv[1];
	if ( SDL_Init( 0 ) != 0 ) {
		std::fprintf( stderr, "SDL_Init: %s\n", SDL_GetError() );
		return 1;
	}
	bool ok = WriteSprites( root );
	ok &= WriteMenus( root );
	ok &= WriteInGamePreview( root );
	ok &= WriteDesktopIcons( root );
	SDL_Quit();
	return ok ? 0 : 1;
}
