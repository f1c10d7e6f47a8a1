// The icons over the enemies, with the enemies moved from state to state by their own perception
// on an open floor: the exclamation for 750 ms after an enemy notices a player, then the query
// while it searches and the WTF while it looks around.

#include <gtest/gtest.h>

#include "GraphicsFixtures.h"
#include "actors/ActorTypes.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "world/Scene.h"

namespace {

const int32_t CAMERA_X = 320;
const int32_t CAMERA_Y = 960;
const int32_t ENEMY_X = CAMERA_X + 320;		// a cell corner, in view
const int32_t ENEMY_Y = CAMERA_Y + 64;
const float ICON_X = 330.0f;				// 10 pixels right of the enemy's screen position
const float ICON_Y = 44.0f;					// 20 pixels above it

class AlertIconTest : public cRecordedFrameTest {
protected:
	AlertIconTest()
		: enemy( AddEnemy( KIND_SOLDIER, ENEMY_X, ENEMY_Y, DIR_DOWN ) ),
		lumra( AddPlayer( KIND_LUMRA, ENEMY_X, ENEMY_Y + 200 ) ) {
		SetCamera( CAMERA_X, CAMERA_Y );
	}

	void Perceive() { enemy.Perceive( lumra, scene->GetWalkMap() ); }

	// The one icon drawn over the enemy this frame, or none.
	std::string RenderIcon() {
		Render();
		std::string icon;
		for ( const char *picture : { PNG_EXCLAMATION, PNG_QUERY, PNG_WTF } ) {
			const std::vector<tDraw> draws = GetDraws( picture );
			if ( !draws.empty() ) {
				EXPECT_TRUE( icon.empty() ) << "two icons over one enemy: " << icon << " and " << picture;
				EXPECT_EQ( draws.size(), 1u );
				icon = picture;
			}
		}
		return icon;
	}

	cEnemy &			enemy;
	cPlayer &			lumra;
};

// Noticing lumra 200 pixels ahead shows the exclamation at (x + 10, y - 20) for 750 ms; the
// enemy then chases with no icon.
TEST_F( AlertIconTest, ExclamationFor750MsAfterNoticing ) {
	EXPECT_EQ( RenderIcon(), "" ) << "an unaware enemy has no icon";
	Perceive();
	ASSERT_EQ( enemy.GetAiState(), AI_CHASE ) << "the enemy should have noticed lumra";
	EXPECT_EQ( RenderIcon(), PNG_EXCLAMATION );
	EXPECT_EQ( enemy.GetAlertTime(), START_TICKS ) << "stamped when first drawn after the switch";
	const tDraw icon = GetDraws( PNG_EXCLAMATION )[0];
	EXPECT_EQ( icon.x, ICON_X );
	EXPECT_EQ( icon.y, ICON_Y );
	EXPECT_EQ( icon.source.GetWidth(), 16 );
	EXPECT_EQ( icon.source.GetHeight(), 16 );

	// Each frame perceives again, so the switch lies behind the enemy from the next frame on.
	clock.Advance( 749 );
	Perceive();
	EXPECT_EQ( RenderIcon(), PNG_EXCLAMATION ) << "749 ms after noticing";
	clock.Advance( 1 );
	Perceive();
	EXPECT_EQ( RenderIcon(), "" ) << "750 ms after noticing, a chasing enemy shows nothing";
	EXPECT_EQ( enemy.GetAlertTime(), START_TICKS );
}

// lumra hides: the exclamation runs its time out first, then the query shows while the enemy
// searches and the WTF (32 x 32, at x + 0) while it looks around; seeing her again is a new alert.
TEST_F( AlertIconTest, SearchAndLookAroundIconsAfterTheExclamation ) {
	Perceive();
	RenderIcon();
	lumra.ToggleSkill();
	Perceive();
	ASSERT_EQ( enemy.GetAiState(), AI_SEARCH ) << "lumra hiding should send the enemy searching";
	EXPECT_EQ( RenderIcon(), PNG_EXCLAMATION ) << "the exclamation outlasts the switch to searching";
	clock.Advance( 750 );
	EXPECT_EQ( RenderIcon(), PNG_QUERY );

	Perceive();
	ASSERT_EQ( enemy.GetAiState(), AI_LOOK_AROUND ) << "a search with nowhere to go ends at once";
	EXPECT_EQ( RenderIcon(), PNG_WTF );
	const tDraw wtf = GetDraws( PNG_WTF )[0];
	EXPECT_EQ( wtf.x, ICON_X - 10.0f );
	EXPECT_EQ( wtf.y, ICON_Y );
	EXPECT_EQ( wtf.source.GetWidth(), 32 );

	clock.Advance( 5000 );
	lumra.ToggleSkill();
	Perceive();
	ASSERT_EQ( enemy.GetAiState(), AI_CHASE );
	EXPECT_EQ( RenderIcon(), PNG_EXCLAMATION ) << "looking around, then noticing again";
	EXPECT_EQ( enemy.GetAlertTime(), START_TICKS + 5750 );
}

// Closing in from chase to attack is no new alert.
TEST_F( AlertIconTest, ChaseToAttackIsNoNewAlert ) {
	Perceive();
	RenderIcon();
	clock.Advance( 1000 );
	lumra.SetPosition( ENEMY_X, ENEMY_Y + 64 );
	Perceive();
	ASSERT_EQ( enemy.GetAiState(), AI_ATTACK );
	EXPECT_EQ( RenderIcon(), "" );
	EXPECT_EQ( enemy.GetAlertTime(), START_TICKS );
}

// The stamp is the drawing's: an enemy out of view when it notices gets none, and shows none.
TEST_F( AlertIconTest, NoStampWhileOutOfView ) {
	SetCamera( ENEMY_X, CAMERA_Y );
	Perceive();
	ASSERT_EQ( enemy.GetAiState(), AI_CHASE );
	EXPECT_EQ( RenderIcon(), "" );
	EXPECT_EQ( enemy.GetAlertTime(), 0u );
}

// The boss's wandering shows no icon.
TEST_F( AlertIconTest, BossWanderingShowsNothing ) {
	cEnemy &boss = AddEnemy( KIND_BOSS, ENEMY_X + 64, ENEMY_Y, DIR_DOWN );
	boss.PerceiveBoss( lumra, scene->GetWalkMap() );
	ASSERT_EQ( boss.GetAiState(), AI_BOSS_WANDER );
	EXPECT_EQ( RenderIcon(), "" );
}

}
