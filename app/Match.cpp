// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Match.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

template <typename T>
std::unique_ptr<T> CopyOf( const std::unique_ptr<T> &from ) {
	return from != nullptr ? std::make_unique<T>( *from ) : nullptr;
}

std::unique_ptr<tCharacterList> CopyCharacters( const std::unique_ptr<tCharacterList> &from ) {
	if ( from == nullptr ) {
		return nullptr;
	}
	auto copy = std::make_unique<tCharacterList>();
	copy->reserve( from->size() );
	for ( const std::unique_ptr<cCharacter> &character : *from ) {
		copy->push_back( character->Clone() );
	}
	return copy;
}

// The player at the same place in to's list as target in from's; null for none.
cPlayer *FindSamePlayer( const tCharacterList *from, const tCharacterList *to, const cPlayer *target ) {
	for ( size_t i = 0; target != nullptr && from != nullptr && to != nullptr && i < from->size() && i < to->size(); i++ ) {
		if ( ( *from )[i].get() == target ) {
			return static_cast<cPlayer *>( ( *to )[i].get() );
		}
	}
	return nullptr;
}

}

cMatch::cMatch() = default;

cMatch::cMatch( const cMatch &other ) {
	*this = other;
}

cMatch::cMatch( cMatch &&other ) noexcept = default;

cMatch &cMatch::operator=( cMatch &&other ) noexcept = default;

cMatch::~cMatch() = default;

cMatch &cMatch::operator=( const cMatch &other ) {
	if ( this == &other ) {
		return *this;
	}
	gameState = other.gameState;
	endTime = other.endTime;
	clickLatch = other.clickLatch;
	config = other.config;
	cursorX = other.cursorX;
	cursorY = other.cursorY;
	music = other.music;
	heartbeatPlaying = other.heartbeatPlaying;
	std::copy( std::begin( other.keysAtLastStep ), std::end( other.keysAtLastStep ), std::begin( keysAtLastStep ) );
	CopyWorld( other );
	return *this;
}

// The scene is copied into the one already held when there is one, so that a match saved again
// and again reuses its layers' memory.
void cMatch::CopyWorld( const cMatch &other ) {
	if ( other.scene == nullptr ) {
		scene.reset();
	} else if ( scene != nullptr ) {
		*scene = *other.scene;
	} else {
		scene = CopyOf( other.scene );
	}
	players = CopyCharacters( other.players );
	enemies = CopyCharacters( other.enemies );
	bullets = CopyOf( other.bullets );
	explosions = CopyOf( other.explosions );
	items = CopyOf( other.items );
	if ( enemies == nullptr ) {
		return;
	}
	const int32_t *walkMap = scene != nullptr ? scene->GetWalkMap() : nullptr;
	for ( std::unique_ptr<cCharacter> &character : *enemies ) {
		cEnemy &enemy = static_cast<cEnemy &>( *character );
		enemy.Relink( FindSamePlayer( other.players.get(), players.get(), enemy.GetTarget() ), walkMap );
	}
}

void cMatch::Clear() {
	scene.reset();
	players.reset();
	enemies.reset();
	bullets.reset();
	explosions.reset();
	items.reset();
}

void cMatch::SetUp( std::unique_ptr<cScene> newScene ) {
	Clear();
	scene = std::move( newScene );
	players = std::make_unique<tCharacterList>();
	enemies = std::make_unique<tCharacterList>();
	bullets = std::make_unique<tBulletList>();
	explosions = std::make_unique<tExplosionList>();
	items = std::make_unique<tItemList>();
}

size_t cMatch::GetSize() const {
	size_t size = sizeof( *this );
	if ( scene != nullptr ) {
		size += sizeof( cScene ) + 2 * MAP_CELLS * sizeof( int32_t );	// the drawn layers are shared
	}
	for ( const tCharacterList *list : { players.get(), enemies.get() } ) {
		for ( size_t i = 0; list != nullptr && i < list->size(); i++ ) {
			size += list == players.get() ? sizeof( cPlayer ) : sizeof( cEnemy );
			const cAStar *search = list == enemies.get() ? static_cast<const cEnemy &>( *( *list )[i] ).GetPath().GetSearch() : nullptr;
			size += search != nullptr ? sizeof( cAStar ) + 2 * sizeof( int32_t ) * static_cast<size_t>( search->GetPathLength() ) : 0;
		}
	}
	size += bullets != nullptr ? bullets->size() * sizeof( cBullet ) : 0;
	size += explosions != nullptr ? explosions->size() * sizeof( cExplosion ) : 0;
	size += items != nullptr ? items->size() * sizeof( cItem ) : 0;
	return size;
}
