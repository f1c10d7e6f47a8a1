// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/StateHash.h"

#include <cstring>

#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/AStar.h"
#include "ai/Enemy.h"
#include "app/Game.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

// 64-bit FNV-1a over the values' little-endian bytes: the same on every build of the game.
class cHasher {
public:
	void Add( int64_t value ) {
		uint64_t bits = static_cast<uint64_t>( value );
		for ( int i = 0; i < 8; i++ ) {
			hash = ( hash ^ ( bits & 0xFF ) ) * PRIME;
			bits >>= 8;
		}
	}
	void Add( float value ) {
		uint32_t bits = 0;
		std::memcpy( &bits, &value, sizeof( bits ) );
		Add( static_cast<int64_t>( bits ) );
	}
	void Add( const int32_t *values, int count ) {
		for ( int i = 0; i < count; i++ ) {
			Add( static_cast<int64_t>( values[i] ) );
		}
	}
	uint64_t Get() const { return hash; }

private:
	static constexpr uint64_t PRIME = 0x100000001B3ull;
	uint64_t hash = 0xCBF29CE484222325ull;
};

void AddGame( cHasher &h, const cGame &game ) {
	h.Add( static_cast<int64_t>( game.GetGameState() ) );
	h.Add( static_cast<int64_t>( game.GetEndTime() ) );
	h.Add( static_cast<int64_t>( game.IsClickLatched() ) );
	const cConfig &config = game.GetConfig();
	uint32_t value = 0;
	config.GetPlayers( value );
	h.Add( static_cast<int64_t>( value ) );
	config.GetDifficulty( value );
	h.Add( static_cast<int64_t>( value ) );
	for ( uint32_t player = 1; player <= 2; player++ ) {
		config.GetCharacter( player, value );
		h.Add( static_cast<int64_t>( value ) );
	}
	int32_t x = 0, y = 0;
	game.GetInputLayer().GetMousePosition( x, y );
	h.Add( static_cast<int64_t>( x ) );
	h.Add( static_cast<int64_t>( y ) );
	const cSoundLayer &sound = game.GetSoundLayer();
	h.Add( static_cast<int64_t>( sound.IsEnabled() ) );
	h.Add( static_cast<int64_t>( sound.GetCurrentMusic() ) );
	h.Add( static_cast<int64_t>( sound.heartbeatPlaying ) );
}

void AddScene( cHasher &h, const cScene &scene ) {
	h.Add( scene.GetBaseMap(), MAP_CELLS );
	h.Add( scene.GetObjectMap(), MAP_CELLS );
	h.Add( scene.GetOverMap(), MAP_CELLS );
	h.Add( scene.GetWalkMap(), MAP_CELLS );
	h.Add( static_cast<int64_t>( scene.GetCameraX() ) );
	h.Add( static_cast<int64_t>( scene.GetCameraY() ) );
	h.Add( static_cast<int64_t>( scene.GetCameraCellX() ) );
	h.Add( static_cast<int64_t>( scene.GetCameraCellY() ) );
	h.Add( static_cast<int64_t>( scene.IsFinalAreaLocked() ) );
	h.Add( static_cast<int64_t>( scene.IsUsable() ) );
}

void AddCharacter( cHasher &h, const cCharacter &c ) {
	int32_t x = 0, y = 0;
	c.GetPosition( x, y );
	const int32_t fields[] = {
		c.GetKind(), c.GetHealth(), c.GetWeapon(), c.GetAmmo(), c.GetSpeed(), x, y, c.GetDirection(),
		c.IsMoving(), c.GetAnimFrame(), c.GetShownFrame(), c.IsAnimBackward(), c.GetAnimTicks(), c.GetShotPeriod(),
		c.GetShotCounter(), c.HasJustShot(), c.IsWounded(),
	};
	h.Add( fields, static_cast<int>( sizeof( fields ) / sizeof( fields[0] ) ) );
}

void AddPlayer( cHasher &h, const cPlayer &p ) {
	AddCharacter( h, p );
	const int32_t fields[] = {
		p.GetEnergy(), p.GetMaxEnergy(), p.IsSkillActive(), static_cast<int32_t>( p.GetLastTick() ),
		p.IsEnergyUpgraded(), p.IsDead(),
	};
	h.Add( fields, static_cast<int>( sizeof( fields ) / sizeof( fields[0] ) ) );
}

void AddPath( cHasher &h, const cPath &path ) {
	int32_t cell[2], target[2], pending[2];
	path.GetCell( cell[0], cell[1] );
	path.GetTarget( target[0], target[1] );
	path.GetPending( pending[0], pending[1] );
	h.Add( cell, 2 );
	h.Add( target, 2 );
	h.Add( pending, 2 );
	h.Add( static_cast<int64_t>( path.GetDirection() ) );
	const cAStar *search = path.GetSearch();
	h.Add( static_cast<int64_t>( search != nullptr ) );
	if ( search == nullptr ) {
		return;
	}
	h.Add( static_cast<int64_t>( search->GetPathLength() ) );
	h.Add( static_cast<int64_t>( search->GetNextStep() ) );
	for ( int32_t i = 1; i <= search->GetPathLength(); i++ ) {
		h.Add( static_cast<int64_t>( search->ReadStepX( i ) ) );
		h.Add( static_cast<int64_t>( search->ReadStepY( i ) ) );
	}
}

