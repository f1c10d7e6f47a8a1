// SPDX-License-Identifier: GPL-3.0-or-later
// Items and explosions: who takes what, one item per player and frame, the effects, and the
// explosions' animation (their removal plays out in the recorded games).

#include <gtest/gtest.h>

#include "TestGame.h"
#include "TestMaps.h"
#include "Where.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "platform/Random.h"
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
	for ( int32_t kind : { ITEM_AMMO, ITEM_TAVESH_ENERGY, ITEM_UNUSED, ITEM_LUMRA_ENERGY } ) {
		Drop( kind );
	}
	game.GetGame().UpdateItems();
	EXPECT_EQ( ItemKinds(), ( std::vector<int32_t>{ ITEM_AMMO, ITEM_TAVESH_ENERGY, ITEM_UNUSED } ) )
		<< "lumra passes over tavesh's items and kind 1 to take her upgrade";
	EXPECT_TRUE( lumra.IsEnergyUpgraded() && lumra.GetEnergy() == 6000 && lumra.GetMaxEnergy() == 6000 );
	EXPECT_EQ( lumra.GetWeapon(), WEAPON_LUMRA );
	cPlayer &tavesh = game.AddPlayer( KIND_TAVESH, 320, 320 );
	for ( int frame = 0; frame < 3; frame++ ) {
		game.GetGame().UpdateItems();
	}
	EXPECT_EQ( ItemKinds(), std::vector<int32_t>{ ITEM_UNUSED } ) << "nobody takes kind 1";
	EXPECT_TRUE( tavesh.GetWeapon() == WEAPON_MACHINE_GUN && tavesh.IsEnergyUpgraded() );
	EXPECT_EQ( game.GetPlayedSounds(), ( std::vector<int>{ SOUND_ITEM, SOUND_ITEM, SOUND_ITEM } ) );
}

// Both players stand in cell (10, 10); an item counts by the cell under its centre.
TEST_F( ItemPassTest, EveryPlayerEvenOneWhoIsDownTakesOneItemOfItsCellAFrameInListOrder ) {
	cPlayer &first = game.AddPlayer( KIND_TAVESH, 330, 330 );
	cPlayer &second = game.AddPlayer( KIND_LUMRA, 320, 320 );
	first.SetHealth( 95 );
	second.SetHealth( 0 );
	second.SetDead( true );
	Drop( ITEM_HEALTH, 336, 320 );	// centre (352, 336): cell (11, 10)
	Drop( ITEM_HEALTH, 305, 305 );	// centre (321, 321): cell (10, 10)
	Drop( ITEM_HEALTH );
	Drop( ITEM_SPEED, 330, 320 );
	game.GetGame().UpdateItems();
	EXPECT_EQ( first.GetHealth(), 100 ) << "capped at 100";
	EXPECT_EQ( first.GetSpeed(), 2 ) << "one item a frame: the speed item waits";
	EXPECT_EQ( second.GetHealth(), 20 );
	EXPECT_TRUE( second.IsDead() ) << "health does not revive";
	game.GetGame().UpdateItems();
	EXPECT_EQ( first.GetSpeed(), 4 );
	EXPECT_EQ( ItemKinds(), std::vector<int32_t>{ ITEM_HEALTH } ) << "the item in the next cell stays";
}

// Every pickup seeds the generator with the calendar second: two in one second add the same.
TEST_F( ItemPassTest, AmmunitionAddsSixteenToThirtyFiveSeededByTheSecond ) {
	cPlayer &tavesh = game.AddPlayer( KIND_TAVESH, 320, 320 );
	int32_t expected = -1;
	for ( std::time_t second : { 1700000123, 1700000123, 1700000124 } ) {
		expected += 16 + cRandom( second ).Next() % 20;
		game.GetClock().SetCalendarTime( second );
		Drop( ITEM_AMMO );
		game.GetGame().UpdateItems();
		EXPECT_EQ( tavesh.GetAmmo(), expected ) << "a pickup at second " << second;
	}
}

// Columns 0 to 6 of the sheet, each for three draws in row 1 for an impact, nine in row 0 for a
// death; the last draw finishes the explosion.
TEST( ExplosionTest, ImpactsShowSevenPicturesOfRowOneThreeDrawsEachDeathsNineOfRowZero ) {
	std::unique_ptr<cScene> scene = MakeOpenScene();
	scene->SetCameraPosition( 100, 200 );
	const struct { bool impact; int draws; int32_t top; } kinds[] = { { true, 3, 32 }, { false, 9, 0 } };
	for ( const auto &kind : kinds ) {
		std::vector<int32_t> expected, columns;
		for ( int32_t column = 0; column < 7; column++ ) {
			expected.insert( expected.end(), kind.draws, column );
		}
		cExplosion explosion( 150, 300, kind.impact );
		cRect rect;
		int32_t sx = 0, sy = 0;
		while ( !explosion.IsFinished() && columns.size() < 1000 ) {
			explosion.Animate();
			explosion.GetDrawInfo( rect, sx, sy, *scene );
			columns.push_back( rect.left / 32 );
		}
		EXPECT_EQ( columns, expected ) << "the columns, impact " << kind.impact;
		EXPECT_TRUE( rect.top == kind.top && rect.bottom == kind.top + 32 ) << "the row, impact " << kind.impact;
		EXPECT_TRUE( sx == 50 && sy == 100 ) << "the world position less the camera's";
	}
}

}
