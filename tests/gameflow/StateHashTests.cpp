// SPDX-License-Identifier: GPL-3.0-or-later
// The state fingerprint: each change to the game lands in the part that holds it and in the total,
// and nothing else moves it.

#include <gtest/gtest.h>

#include <functional>

#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/StateHash.h"
#include "support/TestGame.h"
#include "support/TestMaps.h"
#include "world/Scene.h"

namespace {

struct cChangeCase {
	const char *							part;
	std::function<void( cTestGame & )>		change;
};

cEnemy &Enemy( cTestGame &test, size_t i ) { return static_cast<cEnemy &>( *( *test.GetGame().GetEnemies() )[i] ); }
cPlayer &Player( cTestGame &test, size_t i ) { return static_cast<cPlayer &>( *( *test.GetGame().GetPlayers() )[i] ); }

}

TEST( StateHashTest, EachChangeIsNamedByThePartThatHoldsIt ) {
	const cChangeCase cases[] = {
		{ "game", []( cTestGame &t ) { t.GetGame().SetGameState( STATE_PAUSE ); } },
		{ "game", []( cTestGame &t ) { t.GetGame().GetSoundLayer().heartbeatPlaying = true; } },
		{ "scene", []( cTestGame &t ) { t.GetScene().GetWalkMap()[4499] = 3; } },
		{ "scene", []( cTestGame &t ) { t.GetScene().SetCameraPosition( 32, 1888 ); } },
		{ "player 1", []( cTestGame &t ) { Player( t, 0 ).SetPosition( 101, 100 ); } },
		{ "player 2", []( cTestGame &t ) { Player( t, 1 ).SetEnergy( 2999 ); } },
		{ "enemy 2", []( cTestGame &t ) { Enemy( t, 1 ).SetTarget( &Player( t, 1 ) ); } },
		{ "enemy 1", []( cTestGame &t ) { Enemy( t, 0 ).SetShotCounter( 7 ); } },
		{ "bullets", []( cTestGame &t ) { t.GetGame().GetBullets()->push_back( cBullet( 1, 2, 1, 0, 0 ) ); } },
		{ "items", []( cTestGame &t ) { ( *t.GetGame().GetItems() )[0].SetBobCounter( 1 ); } },
		{ "explosions", []( cTestGame &t ) { t.GetGame().GetExplosions()->push_back( cExplosion( 5, 5, true ) ); } },
		{ "enemy 3", []( cTestGame &t ) { t.AddEnemy( 2, 400, 300, 1 ); } },
		{ "enemy 2", []( cTestGame &t ) { t.GetGame().GetEnemies()->pop_back(); } },
	};
	for ( const cChangeCase &c : cases ) {
		cTestGame test( MakeOpenScene() );
		test.AddPlayer( 0, 100, 100 );
		test.AddPlayer( 1, 200, 100 );
		test.AddEnemy( 2, 300, 300, 1 );
		test.AddEnemy( 3, 400, 300, 1 );
		test.GetGame().GetItems()->push_back( cItem( 0, 64, 64 ) );
		const cStateHash before( test.GetGame() );
		EXPECT_EQ( cStateHash( test.GetGame() ).GetTotal(), before.GetTotal() ) << "hashing twice";
		c.change( test );
		const cStateHash after( test.GetGame() );
		EXPECT_NE( after.GetTotal(), before.GetTotal() ) << "a change to " << c.part;
		EXPECT_EQ( after.FindFirstDifference( before ), c.part );
	}
}
