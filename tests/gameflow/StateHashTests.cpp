// SPDX-License-Identifier: GPL-3.0-or-later
// The state fingerprint: each change to the game lands in the part that holds it and in the total,
// and nothing else moves it; a saved match put back undoes the change.

#include <gtest/gtest.h>

#include <functional>

#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/Match.h"
#include "app/StateHash.h"
#include "support/TestGame.h"
#include "support/TestMaps.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

struct cChangeCase {
	const char *							part;
	std::function<void( cTestGame & )>		change;
};

cEnemy &Enemy( cTestGame &test, size_t i ) { return static_cast<cEnemy &>( *( *test.GetGame().GetEnemies() )[i] ); }
cPlayer &Player( cTestGame &test, size_t i ) { return static_cast<cPlayer &>( *( *test.GetGame().GetPlayers() )[i] ); }

}

TEST( StateHashTest, EachChangeIsNamedByThePartThatHoldsItAndUndoneByTheSavedMatch ) {
	const cChangeCase cases[] = {
		{ "game", []( cTestGame &t ) { t.GetGame().SetGameState( STATE_PAUSE ); } },
		{ "game", []( cTestGame &t ) { t.GetGame().GetSoundLayer().heartbeatPlaying = true; } },
		{ "game", []( cTestGame &t ) { t.GetGame().GetSoundLayer().PlayMusic( SOUND_BOSS_MUSIC ); } },
		{ "game", []( cTestGame &t ) { t.GetGame().GetInputLayer().SetMousePosition( 17, 18 ); } },
		{ "game", []( cTestGame &t ) { t.GetGame().GetConfig().SetCharacter( 2, 1 ); } },
		{ "scene", []( cTestGame &t ) { t.GetScene().GetWalkMap()[4499] = 3; } },
		{ "scene", []( cTestGame &t ) { t.GetScene().SetCameraPosition( 32, 1888 ); } },
		{ "player 1", []( cTestGame &t ) { Player( t, 0 ).SetPosition( 101, 100 ); } },
		{ "player 2", []( cTestGame &t ) { Player( t, 1 ).SetEnergy( 2999 ); } },
		{ "enemy 2", []( cTestGame &t ) { Enemy( t, 1 ).SetTarget( &Player( t, 1 ) ); } },
		{ "enemy 1", []( cTestGame &t ) { Enemy( t, 0 ).SetShotCounter( 7 ); } },
		{ "enemy 1", []( cTestGame &t ) { Enemy( t, 0 ).RequestPath( t.GetScene().GetWalkMap(), 3, 20 ); } },
		{ "enemy 2", []( cTestGame &t ) { Enemy( t, 1 ).SetTarget( nullptr ); } },
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
		Enemy( test, 1 ).SetTarget( &Player( test, 0 ) );
		Enemy( test, 1 ).RequestPath( test.GetScene().GetWalkMap(), 20, 20 );
		test.GetGame().GetSoundLayer().PlayMusic( SOUND_STREETS_MUSIC );
		cMatch saved;
		test.GetGame().Save( saved );
		const cStateHash before( test.GetGame() );
		EXPECT_EQ( cStateHash( test.GetGame() ).GetTotal(), before.GetTotal() ) << "hashing twice";
		c.change( test );
		const cStateHash after( test.GetGame() );
		EXPECT_NE( after.GetTotal(), before.GetTotal() ) << "a change to " << c.part;
		EXPECT_EQ( after.FindFirstDifference( before ), c.part );
		test.GetGame().Restore( saved );
		EXPECT_EQ( cStateHash( test.GetGame() ).FindFirstDifference( before ), "" ) << "put back after a change to " << c.part;
	}
}

// The restored enemies point at the restored players, and the saved match shares nothing with the
// live one: a door opened in play stays closed in it.
TEST( StateHashTest, ARestoredEnemyChasesTheRestoredPlayerAndTheSavedMapStaysAsSaved ) {
	cTestGame test( MakeOpenScene() );
	test.AddPlayer( 0, 100, 100 );
	test.AddPlayer( 1, 200, 100 );
	test.AddEnemy( 2, 320, 320, 1 );
	Enemy( test, 0 ).SetTarget( &Player( test, 1 ) );
	test.GetScene().GetWalkMap()[CellIndex( 10, 14 )] = WALK_DOOR;
	cMatch saved;
	test.GetGame().Save( saved );
	test.GetScene().OpenDoor( 10, 14 );
	EXPECT_EQ( saved.scene->GetWalkCode( 10, 14 ), WALK_DOOR );
	test.GetGame().ClearGame();
	test.GetGame().Restore( saved );
	EXPECT_EQ( Enemy( test, 0 ).GetTarget(), &Player( test, 1 ) );
	EXPECT_NE( saved.players->at( 1 ).get(), &Player( test, 1 ) ) << "the live game holds players of its own";
	EXPECT_EQ( test.GetScene().GetWalkCode( 10, 14 ), WALK_DOOR );
}
