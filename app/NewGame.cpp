#include "app/Game.h"

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "log/Log.h"
#include "world/Scene.h"

namespace {

struct cSpawn {
	int32_t		kind;
	int32_t		x;			// in world pixels, on a cell corner
	int32_t		y;
	int32_t		direction;
};

// Players 1 and 2 start at cells (7, 70) and (12, 70); their kinds come from the options.
const int32_t PLAYER_SPAWNS[2][2] = { { 224, 2240 }, { 384, 2240 } };
const int32_t SPEED_ITEM_KIND = 5;
const int32_t SPEED_ITEM_X = 1120;	// cell (35, 42)
const int32_t SPEED_ITEM_Y = 1344;

// The level's enemies, in the order the game keeps them.
const cSpawn ENEMY_SPAWNS[] = {
	{ KIND_SOLDIER, 224, 1600, DIR_DOWN },
	{ KIND_SOLDIER, 384, 1600, DIR_DOWN },
	{ KIND_SOLDIER, 288, 1504, DIR_DOWN },
	{ KIND_SOLDIER, 192, 1120, DIR_DOWN },
	{ KIND_SOLDIER, 544, 1088, DIR_LEFT },
	{ KIND_SOLDIER, 544, 1216, DIR_LEFT },
	{ KIND_MACHINE_GUNNER, 1184, 1120, DIR_LEFT },
	{ KIND_MACHINE_GUNNER, 1184, 1248, DIR_LEFT },
	{ KIND_SOLDIER, 1632, 1120, DIR_LEFT },
	{ KIND_SOLDIER, 1664, 1280, DIR_LEFT },
	{ KIND_SOLDIER, 1536, 768, DIR_RIGHT },
	{ KIND_SOLDIER, 1600, 704, DIR_DOWN },
	{ KIND_SOLDIER, 1536, 544, DIR_DOWN },
	{ KIND_SOLDIER, 1568, 160, DIR_DOWN },
	{ KIND_SOLDIER, 1344, 192, DIR_RIGHT },
	{ KIND_MACHINE_GUNNER, 800, 224, DIR_RIGHT },
	{ KIND_MACHINE_GUNNER, 704, 160, DIR_RIGHT },
	{ KIND_MACHINE_GUNNER, 704, 288, DIR_RIGHT },
	{ KIND_SOLDIER, 224, 160, DIR_RIGHT },
	{ KIND_SOLDIER, 224, 224, DIR_RIGHT },
	{ KIND_SOLDIER, 224, 288, DIR_RIGHT },
	{ KIND_MACHINE_GUNNER, 160, 192, DIR_RIGHT },
	{ KIND_MACHINE_GUNNER, 160, 256, DIR_RIGHT },
	{ KIND_BOSS, 96, 224, DIR_RIGHT },
};

}

// A map that cannot be loaded leaves the game in the main menu with nothing in it: the next
// click on a character tries again.
void cGame::NewGame() {
	ClearGame();	// the old game goes before the new map is read, so the two never live together
	SetUpGame( std::make_unique<cScene>( cScene::GetMapFolder( dataRoot ) ) );
	if ( !scene->IsUsable() ) {
		cLog::Write( "Error starting a new game: the map could not be loaded" );
		gameState = STATE_MAIN_MENU;
		return;
	}
	uint32_t count = 0;
	config.GetPlayers( count );
	inputLayer.SetPlayerCount( static_cast<int>( count ) );
	const uint32_t created = ( count == 1 || count == 2 ) ? count : 0;
	for ( uint32_t number = 1; number <= created; number++ ) {
		uint32_t character = 0;
		config.GetCharacter( number, character );
		const int32_t *spawn = PLAYER_SPAWNS[number - 1];
		players->push_back( std::make_unique<cPlayer>( static_cast<int32_t>( character ), spawn[0], spawn[1] ) );
	}
	items->push_back( cItem( SPEED_ITEM_KIND, SPEED_ITEM_X, SPEED_ITEM_Y ) );
	PlaceEnemies();
}

void cGame::PlaceEnemies() {
	uint32_t difficulty = 0;
	config.GetDifficulty( difficulty );
	for ( const cSpawn &spawn : ENEMY_SPAWNS ) {
		enemies->push_back( std::make_unique<cEnemy>( spawn.kind, spawn.x, spawn.y, spawn.direction,
													  static_cast<int32_t>( difficulty ) ) );
	}
}
