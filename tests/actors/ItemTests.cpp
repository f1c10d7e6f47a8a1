// Items and explosions: who takes what, one item per player and frame, the effects, and the
// explosions' animation and removal.

#include <gtest/gtest.h>

#include <cstdlib>

#include "TestGame.h"
#include "TestMaps.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "sound/SoundIds.h"
#include "world/Scene.h"

namespace {

class ItemPassTest : public ::testing::Test {
protected:
	tItemList &Items() { return *game.GetGame().GetItems(); }
	void Drop( int32_t kind, int32_t x = 320, int32_t y = 320 ) { Items().push_back( cItem( kind, x, y ) ); }
	std::vector<int32_t> ItemKinds() {
		std::vector<int32_t> kinds;
		for ( const cItem &item : Items() ) {
			kinds.push_back( item.GetKind() );
		}
		return kinds;
	}

	cTestGame game { MakeOpenScene() };
};

TEST_F( ItemPassTest, EachItemGoesOnlyToTheCharacterItIsFor ) {
	cPlayer &lumra = game.AddPlayer( KIND_LUMRA, 320, 320 );
	Drop( ITEM_AMMO );
	Drop( ITEM_TAVESH_ENERGY );
	Drop( ITEM_UNUSED );
	Drop( ITEM_LUMRA_ENERGY );
	game.GetGame().UpdateItems();
	EXPECT_EQ( ItemKinds(), ( std::vector<int32_t>{ ITEM_AMMO, ITEM_TAVESH_ENERGY, ITEM_UNUSED } ) )
		<< "lumra passes over tavesh's items and kind 1 to take her upgrade";
	EXPECT_TRUE( lumra.IsEnergyUpgraded() );
	EXPECT_TRUE( lumra.GetEnergy() == 6000 && lumra.GetMaxEnergy() == 6000 );
	EXPECT_EQ( lumra.GetWeapon(), WEAPON_LUMRA );
	EXPECT_EQ( game.GetPlayedSounds(), std::vector<int>{ SOUND_ITEM } );

	cPlayer &tavesh = game.AddPlayer( KIND_TAVESH, 320, 320 );
	game.GetGame().UpdateItems();
	game.GetGame().UpdateItems();
	game.GetGame().UpdateItems();
	EXPECT_EQ( ItemKinds(), std::vector<int32_t>{ ITEM_UNUSED } ) << "nobody takes kind 1";
	EXPECT_EQ( tavesh.GetWeapon(), WEAPON_MACHINE_GUN );
	EXPECT_TRUE( tavesh.IsEnergyUpgraded() );
	EXPECT_EQ( game.GetPlayedSounds(), ( std::vector<int>{ SOUND_ITEM, SOUND_ITEM, SOUND_ITEM } ) );
}

// The player's cell is (10, 10); an item counts by the cell under its centre.
TEST_F( ItemPassTest, PlayerTakesOneItemOfItsCellAFrameInTheListsOrder ) {
	cPlayer &player = game.AddPlayer( KIND_TAVESH, 330, 330 );
	player.SetHealth( 50 );
	Drop( ITEM_HEALTH, 336, 320 );	// centre (352, 336): cell (11, 10)
	Drop( ITEM_HEALTH, 305, 305 );	// centre (321, 321): cell (10, 10)
	Drop( ITEM_SPEED, 330, 320 );
	game.GetGame().UpdateItems();
	EXPECT_EQ( player.GetHealth(), 70 );
	EXPECT_EQ( player.GetSpeed(), 2 ) << "the speed item waits for the next frame";
	game.GetGame().UpdateItems();
	EXPECT_EQ( player.GetSpeed(), 4 );
	game.GetGame().UpdateItems();
	EXPECT_EQ( ItemKinds(), std::vector<int32_t>{ ITEM_HEALTH } ) << "the item in the next cell stays";
}

TEST_F( ItemPassTest, EveryPlayerEvenOneWhoIsDownTakesOneItemInListOrder ) {
	cPlayer &first = game.AddPlayer( KIND_TAVESH, 320, 320 );
	cPlayer &second = game.AddPlayer( KIND_LUMRA, 320, 320 );
	first.SetHealth( 95 );
	second.SetHealth( 0 );
	second.SetDead( true );
	Drop( ITEM_HEALTH );
	Drop( ITEM_HEALTH );
	Drop( ITEM_HEALTH );
	game.GetGame().UpdateItems();
	EXPECT_EQ( first.GetHealth(), 100 ) << "capped at 100";
	EXPECT_EQ( second.GetHealth(), 20 );
	EXPECT_TRUE( second.IsDead() ) << "health does not revive";
	EXPECT_EQ( Items().size(), 1u );
}

TEST_F( ItemPassTest, AmmunitionAddsSixteenToThirtyFiveSeededByTheSecond ) {
	cPlayer &tavesh = game.AddPlayer( KIND_TAVESH, 320, 320 );
	const std::time_t second = 1700000123;
	std::srand( static_cast<unsigned int>( second ) );
	const int32_t amount = 16 + std::rand() % 20;
	std::srand( static_cast<unsigned int>( second + 1 ) );
	const int32_t nextAmount = 16 + std::rand() % 20;
	game.GetClock().SetCalendarTime( second );
	Drop( ITEM_AMMO );
	std::srand( 1 );
	game.GetGame().UpdateItems();
	EXPECT_EQ( tavesh.GetAmmo(), -1 + amount );
	tavesh.SetAmmo( 10 );
	Drop( ITEM_AMMO );
	game.GetGame().UpdateItems();
	EXPECT_EQ( tavesh.GetAmmo(), 10 + amount ) << "a second pickup in the same second adds the same";
	game.GetClock().SetCalendarTime( second + 1 );
	Drop( ITEM_AMMO );
	game.GetGame().UpdateItems();
	EXPECT_EQ( tavesh.GetAmmo(), 10 + amount + nextAmount );
}

// Draws until the explosion is finished; the sheet column of each draw.
std::vector<int32_t> DrawToTheEnd( cExplosion &explosion, const cScene &scene ) {
	std::vector<int32_t> columns;
	while ( !explosion.IsFinished() && columns.size() < 1000 ) {
		cRect rect;
		int32_t sx = 0;
		int32_t sy = 0;
		explosion.GetDrawInfo( rect, sx, sy, scene );
		columns.push_back( rect.left / 32 );
	}
	return columns;
}

TEST( ExplosionTest, ImpactsShowSevenPicturesThreeDrawsEachDeathsNine ) {
	std::unique_ptr<cScene> scene = MakeOpenScene();
	scene->SetCameraPosition( 100, 200 );
	cExplosion impact( 150, 300, true );
	cExplosion death( 0, 0, false );
	std::vector<int32_t> expected;
	for ( int32_t column = 0; column < 7; column++ ) {
		expected.insert( expected.end(), 3, column );
	}
	EXPECT_EQ( DrawToTheEnd( impact, *scene ), expected );
	EXPECT_EQ( DrawToTheEnd( death, *scene ).size(), 63u );
	cRect rect;
	int32_t sx = 0;
	int32_t sy = 0;
	cExplosion( 150, 300, true ).GetDrawInfo( rect, sx, sy, *scene );
	EXPECT_TRUE( rect.top == 32 && rect.bottom == 64 && rect.right == 32 ) << "impacts use row 1";
	EXPECT_TRUE( sx == 50 && sy == 100 ) << "the world position less the camera's";
	cExplosion( 0, 0, false ).GetDrawInfo( rect, sx, sy, *scene );
	EXPECT_EQ( rect.top, 0 ) << "deaths use row 0";
}

TEST( ExplosionTest, FinishedExplosionsAreRemovedAndTheRestKeepTheirOrder ) {
	cTestGame game( MakeOpenScene() );
	tExplosionList &explosions = *game.GetGame().GetExplosions();
	for ( int i = 0; i < 5; i++ ) {
		explosions.push_back( cExplosion( i, 0, true ) );
	}
	for ( int finished : { 1, 2, 4 } ) {
		DrawToTheEnd( explosions[finished], game.GetScene() );
	}
	game.GetGame().UpdateExplosions();
	ASSERT_EQ( explosions.size(), 2u );
	int32_t x[2] = {};
	int32_t y = 0;
	explosions[0].GetPosition( x[0], y );
	explosions[1].GetPosition( x[1], y );
	EXPECT_TRUE( x[0] == 0 && x[1] == 3 ) << "left: " << x[0] << ", " << x[1];
}

}
