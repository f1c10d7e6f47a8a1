// Frames of play through the real game on small test maps: walking, a soldier killed in two hits,
// shots heard within 300 pixels, the defeat and the victory with their sounds and end screens.

#include <gtest/gtest.h>

#include <algorithm>

#include "TestMaps.h"
#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/GameState.h"
#include "input/KeyCodes.h"
#include "platform/headless/HeadlessGame.h"
#include "sound/headless/RecordingSoundBackend.h"
#include "world/Scene.h"

namespace {

class PlayFrameTest : public ::testing::Test {
protected:
	void SetUp() override {
		ASSERT_TRUE( headless.Start() );
		Game().SetUpGame( MakeOpenScene() );
		gameState = STATE_PLAYING;
	}
	cGame &Game() { return headless.GetGame(); }
	cPlayer &AddPlayer( int32_t kind, int32_t x, int32_t y ) {
		Game().GetPlayers()->push_back( std::make_unique<cPlayer>( kind, x, y ) );
		return static_cast<cPlayer &>( *Game().GetPlayers()->back() );
	}
	cEnemy &AddEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction ) {
		Game().GetEnemies()->push_back( std::make_unique<cEnemy>( kind, x, y, direction, 1 ) );
		return static_cast<cEnemy &>( *Game().GetEnemies()->back() );
	}
	// A frame with the trigger released, so that the next frame with fire held shoots at once.
	void ReleaseTrigger() {
		headless.SetKey( KEY_H, false );
		ASSERT_TRUE( headless.Frame() );
	}
	bool Played( int id ) const {
		const std::vector<int> played = sound.GetPlayed();
		return std::find( played.begin(), played.end(), id ) != played.end();
	}

	cRecordingSoundBackend	sound;
	cHeadlessGame			headless { &sound };
};

}

TEST_F( PlayFrameTest, HeldKeysWalkThePlayerTwoPixelsAFrame ) {
	cPlayer &player = AddPlayer( KIND_TAVESH, 320, 320 );
	headless.SetKey( KEY_W, true );
	headless.SetKey( KEY_D, true );
	ASSERT_TRUE( headless.Frames( 10 ) );
	int32_t x = 0, y = 0;
	player.GetPosition( x, y );
	EXPECT_EQ( x, 340 ) << "a diagonal step covers the speed on each axis";
	EXPECT_EQ( y, 300 );
	EXPECT_EQ( player.GetDirection(), DIR_UP_RIGHT );
	headless.SetKey( KEY_W, false );
	headless.SetKey( KEY_D, false );
	headless.SetKey( KEY_S, true );
	headless.SetKey( KEY_A, true );
	headless.SetKey( KEY_W, true );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( player.GetDirection(), DIR_DOWN_LEFT ) << "with up and down held, down wins";
}

TEST_F( PlayFrameTest, TaveshKillsASoldierAtTheEasiestDifficultyWithTwoShots ) {
	AddPlayer( KIND_TAVESH, 320, 400 );
	cEnemy &soldier = AddEnemy( KIND_SOLDIER, 320, 160, DIR_UP );	// looking away from the player
	ReleaseTrigger();
	headless.SetKey( KEY_H, true );
	std::vector<int32_t> healthSeen = { soldier.GetHealth() };
	for ( int frame = 0; frame < 200 && !Game().GetEnemies()->empty(); frame++ ) {
		sound.Clear();
		ASSERT_TRUE( headless.Frame() );
		if ( !Game().GetEnemies()->empty() && soldier.GetHealth() != healthSeen.back() ) {
			healthSeen.push_back( soldier.GetHealth() );
		}
		if ( Game().GetEnemies()->empty() ) {
			EXPECT_TRUE( Played( SOUND_EXPLOSION ) ) << "the kill sounds an explosion";
		}
	}
	ASSERT_TRUE( Game().GetEnemies()->empty() ) << "the soldier should be dead";
	EXPECT_EQ( healthSeen, std::vector<int32_t>( { 50, 25 } ) ) << "one hit leaves 25, the second kills";
	EXPECT_EQ( gameState, STATE_PLAYING );
}

