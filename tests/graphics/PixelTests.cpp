// SPDX-License-Identifier: GPL-3.0-or-later
// What reaches the screen, pixel by pixel, on SDL's software renderer drawing into an off-screen
// surface from tiny pictures made here.

#include <SDL.h>
#include <SDL_image.h>

#include <algorithm>
#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>

#include "GraphicsFixtures.h"
#include "TempDir.h"
#include "graphics/sdl/SdlGraphicsBackend.h"

namespace {

const uint32_t WHITE = 0xFFFFFFFF;
const uint32_t BODY_COLOUR = 0xFFC86432;		// red 200, green 100, blue 50
const uint32_t KEY = 0x00FF00FF;
const uint32_t OPAQUE_MAGENTA = 0xFFFF00FF;
const int32_t SHEET_TILES = 6;
const int32_t ROOF_TILE = 6;

inline std::string Hex( uint32_t colour ) {
	char text[16];
	std::snprintf( text, sizeof( text ), "0x%08X", colour );
	return text;
}

// Each pixel of the test's tile sheet tells which tile it belongs to (red) and where in the
// tile it lies (green for x, blue for y), so a screen pixel names the tile pixel it came from.
uint32_t TileColour( int32_t tile, int x, int y ) {
	return 0xFF000000u | static_cast<uint32_t>( tile * 40 ) << 16 | static_cast<uint32_t>( x * 8 ) << 8 |
			static_cast<uint32_t>( y * 8 );
}

// A frame drawn by SDL's software renderer into an off-screen 640 x 480 surface.
class PixelTest : public cWorldTest {
protected:
	PixelTest()
		: surface( SDL_CreateRGBSurfaceWithFormat( 0, VIEW_WIDTH, VIEW_HEIGHT, 32, SDL_PIXELFORMAT_ARGB8888 ) ) {
		if ( surface == nullptr ) {
			ADD_FAILURE() << "no off-screen surface: " << SDL_GetError();
			std::abort();
		}
		assert( surface->pitch == VIEW_WIDTH * 4 );
		backend.reset( new cSdlGraphicsBackend( surface ) );
	}
	~PixelTest() override {
		layer.ReleaseTextures();
		layer.Release();
		backend.reset();
		SDL_FreeSurface( surface );
	}

	// Writes a picture of the game's (path as the game names it) into the test's resource folder.
	void WritePicture( const std::string &path, int width, int height,
					const std::function<uint32_t( int x, int y )> &colour ) {
		SDL_Surface *picture = SDL_CreateRGBSurfaceWithFormat( 0, width, height, 32, SDL_PIXELFORMAT_ARGB8888 );
		ASSERT_NE( picture, nullptr ) << SDL_GetError();
		for ( int y = 0; y < height; y++ ) {
			for ( int x = 0; x < width; x++ ) {
				static_cast<uint32_t *>( picture->pixels )[y * picture->pitch / 4 + x] = colour( x, y );
			}
		}
		const std::filesystem::path file = std::filesystem::path( folder.GetPath() ) / path;
		std::filesystem::create_directories( file.parent_path() );
		const int saved = IMG_SavePNG( picture, file.string().c_str() );
		SDL_FreeSurface( picture );
		ASSERT_EQ( saved, 0 ) << "could not write " << file << ": " << SDL_GetError();
	}
	void WriteFlatPicture( const std::string &path, int width, int height, uint32_t colour ) {
		WritePicture( path, width, height, [colour]( int, int ) { return colour; } );
	}
	// Loads whatever pictures were written; the others are missing.
	void Load() {
		ASSERT_TRUE( layer.Init( backend.get(), false ) ) << "the software renderer on a surface: " << SDL_GetError();
		layer.LoadTextures( folder.GetPath() );
	}
	uint32_t GetPixel( int x, int y ) const {		// ARGB
		return static_cast<const uint32_t *>( surface->pixels )[y * surface->pitch / 4 + x];
	}
	int CountPixels( uint32_t colour ) const {		// the surface's rows follow each other without a gap
		const uint32_t *pixels = static_cast<const uint32_t *>( surface->pixels );
		return static_cast<int>( std::count( pixels, pixels + VIEW_WIDTH * VIEW_HEIGHT, colour ) );
	}

