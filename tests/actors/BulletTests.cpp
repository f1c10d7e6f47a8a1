// Bullets: flight, the wall and view test with the impact explosion, the hit and damage rule,
// and the hit pass with its order, kills, drops and the victory.

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include "TestGame.h"
#include "TestMaps.h"
#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/GameState.h"
#include "sound/SoundIds.h"
#include "world/Scene.h"

namespace {

void ExpectBulletAt( const cBullet &bullet, float x, float y, const char *what ) {
	float bx = 0.0f;
	float by = 0.0f;
	bullet.GetPosition( bx, by );
	EXPECT_NEAR( bx, x, 0.001f ) << what;
	EXPECT_NEAR( by, y, 0.001f ) << what;
}

void ExpectExplosionAt( const cExplosion &explosion, int32_t x, int32_t y, bool impact, const char *what ) {
	int32_t ex = 0;
	int32_t ey = 0;
	explosion.GetPosition( ex, ey );
	EXPECT_TRUE( ex == x && ey == y ) << what << ": explosion at (" << ex << ", " << ey << ")";
	EXPECT_EQ( explosion.IsImpact(), impact ) << what;
}

TEST( BulletFlightTest, ShotsFlyTheirSpeedAlongTheirVector ) {
	cBullet straight( 100, 100, DIR_LEFT, WEAPON_TAVESH, KIND_TAVESH );
	cBullet diagonal( 100, 100, DIR_DOWN_RIGHT, WEAPON_TAVESH, KIND_TAVESH );
	cBullet aimed( 0, 0, 30, -40, WEAPON_MACHINE_GUN, KIND_MACHINE_GUNNER );
	cBullet nowhere( 50, 60, 0, 0, WEAPON_ENEMY_GUN, KIND_SOLDIER );
	for ( cBullet *bullet : { &straight, &diagonal, &aimed, &nowhere } ) {
		bullet->Move();
	}
	ExpectBulletAt( straight, 95.0f, 100.0f, "a player's shot flies 5" );
	ExpectBulletAt( diagonal, 103.5355f, 103.5355f, "5 along the diagonal" );
	ExpectBulletAt( aimed, 1.8f, -2.4f, "a machine-gunner's shot flies 3 along (0.6, -0.8)" );
	ExpectBulletAt( nowhere, 50.0f, 60.0f, "a shot without a vector stays put" );
	float dx = 0.0f;
	float dy = 0.0f;
	diagonal.GetDirection( dx, dy );
	EXPECT_TRUE( dx == 1.0f && dy == 1.0f ) << "a player's vector is kept as the facing gives it";
	EXPECT_FALSE( nowhere.HasDirection() );
	EXPECT_EQ( cBullet( 0, 0, 1, 1, WEAPON_ENEMY_GUN, KIND_SOLDIER ).GetSpeed(), 2 );
	EXPECT_EQ( cBullet( 0, 0, 1, 1, WEAPON_MACHINE_GUN, KIND_BOSS ).GetSpeed(), 4 );
}

// A room of floor, columns 1 to 8 and rows 1 to 3, seen by a camera at the map's corner.
TEST( BulletPassTest, ShotIntoAWallLeavesAnImpactSixteenPixelsOnAlongItsVector ) {
	cTestGame game( MakeScene( { "##########", "#........#", "#........#", "#........#", "##########" } ) );
	game.GetScene().SetCameraPosition( 0, 0 );
	tBulletList &bullets = *game.GetGame().GetBullets();
	tExplosionList &explosions = *game.GetGame().GetExplosions();
	bullets.push_back( cBullet( 100, 35, DIR_UP_RIGHT, WEAPON_TAVESH, KIND_TAVESH ) );
	bullets.push_back( cBullet( 260, 64, DIR_RIGHT, WEAPON_TAVESH, KIND_TAVESH ) );
	game.GetGame().UpdateBullets();
	ASSERT_EQ( bullets.size(), 1u ) << "at y 31.46 the first box reaches row 0";
	ExpectBulletAt( bullets[0], 265.0f, 64.0f, "the bullet after a removed one moves once" );
	ASSERT_EQ( explosions.size(), 1u );
	ExpectExplosionAt( explosions[0], 119, 15, true, "(103.54 + 16, 31.46 - 16): 16 on each axis, not 16 / sqrt 2" );
	game.GetGame().UpdateBullets();
	EXPECT_TRUE( bullets.empty() ) << "at 270 the box reaches column 9";
	ASSERT_EQ( explosions.size(), 2u );
	ExpectExplosionAt( explosions[1], 286, 64, true, "16 on from where the bullet stopped" );
}

TEST( BulletPassTest, ShotLeavingTheViewOrGoingNowhereVanishesWithoutAnExplosion ) {
	cTestGame game( MakeOpenScene() );
	game.GetScene().SetCameraPosition( 100, 100 );
	tBulletList &bullets = *game.GetGame().GetBullets();
	bullets.push_back( cBullet( 734, 300, DIR_RIGHT, WEAPON_LUMRA, KIND_LUMRA ) );	// to 739
	bullets.push_back( cBullet( 735, 300, DIR_RIGHT, WEAPON_LUMRA, KIND_LUMRA ) );	// to 740, the right edge
	bullets.push_back( cBullet( 300, 105, DIR_UP, WEAPON_LUMRA, KIND_LUMRA ) );		// to 100, the top edge
	bullets.push_back( cBullet( 300, 106, DIR_UP, WEAPON_LUMRA, KIND_LUMRA ) );
	bullets.push_back( cBullet( 300, 300, 0, 0, WEAPON_ENEMY_GUN, KIND_SOLDIER ) );
	game.GetGame().UpdateBullets();
	ASSERT_EQ( bullets.size(), 2u );
	ExpectBulletAt( bullets[0], 739.0f, 300.0f, "inside the view" );
	ExpectBulletAt( bullets[1], 300.0f, 101.0f, "inside the view" );
	EXPECT_TRUE( game.GetGame().GetExplosions()->empty() );
}

// Shots whose boxes cover the body of a character at (100, 100).
cBullet EnemyShot( int32_t weapon ) { return cBullet( 106, 106, 3, 4, weapon, KIND_SOLDIER ); }
cBullet PlayerShot( int32_t weapon, int32_t kind ) { return cBullet( 106, 106, DIR_RIGHT, weapon, kind ); }

TEST( HitRuleTest, PlayersTakeTheEnemyGunsDamageHalvedOnlyForTaveshsSkill ) {
	struct cCase { int32_t kind; bool skill; int32_t weapon; int32_t damage; };
	const cCase cases[] = {
		{ KIND_TAVESH, false, WEAPON_ENEMY_GUN, 10 }, { KIND_TAVESH, true, WEAPON_ENEMY_GUN, 5 },
		{ KIND_TAVESH, false, WEAPON_MACHINE_GUN, 20 }, { KIND_TAVESH, true, WEAPON_MACHINE_GUN, 10 },
		{ KIND_LUMRA, true, WEAPON_MACHINE_GUN, 20 }, { KIND_LUMRA, true, WEAPON_ENEMY_GUN, 10 },
	};
	int32_t hitX = 0;
	int32_t hitY = 0;
	bool killed = true;
	for ( const cCase &c : cases ) {
		cPlayer player( c.kind, 100, 100 );
		if ( c.skill ) {
			player.ToggleSkill();
		}
		EXPECT_TRUE( player.HitByBullet( EnemyShot( c.weapon ), hitX, hitY, killed ) );
		EXPECT_EQ( player.GetHealth(), 100 - c.damage ) << "kind " << c.kind << ", skill " << c.skill << ", weapon " << c.weapon;
		EXPECT_FALSE( killed ) << "players are downed, never killed";
	}
	cPlayer player( KIND_LUMRA, 100, 100 );
	player.SetHealth( 15 );
	ASSERT_TRUE( player.HitByBullet( EnemyShot( WEAPON_MACHINE_GUN ), hitX, hitY, killed ) );
	EXPECT_EQ( player.GetHealth(), 0 ) << "not below 0";
	EXPECT_TRUE( player.IsDead() );
	EXPECT_TRUE( hitX == 109 && hitY == 112 ) << "16 * (0.6, 0.8) truncated is (9, 12): (" << hitX << ", " << hitY << ")";
}

TEST( HitRuleTest, BulletsNeverHurtTheirOwnSideNorWhatTheyMiss ) {
	int32_t hitX = 0;
	int32_t hitY = 0;
	bool killed = false;
	cPlayer tavesh( KIND_TAVESH, 100, 100 );
	EXPECT_FALSE( tavesh.HitByBullet( PlayerShot( WEAPON_LUMRA, KIND_LUMRA ), hitX, hitY, killed ) );
	EXPECT_FALSE( tavesh.HitByBullet( PlayerShot( WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed ) );
	EXPECT_EQ( tavesh.GetHealth(), 100 );
	cEnemy soldier( KIND_SOLDIER, 100, 100, DIR_RIGHT, 1 );
	EXPECT_FALSE( soldier.HitByBullet( cBullet( 106, 106, 1, 0, WEAPON_MACHINE_GUN, KIND_BOSS ), hitX, hitY, killed ) );
	EXPECT_FALSE( soldier.HitByBullet( cBullet( 80, 80, DIR_RIGHT, WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed ) )
		<< "the box's far corner at (100, 100) lies on the body's edge";
	EXPECT_FALSE( soldier.HitByBullet( cBullet( 132, 110, DIR_RIGHT, WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed ) )
		<< "x + 32 lies outside the body";
	EXPECT_TRUE( soldier.HitByBullet( cBullet( 81, 110, DIR_RIGHT, WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed ) )
		<< "the box's right corners at x 101 lie inside";
	EXPECT_EQ( soldier.GetHealth(), 25 ) << "only the last shot hurt";
}

TEST( HitRuleTest, WoundedEnemyFiresTwiceAsOftenAndTheNextShotKills ) {
	int32_t hitX = 0;
	int32_t hitY = 0;
	bool killed = true;
	cEnemy soldier( KIND_SOLDIER, 100, 100, DIR_RIGHT, 1 );
	ASSERT_TRUE( soldier.HitByBullet( PlayerShot( WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed ) );
	EXPECT_EQ( soldier.GetHealth(), 25 );
	EXPECT_TRUE( soldier.IsWounded() && soldier.WasShot() );
	EXPECT_EQ( soldier.GetShotPeriod(), 40 );
	EXPECT_FALSE( killed );
	EXPECT_TRUE( hitX == 116 && hitY == 100 ) << "16 along the shot's vector from the body";
	ASSERT_TRUE( soldier.HitByBullet( PlayerShot( WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed ) );
	EXPECT_TRUE( killed ) << "0 is below 1";
	EXPECT_TRUE( hitX == 100 && hitY == 100 ) << "a death explodes on the body";

	cEnemy gunner( KIND_MACHINE_GUNNER, 100, 100, DIR_RIGHT, 2 );
	const int32_t period[] = { 80, 80, 80, 80, 80, 80, 40, 40, 40, 40 };
	for ( int shot = 0; shot < 10; shot++ ) {
		ASSERT_TRUE( gunner.HitByBullet( PlayerShot( WEAPON_LUMRA, KIND_LUMRA ), hitX, hitY, killed ) );
		EXPECT_EQ( gunner.GetHealth(), 135 - 15 * shot ) << "lumra's gun does 15";
		EXPECT_EQ( gunner.GetShotPeriod(), period[shot] ) << "halved once, at 45 health; shot " << shot;
	}
	cEnemy boss( KIND_BOSS, 100, 100, DIR_RIGHT, 1 );
	boss.HitByBullet( PlayerShot( WEAPON_MACHINE_GUN, KIND_TAVESH ), hitX, hitY, killed );
	EXPECT_EQ( boss.GetHealth(), 200 ) << "the machine gun does 50";
}

TEST( HitRuleTest, EnemyShotFromNowhereTurnsAboutUnlessTheBossIsStillStrong ) {
	int32_t hitX = 0;
	int32_t hitY = 0;
	bool killed = false;
	cEnemy soldier( KIND_SOLDIER, 100, 100, DIR_UP_RIGHT, 3 );
	soldier.HitByBullet( PlayerShot( WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed );
	EXPECT_EQ( soldier.GetDirection(), DIR_DOWN_LEFT ) << "up-right turns about to down-left";
	cPlayer player( KIND_TAVESH, 0, 0 );
	cEnemy chasing( KIND_SOLDIER, 100, 100, DIR_UP_RIGHT, 3 );
	chasing.SetTarget( &player );
	chasing.HitByBullet( PlayerShot( WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed );
	EXPECT_EQ( chasing.GetDirection(), DIR_UP_RIGHT ) << "an enemy with a target keeps its facing";
	EXPECT_TRUE( chasing.WasShot() );
	cEnemy boss( KIND_BOSS, 100, 100, DIR_LEFT, 1 );
	boss.SetHealth( 76 );
	boss.HitByBullet( PlayerShot( WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed );
	EXPECT_EQ( boss.GetDirection(), DIR_LEFT ) << "a boss left with 51 does not turn";
	boss.HitByBullet( PlayerShot( WEAPON_TAVESH, KIND_TAVESH ), hitX, hitY, killed );
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
	// Sets the clock to the first calendar second whose first two draws after seeding suit the wish.
	void SetSecondFor( const std::function<bool( int first, int second )> &wish ) {
		for ( std::time_t second = 1700000000; second < 1700100000; second++ ) {
			std::srand( static_cast<unsigned int>( second ) );
			const int first = std::rand() % 50 + 1;
			if ( wish( first, std::rand() % 50 + 1 ) ) {
				game.GetClock().SetCalendarTime( second );
				return;
			}
		}
		ADD_FAILURE() << "no calendar second gives the draws wanted";
	}
	static bool DropsHealth( int r ) { return r >= 1 && r <= 5; }
	static bool DropsAmmo( int r ) { return r >= 11 && r <= 13; }

	cTestGame game { MakeOpenScene() };
};

TEST_F( HitPassTest, ShotStopsAtTheFirstEnemyItHitsAndPassesItsOwnSide ) {
	cEnemy &first = game.AddEnemy( KIND_SOLDIER, 200, 200, DIR_UP, 2 );
	cEnemy &second = game.AddEnemy( KIND_SOLDIER, 200, 200, DIR_UP, 2 );
	cPlayer &lumra = game.AddPlayer( KIND_LUMRA, 300, 300 );
	ShootAt( 200, 200 );
	ShootAt( 300, 300 );
	game.GetGame().ResolveHits();
	EXPECT_EQ( first.GetHealth(), 75 );
	EXPECT_EQ( second.GetHealth(), 100 ) << "the shot is gone after its first hit";
	EXPECT_EQ( lumra.GetHealth(), 100 );
	ASSERT_EQ( Bullets().size(), 1u ) << "the shot over lumra flies on";
	ExpectBulletAt( Bullets()[0], 306.0f, 306.0f, "tavesh's shot over lumra" );
	ASSERT_EQ( Explosions().size(), 1u );
	ExpectExplosionAt( Explosions()[0], 216, 200, true, "a wound" );
	EXPECT_EQ( game.GetPlayedSounds(), std::vector<int>{} ) << "a wound makes no sound";
}

TEST_F( HitPassTest, EnemyShotStopsAtTheFirstPlayerEvenOneWhoIsDown ) {
	cPlayer &down = game.AddPlayer( KIND_TAVESH, 300, 300 );
	cPlayer &standing = game.AddPlayer( KIND_LUMRA, 300, 300 );
	down.SetHealth( 0 );
	down.SetDead( true );
	game.AddEnemy( KIND_SOLDIER, 300, 300, DIR_UP, 1 );
	Bullets().push_back( cBullet( 306, 306, 0, 1, WEAPON_ENEMY_GUN, KIND_SOLDIER ) );
	game.GetGame().ResolveHits();
	EXPECT_TRUE( Bullets().empty() );
	EXPECT_EQ( standing.GetHealth(), 100 ) << "the downed player listed first took the shot";
	EXPECT_EQ( Enemies()[0]->GetHealth(), 50 ) << "the enemy's own shot passed it";
	ASSERT_EQ( Explosions().size(), 1u );
	ExpectExplosionAt( Explosions()[0], 300, 316, true, "16 down from the body" );
}

TEST_F( HitPassTest, KillsLeaveDeathExplosionsAndTheDrawsDecideTheDropsInOrder ) {
	SetSecondFor( []( int r1, int r2 ) { return DropsAmmo( r1 ) && !DropsAmmo( r2 ) && !DropsHealth( r2 ); } );
	game.AddEnemy( KIND_SOLDIER, 200, 200, DIR_UP, 1 ).SetHealth( 20 );
	game.AddEnemy( KIND_SOLDIER, 400, 200, DIR_UP, 1 ).SetHealth( 1 );
	ShootAt( 200, 200 );
	ShootAt( 400, 200 );
	std::srand( 7 );
	game.GetGame().ResolveHits();
	EXPECT_TRUE( Enemies().empty() ) << "killed enemies leave the list";
	ASSERT_EQ( Explosions().size(), 2u );
	ExpectExplosionAt( Explosions()[0], 200, 200, false, "a death explodes on the body" );
	EXPECT_EQ( game.GetPlayedSounds(), ( std::vector<int>{ SOUND_EXPLOSION, SOUND_EXPLOSION } ) );
	ASSERT_EQ( Items().size(), 1u ) << "the first draw drops ammunition, the second nothing";
	EXPECT_EQ( Items()[0].GetKind(), ITEM_AMMO );
	int32_t x = 0;
	int32_t y = 0;
	Items()[0].GetPosition( x, y );
	EXPECT_TRUE( x == 200 && y == 200 ) << "dropped where the enemy died";

	SetSecondFor( []( int r1, int r2 ) { return !DropsAmmo( r1 ) && !DropsHealth( r1 ) && DropsHealth( r2 ); } );
	game.AddEnemy( KIND_SOLDIER, 200, 200, DIR_UP, 1 ).SetHealth( 1 );
	game.AddEnemy( KIND_SOLDIER, 400, 200, DIR_UP, 1 ).SetHealth( 1 );
	ShootAt( 200, 200 );
	ShootAt( 400, 200 );
	game.GetGame().ResolveHits();
	ASSERT_EQ( Items().size(), 2u ) << "the pass seeds anew: its second kill draws health";
	EXPECT_EQ( Items()[1].GetKind(), ITEM_HEALTH );
	Items()[1].GetPosition( x, y );
	EXPECT_EQ( x, 400 );
	EXPECT_EQ( gameState, STATE_PLAYING ) << "only the boss's death wins";
}

TEST_F( HitPassTest, BossDeathWinsTheGameAndThePassGoesOn ) {
	cPlayer &player = game.AddPlayer( KIND_TAVESH, 500, 500 );
	game.AddEnemy( KIND_SOLDIER, 700, 700, DIR_UP, 1 );
	game.AddEnemy( KIND_BOSS, 200, 200, DIR_UP, 1 ).SetHealth( 25 );
	game.GetClock().SetTickCount( 123456 );
	ShootAt( 200, 200 );
	Bullets().push_back( cBullet( 506, 506, 1, 0, WEAPON_MACHINE_GUN, KIND_MACHINE_GUNNER ) );
	game.GetGame().ResolveHits();
	EXPECT_EQ( gameState, STATE_VICTORY );
	EXPECT_EQ( game.GetGame().GetEndTime(), 123456u );
	EXPECT_EQ( game.GetStoppedSounds(), std::vector<int>{ SOUND_BOSS_MUSIC } );
	EXPECT_EQ( game.GetPlayedSounds(), ( std::vector<int>{ SOUND_EXPLOSION, SOUND_LEVEL_COMPLETE } ) );
	EXPECT_EQ( Enemies().size(), 1u ) << "only the boss is gone";
	EXPECT_EQ( player.GetHealth(), 80 ) << "an enemy shot later in the same pass still hits";
	EXPECT_TRUE( Bullets().empty() );
}

}
