// SPDX-License-Identifier: GPL-3.0-or-later
// The two bullet passes of a frame: flight with the wall and view test, then hits with damage,
// kills, item drops and the victory that the boss's death brings.

#include "app/Game.h"

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Character.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "platform/Clock.h"
#include "platform/Random.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const float IMPACT_OFFSET = 16.0f;		// in pixels along the bullet's vector
const int DROP_CHANCES = 50;			// a kill draws r from 1 to 50
const int HEALTH_DROP_FIRST = 1;
const int HEALTH_DROP_LAST = 5;
const int AMMO_DROP_FIRST = 11;
const int AMMO_DROP_LAST = 13;

bool IsInsideView( const cScene &scene, float x, float y ) {
	const float left = static_cast<float>( scene.GetCameraX() );
	const float top = static_cast<float>( scene.GetCameraY() );
	return left < x && x < left + VIEW_WIDTH && top < y && y < top + VIEW_HEIGHT;
}

// What a kill leaves behind, from one draw of the generator seeded at the start of the pass.
void DropItem( int32_t x, int32_t y, tItemList &items, cRandom &random ) {
	const int r = random.Next() % DROP_CHANCES + 1;
	if ( r >= HEALTH_DROP_FIRST && r <= HEALTH_DROP_LAST ) {
		items.push_back( cItem( ITEM_HEALTH, x, y ) );
	} else if ( r >= AMMO_DROP_FIRST && r <= AMMO_DROP_LAST ) {
		items.push_back( cItem( ITEM_AMMO, x, y ) );
	}
}

// The first enemy the bullet hits takes it. A kill leaves a death explosion, the explosion's
// sound and perhaps an item; bossKilled tells whether it was the boss.
bool HitEnemies( const cBullet &bullet, tCharacterList &enemies, tExplosionList &explosions, tItemList &items,
				cSoundLayer &soundLayer, cRandom &random, bool &bossKilled ) {
	for ( auto enemy = enemies.begin(); enemy != enemies.end(); ++enemy ) {
		int32_t hitX = 0;
		int32_t hitY = 0;
		bool killed = false;
		if ( !( *enemy )->HitByBullet( bullet, hitX, hitY, killed ) ) {
			continue;
		}
		explosions.push_back( cExplosion( hitX, hitY, !killed ) );
		if ( killed ) {
			soundLayer.PlaySound( SOUND_EXPLOSION, false );
			bossKilled = ( *enemy )->GetKind() == KIND_BOSS;
			enemies.erase( enemy );
			DropItem( hitX, hitY, items, random );
		}
		return true;
	}
	return false;
}

// The first player the bullet hits takes it; a player brought down stays in the list.
// The hit player's pad rumbles; the list's first player is player 1.
bool HitPlayers( const cBullet &bullet, tCharacterList &players, tExplosionList &explosions, cInputLayer &input ) {
	for ( size_t i = 0; i < players.size(); i++ ) {
		int32_t hitX = 0;
		int32_t hitY = 0;
		bool killed = false;
		if ( players[i]->HitByBullet( bullet, hitX, hitY, killed ) ) {
			explosions.push_back( cExplosion( hitX, hitY, true ) );
			input.Rumble( static_cast<int>( i ) + 1 );
			return true;
		}
	}
	return false;
}

}

// A bullet that struck a wall leaves an impact 16 pixels further along its vector as stored
// (a player's diagonal shot: 16 on each axis); one that only left the view just vanishes.
void cGame::UpdateBullets() {
	for ( size_t i = 0; i < bullets->size(); ) {
		cBullet &bullet = ( *bullets )[i];
		bullet.Move();
		float x = 0.0f;
		float y = 0.0f;
		bullet.GetPosition( x, y );
		const bool free = scene->IsFree( static_cast<int32_t>( x ), static_cast<int32_t>( y ), true );
		if ( free && IsInsideView( *scene, x, y ) && bullet.HasDirection() ) {
			i++;
			continue;
		}
		if ( !free ) {
			float dirX = 0.0f;
			float dirY = 0.0f;
			bullet.GetDirection( dirX, dirY );
			explosions->push_back( cExplosion( static_cast<int32_t>( x + dirX * IMPACT_OFFSET ),
											   static_cast<int32_t>( y + dirY * IMPACT_OFFSET ), true ) );
		}
		bullets->erase( bullets->begin() + static_cast<std::ptrdiff_t>( i ) );
	}
}

// Seeded at the start of every pass, so the first drop of a frame depends only on the second.
// A bullet stops at the first enemy it hits, else at the first player; its own side never
// stops it. The pass goes on after the boss's death, which only switches to the victory.
void cGame::ResolveHits() {
	cRandom random( GetCalendarTime() );
	for ( size_t i = 0; i < bullets->size(); ) {
		const cBullet &bullet = ( *bullets )[i];
		bool bossKilled = false;
		const bool hit = HitEnemies( bullet, *enemies, *explosions, *items, soundLayer, random, bossKilled )
						|| HitPlayers( bullet, *players, *explosions, inputLayer );
		if ( bossKilled ) {
			gameState = STATE_VICTORY;
			endTime = GetTickCount();
			soundLayer.Stop( SOUND_BOSS_MUSIC );
			soundLayer.PlaySound( SOUND_LEVEL_COMPLETE, false );
		}
		if ( hit ) {
			bullets->erase( bullets->begin() + static_cast<std::ptrdiff_t>( i ) );
		} else {
			i++;
		}
	}
}
