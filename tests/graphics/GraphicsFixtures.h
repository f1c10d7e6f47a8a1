#pragma once
// Two ways to look at a drawn frame: the recording backend, which keeps every draw with its
// picture's path, source rectangle, position and tint; and SDL's software renderer drawing into
// an off-screen 640 x 480 surface from tiny pictures written by the test, for the pixels.

#include <gtest/gtest.h>

#include <SDL.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "LogCapture.h"
#include "TempDir.h"
#include "actors/ActorLists.h"
#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "graphics/GraphicsLayer.h"
#include "graphics/headless/RecordingGraphicsBackend.h"
#include "graphics/sdl/SdlGraphicsBackend.h"
#include "platform/Clock.h"

class cEnemy;
class cPlayer;
class cScene;

// The pictures as the game names them.
extern const char *const PNG_TILES;
extern const char *const PNG_CHARACTERS;
extern const char *const PNG_ITEMS;
extern const char *const PNG_BULLETS;
extern const char *const PNG_EXPLOSION;
extern const char *const PNG_HEALTH;
extern const char *const PNG_LOW_HEALTH;
extern const char *const PNG_ENERGY;
extern const char *const PNG_AMMO;
extern const char *const PNG_CURSOR;
extern const char *const PNG_EXCLAMATION;
extern const char *const PNG_QUERY;
extern const char *const PNG_WTF;

// Layers of a whole grid, every cell holding one code.
std::vector<int32_t> FilledLayer( int32_t code );
// A scene from three drawn layers; the walk layer is all floor.
std::unique_ptr<cScene> MakeDrawnScene( const std::vector<int32_t> &base, const std::vector<int32_t> &object,
									const std::vector<int32_t> &over );

// The running game's scene and lists, the game state and a manual clock, for one test.
class cWorldTest : public ::testing::Test {
protected:
	static constexpr uint32_t START_TICKS = 100000;		// in msec: well past any alert stamp of 0

						cWorldTest();
						~cWorldTest() override;

	cPlayer &			AddPlayer( int32_t kind, int32_t x, int32_t y );
	cEnemy &			AddEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction );
	void				SetCamera( int32_t x, int32_t y );

	cLogCapture			log;
	cManualClock		clock;
	std::unique_ptr<cScene> scene;
	tCharacterList		players;
	tCharacterList		enemies;
	tBulletList			bullets;
	tExplosionList		explosions;
	tItemList			items;
};

// A frame drawn through the recording backend, every picture loaded.
class cRecordedFrameTest : public cWorldTest {
public:
	typedef cRecordingGraphicsBackend::cDrawCall tDraw;

protected:

						cRecordedFrameTest();
						~cRecordedFrameTest() override;

	// Loads the pictures again, after the test changed the backend's sizes or missing files.
	void				Reload();
	void				Render( int32_t mouseX = 0, int32_t mouseY = 0 );
	const std::vector<tDraw> &GetDraws() const { return backend.GetDraws(); }
	std::vector<tDraw>	GetDraws( const std::string &path ) const;
	// The pictures of the frame in draw order, runs of the same picture written once.
	std::vector<std::string> GetPictureRuns() const;

	cRecordingGraphicsBackend backend;
	cGraphicsLayer		layer;
};

// A frame drawn by SDL's software renderer into an off-screen surface.
class cPixelFrameTest : public cWorldTest {
protected:
						cPixelFrameTest();
						~cPixelFrameTest() override;

	// Writes a picture of the game's (path as the game names it) into the test's resource folder.
	void				WritePicture( const std::string &path, int width, int height,
								const std::function<uint32_t( int x, int y )> &colour );
	void				WriteFlatPicture( const std::string &path, int width, int height, uint32_t colour );
	// Loads whatever pictures were written; the others are missing.
	void				Load();
	void				Render( int32_t mouseX = 0, int32_t mouseY = 0 );
	uint32_t			GetPixel( int x, int y ) const;		// ARGB
	// How many pixels of the screen hold exactly this colour.
	int					CountPixels( uint32_t colour ) const;

	cTempDir			folder;
	SDL_Surface *		surface;
	std::unique_ptr<cSdlGraphicsBackend> backend;
	cGraphicsLayer		layer;
};

// Red, green and blue of an ARGB colour, each within one step of the expected ones.
::testing::AssertionResult IsNearColour( uint32_t actual, uint32_t expected );
