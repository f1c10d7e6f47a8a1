// What reaches the screen, pixel by pixel, on SDL's software renderer drawing into an off-screen
// surface from tiny pictures made here: the cut cells at the view's edges, the roofs that vanish
// indoors, the HUD bars, the cursor at the screen's corner, lumra hidden by her skill, and the
// cursor picture's colour key.

#include <gtest/gtest.h>

#include <SDL_image.h>

#include <cstdio>
#include <string>

#include "GraphicsFixtures.h"
#include "actors/ActorTypes.h"
#include "actors/Player.h"
#include "app/GameState.h"
#include "graphics/sdl/SdlGraphicsBackend.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const uint32_t BLACK = 0xFF000000;
const uint32_t HEALTH_COLOUR = 0xFF20C020;
const uint32_t LOW_HEALTH_COLOUR = 0xFFC02020;
const uint32_t ENERGY_COLOUR = 0xFF2020C0;
const uint32_t BODY_COLOUR = 0xFFC86432;		// red 200, green 100, blue 50
const uint32_t KEY = 0x00FF00FF;
const uint32_t OPAQUE_MAGENTA = 0xFFFF00FF;
const int32_t SHEET_TILES = 6;
const int32_t ROOF_TILE = 6;

// Each pixel of the test's tile sheet tells which tile it belongs to (red) and where in the
// tile it lies (green for x, blue for y), so a screen pixel names the tile pixel it came from.
uint32_t TileColour( int32_t tile, int x, int y ) {
	return 0xFF000000u | static_cast<uint32_t>( tile * 40 ) << 16 | static_cast<uint32_t>( x * 8 ) << 8 |
			static_cast<uint32_t>( y * 8 );
}

std::string Hex( uint32_t colour ) {
	char text[16];
	std::snprintf( text, sizeof( text ), "0x%08X", colour );
	return text;
}

class PixelTest : public cPixelFrameTest {
protected:
	void WriteTileSheet() {
		WritePicture( PNG_TILES, CELL_SIZE, SHEET_TILES * CELL_SIZE, []( int x, int y ) {
			return TileColour( y / CELL_SIZE + 1, x, y % CELL_SIZE );
		} );
	}

	// Every screen pixel must show the ground's tile pixel at the world pixel under it.
	void ExpectScreenShowsGround( const std::vector<int32_t> &base ) {
		for ( int sy = 0; sy < VIEW_HEIGHT; sy++ ) {
			for ( int sx = 0; sx < VIEW_WIDTH; sx++ ) {
				const int wx = sx + scene->GetCameraX();
				const int wy = sy + scene->GetCameraY();
				const int32_t code = base[CellIndex( wx / CELL_SIZE, wy / CELL_SIZE )];
				const uint32_t expected = TileColour( code == 0 ? 1 : code, wx % CELL_SIZE, wy % CELL_SIZE );
				ASSERT_EQ( Hex( GetPixel( sx, sy ) ), Hex( expected ) )
					<< "screen pixel (" << sx << ", " << sy << ") should show world pixel (" << wx << ", " << wy << ")";
			}
		}
	}
};

std::vector<int32_t> PatternedGround() {
	std::vector<int32_t> base( MAP_CELLS );
	for ( int i = 0; i < MAP_CELLS; i++ ) {
		base[i] = ( i % MAP_COLUMNS + i / MAP_COLUMNS ) % ( SHEET_TILES - 1 ) + 2;
	}
	return base;
}

// cameraX 40: the first column shows pixels 8-31 of its tiles at x 0-23, the 21st pixels 0-7 at
// x 632-639; cameraY 360 cuts the rows alike. The top-left cell has code 0 and shows tile 1.
TEST_F( PixelTest, ScrolledViewShowsCutCellsAtTheEdges ) {
	WriteTileSheet();
	Load();
	std::vector<int32_t> base = PatternedGround();
	base[CellIndex( 1, 11 )] = 0;
	scene = MakeDrawnScene( base, FilledLayer( 0 ), FilledLayer( 0 ) );
	SetCamera( 40, 360 );
	Render();
	EXPECT_EQ( Hex( GetPixel( 0, 0 ) ), Hex( TileColour( 1, 8, 8 ) ) ) << "ground code 0 shows tile 1, cut at (8, 8)";
	EXPECT_EQ( Hex( GetPixel( 23, 0 ) ), Hex( TileColour( 1, 31, 8 ) ) );
	EXPECT_EQ( Hex( GetPixel( 632, 0 ) ), Hex( TileColour( base[CellIndex( 21, 11 )], 0, 8 ) ) );
	EXPECT_EQ( Hex( GetPixel( 639, 479 ) ), Hex( TileColour( base[CellIndex( 21, 26 )], 7, 7 ) ) );
	ExpectScreenShowsGround( base );
}