TEST_F( PlayFrameTest, EnemiesWithin300PixelsTurnToAShot ) {
	AddPlayer( KIND_TAVESH, 320, 300 );
	cEnemy &near = AddEnemy( KIND_SOLDIER, 320 + 299, 300, DIR_RIGHT );
	cEnemy &far = AddEnemy( KIND_SOLDIER, 320, 300 + 300, DIR_DOWN );
	ReleaseTrigger();
	headless.SetKey( KEY_H, true );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( near.GetDirection(), DIR_LEFT ) << "299 pixels away: heard, turned to the shooter";
	EXPECT_EQ( far.GetDirection(), DIR_DOWN ) << "300 pixels away: not heard";
}

TEST_F( PlayFrameTest, DefeatExplodesThePlayersAndStopsTheMusic ) {
	cPlayer &player = AddPlayer( KIND_LUMRA, 320, 300 );
	ASSERT_TRUE( headless.Frame() );
	player.SetHealth( 0 );
	player.SetDead( true );
	sound.Clear();
	headless.GetClock().SetTickCount( 50000 );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( gameState, STATE_DEFEAT );
	EXPECT_TRUE( Game().GetPlayers()->empty() ) << "the players leave the game";
	ASSERT_EQ( Game().GetExplosions()->size(), 1u );
	EXPECT_EQ( Game().GetEndTime(), 50000u );
	EXPECT_EQ( sound.GetPlayed(), std::vector<int>( { SOUND_EXPLOSION, SOUND_GAME_OVER } ) );
	EXPECT_EQ( sound.GetStopped(), std::vector<int>( { SOUND_HEARTBEAT, SOUND_STREETS_MUSIC, SOUND_BOSS_MUSIC } ) );

	headless.GetClock().SetTickCount( 50000 + 7500 );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( gameState, STATE_DEFEAT ) << "7500 msec have not yet passed";
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( gameState, STATE_MAIN_MENU );
}

TEST_F( PlayFrameTest, BossKillWinsAndTheVictoryScreenClearsTheField ) {
	AddPlayer( KIND_TAVESH, 320, 400 );
	cEnemy &boss = AddEnemy( KIND_BOSS, 320, 160, DIR_UP );
	AddEnemy( KIND_SOLDIER, 40, 40, DIR_UP );
	boss.SetHealth( 20 );
	ReleaseTrigger();
	headless.SetKey( KEY_H, true );
	for ( int frame = 0; frame < 200 && gameState == STATE_PLAYING; frame++ ) {
		sound.Clear();
		ASSERT_TRUE( headless.Frame() );
	}
	ASSERT_EQ( gameState, STATE_VICTORY );
	EXPECT_EQ( Game().GetEndTime(), headless.GetClock().GetTickCount() - 15 ) << "set in the frame of the kill";
	EXPECT_TRUE( Played( SOUND_LEVEL_COMPLETE ) );
	const std::vector<int> stopped = sound.GetStopped();
	EXPECT_NE( std::find( stopped.begin(), stopped.end(), SOUND_BOSS_MUSIC ), stopped.end() );
	ASSERT_EQ( Game().GetEnemies()->size(), 1u ) << "the soldier outlives the boss for one frame";

	Game().GetBullets()->push_back( cBullet( 100, 100, DIR_UP, WEAPON_TAVESH, KIND_TAVESH ) );
	const size_t explosionsBefore = Game().GetExplosions()->size();
	ASSERT_TRUE( headless.Frame() );
	EXPECT_TRUE( Game().GetEnemies()->empty() ) << "the first frame of victory explodes the rest";
	EXPECT_TRUE( Game().GetBullets()->empty() ) << "and the shots in flight vanish";
	EXPECT_EQ( Game().GetExplosions()->size(), explosionsBefore + 1 );

	sound.Clear();
	headless.SetKey( KEY_H, false );
	headless.SetKey( KEY_ESCAPE, true );
	ASSERT_TRUE( headless.Frame() );
	EXPECT_EQ( gameState, STATE_MAIN_MENU );
	// The end sounds stop, then the menu music takes over from the boss music.
	EXPECT_EQ( sound.GetStopped(),
			   std::vector<int>( { SOUND_GAME_OVER, SOUND_LEVEL_COMPLETE, SOUND_EXPLOSION, SOUND_BOSS_MUSIC } ) );
}
