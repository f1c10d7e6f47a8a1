// Rules of the in-game step that whole games seldom reach at their edges: the heartbeat's threshold,
// the skill key's edge, a two-player game with player 1 down, the frame of the defeat, the boss that
// ignores shots while strong, and the music around the pause screen.

#include <gtest/gtest.h>

#include <algorithm>

#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/GameState.h"
#include "input/KeyCodes.h"
#include "sound/SoundIds.h"
#include "support/TestGame.h"
#include "support/TestMaps.h"
#include "world/Scene.h"

namespace {

bool Has( const std::vector<int> &sounds, int id ) {
	return std::find( sounds.begin(), sounds.end(), id ) != sounds.end();
}

struct cHeartbeatCase {
	int32_t		health;
	bool		beating;
};

}

TEST( InGameRuleTest, HeartbeatStartsAtTwentyFiveHealthAndStopsAboveIt ) {
	cTestGame test( MakeOpenScene() );
	cPlayer &player = test.AddPlayer( KIND_TAVESH, 320, 320 );
	const cHeartbeatCase cases[] = { { 26, false }, { 25, true }, { 1, true }, { 26, false }, { 24, true } };
	for ( const cHeartbeatCase &c : cases ) {
		const bool wasBeating = test.GetGame().GetSoundLayer().heartbeatPlaying;
		test.ForgetSounds();
		player.SetHealth( c.health );
		ASSERT_TRUE( test.Frames() );
		EXPECT_EQ( test.GetGame().GetSoundLayer().heartbeatPlaying, c.beating ) << "at health " << c.health;
		EXPECT_EQ( Has( test.GetPlayedSounds(), SOUND_HEARTBEAT ), c.beating && !wasBeating )
			<< "the heartbeat starts once, at health " << c.health;
		EXPECT_EQ( Has( test.GetStoppedSounds(), SOUND_HEARTBEAT ), !c.beating && wasBeating )
			<< "the heartbeat stops once, at health " << c.health;
	}
}

TEST( InGameRuleTest, SkillKeyHeldForManyFramesTogglesOnce ) {
	cTestGame test( MakeOpenScene() );
	cPlayer &player = test.AddPlayer( KIND_LUMRA, 320, 320 );
	test.SetKey( KEY_J, true );
	ASSERT_TRUE( test.Frames( 30 ) );
	EXPECT_TRUE( player.IsSkillActive() ) << "held for 30 frames: on once, never toggled back";
	test.SetKey( KEY_J, false );
	ASSERT_TRUE( test.Frames() );
	test.SetKey( KEY_J, true );
	ASSERT_TRUE( test.Frames() );
	EXPECT_FALSE( player.IsSkillActive() ) << "a fresh press turns it off";
}

TEST( InGameRuleTest, WithPlayerOneDownOnlyPlayerTwoStepsAndTheHeartbeatFollowsPlayerTwo ) {
	cTestGame test( MakeOpenScene() );
	test.GetGame().GetConfig().SetPlayers( 2 );
	cPlayer &one = test.AddPlayer( KIND_TAVESH, 320, 320 );
	cPlayer &two = test.AddPlayer( KIND_LUMRA, 400, 320 );
	one.SetDead( true );
	one.SetHealth( 10 );
	test.SetKey( KEY_D, true );
	test.SetKey( KEY_RIGHT, true );
	ASSERT_TRUE( test.Frames() );
	int32_t x = 0, y = 0;
	one.GetPosition( x, y );
	EXPECT_EQ( x, 320 ) << "player 1 is down and must not step";
	two.GetPosition( x, y );
	EXPECT_EQ( x, 402 ) << "player 2 steps";
	EXPECT_FALSE( test.GetGame().GetSoundLayer().heartbeatPlaying ) << "player 1's 10 health does not count";
	two.SetHealth( 20 );
	ASSERT_TRUE( test.Frames() );
	EXPECT_TRUE( test.GetGame().GetSoundLayer().heartbeatPlaying ) << "player 2 at 20 health";
	EXPECT_EQ( gameState, STATE_PLAYING );
}

TEST( InGameRuleTest, InTheFrameOfTheDefeatNothingElseMovesAndTheKeysAreNotSaved ) {
	cTestGame test( MakeOpenScene() );
	cPlayer &player = test.AddPlayer( KIND_TAVESH, 320, 320 );
	cEnemy &enemy = test.AddEnemy( KIND_SOLDIER, 320, 160, DIR_DOWN );
	player.SetDead( true );
	test.SetKey( KEY_K, true );
	int32_t ex = 0, ey = 0;
	enemy.GetPosition( ex, ey );
	const int32_t counter = enemy.GetShotCounter();
	ASSERT_TRUE( test.Frames() );
	ASSERT_EQ( gameState, STATE_DEFEAT );
	int32_t x = 0, y = 0;
	enemy.GetPosition( x, y );
	EXPECT_EQ( x, ex );
	EXPECT_EQ( y, ey );
	EXPECT_EQ( enemy.GetShotCounter(), counter ) << "the enemies are not updated in the frame of the defeat";
	EXPECT_TRUE( test.GetGame().GetInputLayer().GetKeyboard()->KeyChanged( KEY_K ) )
		<< "the keyboard state is not saved in the frame of the defeat";
}

TEST( InGameRuleTest, TheBossTurnsToAShotAtFiftyHealthAndNotAbove ) {
	const struct {
		int32_t	health;
		int32_t	facing;
	} cases[] = { { 50, DIR_LEFT }, { 51, DIR_DOWN }, { 60, DIR_DOWN } };
	for ( const auto &c : cases ) {
		cTestGame test( MakeOpenScene() );
		test.AddPlayer( KIND_TAVESH, 320, 300 ).SetJustShot( true );
		cEnemy &boss = test.AddEnemy( KIND_BOSS, 520, 300, DIR_DOWN );
		boss.SetHealth( c.health );
		test.GetGame().AlertEnemiesToShots( true );
		EXPECT_EQ( boss.GetDirection(), c.facing ) << "boss at health " << c.health;
	}
}

TEST( InGameRuleTest, PauseStopsTheHeartbeatAtOnceUnderTheLevelMusicAndTheMainMenuBringsTheMenuMusic ) {
	cTestGame test( MakeOpenScene() );
	cPlayer &player = test.AddPlayer( KIND_TAVESH, 320, 320 );
	player.SetHealth( 20 );
	ASSERT_TRUE( test.Frames() );
	ASSERT_TRUE( test.GetGame().GetSoundLayer().heartbeatPlaying );
	const int32_t levelMusic = test.GetGame().GetSoundLayer().GetCurrentMusic();
	ASSERT_NE( levelMusic, SOUND_MENU_MUSIC );
	test.ForgetSounds();
	test.SetKey( KEY_ESCAPE, true );
	ASSERT_TRUE( test.Frames() );
	ASSERT_EQ( gameState, STATE_PAUSE );
	EXPECT_TRUE( Has( test.GetStoppedSounds(), SOUND_HEARTBEAT ) ) << "stopped in the frame of the Escape";
	EXPECT_FALSE( Has( test.GetStoppedSounds(), levelMusic ) );
	test.SetKey( KEY_ESCAPE, false );
	ASSERT_TRUE( test.Frames( 5 ) );
	EXPECT_EQ( test.GetGame().GetSoundLayer().GetCurrentMusic(), levelMusic ) << "under the pause screen";
	gameState = STATE_MAIN_MENU;
	ASSERT_TRUE( test.Frames() );
	EXPECT_EQ( test.GetGame().GetSoundLayer().GetCurrentMusic(), SOUND_MENU_MUSIC );
}
