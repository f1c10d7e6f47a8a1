// The bot playing the real game on tiny maps: it turns to a soldier in its row and shoots it
// down, it steps out of a shot coming at it, and it revives its partner from a cell away from the
// door that lumra would otherwise open; and it wins the real level with every door closed.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "TestGame.h"
#include "TestMaps.h"
#include "actors/Bullet.h"
#include "actors/GameState.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "harness/AutoplayGame.h"
#include "harness/Bot.h"
#include "harness/HeadlessGame.h"
#include "harness/IncomingFire.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

class BotPlayTest : public ::testing::Test {
protected:
	void SetUpMap( const std::vector<std::string> &picture, uint32_t players ) {
		test = std::make_unique<cTestGame>( MakeScene( picture ) );
		test->GetScene().SetCameraPosition( 0, 0 );		// the top-left screen, where the maps lie
		Game().GetConfig().SetPlayers( players );
	}
	cGame &Game() { return test->GetGame(); }
	cPlayer &AddPlayer( int32_t kind, int32_t x, int32_t y ) {
		bots.push_back( std::make_unique<cBot>( static_cast<int>( bots.size() ), cBotOptions() ) );
		return test->AddPlayer( kind, x, y );
	}
	// One frame with every bot at its player's keys; the keys are handed back for a look.
	std::vector<cBotKeys> Frame() {
		std::vector<cBotKeys> pressed;
		for ( size_t i = 0; i < bots.size(); i++ ) {
			pressed.push_back( bots[i]->Think( Game() ) );
			PressBotKeys( test->GetHeadless(), static_cast<int>( i ), pressed.back() );
		}
		EXPECT_TRUE( test->Frames() );
		return pressed;
	}

	std::unique_ptr<cTestGame>			test;
	std::vector<std::unique_ptr<cBot>>	bots;
};

const std::vector<std::string> HALL = {
	"##############",
	"#............#",
	"#............#",
	"#............#",
	"#............#",
	"#............#",
	"#............#",
	"#............#",
	"#............#",
	"#............#",
	"#............#",
	"##############",
};

}

TEST_F( BotPlayTest, TurnsToASoldierInItsRowAndShootsItDown ) {
	SetUpMap( HALL, 1 );
	cPlayer &tavesh = AddPlayer( KIND_TAVESH, 64, 64 );		// facing up, the soldier to its right
	test->AddEnemy( KIND_SOLDIER, 320, 64, DIR_RIGHT );
	int frames = 0;
	while ( !Game().GetEnemies()->empty() && frames < 300 ) {
		Frame();
		frames++;
	}
	EXPECT_TRUE( Game().GetEnemies()->empty() ) << "the soldier still stands after 300 frames";
	EXPECT_EQ( tavesh.GetHealth(), 100 ) << "the soldier's answer should have been stepped out of";
	EXPECT_GE( bots[0]->GetShotsFired(), 2 ) << "a soldier of 50 health takes two of tavesh's shots";
}

TEST_F( BotPlayTest, StepsOutOfASoldiersShot ) {
	SetUpMap( HALL, 1 );
	// On cell (3, 7), where the route ends at the boss's place: with nothing to do it would stay.
	cPlayer &tavesh = AddPlayer( KIND_TAVESH, 96, 224 );
	Game().GetBullets()->push_back( cBullet( 102, 118, 0, 1, WEAPON_ENEMY_GUN, KIND_SOLDIER ) );
	cIncomingFire incoming;
	incoming.Forecast( *Game().GetScene(), 0, 0, *Game().GetBullets() );
	cBodyTrack standing;
	cIncomingFire::Walk( *Game().GetScene(), 96, 224, 2, 0, 0, 0, 0, 0, cIncomingFire::HORIZON, standing );
	ASSERT_EQ( incoming.FindFirstHit( standing ), 44 ) << "the shot would strike a player who stays";
	bool stepped = false;
	for ( int frame = 0; frame < 150; frame++ ) {
		Frame();
		int32_t x = 0, y = 0;
		tavesh.GetPosition( x, y );
		stepped = stepped || x != 96;
	}
	EXPECT_EQ( tavesh.GetHealth(), 100 );
	EXPECT_TRUE( Game().GetBullets()->empty() ) << "the shot went past into the wall";
	EXPECT_TRUE( stepped ) << "only a step to the side gets out of a shot coming straight down";
}

