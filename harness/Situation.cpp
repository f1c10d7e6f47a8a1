// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/Situation.h"

#include <cmath>
#include <memory>

#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/Game.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const float SIGHT_STEP = 16.0f;		// in pixels, as the enemies' sight samples its line
const int32_t MAX_PACE = 4;			// in pixels per frame: a larger jump is no walk

int32_t LimitPace( int32_t step ) {
	return step > MAX_PACE || step < -MAX_PACE ? 0 : step;
}

}

bool cSituation::Read( const cGame &game, int playerIndex ) {
	scene = game.GetScene();
	const tCharacterList *players = game.GetPlayers();
	if ( scene == nullptr || players == nullptr || playerIndex >= static_cast<int>( players->size() ) ) {
		return false;
	}
	cameraX = scene->GetCameraX();
	cameraY = scene->GetCameraY();
	me = dynamic_cast<const cPlayer *>( ( *players )[playerIndex].get() );
	partner = nullptr;
	for ( size_t i = 0; i < players->size(); i++ ) {
		if ( static_cast<int>( i ) != playerIndex ) {
			partner = dynamic_cast<const cPlayer *>( ( *players )[i].get() );
		}
	}
	if ( me == nullptr ) {
		return false;
	}
	me->GetPosition( x, y );
	enemies.clear();
	for ( const std::unique_ptr<cCharacter> &character : *game.GetEnemies() ) {
		const cEnemy *enemy = dynamic_cast<const cEnemy *>( character.get() );
		if ( enemy != nullptr ) {
			SeeEnemy( *enemy );
		}
	}
	items.clear();
	for ( const cItem &item : *game.GetItems() ) {
		cItemSighting sighting;
		sighting.kind = item.GetKind();
		item.GetPosition( sighting.x, sighting.y );
		item.GetCell( sighting.cellX, sighting.cellY );
		items.push_back( sighting );
	}
	return true;
}

void cSituation::SeeEnemy( const cEnemy &enemy ) {
	cEnemySighting sighting;
	sighting.enemy = &enemy;
	enemy.GetPosition( sighting.x, sighting.y );
	sighting.vx = 0;
	sighting.vy = 0;
	const auto last = lastPositions.find( &enemy );
	if ( enemy.IsMoving() && last != lastPositions.end() ) {
		sighting.vx = LimitPace( sighting.x - last->second.first );
		sighting.vy = LimitPace( sighting.y - last->second.second );
	}
	lastPositions[&enemy] = { sighting.x, sighting.y };
	sighting.kind = enemy.GetKind();
	sighting.aiState = enemy.GetAiState();
	sighting.inView = IsInView( sighting.x, sighting.y );
	sighting.alerted = sighting.aiState != AI_UNAWARE && sighting.aiState != AI_LOOK_AROUND;
	enemies.push_back( sighting );
}

// A body anywhere in the 640 x 480 view, even partly: the player's shots fly until they leave it.
bool cSituation::IsInView( int32_t px, int32_t py ) const {
	return px > cameraX - BODY_SIZE && px < cameraX + VIEW_WIDTH && py > cameraY - BODY_SIZE && py < cameraY + VIEW_HEIGHT;
}

void GetBodyCell( int32_t x, int32_t y, int32_t &cellX, int32_t &cellY ) {
	cellX = ( x + BODY_SIZE / 2 ) / CELL_SIZE;
	cellY = ( y + BODY_SIZE / 2 ) / CELL_SIZE;
}

bool HasClearSight( const cScene &scene, int32_t fromX, int32_t fromY, int32_t toX, int32_t toY ) {
	const float dx = static_cast<float>( toX - fromX );
	const float dy = static_cast<float>( toY - fromY );
	const float length = std::sqrt( dx * dx + dy * dy );
	const int32_t goalX = toX / CELL_SIZE;
	const int32_t goalY = toY / CELL_SIZE;
	float fx = static_cast<float>( fromX );
	float fy = static_cast<float>( fromY );
	const int32_t steps = static_cast<int32_t>( length / SIGHT_STEP ) + 1;
	for ( int32_t step = 0; step <= steps; step++ ) {
		const int32_t cx = static_cast<int32_t>( fx ) / CELL_SIZE;
		const int32_t cy = static_cast<int32_t>( fy ) / CELL_SIZE;
		if ( cx == goalX && cy == goalY ) {
			return true;
		}
		const int32_t code = scene.GetWalkCode( cx, cy );
		if ( step > 0 && code != WALK_FLOOR && code != WALK_ENEMY ) {
			return false;
		}
		fx += dx / length * SIGHT_STEP;
		fy += dy / length * SIGHT_STEP;
	}
	return true;
}
