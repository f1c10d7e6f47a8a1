// The head-up display as recorded draws: the two layouts, the portraits, and the length and colour
// of the health, energy and ammunition bars.

#include <gtest/gtest.h>

#include "GraphicsFixtures.h"
#include "actors/ActorTypes.h"
#include "actors/Player.h"

namespace {

const float LEFT_BARS_X = 72.0f;
const float RIGHT_BARS_X = 468.0f;

class HudTest : public cRecordedFrameTest {
protected:
	HudTest() { SetCamera( 0, 1920 ); }

	// The bar's columns must run one pixel apart from its start, each the 1 x 8 slice.
	void ExpectBar( const char *picture, size_t columns, float startX, float y ) {
		const std::vector<tDraw> draws = GetDraws( picture );
		ASSERT_EQ( draws.size(), columns ) << picture << " should be " << columns << " pixels long";
		for ( size_t i = 0; i < draws.size(); i++ ) {
			ASSERT_EQ( draws[i].x, startX + static_cast<float>( i ) ) << picture << " column " << i;
			ASSERT_EQ( draws[i].y, y ) << picture << " column " << i;
			ASSERT_EQ( draws[i].source.GetWidth(), 1 );
			ASSERT_EQ( draws[i].source.GetHeight(), 8 );
		}
	}
};

// The bar has health + 1 columns; at 25 or less it takes the low-health colour.
TEST_F( HudTest, HealthBarLengthAndColour ) {
	cPlayer &player = AddPlayer( KIND_TAVESH, 224, 2240 );
	player.SetHealth( 26 );
	Render();
	ExpectBar( PNG_HEALTH, 27, LEFT_BARS_X, 32.0f );
	EXPECT_TRUE( GetDraws( PNG_LOW_HEALTH ).empty() );

	player.SetHealth( 25 );
	Render();
	ExpectBar( PNG_LOW_HEALTH, 26, LEFT_BARS_X, 32.0f );
	EXPECT_TRUE( GetDraws( PNG_HEALTH ).empty() );

	player.SetHealth( 0 );
	Render();
	ExpectBar( PNG_LOW_HEALTH, 1, LEFT_BARS_X, 32.0f );

	player.SetHealth( -10 );
	Render();
	EXPECT_TRUE( GetDraws( PNG_LOW_HEALTH ).empty() ) << "a negative health draws no bar";

	player.SetHealth( 100 );
	Render();
	ExpectBar( PNG_HEALTH, 101, LEFT_BARS_X, 32.0f );
}

// Full energy is 51 columns, 101 with the upgrade; the length is rounded down.
TEST_F( HudTest, EnergyBarLength ) {
	cPlayer &player = AddPlayer( KIND_LUMRA, 224, 2240 );
	Render();
	ExpectBar( PNG_ENERGY, 51, LEFT_BARS_X, 42.0f );

	player.SetEnergy( 2999 );
	Render();
	ExpectBar( PNG_ENERGY, 50, LEFT_BARS_X, 42.0f );

	player.SetEnergy( 0 );
	Render();
	ExpectBar( PNG_ENERGY, 1, LEFT_BARS_X, 42.0f );

	player.SetMaxEnergy( cPlayer::UPGRADED_ENERGY );
	player.SetEnergy( cPlayer::UPGRADED_ENERGY );
	player.SetEnergyUpgraded( true );
	Render();
	ExpectBar( PNG_ENERGY, 101, LEFT_BARS_X, 42.0f );

	player.SetEnergy( 3000 );
	Render();
	ExpectBar( PNG_ENERGY, 51, LEFT_BARS_X, 42.0f );
}

// Counters no game reaches: no capacity draws no bar, energy above it a full bar.
TEST_F( HudTest, EnergyBarOfBrokenCounters ) {
	cPlayer &player = AddPlayer( KIND_LUMRA, 224, 2240 );
	player.SetMaxEnergy( 0 );
	Render();
	EXPECT_TRUE( GetDraws( PNG_ENERGY ).empty() ) << "no capacity, no bar";

	player.SetMaxEnergy( 1 );
	player.SetEnergy( 2000000000 );
	Render();
	ExpectBar( PNG_ENERGY, 51, LEFT_BARS_X, 42.0f );
}

// The ammunition bar shows only while the machine gun is carried.
TEST_F( HudTest, AmmunitionBarWithTheMachineGunOnly ) {
	cPlayer &player = AddPlayer( KIND_TAVESH, 224, 2240 );
	player.SetAmmo( 20 );
	Render();
	EXPECT_TRUE( GetDraws( PNG_AMMO ).empty() ) << "tavesh's own gun";

	player.SetWeapon( WEAPON_MACHINE_GUN );
	Render();
	ExpectBar( PNG_AMMO, 21, LEFT_BARS_X, 52.0f );
}

// Player 1 on the left, player 2 on the right with its bars left of its portrait; the portrait is
// the standing frame, from the skill rows while the skill is on.
TEST_F( HudTest, TwoPlayersLayouts ) {
	AddPlayer( KIND_TAVESH, 224, 2240 );
	cPlayer &second = AddPlayer( KIND_LUMRA, 384, 2240 );
	second.ToggleSkill();
	second.SetHealth( 30 );
	Render();
	const std::vector<tDraw> characters = GetDraws( PNG_CHARACTERS );
	ASSERT_EQ( characters.size(), 4u );
	const tDraw &leftPortrait = characters[2];
	EXPECT_EQ( leftPortrait.x, 32.0f );
	EXPECT_EQ( leftPortrait.y, 32.0f );
	EXPECT_EQ( leftPortrait.source.left, 32 );
	EXPECT_EQ( leftPortrait.source.top, 0 );
	const tDraw &rightPortrait = characters[3];
	EXPECT_EQ( rightPortrait.x, 576.0f );
	EXPECT_EQ( rightPortrait.y, 32.0f );
	EXPECT_EQ( rightPortrait.source.left, 128 ) << "lumra's band, middle column";
	EXPECT_EQ( rightPortrait.source.top, 128 ) << "the skill rows";
	EXPECT_EQ( rightPortrait.source.bottom, 160 );

	const std::vector<tDraw> health = GetDraws( PNG_HEALTH );
	ASSERT_EQ( health.size(), 101u + 31u );
	EXPECT_EQ( health[100].x, 172.0f ) << "player 1's full bar ends at x 172";
	EXPECT_EQ( health[101].x, RIGHT_BARS_X ) << "player 2's bar starts at x 468";
	EXPECT_EQ( health.back().x, RIGHT_BARS_X + 30.0f );
}

TEST_F( HudTest, OnePlayerShowsTheLeftHudOnly ) {
	AddPlayer( KIND_LUMRA, 224, 2240 );
	Render();
	for ( const tDraw &draw : GetDraws() ) {
		if ( draw.path != PNG_TILES ) {
			ASSERT_LT( draw.x, 468.0f ) << draw.path << " drawn on the right-hand side";
		}
	}
}

}
