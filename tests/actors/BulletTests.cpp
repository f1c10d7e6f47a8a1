// SPDX-License-Identifier: GPL-3.0-or-later
// Bullets: flight with the view test, the enemy's turn, the hit and damage rule, and the hit pass
// with its order, kills, drops and the victory. Impacts on walls play out in the recorded games.

#include <gtest/gtest.h>

#include <functional>

#include "TestGame.h"
#include "TestMaps.h"
#include "Where.h"
#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "platform/Random.h"
#include "sound/SoundIds.h"
#include "world/Scene.h"

namespace {

// An enemy's aimed shot flies its kind (3 for a machine-gunner) along its normalised vector.
TEST( BulletPassTest, ShotLeavingTheViewOrGoingNowhereVanishesWithoutAnExplosion ) {
	cTestGame game( MakeOpenScene() );
	game.GetScene().SetCameraPosition( 100, 100 );
	tBulletList &bullets = *game.GetGame().GetBullets();
	bullets.push_back( cBullet( 734, 300, DIR_RIGHT, WEAPON_LUMRA, KIND_LUMRA ) );	// to 739
	bullets.push_back( cBullet( 735, 300, DIR_RIGHT, WEAPON_LUMRA, KIND_LUMRA ) );	// to 740, the right edge
	bullets.push_back( cBullet( 300, 105, DIR_UP, WEAPON_LUMRA, KIND_LUMRA ) );		// to 100, the top edge
	bullets.push_back( cBullet( 300, 106, DIR_UP, WEAPON_LUMRA, KIND_LUMRA ) );
	bullets.push_back( cBullet( 300, 300, 0, 0, WEAPON_ENEMY_GUN, KIND_SOLDIER ) );
	bullets.push_back( cBullet( 300, 300, 30, -40, WEAPON_MACHINE_GUN, KIND_MACHINE_GUNNER ) );
	game.GetGame().UpdateBullets();
	ASSERT_EQ( bullets.size(), 3u );
	EXPECT_EQ( Where( bullets[0] ) + Where( bullets[1] ) + Where( bullets[2] ), "(739, 300)(300, 101)(301.8, 297.6)" )
		<< "those inside the view and going somewhere";
	EXPECT_TRUE( game.GetGame().GetExplosions()->empty() );
}

// -1 on either axis asks the enemy to turn about, as a shot from nowhere does; the hit tests
// below turn right and left about.
TEST( EnemyTest, TurnsToTheMainAxisOfAVectorOrAbout ) {
	struct cCase { int32_t from, dx, dy, to; const char *what; };
	const cCase cases[] = {
		{ DIR_LEFT, 2, -3, DIR_UP, "mostly up" },
		{ DIR_LEFT, -2, 3, DIR_DOWN, "mostly down" },
		{ DIR_UP, -4, 3, DIR_LEFT, "mostly left" },
		{ DIR_UP, 400, -399, DIR_RIGHT, "mostly right" },
		{ DIR_UP_LEFT, 5, -5, DIR_UP_LEFT, "an exact diagonal leaves the facing" },
		{ DIR_DOWN, 0, 0, DIR_DOWN, "no vector leaves the facing" },
		{ DIR_DOWN, -1, 7, DIR_UP, "turn about, not face down" },
		{ DIR_UP_RIGHT, -1, -1, DIR_DOWN_LEFT, "turn about" },
		{ DIR_DOWN_RIGHT, 3, -1, DIR_UP_LEFT, "turn about" },
	};
	for ( const cCase &c : cases ) {
		cEnemy enemy( KIND_SOLDIER, 0, 0, c.from, 1 );
		enemy.TurnTowards( c.dx, c.dy );
		EXPECT_EQ( enemy.GetDirection(), c.to ) << c.what << ": from " << c.from << " by (" << c.dx << ", " << c.dy << ")";
	}
}

// One bullet against one character at (100, 100); the hit's explosion point, as "(x, y)", or "miss".
std::string Hit( cCharacter &character, const cBullet &bullet, bool *killed = nullptr ) {
	int32_t x = 0;
	int32_t y = 0;
	bool died = false;
	const bool hit = character.HitByBullet( bullet, x, y, died );
	if ( killed != nullptr ) {
		*killed = died;
	}
	return hit ? "(" + std::to_string( x ) + ", " + std::to_string( y ) + ")" : "miss";
}

// Shots whose boxes cover the body of a character at (100, 100).
cBullet EnemyShot( int32_t weapon ) { return cBullet( 106, 106, 3, 4, weapon, KIND_SOLDIER ); }
cBullet PlayerShot( int32_t weapon, int32_t kind = KIND_TAVESH ) { return cBullet( 106, 106, DIR_RIGHT, weapon, kind ); }

TEST( HitRuleTest, PlayersTakeTheEnemyGunsDamageHalvedOnlyForTaveshsSkill ) {
	struct cCase { int32_t kind; bool skill; int32_t weapon; int32_t damage; };
	const cCase cases[] = {
		{ KIND_TAVESH, false, WEAPON_ENEMY_GUN, 10 }, { KIND_TAVESH, true, WEAPON_ENEMY_GUN, 5 },
		{ KIND_TAVESH, false, WEAPON_MACHINE_GUN, 20 }, { KIND_TAVESH, true, WEAPON_MACHINE_GUN, 10 },
		{ KIND_LUMRA, true, WEAPON_MACHINE_GUN, 20 }, { KIND_LUMRA, true, WEAPON_ENEMY_GUN, 10 },
	};
	bool killed = true;
	for ( const cCase &c : cases ) {
		cPlayer player( c.kind, 100, 100 );
		if ( c.skill ) {
			player.ToggleSkill();
		}
		EXPECT_EQ( Hit( player, EnemyShot( c.weapon ), &killed ), "(109, 112)" ) << "16 * (0.6, 0.8) truncated";
		EXPECT_EQ( player.GetHealth(), 100 - c.damage ) << "kind " << c.kind << ", skill " << c.skill << ", weapon " << c.weapon;
		EXPECT_FALSE( killed ) << "players are downed, never killed";
	}
	cPlayer player( KIND_LUMRA, 100, 100 );
	player.SetHealth( 15 );
	Hit( player, EnemyShot( WEAPON_MACHINE_GUN ) );
	EXPECT_EQ( player.GetHealth(), 0 ) << "not below 0";
	EXPECT_TRUE( player.IsDead() );
}

// A bullet's own side is passed over in the hit pass below.
TEST( HitRuleTest, BulletsHitWhenACornerOfTheirBoxLiesStrictlyInsideTheBody ) {
	cEnemy soldier( KIND_SOLDIER, 100, 100, DIR_RIGHT, 1 );
	EXPECT_EQ( Hit( soldier, cBullet( 80, 80, DIR_RIGHT, WEAPON_TAVESH, KIND_TAVESH ) ), "miss" )
		<< "the box's far corner at (100, 100) lies on the body's edge";
	EXPECT_EQ( Hit( soldier, cBullet( 132, 110, DIR_RIGHT, WEAPON_TAVESH, KIND_TAVESH ) ), "miss" )
		<< "x + 32 lies outside the body";
	EXPECT_EQ( Hit( soldier, cBullet( 81, 110, DIR_RIGHT, WEAPON_TAVESH, KIND_TAVESH ) ), "(116, 100)" )
		<< "the box's right corners at x 101 lie inside; the wound 16 along the shot from the body";
	EXPECT_EQ( soldier.GetHealth(), 25 ) << "only the last shot hurt";
}

TEST( HitRuleTest, WoundedEnemyFiresTwiceAsOftenAndItsDeathExplodesOnTheBody ) {
	cEnemy soldier( KIND_SOLDIER, 100, 100, DIR_RIGHT, 1 );
	bool killed = true;
	Hit( soldier, PlayerShot( WEAPON_TAVESH ), &killed );
	EXPECT_TRUE( soldier.GetHealth() == 25 && soldier.IsWounded() && soldier.WasShot() && !killed );
	EXPECT_EQ( soldier.GetShotPeriod(), 40 );
	EXPECT_EQ( Hit( soldier, PlayerShot( WEAPON_TAVESH ), &killed ), "(100, 100)" ) << "a death explodes on the body";
	EXPECT_TRUE( killed ) << "0 is below 1";

	cEnemy gunner( KIND_MACHINE_GUNNER, 100, 100, DIR_RIGHT, 2 );
	const int32_t period[] = { 80, 80, 80, 80, 80, 80, 40, 40, 40, 40 };
	for ( int shot = 0; shot < 10; shot++ ) {
		Hit( gunner, PlayerShot( WEAPON_LUMRA, KIND_LUMRA ) );
		EXPECT_EQ( gunner.GetHealth(), 135 - 15 * shot ) << "lumra's gun does 15";
		EXPECT_EQ( gunner.GetShotPeriod(), period[shot] ) << "halved once, at 45 health; shot " << shot;
	}
	cEnemy steady( KIND_MACHINE_GUNNER, 100, 100, DIR_RIGHT, 2 );
	Hit( steady, PlayerShot( WEAPON_MACHINE_GUN ) );
	Hit( steady, PlayerShot( WEAPON_MACHINE_GUN ) );
	EXPECT_EQ( steady.GetHealth(), 50 ) << "the machine gun does 50";
	EXPECT_EQ( steady.GetShotPeriod(), 80 ) << "50 is not yet wounded";
}

TEST( HitRuleTest, EnemyShotFromNowhereTurnsAboutUnlessItHasATargetOrIsAStrongBoss ) {
	cPlayer player( KIND_TAVESH, 0, 0 );
	cEnemy chasing( KIND_SOLDIER, 100, 100, DIR_UP_RIGHT, 3 );
	chasing.SetTarget( &player );
	Hit( chasing, PlayerShot( WEAPON_TAVESH ) );
	EXPECT_EQ( chasing.GetDirection(), DIR_UP_RIGHT ) << "an enemy with a target keeps its facing";
	cEnemy boss( KIND_BOSS, 100, 100, DIR_LEFT, 1 );
	boss.SetHealth( 76 );
	Hit( boss, PlayerShot( WEAPON_TAVESH ) );
	EXPECT_EQ( boss.GetDirection(), DIR_LEFT ) << "a boss left with 51 does not turn";
	Hit( boss, PlayerShot( WEAPON_TAVESH ) );
	EXPECT_EQ( boss.GetDirection(), DIR_RIGHT ) << "at 26 it does";
}

// The hit pass on an open map.
class HitPassTest : public ::testing::Test {
protected:
	tBulletList &Bullets() { return *game.GetGame().GetBullets(); }
	tExplosionList &Explosions() { return *game.GetGame().GetExplosions(); }
	tItemList &Items() { return *game.GetGame().GetItems(); }
	tCharacterList &Enemies() { return *game.GetGame().GetEnemies(); }
	// A tavesh shot whose box lies over a body at (x, y).
	void ShootAt( int32_t x, int32_t y ) { Bullets().push_back( cBullet( x + 6, y + 6, DIR_RIGHT, WEAPON_TAVESH, KIND_TAVESH ) ); }
	// Sets the clock to the first calendar second whose first three draws after seeding suit the wish.
	void SetSecondFor( const std::function<bool( const int *draws )> &wish ) {
		for ( std::time_t second = 1700000000; second < 1701000000; second++ ) {
			cRandom random( second );
			const int draws[3] = { random.Next() % 50 + 1, random.Next() % 50 + 1, random.Next() % 50 + 1 };
			if ( wish( draws ) ) {
				game.GetClock().SetCalendarTime( second );
				return;
			}
		}
		ADD_FAILURE() << "no calendar second gives the draws wanted";
	}

