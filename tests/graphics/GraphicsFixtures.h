// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The running game's world for one test, and a frame of it drawn through the recording backend,
// which keeps every draw of the last frame with its picture's path, source rectangle, position
// and tint. The pixel tests draw it with SDL's software renderer instead.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "LogCapture.h"
#include "actors/ActorLists.h"
#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "actors/WorldAnimation.h"
#include "ai/Enemy.h"
#include "graphics/GraphicsLayer.h"
#include "graphics/headless/RecordingGraphicsBackend.h"
#include "platform/Clock.h"
#include "world/Grid.h"
#include "world/Scene.h"

// The pictures as the game names them.
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

inline std::vector<int32_t> FilledLayer( int32_t code ) {
	return std::vector<int32_t>( MAP_CELLS, code );
}

// A scene from three drawn layers, the camera at the origin; the walk layer is all floor.
inline std::unique_ptr<cScene> MakeDrawnScene( const std::vector<int32_t> &base,
		const std::vector<int32_t> &object = FilledLayer( 0 ), const std::vector<int32_t> &over = FilledLayer( 0 ) ) {
	std::unique_ptr<cScene> scene = cScene::FromLayers( base, object, FilledLayer( WALK_FLOOR ), over );
	scene->SetCameraPosition( 0, 0 );
	return scene;
}

// The running game's scene and lists, the screen and a manual clock, for one test. The derived
// fixtures give the layer its backend and release it before the backend goes.
class cWorldTest : public ::testing::Test {
protected:
	static constexpr uint32_t START_TICKS = 100000;		// in msec: well past any alert stamp of 0

	cWorldTest() : clock( START_TICKS ), scene( MakeDrawnScene( FilledLayer( 1 ) ) ) {
		SetClock( &clock );
	}
	~cWorldTest() override {
		SetClock( nullptr );
	}

	cPlayer &AddPlayer( int32_t kind, int32_t x, int32_t y ) {
		cPlayer *player = new cPlayer( kind, x, y );
		players.emplace_back( player );
		return *player;
	}
	cEnemy &AddEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction ) {
		cEnemy *enemy = new cEnemy( kind, x, y, direction, 1 );
		enemies.emplace_back( enemy );
		return *enemy;
	}
	// As the game does it: one step of the world's animation, then the frame drawn.
	void Render( int32_t mouseX = 0, int32_t mouseY = 0 ) {
		if ( ShowsWorld( screen ) ) {
			AnimateWorld( screen, *scene, players, enemies, explosions, items );
		}
		layer.Render( screen, mouseX, mouseY, scene.get(), &players, &enemies, &bullets, &explosions, &items );
	}

	cLogCapture			log;
	int32_t				screen = STATE_PLAYING;
	cManualClock		clock;
	std::unique_ptr<cScene> scene;
	tCharacterList		players;
	tCharacterList		enemies;
	tBulletList			bullets;
	tExplosionList		explosions;
	tItemList			items;
	cGraphicsLayer		layer;
};

// A frame drawn through the recording backend, every picture loaded.
class cRecordedFrameTest : public cWorldTest {
public:
	typedef cRecordingGraphicsBackend::cDrawCall tDraw;

protected:
	cRecordedFrameTest() {
		EXPECT_TRUE( layer.Init( &backend, false ) ) << "the recording device should always be made";
		layer.LoadTextures();
	}
	~cRecordedFrameTest() override {
		layer.ReleaseTextures();
		layer.Release();
	}

	const std::vector<tDraw> &GetDraws() const { return backend.GetDraws(); }
	std::vector<tDraw> GetDraws( const std::string &path ) const {
		std::vector<tDraw> found;
		for ( const tDraw &draw : backend.GetDraws() ) {
			if ( draw.path == path ) {
				found.push_back( draw );
			}
		}
		return found;
	}
	// The pictures of the frame in draw order, runs of the same picture written once.
	std::vector<std::string> GetPictureRuns() const {
		std::vector<std::string> runs;
		for ( const tDraw &draw : backend.GetDraws() ) {
			if ( runs.empty() || runs.back() != draw.path ) {
				runs.push_back( draw.path );
			}
		}
		return runs;
	}

	cRecordingGraphicsBackend backend;
};
