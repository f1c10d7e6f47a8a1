// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/Fingerprint.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <memory>
#include <vector>

#include "actors/ActorTypes.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/Game.h"
#include "actors/GameState.h"
#include "app/StateHash.h"
#include "input/InputBackend.h"
#include "input/KeyCodes.h"
#include "platform/Clock.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

// The yard, in the boss's area at the top-left of the map, so that every wander cell of the boss
// is reachable and the camera stays on the first screen: a street at the bottom for the players,
// one at the top for the boss, and two corridors between them in the players' lines of fire.
const char *const YARD[] = {
	"###################",
	"#.................#",
	"###.#########.#####",
	"###.#########.#####",
	"###.#########.#####",
	"###.#########.#####",
	"###.#########.#####",
	"###.#########.#####",
	"###.#########.#####",
	"###.#########.#####",
	"#.................#",
	"#.................#",
	"#.................#",
	"###################",
};
const char FLOOR = '.';
const int32_t GROUND_TILE = 1;
const int32_t WALL_TILE = 5;

const int32_t STEPS = 400;
const size_t LINE_SIZE = 40;
const int32_t CHECKPOINT_STEPS = 50;		// the state hash every 50 steps goes into the fingerprint
const int32_t FAN_START = 1;				// in pixels, on both axes
const int32_t FAN_SLOPES = 12;				// shots along (1, 11), (2, 10) ... (11, 1)
const int32_t FAN_SHOOTER_KINDS = 3;		// soldier, machine-gunner, boss
const uint64_t HASH_PRIME = 1099511628211ull;	// FNV-1a's, folding those hashes in order
const uint32_t MSEC_PER_SECOND = 1000;	// the calendar moves on with the game's clock
const uint32_t PLAYERS = 2;
const uint32_t DIFFICULTY = 1;
const int32_t WEAK_HEALTH = 15;			// one shot of any gun kills these

int32_t Pixels( int32_t cells ) {
	return cells * CELL_SIZE;
}

struct cPlacedEnemy {
	int32_t		kind;
	int32_t		column, row;
	int32_t		direction;
	bool		weak;
};
// A column of weak soldiers above each player, their backs turned, to be shot one by one; a
// machine-gunner and the boss who face the players and fire back.
const cPlacedEnemy ENEMIES[] = {
	{ KIND_SOLDIER, 3, 8, DIR_UP, true },
	{ KIND_MACHINE_GUNNER, 3, 6, DIR_UP, true },
	{ KIND_SOLDIER, 3, 4, DIR_UP, true },
	{ KIND_SOLDIER, 13, 8, DIR_UP, true },
	{ KIND_MACHINE_GUNNER, 13, 6, DIR_UP, true },
	{ KIND_SOLDIER, 13, 4, DIR_UP, true },
	{ KIND_MACHINE_GUNNER, 3, 1, DIR_DOWN, false },
	{ KIND_BOSS, 17, 12, DIR_LEFT, false },
};

// The keys held from a step on, until the next phase: both fire up their own guns, tavesh with
// his skill on; then he walks onto the ammunition and fires the machine gun up-right and up while
// lumra walks left, firing.
struct cPhase {
	int32_t		firstStep;
	int			keys[4];				// 0 for none
};
const cPhase SCRIPT[] = {
	{ 0, { KEY_W, KEY_UP } },
	{ 2, { KEY_H, KEY_J, KEY_NUMPAD1 } },
	{ 4, { KEY_H, KEY_NUMPAD1 } },
	{ 150, { KEY_D, KEY_NUMPAD1 } },
	{ 168, { KEY_W, KEY_D, KEY_NUMPAD1 } },
	{ 170, { KEY_H, KEY_NUMPAD1 } },
	{ 220, { KEY_A, KEY_NUMPAD1 } },
	{ 238, { KEY_W, KEY_NUMPAD1 } },
	{ 240, { KEY_H, KEY_NUMPAD1 } },
	{ 320, { KEY_H, KEY_NUMPAD1, KEY_LEFT } },
	{ 360, { KEY_H, KEY_NUMPAD1 } },
};

// The keyboard holds what the script says for the step; the mouse rests.
class cScriptKeys : public cInputBackend {
public:
	void			Hold( const cPhase &phase ) {
		std::fill( std::begin( keys ), std::end( keys ), 0 );
		for ( int key : phase.keys ) {
			keys[key] = key != 0 ? KEY_HELD : 0;
		}
	}
	bool			AcquireKeyboard() override { return true; }
	bool			UnacquireKeyboard() override { return true; }
	bool			ReadKeyboard( uint8_t state[256] ) override {
		std::copy( std::begin( keys ), std::end( keys ), state );
		return true;
	}
	bool			AcquireMouse( bool ) override { return true; }
	bool			UnacquireMouse() override { return true; }
	bool			ReadMouse( cMouseReading &reading ) override {
		reading = cMouseReading();
		return true;
	}
	void			WarpMouse( int32_t, int32_t ) override {}
	const char *	GetErrorCode() const override { return ""; }
	const char *	GetErrorText() const override { return ""; }

private:
	static const uint8_t KEY_HELD = 0x80;
	uint8_t			keys[KEY_COUNT] = {};
};