	cTestGame game { MakeOpenScene() };
};

// A bullet stops at the first enemy it hits, else at the first player, a downed one too; its own
// side never stops it.
TEST_F( HitPassTest, ShotStopsAtTheFirstCharacterItHitsAndPassesItsOwnSide ) {
	cEnemy &first = game.AddEnemy( KIND_SOLDIER, 200, 200, DIR_UP, 2 );
	cEnemy &second = game.AddEnemy( KIND_SOLDIER, 200, 200, DIR_UP, 2 );
	cPlayer &down = game.AddPlayer( KIND_TAVESH, 300, 300 );
	cPlayer &lumra = game.AddPlayer( KIND_LUMRA, 300, 300 );
	down.SetHealth( 0 );
	down.SetDead( true );
	ShootAt( 200, 200 );
	ShootAt( 300, 300 );
	Bullets().push_back( cBullet( 306, 306, 0, 1, WEAPON_ENEMY_GUN, KIND_SOLDIER ) );
	Bullets().push_back( cBullet( 206, 206, 0, 1, WEAPON_ENEMY_GUN, KIND_SOLDIER ) );
	game.GetGame().ResolveHits();
	EXPECT_TRUE( first.GetHealth() == 75 && second.GetHealth() == 100 ) << "the shot is gone after its first hit";
	EXPECT_EQ( lumra.GetHealth(), 100 ) << "the downed player listed first took the enemy's shot";
	EXPECT_EQ( Where( Bullets()[0] ) + Where( Bullets()[1] ), "(306, 306)(206, 206)" ) << "the shots over their own side";
	ASSERT_EQ( Explosions().size(), 2u );
	EXPECT_EQ( Where( Explosions()[0] ) + Where( Explosions()[1] ), "(216, 200)(300, 316)" ) << "16 along each shot";
	EXPECT_TRUE( Explosions()[0].IsImpact() && Explosions()[1].IsImpact() );
	EXPECT_EQ( game.GetPlayedSounds(), std::vector<int>{} ) << "a wound makes no sound";
}

TEST_F( HitPassTest, EnemyShotInTheBackTurnsAboutAndSeesTheShooterInTheNextFrame ) {
	cPlayer &tavesh = game.AddPlayer( KIND_TAVESH, 200, 200 );
	cEnemy &soldier = game.AddEnemy( KIND_SOLDIER, 400, 200, DIR_RIGHT, 2 );
	game.GetGame().UpdateEnemies();
	ASSERT_EQ( soldier.GetAiState(), AI_UNAWARE ) << "tavesh stands behind it";
	ShootAt( 400, 200 );
	game.GetGame().ResolveHits();
	EXPECT_EQ( soldier.GetDirection(), DIR_LEFT );
	game.GetGame().UpdateEnemies();
	EXPECT_EQ( soldier.GetAiState(), AI_CHASE );
	EXPECT_EQ( soldier.GetTarget(), &tavesh );
}

TEST_F( HitPassTest, KillsLeaveDeathExplosionsAndTheDrawsDecideTheDropsInOrder ) {
	SetSecondFor( []( const int *r ) { return r[0] >= 11 && r[0] <= 13 && r[1] <= 5 && r[2] > 14; } );
	for ( int32_t x : { 200, 400, 600 } ) {
		game.AddEnemy( KIND_SOLDIER, x, 200, DIR_UP, 1 ).SetHealth( 20 );
		ShootAt( x, 200 );
	}
	game.GetGame().ResolveHits();
	EXPECT_TRUE( Enemies().empty() ) << "killed enemies leave the list";
	ASSERT_EQ( Explosions().size(), 3u );
	EXPECT_EQ( Where( Explosions()[0] ), "(200, 200)" ) << "a death explodes on the body";
	EXPECT_FALSE( Explosions()[0].IsImpact() );
	EXPECT_EQ( game.GetPlayedSounds(), std::vector<int>( 3, SOUND_EXPLOSION ) );
	ASSERT_EQ( Items().size(), 2u ) << "the pass seeds by the second: ammunition, health, nothing";
	EXPECT_TRUE( Items()[0].GetKind() == ITEM_AMMO && Items()[1].GetKind() == ITEM_HEALTH );
	EXPECT_EQ( Where( Items()[0] ) + Where( Items()[1] ), "(200, 200)(400, 200)" ) << "dropped where the enemies died";
	EXPECT_EQ( game.GetGame().GetGameState(), STATE_PLAYING ) << "only the boss's death wins";
}

// One kill a pass, at seconds whose first draw is each edge of the two drop ranges.
TEST_F( HitPassTest, DrawsOneToFiveDropHealthElevenToThirteenAmmunition ) {
	std::string drops;
	for ( int edge : { 1, 5, 6, 10, 11, 13, 14 } ) {
		SetSecondFor( [edge]( const int *r ) { return r[0] == edge; } );
		game.AddEnemy( KIND_SOLDIER, 200, 200, DIR_UP, 1 ).SetHealth( 20 );
		ShootAt( 200, 200 );
		game.GetGame().ResolveHits();
		const char *drop = Items().empty() ? " none; " : ( Items()[0].GetKind() == ITEM_AMMO ? " ammo; " : " health; " );
		drops += std::to_string( edge ) + drop;
		Items().clear();
	}
	EXPECT_EQ( drops, "1 health; 5 health; 6 none; 10 none; 11 ammo; 13 ammo; 14 none; " );
}

TEST_F( HitPassTest, BossDeathWinsTheGameAndThePassGoesOn ) {
	cPlayer &player = game.AddPlayer( KIND_TAVESH, 500, 500 );
	game.AddEnemy( KIND_SOLDIER, 700, 700, DIR_UP, 1 );
	game.AddEnemy( KIND_BOSS, 200, 200, DIR_UP, 1 ).SetHealth( 26 );
	ShootAt( 200, 200 );
	game.GetGame().ResolveHits();
	ASSERT_EQ( game.GetGame().GetGameState(), STATE_PLAYING ) << "tavesh's 25 leave the boss 1 health: it stands";
	game.GetClock().SetTickCount( 123456 );
	ShootAt( 200, 200 );
	Bullets().push_back( cBullet( 506, 506, 1, 0, WEAPON_MACHINE_GUN, KIND_MACHINE_GUNNER ) );
	game.GetGame().ResolveHits();
	EXPECT_EQ( game.GetGame().GetGameState(), STATE_VICTORY );
	EXPECT_EQ( game.GetGame().GetEndTime(), 123456u );
	EXPECT_EQ( game.GetStoppedSounds(), std::vector<int>{ SOUND_BOSS_MUSIC } );
	EXPECT_EQ( game.GetPlayedSounds(), ( std::vector<int>{ SOUND_EXPLOSION, SOUND_LEVEL_COMPLETE } ) );
	EXPECT_EQ( Enemies().size(), 1u ) << "only the boss is gone";
	EXPECT_EQ( player.GetHealth(), 80 ) << "an enemy shot later in the same pass still hits";
	EXPECT_TRUE( Bullets().empty() );
}

}