// On cell edges the view holds 20 x 15 whole cells and nothing of the extra column and row.
TEST_F( PixelTest, ViewOnCellEdgesShowsWholeCells ) {
	WriteTileSheet();
	Load();
	const std::vector<int32_t> base = PatternedGround();
	scene = MakeDrawnScene( base, FilledLayer( 0 ), FilledLayer( 0 ) );
	SetCamera( 1280, 1920 );
	Render();
	ExpectScreenShowsGround( base );
}

// The roofs of the indoor area give way to the ground while a player stands under them.
TEST_F( PixelTest, IndoorRoofsVanishWhileAPlayerIsInside ) {
	WriteTileSheet();
	Load();
	std::vector<int32_t> over = FilledLayer( 0 );
	over[CellIndex( 55, 20 )] = ROOF_TILE;
	over[CellIndex( 50, 20 )] = ROOF_TILE;
	scene = MakeDrawnScene( FilledLayer( 1 ), FilledLayer( 0 ), over );
	SetCamera( 1280, 544 );
	const int indoorX = ( 55 - 40 ) * CELL_SIZE + 16;
	const int outdoorX = ( 50 - 40 ) * CELL_SIZE + 16;
	const int roofY = ( 20 - 17 ) * CELL_SIZE + 16;
	cPlayer &player = AddPlayer( KIND_TAVESH, 1600, 800 );
	Render();
	EXPECT_EQ( Hex( GetPixel( indoorX, roofY ) ), Hex( TileColour( ROOF_TILE, 16, 16 ) ) ) << "nobody inside: roof";
	EXPECT_EQ( Hex( GetPixel( outdoorX, roofY ) ), Hex( TileColour( ROOF_TILE, 16, 16 ) ) );

	player.SetPosition( 55 * CELL_SIZE, 25 * CELL_SIZE );
	Render();
	EXPECT_EQ( Hex( GetPixel( indoorX, roofY ) ), Hex( TileColour( 1, 16, 16 ) ) ) << "player inside: ground";
	EXPECT_EQ( Hex( GetPixel( outdoorX, roofY ) ), Hex( TileColour( ROOF_TILE, 16, 16 ) ) )
		<< "a roof outside the indoor area stays";
}

// Health 26 is a 27-pixel bar in the health colour, 25 a 26-pixel one in the low-health colour;
// full energy 51 pixels, 101 with the upgrade. Each bar is 8 pixels high.
TEST_F( PixelTest, HudBarsLengthsAndColours ) {
	WriteFlatPicture( PNG_HEALTH, 1, 8, HEALTH_COLOUR );
	WriteFlatPicture( PNG_LOW_HEALTH, 1, 8, LOW_HEALTH_COLOUR );
	WriteFlatPicture( PNG_ENERGY, 1, 8, ENERGY_COLOUR );
	Load();
	SetCamera( 0, 1920 );
	cPlayer &player = AddPlayer( KIND_TAVESH, 224, 2240 );
	player.SetHealth( 26 );
	Render();
	EXPECT_EQ( CountPixels( HEALTH_COLOUR ), 27 * 8 );
	EXPECT_EQ( Hex( GetPixel( 72, 32 ) ), Hex( HEALTH_COLOUR ) );
	EXPECT_EQ( Hex( GetPixel( 98, 39 ) ), Hex( HEALTH_COLOUR ) );
	EXPECT_EQ( Hex( GetPixel( 99, 32 ) ), Hex( BLACK ) ) << "the bar ends after 27 pixels";
	EXPECT_EQ( Hex( GetPixel( 72, 40 ) ), Hex( BLACK ) ) << "the bar is 8 pixels high";
	EXPECT_EQ( CountPixels( ENERGY_COLOUR ), 51 * 8 );
	EXPECT_EQ( Hex( GetPixel( 122, 42 ) ), Hex( ENERGY_COLOUR ) );

	player.SetHealth( 25 );
	player.SetMaxEnergy( cPlayer::UPGRADED_ENERGY );
	player.SetEnergy( cPlayer::UPGRADED_ENERGY );
	player.SetEnergyUpgraded( true );
	Render();
	EXPECT_EQ( CountPixels( HEALTH_COLOUR ), 0 );
	EXPECT_EQ( CountPixels( LOW_HEALTH_COLOUR ), 26 * 8 );
	EXPECT_EQ( Hex( GetPixel( 97, 32 ) ), Hex( LOW_HEALTH_COLOUR ) );
	EXPECT_EQ( CountPixels( ENERGY_COLOUR ), 101 * 8 );
	EXPECT_EQ( Hex( GetPixel( 172, 49 ) ), Hex( ENERGY_COLOUR ) );
}