// The yard, or an open field when every cell is floor.
std::unique_ptr<cScene> MakeScene( bool field ) {
	std::vector<int32_t> base( MAP_CELLS, GROUND_TILE );
	std::vector<int32_t> object( MAP_CELLS, WALL_TILE );
	std::vector<int32_t> walk( MAP_CELLS, 0 );
	std::vector<int32_t> over( MAP_CELLS, 0 );
	for ( int32_t row = 0; row < static_cast<int32_t>( std::size( YARD ) ); row++ ) {
		for ( int32_t column = 0; YARD[row][column] != '\0'; column++ ) {
			if ( field || YARD[row][column] == FLOOR ) {
				walk[CellIndex( column, row )] = WALK_FLOOR;
				object[CellIndex( column, row )] = 0;
			}
		}
	}
	if ( field ) {
		std::fill( walk.begin(), walk.end(), WALK_FLOOR );
		std::fill( object.begin(), object.end(), 0 );
	}
	std::unique_ptr<cScene> scene = cScene::FromLayers( base, object, walk, over );
	scene->SetCameraPosition( 0, 0 );
	return scene;
}

void SetUpYard( cGame &game ) {
	game.GetConfig().SetPlayers( PLAYERS );
	game.GetConfig().SetDifficulty( DIFFICULTY );
	game.SetUpGame( MakeScene( false ) );
	game.GetPlayers()->push_back( std::make_unique<cPlayer>( KIND_TAVESH, Pixels( 3 ), Pixels( 11 ) ) );
	game.GetPlayers()->push_back( std::make_unique<cPlayer>( KIND_LUMRA, Pixels( 13 ), Pixels( 11 ) ) );
	game.GetItems()->push_back( cItem( ITEM_AMMO, Pixels( 4 ), Pixels( 11 ) ) );
	for ( const cPlacedEnemy &placed : ENEMIES ) {
		auto enemy = std::make_unique<cEnemy>( placed.kind, Pixels( placed.column ), Pixels( placed.row ),
											   placed.direction, DIFFICULTY );
		if ( placed.weak ) {
			enemy->SetHealth( WEAK_HEALTH );
		}
		game.GetEnemies()->push_back( std::move( enemy ) );
	}
}

void AddCheckpoint( const cGame &game, uint64_t &hash ) {
	hash = ( hash ^ cStateHash( game ).GetTotal() ) * HASH_PRIME;
}

// The calendar second moves on with the game's clock, so kills in different seconds draw differently.
void PlayYard( cGame &game, cManualClock &clock, uint64_t &hash ) {
	const std::time_t calendarSecond = clock.GetCalendarTime();
	cScriptKeys keys;
	game.GetInputLayer().Init( &keys, false, cInputLayer::DEVICE_KEYBOARD | cInputLayer::DEVICE_MOUSE );
	SetUpYard( game );
	game.SetGameState( STATE_PLAYING );
	const cPhase *phase = SCRIPT;
	for ( int32_t step = 1; step <= STEPS; step++ ) {
		while ( phase + 1 != std::end( SCRIPT ) && ( phase + 1 )->firstStep < step ) {
			phase++;
		}
		keys.Hold( *phase );
		game.Step();
		clock.Advance( cGame::FRAME_TIME );
		clock.SetCalendarTime( calendarSecond + clock.GetTickCount() / MSEC_PER_SECOND );
		if ( step % CHECKPOINT_STEPS == 0 ) {
			AddCheckpoint( game, hash );
		}
	}
	game.GetInputLayer().Release();
}

// Shots at every slope from the top-left corner of an open field until they leave the view.
// Near the origin a float's last bit is worth least, so a build that rounds a step of flight
// otherwise (a fused multiply-add, say) shows within a few steps.
void FlyFan( cGame &game, uint64_t &hash ) {
	game.SetUpGame( MakeScene( true ) );
	tBulletList &bullets = *game.GetBullets();
	bullets.emplace_back( FAN_START, FAN_START, DIR_DOWN_RIGHT, WEAPON_LUMRA, KIND_LUMRA );
	for ( int32_t vx = 1; vx < FAN_SLOPES; vx++ ) {
		const int32_t kind = KIND_SOLDIER + vx % FAN_SHOOTER_KINDS;	// 2, 3 and 4 pixels a step
		bullets.emplace_back( FAN_START, FAN_START, vx, FAN_SLOPES - vx, WEAPON_ENEMY_GUN, kind );
	}
	for ( int32_t step = 1; !bullets.empty(); step++ ) {
		game.UpdateBullets();
		if ( step % CHECKPOINT_STEPS == 0 ) {
			AddCheckpoint( game, hash );
		}
	}
}

}

uint64_t cFingerprint::Compute() {
	return ComputeAt( CALENDAR_SECOND );
}

uint64_t cFingerprint::ComputeAt( std::time_t calendarSecond ) {
	cClock &previousClock = GetClock();
	cManualClock clock( 0, calendarSecond );
	SetClock( &clock );
	uint64_t hash = 0;
	{
		cGame game;
		PlayYard( game, clock, hash );
		FlyFan( game, hash );
		game.Finalize();
	}
	SetClock( &previousClock );
	return hash;
}

std::string cFingerprint::GetLine() {
	char line[LINE_SIZE];
	std::snprintf( line, sizeof( line ), "Game fingerprint %016" PRIx64 "\n", Compute() );
	return line;
}