TEST_F( BotPlayTest, RevivesThePartnerFromACellAwayFromTheDoor ) {
	SetUpMap( {
		"#######",
		"#.....#",
		"#.#D#.#",
		"#.....#",
		"#.....#",
		"#######",
	}, 2 );
	cPlayer &lumra = AddPlayer( KIND_LUMRA, 96, 32 );		// right above the door
	cPlayer &tavesh = AddPlayer( KIND_TAVESH, 96, 96 );		// down right below it
	tavesh.SetHealth( 0 );
	tavesh.SetDead( true );
	int frames = 0;
	while ( tavesh.IsDead() && frames < 400 ) {
		const std::vector<cBotKeys> pressed = Frame();
		int32_t cellX = 0, cellY = 0;
		lumra.GetCell( cellX, cellY );
		EXPECT_FALSE( pressed[0].use && std::abs( cellX - 3 ) + std::abs( cellY - 2 ) == 1 )
			<< "lumra pressed use beside the door in cell (" << cellX << ", " << cellY << ")";
		frames++;
	}
	EXPECT_FALSE( tavesh.IsDead() ) << "not revived after 400 frames";
	EXPECT_EQ( tavesh.GetHealth(), 26 );
	EXPECT_EQ( Game().GetScene()->GetWalkCode( 3, 2 ), WALK_DOOR ) << "the door was opened";
}

// The real level at difficulty 1, every door left closed: tavesh alone, lumra alone and the two
// together reach the boss and win. A loss here means the bot or the level has gone wrong. The
// two-player game played again on scripted pads, through the menus too, runs frame for frame as
// on the keys: the pads press the players' keys exactly as the keyboard does.
TEST( BotLevelTest, WinsTheLevelAloneWithEitherHeroAndTogetherOnKeysAndOnPads ) {
	cHeadlessGame headless;
	headless.GetGraphics().SetRecording( false );
	ASSERT_TRUE( headless.Start() );
	ASSERT_TRUE( headless.Frames( 2 ) );
	cAutoplayGame autoplay( headless );
	struct cChoice { int players; int character; bool pads; };
	cGameResult onKeys;
	for ( const cChoice choice : { cChoice{ 1, 0, false }, cChoice{ 1, 1, false }, cChoice{ 2, 0, false }, cChoice{ 2, 0, true } } ) {
		cGameSetup setup;
		setup.players = choice.players;
		setup.character = choice.character;
		setup.pads = choice.pads;
		setup.difficulty = 1;
		setup.frameLimit = 12000;
		cGameResult result;
		ASSERT_TRUE( autoplay.Play( setup, result ) ) << "the menus did not lead to a game and back, pads: " << choice.pads;
		const std::string line = DescribeResult( setup, result );
		EXPECT_EQ( result.outcome, OUTCOME_VICTORY ) << line;
		EXPECT_GT( result.doorsAtStart, 0 ) << "the level has no doors";
		EXPECT_EQ( result.doorsClosed, result.doorsAtStart ) << "a door was opened: " << line;
		if ( choice.pads ) {
			EXPECT_TRUE( result.frames == onKeys.frames && result.shots == onKeys.shots && result.hitsTaken == onKeys.hitsTaken )
				<< "on the pads: " << line << "; on the keys: " << DescribeResult( setup, onKeys );
		} else if ( choice.players == 2 ) {
			onKeys = result;
		}
	}
	EXPECT_EQ( headless.GetInput().GetPads().GetCount(), 0u ) << "the pads were left plugged in";
}
