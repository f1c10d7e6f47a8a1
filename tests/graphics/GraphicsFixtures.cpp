#include "GraphicsFixtures.h"

#include <SDL_image.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/GameState.h"
#include "world/Grid.h"
#include "world/Scene.h"

const char *const PNG_TILES = "./resources/map/tiles.png";
const char *const PNG_CHARACTERS = "./resources/sprites/characters_trans.png";
const char *const PNG_ITEMS = "./resources/sprites/items_trans.png";
const char *const PNG_BULLETS = "./resources/sprites/bullets_trans.png";
const char *const PNG_EXPLOSION = "./resources/sprites/explosion_trans.png";
const char *const PNG_HEALTH = "./resources/sprites/health.png";
const char *const PNG_LOW_HEALTH = "./resources/sprites/low_health.png";
const char *const PNG_ENERGY = "./resources/sprites/energy.png";
const char *const PNG_AMMO = "./resources/sprites/ammo.png";
const char *const PNG_CURSOR = "./resources/menu/mouse.png";
const char *const PNG_EXCLAMATION = "./resources/sprites/exclamation.png";
const char *const PNG_QUERY = "./resources/sprites/query.png";
const char *const PNG_WTF = "./resources/sprites/WTF.png";

std::vector<int32_t> FilledLayer( int32_t code ) {
	return std::vector<int32_t>( MAP_CELLS, code );
}

std::unique_ptr<cScene> MakeDrawnScene( const std::vector<int32_t> &base, const std::vector<int32_t> &object,
									const std::vector<int32_t> &over ) {
	return cScene::FromLayers( base, object, FilledLayer( WALK_FLOOR ), over );
}

cWorldTest::cWorldTest() : clock( START_TICKS ) {
	SetClock( &clock );
	gameState = STATE_PLAYING;
	scene = MakeDrawnScene( FilledLayer( 1 ), FilledLayer( 0 ), FilledLayer( 0 ) );
}

cWorldTest::~cWorldTest() {
	gameState = STATE_MAIN_MENU;
	SetClock( nullptr );
}

cPlayer &cWorldTest::AddPlayer( int32_t kind, int32_t x, int32_t y ) {
	cPlayer *player = new cPlayer( kind, x, y );
	players.emplace_back( player );
	return *player;
}

cEnemy &cWorldTest::AddEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction ) {
	cEnemy *enemy = new cEnemy( kind, x, y, direction, 1 );
	enemies.emplace_back( enemy );
	return *enemy;
}

void cWorldTest::SetCamera( int32_t x, int32_t y ) {
	scene->SetCameraPosition( x, y );
}

cRecordedFrameTest::cRecordedFrameTest() {
	EXPECT_TRUE( layer.Init( &backend, false ) ) << "the recording device should always be made";
	layer.LoadTextures();
}

cRecordedFrameTest::~cRecordedFrameTest() {
	layer.ReleaseTextures();
	layer.Release();
}

void cRecordedFrameTest::Reload() {
	layer.LoadTextures();
}

void cRecordedFrameTest::Render( int32_t mouseX, int32_t mouseY ) {
	layer.Render( mouseX, mouseY, scene.get(), &players, &enemies, &bullets, &explosions, &items );
}

std::vector<cRecordedFrameTest::tDraw> cRecordedFrameTest::GetDraws( const std::string &path ) const {
	std::vector<tDraw> found;
	for ( const tDraw &draw : backend.GetDraws() ) {
		if ( draw.path == path ) {
			found.push_back( draw );
		}
	}
	return found;
}

std::vector<std::string> cRecordedFrameTest::GetPictureRuns() const {
	std::vector<std::string> runs;
	for ( const tDraw &draw : backend.GetDraws() ) {
		if ( runs.empty() || runs.back() != draw.path ) {
			runs.push_back( draw.path );
		}
	}
	return runs;
}

cPixelFrameTest::cPixelFrameTest()
	: surface( SDL_CreateRGBSurfaceWithFormat( 0, VIEW_WIDTH, VIEW_HEIGHT, 32, SDL_PIXELFORMAT_ARGB8888 ) ) {
	if ( surface == nullptr ) {
		ADD_FAILURE() << "no off-screen surface: " << SDL_GetError();
		std::abort();
	}
	backend.reset( new cSdlGraphicsBackend( surface ) );
}

cPixelFrameTest::~cPixelFrameTest() {
	layer.ReleaseTextures();
	layer.Release();
	backend.reset();
	SDL_FreeSurface( surface );
}

void cPixelFrameTest::WritePicture( const std::string &path, int width, int height,
									const std::function<uint32_t( int x, int y )> &colour ) {
	SDL_Surface *picture = SDL_CreateRGBSurfaceWithFormat( 0, width, height, 32, SDL_PIXELFORMAT_ARGB8888 );
	ASSERT_NE( picture, nullptr ) << SDL_GetError();
	for ( int y = 0; y < height; y++ ) {
		uint32_t *row = reinterpret_cast<uint32_t *>( static_cast<uint8_t *>( picture->pixels ) + y * picture->pitch );
		for ( int x = 0; x < width; x++ ) {
			row[x] = colour( x, y );
		}
	}
	const std::filesystem::path file = std::filesystem::path( folder.GetPath() ) / path;
	std::filesystem::create_directories( file.parent_path() );
	const int saved = IMG_SavePNG( picture, file.string().c_str() );
	SDL_FreeSurface( picture );
	ASSERT_EQ( saved, 0 ) << "could not write " << file << ": " << SDL_GetError();
}

void cPixelFrameTest::WriteFlatPicture( const std::string &path, int width, int height, uint32_t colour ) {
	WritePicture( path, width, height, [colour]( int, int ) { return colour; } );
}

void cPixelFrameTest::Load() {
	ASSERT_TRUE( layer.Init( backend.get(), false ) ) << "the software renderer on a surface: " << SDL_GetError();
	layer.LoadTextures( folder.GetPath() );
}

void cPixelFrameTest::Render( int32_t mouseX, int32_t mouseY ) {
	layer.Render( mouseX, mouseY, scene.get(), &players, &enemies, &bullets, &explosions, &items );
}

uint32_t cPixelFrameTest::GetPixel( int x, int y ) const {
	const uint8_t *row = static_cast<const uint8_t *>( surface->pixels ) + y * surface->pitch;
	return reinterpret_cast<const uint32_t *>( row )[x];
}

int cPixelFrameTest::CountPixels( uint32_t colour ) const {
	int count = 0;
	for ( int y = 0; y < VIEW_HEIGHT; y++ ) {
		for ( int x = 0; x < VIEW_WIDTH; x++ ) {
			count += GetPixel( x, y ) == colour ? 1 : 0;
		}
	}
	return count;
}

::testing::AssertionResult IsNearColour( uint32_t actual, uint32_t expected ) {
	for ( int shift = 0; shift <= 16; shift += 8 ) {
		const int a = static_cast<int>( ( actual >> shift ) & 0xFF );
		const int e = static_cast<int>( ( expected >> shift ) & 0xFF );
		if ( std::abs( a - e ) > 1 ) {
			char text[64];
			std::snprintf( text, sizeof( text ), "0x%08X is not within one step of 0x%08X", actual, expected );
			return ::testing::AssertionFailure() << text;
		}
	}
	return ::testing::AssertionSuccess();
}