	void LoadTileSheet() {
		WritePicture( PNG_TILES, CELL_SIZE, SHEET_TILES * CELL_SIZE, []( int x, int y ) {
			return TileColour( y / CELL_SIZE + 1, x, y % CELL_SIZE );
		} );
		Load();
	}

	// How many pixels of this colour run rightwards from (x, y).
	int CountRun( int x, int y, uint32_t colour ) const {
		int run = 0;
		while ( x + run < VIEW_WIDTH && GetPixel( x + run, y ) == colour ) {
			run++;
		}
		return run;
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

	cTempDir			folder;
	SDL_Surface *		surface;
	std::unique_ptr<cSdlGraphicsBackend> backend;
};

// cameraX 40: the first column shows pixels 8-31 of its tiles at x 0-23, the 21st pixels 0-7 at
// x 632-639; cameraY 360 cuts the rows alike; the top-left cell has code 0 and shows tile 1. On
// cell edges the view holds 20 x 15 whole cells.
TEST_F( PixelTest, EveryScreenPixelShowsTheGroundUnderIt ) {
	LoadTileSheet();
	std::vector<int32_t> base( MAP_CELLS );
	for ( int i = 0; i < MAP_CELLS; i++ ) {
		base[i] = ( i % MAP_COLUMNS + i / MAP_COLUMNS ) % ( SHEET_TILES - 1 ) + 2;
	}
	base[CellIndex( 1, 11 )] = 0;
	scene = MakeDrawnScene( base );
	scene->SetCameraPosition( 40, 360 );
	Render();
	EXPECT_EQ( Hex( GetPixel( 0, 0 ) ), Hex( TileColour( 1, 8, 8 ) ) ) << "ground code 0 shows tile 1, cut at (8, 8)";
	EXPECT_EQ( Hex( GetPixel( 23, 0 ) ), Hex( TileColour( 1, 31, 8 ) ) );
	EXPECT_EQ( Hex( GetPixel( 632, 0 ) ), Hex( TileColour( base[CellIndex( 21, 11 )], 0, 8 ) ) );
	EXPECT_EQ( Hex( GetPixel( 639, 479 ) ), Hex( TileColour( base[CellIndex( 21, 26 )], 7, 7 ) ) );
	ExpectScreenShowsGround( base );

	scene->SetCameraPosition( 1280, 1920 );
	Render();
	ExpectScreenShowsGround( base );
}

// The indoor area's roofs give way to the ground while any player, a downed one too, has the
// centre of its body under them: columns from 53 (x 1680; 1679 is column 52), rows 17 (y 528;
// 527 is row 16) to 39 (y 1263; 1264 is row 40). A roof outside the area stays.
TEST_F( PixelTest, IndoorRoofsVanishWhileAPlayerIsInside ) {
	LoadTileSheet();
	std::vector<int32_t> over = FilledLayer( 0 );
	over[CellIndex( 55, 20 )] = ROOF_TILE;
	over[CellIndex( 50, 20 )] = ROOF_TILE;
	scene = MakeDrawnScene( FilledLayer( 1 ), FilledLayer( 0 ), over );
	scene->SetCameraPosition( 1280, 544 );
	const int indoorX = ( 55 - 40 ) * CELL_SIZE + 16;
	const int outdoorX = ( 50 - 40 ) * CELL_SIZE + 16;
	const int roofY = ( 20 - 17 ) * CELL_SIZE + 16;
	cPlayer &first = AddPlayer( KIND_TAVESH, 0, 800 );
	cPlayer &second = AddPlayer( KIND_LUMRA, 1000, 800 );
	second.SetDead( true );
	const struct { int32_t firstX, firstY, secondX; bool indoors; } cases[] = {
		{ 1679, 800, 1000, false }, { 1680, 800, 1000, true }, { 1680, 527, 1000, false }, { 1680, 528, 1000, true },
		{ 1680, 1263, 1000, true }, { 1680, 1264, 1000, false }, { 1679, 800, 55 * CELL_SIZE, true },
	};
	for ( const auto &test : cases ) {
		first.SetPosition( test.firstX, test.firstY );
		second.SetPosition( test.secondX, 800 );
		Render();
		const std::string where = "player 1 at (" + std::to_string( test.firstX ) + ", " + std::to_string( test.firstY ) + ")";
		EXPECT_EQ( Hex( GetPixel( indoorX, roofY ) ), Hex( TileColour( test.indoors ? 1 : ROOF_TILE, 16, 16 ) ) )
			<< where << ": the indoor roof should " << ( test.indoors ? "give way to the ground" : "be drawn" );
		EXPECT_EQ( Hex( GetPixel( outdoorX, roofY ) ), Hex( TileColour( ROOF_TILE, 16, 16 ) ) )
			<< where << ": a roof outside the indoor area stays";
	}
}

// The map drawn from the tile cache is the map drawn tile by tile, pixel for pixel: cameras on and
// off cell edges and beyond the map's corner, players outdoors and under the roofs, a door group
// and a box shut and then open (the cache then draws those cells again). The test's tiles are see-
// through in places, half or wholly, so that a tile blended twice or onto the wrong ground shows.
TEST_F( PixelTest, CachedTilesMatchTilesDrawnOneByOne ) {
	WritePicture( PNG_TILES, CELL_SIZE, SHEET_TILES * CELL_SIZE, []( int x, int y ) {
		const uint32_t alpha[] = { 0x00, 0x80, 0xFF, 0xFF };
		return alpha[( x / 4 + y ) % 4] << 24 | ( TileColour( y / CELL_SIZE + 1, x, y % CELL_SIZE ) & 0xFFFFFF );
	} );
	Load();
	std::vector<int32_t> base( MAP_CELLS ), object( MAP_CELLS ), walk( MAP_CELLS, WALK_FLOOR ), over( MAP_CELLS );
	for ( int i = 0; i < MAP_CELLS; i++ ) {
		base[i] = i % 7;				// code 0 shows tile 1
		object[i] = i % 5 == 0 ? i % 3 + 2 : 0;
		over[i] = i % 4 < 2 || i / MAP_COLUMNS % 5 == 0 ? SHEET_TILES - i % 2 : 0;
	}
	const int32_t doors[] = { CellIndex( 50, 24 ), CellIndex( 51, 24 ) }, box = CellIndex( 56, 22 );
	for ( int32_t cell : { doors[0], doors[1], box } ) {
		object[cell] = SHEET_TILES - 1;
		walk[cell] = cell == box ? WALK_BOX : WALK_DOOR;
	}
	scene = cScene::FromLayers( base, object, walk, over );
	SDL_Surface *tileSurface = SDL_CreateRGBSurfaceWithFormat( 0, VIEW_WIDTH, VIEW_HEIGHT, 32, SDL_PIXELFORMAT_ARGB8888 );
	ASSERT_NE( tileSurface, nullptr ) << SDL_GetError();
	cSdlGraphicsBackend tileBackend( tileSurface );
	cGraphicsLayer tiles;
	ASSERT_TRUE( tiles.Init( &tileBackend, false ) );
	tiles.SetCachedTiles( false );
	tiles.LoadTextures( folder.GetPath() );
	ASSERT_TRUE( layer.IsTileCacheReady() && !tiles.IsTileCacheReady() ) << "one layer from the cache, one tile by tile";
	cPlayer &player = AddPlayer( KIND_TAVESH, 0, 0 );
	const struct { int32_t x, y; } cameras[] = { { 0, 0 }, { 40, 360 }, { 1280, 544 }, { 1275, 610 }, { 1290, 1930 } };
	for ( bool opened : { false, true } ) {
		if ( opened ) {
			scene->OpenDoor( 50, 24 );
			scene->OpenBox( 56, 22 );
		}
		for ( const auto &camera : cameras ) {
			for ( int32_t playerX : { 1600, 1700 } ) {		// column 50 outdoors, 53 indoors
				scene->SetCameraPosition( camera.x, camera.y );
				player.SetPosition( playerX, 700 );
				Render();
				tiles.Render( STATE_PLAYING, 0, 0, scene.get(), &players, &enemies, &bullets, &explosions, &items );
				const uint32_t *cached = static_cast<const uint32_t *>( surface->pixels );
				const uint32_t *single = static_cast<const uint32_t *>( tileSurface->pixels );
				const auto differs = std::mismatch( cached, cached + VIEW_WIDTH * VIEW_HEIGHT, single );
				const int at = static_cast<int>( differs.first - cached );
				EXPECT_EQ( at, VIEW_WIDTH * VIEW_HEIGHT ) << "camera (" << camera.x << ", " << camera.y << "), player at x "
					<< playerX << ( opened ? ", door and box open" : "" ) << ": pixel (" << at % VIEW_WIDTH << ", "
					<< at / VIEW_WIDTH << ") is " << Hex( GetPixel( at % VIEW_WIDTH, at / VIEW_WIDTH ) ) << " from the cache";
			}
		}
	}
	tiles.ReleaseTextures();
	tiles.Release();
	SDL_FreeSurface( tileSurface );
}

// The frame drawn at 640 x 480 and scaled once is, at 1x, the frame drawn straight onto the surface; at 2x each
// pixel a 2 x 2 square; on 1920 x 1080 a 1440 x 1080 picture between black bars (each read at its centre).
TEST_F( PixelTest, FrameScaledOnceIsTheFrameDrawnStraight ) {
	WriteFlatPicture( PNG_CHARACTERS, 480, 288, BODY_COLOUR );
	LoadTileSheet();
	scene->SetCameraPosition( 45, 1027 );
	AddPlayer( KIND_LUMRA, 300, 1200 ).ToggleSkill();		// blended into the frame
	Render();
	const struct { int width, height, left; } outputs[] = { { 640, 480, 0 }, { 1280, 960, 0 }, { 1920, 1080, 240 } };
	for ( const auto &out : outputs ) {
		SDL_Surface *scaled = SDL_CreateRGBSurfaceWithFormat( 0, out.width, out.height, 32, SDL_PIXELFORMAT_ARGB8888 );
		cSdlGraphicsBackend scaledBackend( scaled, out.width != VIEW_WIDTH );		// 1x: straight onto the surface
		cGraphicsLayer scaledLayer;
		ASSERT_TRUE( scaledLayer.Init( &scaledBackend, false ) );
		scaledLayer.LoadTextures( folder.GetPath() );
		scaledLayer.Render( STATE_PLAYING, 0, 0, scene.get(), &players, &enemies, &bullets, &explosions, &items );
		for ( int x = 0, y = 0, quarters = 4 * out.height / VIEW_HEIGHT; y < VIEW_HEIGHT; y += ++x / VIEW_WIDTH, x %= VIEW_WIDTH ) {
			const uint32_t *row = static_cast<const uint32_t *>( scaled->pixels ) + ( quarters * y + quarters / 2 ) / 4 * out.width;
			ASSERT_TRUE( row[out.left + ( quarters * x + quarters / 2 ) / 4] == GetPixel( x, y ) && ( out.left == 0 ||
						( row[out.left - 1] == 0xFF000000 && row[out.width - out.left] == 0xFF000000 ) ) )
				<< out.width << " x " << out.height << ": pixel (" << x << ", " << y << "), or the bars beside it";
		}
		scaledLayer.ReleaseTextures();
		scaledLayer.Release();		// the renderer goes before its surface
		SDL_FreeSurface( scaled );
	}
}

// A bar is value + 1 pixels long and 8 high from x 72, none below 0: health 26 is 27 pixels in the
// health colour, 25 is 26 in the low-health colour; full energy is 51 pixels, 101 with the
// upgrade, rounded down, full for energy above the capacity and none without a capacity;
// ammunition shows only while the machine gun is carried.
TEST_F( PixelTest, HudBarsLengthsAndColours ) {
	const char *const pictures[] = { PNG_HEALTH, PNG_LOW_HEALTH, PNG_ENERGY, PNG_AMMO };
	const uint32_t colours[] = { 0xFF20C020, 0xFFC02020, 0xFF2020C0, 0xFFC0C020 };
	const int barY[] = { 32, 32, 42, 52 };
	for ( int bar = 0; bar < 4; bar++ ) {
		WriteFlatPicture( pictures[bar], 1, 8, colours[bar] );
	}
	Load();
	const struct { int32_t health, energy, maxEnergy, weapon; int columns[4]; } cases[] = {
		{ 26, 3000, 3000, WEAPON_TAVESH, { 27, 0, 51, 0 } },
		{ 25, 2999, 3000, WEAPON_MACHINE_GUN, { 0, 26, 50, 21 } },
		{ 0, 0, 3000, WEAPON_TAVESH, { 0, 1, 1, 0 } },
		{ -10, 3000, 0, WEAPON_TAVESH, { 0, 0, 0, 0 } },
		{ 100, 2000000000, 1, WEAPON_TAVESH, { 101, 0, 51, 0 } },
		{ 100, cPlayer::UPGRADED_ENERGY, cPlayer::UPGRADED_ENERGY, WEAPON_TAVESH, { 101, 0, 101, 0 } },
		{ 100, 3000, cPlayer::UPGRADED_ENERGY, WEAPON_TAVESH, { 101, 0, 51, 0 } },
	};
	scene->SetCameraPosition( 0, 1920 );
	cPlayer &player = AddPlayer( KIND_TAVESH, 224, 2240 );
	player.SetAmmo( 20 );
	for ( const auto &test : cases ) {
		player.SetHealth( test.health );
		player.SetMaxEnergy( test.maxEnergy );
		player.SetEnergy( test.energy );
		player.SetEnergyUpgraded( test.maxEnergy == cPlayer::UPGRADED_ENERGY );
		player.SetWeapon( test.weapon );
		Render();
		for ( int bar = 0; bar < 4; bar++ ) {
			const int columns = test.columns[bar];
			EXPECT_TRUE( CountRun( 72, barY[bar], colours[bar] ) == columns &&
						CountRun( 72, barY[bar] + 7, colours[bar] ) == columns && CountPixels( colours[bar] ) == 8 * columns )
				<< "health " << test.health << ", energy " << test.energy << " of " << test.maxEnergy << ": "
				<< pictures[bar] << " should be " << columns << " x 8 pixels from (72, " << barY[bar] << "), not "
				<< CountRun( 72, barY[bar], colours[bar] ) << " long with " << CountPixels( colours[bar] ) << " pixels";
		}
	}
}

// The cursor's top-left pixel is the hot spot; at (630, 470) only its top-left 10 x 10 pixels fit
// and nothing wraps. Its pixels stored as the key let the menu through, opaque magenta covers it.
TEST_F( PixelTest, CursorIsCutByTheScreensCornerAndKeyed ) {
	WriteFlatPicture( "resources/menu/main.png", VIEW_WIDTH, VIEW_HEIGHT, WHITE );
	WritePicture( PNG_CURSOR, 32, 32, []( int x, int y ) {
		return x >= 16 ? KEY : x == 10 ? OPAQUE_MAGENTA : 0xFF000080u | x * 8 << 16 | y * 8 << 8;
	} );
	Load();
	screen = STATE_MAIN_MENU;
	Render( 630, 470 );
	EXPECT_EQ( Hex( GetPixel( 630, 470 ) ), Hex( 0xFF000080 ) ) << "the cursor's pixel (0, 0)";
	EXPECT_EQ( Hex( GetPixel( 639, 479 ) ), Hex( 0xFF484880 ) ) << "the cursor's pixel (9, 9)";
	EXPECT_EQ( VIEW_WIDTH * VIEW_HEIGHT - CountPixels( WHITE ), 100 ) << "the cursor should cover 10 x 10 pixels";
	Render( 100, 100 );
	EXPECT_EQ( Hex( GetPixel( 110, 100 ) ), Hex( OPAQUE_MAGENTA ) ) << "opaque magenta is no key";
	EXPECT_EQ( Hex( GetPixel( 120, 100 ) ), Hex( WHITE ) ) << "a keyed cursor pixel should let the menu through";
}

// lumra with her skill on is drawn at alpha 136 of 255 over what lies beneath; tavesh's skill
// leaves him opaque, and so is her portrait.
TEST_F( PixelTest, HiddenLumraIsSeeThrough ) {
	WriteFlatPicture( PNG_CHARACTERS, 480, 288, BODY_COLOUR );
	Load();
	scene->SetCameraPosition( 0, 1920 );
	AddPlayer( KIND_TAVESH, 100, 2020 ).ToggleSkill();
	AddPlayer( KIND_LUMRA, 200, 2020 ).ToggleSkill();
	Render();
	EXPECT_EQ( Hex( GetPixel( 116, 116 ) ), Hex( BODY_COLOUR ) ) << "tavesh's skill leaves him opaque";
	const uint32_t blended = GetPixel( 216, 116 );
	const uint32_t expected = 0xFF6B351B;		// 200, 100, 50 at 136/255 over black
	for ( int shift = 0; shift <= 16; shift += 8 ) {
		EXPECT_NEAR( ( blended >> shift ) & 0xFF, ( expected >> shift ) & 0xFF, 1 )
			<< "hidden lumra is " << Hex( blended ) << ", not within a step of " << Hex( expected );
	}
	EXPECT_EQ( Hex( GetPixel( 600, 40 ) ), Hex( BODY_COLOUR ) ) << "her portrait is opaque";
}

// The cursor's key turns pixels stored as 0x00FF00FF transparent black; opaque magenta, or the
// key colour with any other alpha, stays. Other pictures are loaded as they are.
TEST_F( PixelTest, ColourKeyMatchesTheWholePixel ) {
	const uint32_t row[] = { KEY, OPAQUE_MAGENTA, 0x01FF00FF, 0x00FF00FE };
	WritePicture( "keyed.png", 4, 1, [&row]( int x, int ) { return row[x]; } );
	for ( bool useKey : { true, false } ) {
		SDL_Surface *loaded = cSdlGraphicsBackend::LoadKeyedSurface( folder.GetFile( "keyed.png" ).c_str(), useKey, KEY );
		ASSERT_NE( loaded, nullptr ) << SDL_GetError();
		ASSERT_EQ( loaded->format->format, static_cast<Uint32>( SDL_PIXELFORMAT_ARGB8888 ) );
		const uint32_t *pixels = static_cast<const uint32_t *>( loaded->pixels );
		EXPECT_EQ( Hex( pixels[0] ), Hex( useKey ? 0x00000000 : KEY ) ) << "with the key: " << useKey;
		for ( int x = 1; x < 4; x++ ) {
			EXPECT_EQ( Hex( pixels[x] ), Hex( row[x] ) ) << "only the exact key colour is keyed, with the key: " << useKey;
		}
		SDL_FreeSurface( loaded );
	}
}

// A file that is not a picture loads as nothing, and is named in the log.
TEST_F( PixelTest, CorruptPictureIsLogged ) {
	WriteFlatPicture( PNG_HEALTH, 1, 8, BODY_COLOUR );		// then spoilt
	folder.WriteFile( "resources/sprites/health.png", "not a picture at all" );
	Load();
	EXPECT_NE( log.GetText().find( "Error loading picture " + folder.GetPath() + "/resources/sprites/health.png: " ),
				std::string::npos ) << log.GetText();
}

}