// The cursor's top-left pixel is the hot spot; at (630, 470) only its top-left 10 x 10 pixels fit.
TEST_F( PixelTest, CursorIsCutByTheScreensCorner ) {
	WritePicture( PNG_CURSOR, 32, 32, []( int x, int y ) {
		return 0xFF000080u | static_cast<uint32_t>( x * 8 ) << 16 | static_cast<uint32_t>( y * 8 ) << 8;
	} );
	Load();
	gameState = STATE_MAIN_MENU;
	Render( 630, 470 );
	EXPECT_EQ( Hex( GetPixel( 630, 470 ) ), Hex( 0xFF000080 ) ) << "the cursor's pixel (0, 0)";
	EXPECT_EQ( Hex( GetPixel( 639, 479 ) ), Hex( 0xFF484880 ) ) << "the cursor's pixel (9, 9)";
	EXPECT_EQ( VIEW_WIDTH * VIEW_HEIGHT - CountPixels( BLACK ), 100 ) << "nothing else is drawn, nothing wraps";
}

// lumra with her skill on is drawn at alpha 136 of 255 over what lies beneath; tavesh's skill
// leaves him opaque.
TEST_F( PixelTest, HiddenLumraIsSeeThrough ) {
	WriteFlatPicture( PNG_CHARACTERS, 480, 288, BODY_COLOUR );
	Load();
	SetCamera( 0, 1920 );
	cPlayer &tavesh = AddPlayer( KIND_TAVESH, 100, 2020 );
	cPlayer &lumra = AddPlayer( KIND_LUMRA, 200, 2020 );
	tavesh.ToggleSkill();
	lumra.ToggleSkill();
	Render();
	EXPECT_EQ( Hex( GetPixel( 116, 116 ) ), Hex( BODY_COLOUR ) );
	EXPECT_TRUE( IsNearColour( GetPixel( 216, 116 ), 0xFF6B351B ) ) << "200, 100, 50 at 136/255 over black";
	EXPECT_EQ( Hex( GetPixel( 600, 40 ) ), Hex( BODY_COLOUR ) ) << "her portrait is opaque";
}

// The cursor's key turns pixels stored as 0x00FF00FF transparent black; opaque magenta, or the
// key colour with any other alpha, stays. Other pictures are loaded as they are.
TEST_F( PixelTest, ColourKeyMatchesTheWholePixel ) {
	const uint32_t row[] = { KEY, OPAQUE_MAGENTA, 0x01FF00FF, 0x00FF00FE };
	WritePicture( "keyed.png", 4, 1, [&row]( int x, int ) { return row[x]; } );
	const std::string path = folder.GetFile( "keyed.png" );
	for ( bool useKey : { true, false } ) {
		SDL_Surface *loaded = cSdlGraphicsBackend::LoadKeyedSurface( path.c_str(), useKey, KEY );
		ASSERT_NE( loaded, nullptr ) << SDL_GetError();
		ASSERT_EQ( loaded->format->format, static_cast<Uint32>( SDL_PIXELFORMAT_ARGB8888 ) );
		const uint32_t *pixels = static_cast<const uint32_t *>( loaded->pixels );
		EXPECT_EQ( Hex( pixels[0] ), Hex( useKey ? 0x00000000 : KEY ) ) << "with the key: " << useKey;
		EXPECT_EQ( Hex( pixels[1] ), Hex( OPAQUE_MAGENTA ) );
		EXPECT_EQ( Hex( pixels[2] ), Hex( 0x01FF00FF ) );
		EXPECT_EQ( Hex( pixels[3] ), Hex( 0x00FF00FE ) );
		SDL_FreeSurface( loaded );
	}
}

// On the screen: the cursor's keyed pixels let the menu through, its opaque magenta covers it.
TEST_F( PixelTest, KeyedCursorPixelsShowTheMenuThrough ) {
	WriteFlatPicture( "resources/menu/main.png", VIEW_WIDTH, VIEW_HEIGHT, 0xFFFFFFFF );
	WritePicture( PNG_CURSOR, 32, 32, []( int x, int ) { return x < 16 ? OPAQUE_MAGENTA : KEY; } );
	Load();
	gameState = STATE_MAIN_MENU;
	Render( 100, 100 );
	EXPECT_EQ( Hex( GetPixel( 100, 100 ) ), Hex( OPAQUE_MAGENTA ) );
	EXPECT_EQ( Hex( GetPixel( 120, 100 ) ), Hex( 0xFFFFFFFF ) );
}

// A file that is not a picture loads as nothing, and is named in the log.
TEST_F( PixelTest, CorruptPictureIsLoggedAndDrawsNothing ) {
	WriteFlatPicture( PNG_HEALTH, 1, 8, HEALTH_COLOUR );
	folder.WriteFile( "resources/sprites/health.png", "not a picture at all" );
	Load();
	EXPECT_NE( log.GetText().find( "Error loading picture " + folder.GetPath() + "/resources/sprites/health.png: " ),
				std::string::npos ) << log.GetText();
	SetCamera( 0, 1920 );
	AddPlayer( KIND_TAVESH, 224, 2240 );
	Render();
	EXPECT_EQ( CountPixels( HEALTH_COLOUR ), 0 );
}

}
