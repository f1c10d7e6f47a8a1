// SPDX-License-Identifier: GPL-3.0-or-later
#include "BusyWorld.h"

#include <vector>

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t ENEMY_COLUMNS = 6;		// the enemies stand in a 6 x 4 block across the view
const int32_t ENEMY_SPACING_X = 96;		// in pixels
const int32_t ENEMY_SPACING_Y = 100;
const int32_t MACHINE_GUN_AMMO = 35;

}

cBusyWorld::cBusyWorld( std::unique_ptr<cScene> busyScene, int32_t x, int32_t y )
	: scene( std::move( busyScene ) ), cameraX( x ), cameraY( y ) {
	scene->SetCameraPosition( cameraX, cameraY );
	AddPlayers();
	AddEnemies();
	AddShotsAndItems();
	RestartExplosions();
}

cBusyWorld::~cBusyWorld() = default;

// tavesh with the machine gun shows all three bars; lumra hides, upgraded, on the right.
void cBusyWorld::AddPlayers() {
	cPlayer *tavesh = new cPlayer( KIND_TAVESH, cameraX + 280, cameraY + 420 );
	tavesh->SetWeapon( WEAPON_MACHINE_GUN );
	tavesh->SetAmmo( MACHINE_GUN_AMMO );
	tavesh->SetMoving( true );
	players.emplace_back( tavesh );
	cPlayer *lumra = new cPlayer( KIND_LUMRA, cameraX + 330, cameraY + 420 );
	lumra->SetMaxEnergy( cPlayer::UPGRADED_ENERGY );
	lumra->SetEnergy( cPlayer::UPGRADED_ENERGY );
	lumra->SetEnergyUpgraded( true );
	lumra->ToggleSkill();
	players.emplace_back( lumra );
}

void cBusyWorld::AddEnemies() {
	for ( int32_t i = 0; i < ENEMY_COUNT; i++ ) {
		const int32_t x = cameraX + 24 + ( i % ENEMY_COLUMNS ) * ENEMY_SPACING_X;
		const int32_t y = cameraY + 40 + ( i / ENEMY_COLUMNS ) * ENEMY_SPACING_Y;
		const int32_t kind = i == 0 ? KIND_BOSS : ( i % 2 == 0 ? KIND_SOLDIER : KIND_MACHINE_GUNNER );
		cEnemy *enemy = new cEnemy( kind, x, y, DIR_UP + i % 8, 2 );
		enemy->SetMoving( true );
		enemies.emplace_back( enemy );
	}
	AlertEnemies();
}

// Those that see tavesh have just noticed him, and go on showing the exclamation: nothing
// perceives again to put the moment behind them.
void cBusyWorld::AlertEnemies() {
	const cPlayer &tavesh = static_cast<const cPlayer &>( *players.front() );
	for ( std::unique_ptr<cCharacter> &character : enemies ) {
		cEnemy &enemy = static_cast<cEnemy &>( *character );
		if ( enemy.GetKind() == KIND_BOSS ) {
			enemy.PerceiveBoss( tavesh, scene->GetWalkMap() );
		} else {
			enemy.Perceive( tavesh, scene->GetWalkMap() );
		}
	}
}

// Diagonal shots, moved once, sit at fractional positions.
void cBusyWorld::AddShotsAndItems() {
	for ( int32_t i = 0; i < BULLET_COUNT; i++ ) {
		bullets.emplace_back( cameraX + 20 + i * 20, cameraY + 60 + ( i * 37 ) % 400, DIR_UP + i % 8, i % 4, i % 2 == 0 ? KIND_TAVESH : KIND_SOLDIER );
		bullets.back().Move();
	}
	const int32_t kinds[] = { ITEM_AMMO, ITEM_HEALTH, ITEM_TAVESH_ENERGY, ITEM_LUMRA_ENERGY, ITEM_SPEED, ITEM_HEALTH };
	int32_t i = 0;
	for ( int32_t kind : kinds ) {
		items.emplace_back( kind, cameraX + 60 + i * 90, cameraY + 380 );
		i++;
	}
}

void cBusyWorld::RestartExplosions() {
	explosions.clear();
	for ( int32_t i = 0; i < EXPLOSION_COUNT; i++ ) {
		explosions.emplace_back( cameraX + 40 + i * 48, cameraY + 200 + ( i % 3 ) * 70, i % 2 == 0 );
	}
}

std::unique_ptr<cScene> cBusyWorld::MakeFullLayersScene( int32_t tileCount ) {
	std::vector<int32_t> base( MAP_CELLS );
	std::vector<int32_t> object( MAP_CELLS );
	std::vector<int32_t> over( MAP_CELLS );
	const int32_t tiles = tileCount > 0 ? tileCount : 1;
	for ( int32_t i = 0; i < MAP_CELLS; i++ ) {
		base[i] = 1 + i % tiles;
		object[i] = 1 + ( i * 7 ) % tiles;
		over[i] = 1 + ( i * 13 ) % tiles;
	}
	return cScene::FromLayers( base, object, std::vector<int32_t>( MAP_CELLS, WALK_FLOOR ), over );
}