// The target is named by its place in the players' list: -1 for none.
int32_t FindPlayerIndex( const tCharacterList *players, const cPlayer *target ) {
	for ( size_t i = 0; players != nullptr && i < players->size(); i++ ) {
		if ( ( *players )[i].get() == target ) {
			return static_cast<int32_t>( i );
		}
	}
	return -1;
}

void AddEnemy( cHasher &h, const cEnemy &e, const tCharacterList *players ) {
	AddCharacter( h, e );
	int32_t cell[2], lastSeen[2];
	e.GetCellCorner( cell[0], cell[1] );
	e.GetLastSeen( lastSeen[0], lastSeen[1] );
	const int32_t fields[] = {
		cell[0], cell[1], lastSeen[0], lastSeen[1], FindPlayerIndex( players, e.GetTarget() ),
		e.GetReplanTimer(), e.GetPreviousAiState(), e.GetAiState(), e.GetLookTimer(), e.IsWanderPending(),
		static_cast<int32_t>( e.GetAlertTime() ), e.GetAlertIcon(), e.WasShot(),
	};
	h.Add( fields, static_cast<int>( sizeof( fields ) / sizeof( fields[0] ) ) );
	AddPath( h, e.GetPath() );
}

void AddBullets( cHasher &h, const tBulletList &bullets ) {
	h.Add( static_cast<int64_t>( bullets.size() ) );
	for ( const cBullet &b : bullets ) {
		float x = 0, y = 0, dx = 0, dy = 0;
		b.GetPosition( x, y );
		b.GetDirection( dx, dy );
		h.Add( x );
		h.Add( y );
		h.Add( dx );
		h.Add( dy );
		const int32_t fields[] = { b.GetWeapon(), b.GetOwnerKind(), b.GetSpeed() };
		h.Add( fields, 3 );
	}
}

void AddItems( cHasher &h, const tItemList &items ) {
	h.Add( static_cast<int64_t>( items.size() ) );
	for ( const cItem &item : items ) {
		int32_t x = 0, y = 0;
		item.GetPosition( x, y );
		const int32_t fields[] = { item.GetKind(), x, y, item.GetBobCounter(), item.GetBob() };
		h.Add( fields, 5 );
	}
}

void AddExplosions( cHasher &h, const tExplosionList &explosions ) {
	h.Add( static_cast<int64_t>( explosions.size() ) );
	for ( const cExplosion &e : explosions ) {
		int32_t x = 0, y = 0;
		e.GetPosition( x, y );
		const int32_t fields[] = { x, y, e.GetFrame(), e.GetShownFrame(), e.GetTicks(), e.IsImpact() };
		h.Add( fields, 6 );
	}
}

}

cStateHash::cStateHash( const cGame &game ) {
	auto addPart = [this]( const std::string &name, const cHasher &h ) { parts.push_back( { name, h.Get() } ); };
	cHasher gamePart;
	AddGame( gamePart, game );
	addPart( "game", gamePart );
	if ( game.GetScene() != nullptr ) {
		cHasher h;
		AddScene( h, *game.GetScene() );
		addPart( "scene", h );
	}
	const tCharacterList *players = game.GetPlayers();
	for ( size_t i = 0; players != nullptr && i < players->size(); i++ ) {
		cHasher h;
		AddPlayer( h, static_cast<const cPlayer &>( *( *players )[i] ) );
		addPart( "player " + std::to_string( i + 1 ), h );
	}
	const tCharacterList *enemies = game.GetEnemies();
	for ( size_t i = 0; enemies != nullptr && i < enemies->size(); i++ ) {
		cHasher h;
		AddEnemy( h, static_cast<const cEnemy &>( *( *enemies )[i] ), players );
		addPart( "enemy " + std::to_string( i + 1 ), h );
	}
	if ( game.GetBullets() != nullptr ) {
		cHasher h;
		AddBullets( h, *game.GetBullets() );
		addPart( "bullets", h );
	}
	if ( game.GetItems() != nullptr ) {
		cHasher h;
		AddItems( h, *game.GetItems() );
		addPart( "items", h );
	}
	if ( game.GetExplosions() != nullptr ) {
		cHasher h;
		AddExplosions( h, *game.GetExplosions() );
		addPart( "explosions", h );
	}
	cHasher all;
	for ( const cStatePart &part : parts ) {
		all.Add( static_cast<int64_t>( part.hash ) );
	}
	total = all.Get();
}

std::string cStateHash::FindFirstDifference( const cStateHash &other ) const {
	auto findIn = []( const std::vector<cStatePart> &list, const std::string &name ) -> const cStatePart * {
		for ( const cStatePart &part : list ) {
			if ( part.name == name ) {
				return &part;
			}
		}
		return nullptr;
	};
	for ( const cStatePart &part : parts ) {
		const cStatePart *match = findIn( other.parts, part.name );
		if ( match == nullptr || match->hash != part.hash ) {
			return part.name;
		}
	}
	for ( const cStatePart &part : other.parts ) {
		if ( findIn( parts, part.name ) == nullptr ) {
			return part.name;
		}
	}
	return std::string();
}
