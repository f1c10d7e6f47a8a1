// SPDX-License-Identifier: GPL-3.0-or-later
// Rules of the in-game step at their edges: the keys' decoding, the heartbeat's threshold, the
// skill key's edge, a two-player game with player 1 down, the shots heard within 300 pixels and the
// boss that ignores them while strong, the frames of the defeat and of the victory, and the music
// around the pause screen.

#include <gtest/gtest.h>

#include <algorithm>

#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "input/KeyCodes.h"
#include "sound/SoundIds.h"
#include "support/TestGame.h"
#include "support/TestMaps.h"
#include "world/Scene.h"

namespace {

bool Has( const std::vector<int> &sounds, int id ) {
	return std::find( sounds.begin(), sounds.end(), id ) != sounds.end();
}

// A frame with the trigger released, then fire held: the next frame shoots at once.
void PullTrigger( cTestGame &test ) {
	test.SetKey( KEY_H, false );
	ASSERT_TRUE( test.Frames() );
	test.SetKey( KEY_H, true );
}

}

// Diagonals first, then down before up and right before left; no movement key leaves the facing.
TEST( InGameRuleTest, HeldKeysDecodeToOneStep ) {
	const struct { std::vector<int> keys; int32_t dx, dy, direction; } cases[] = {
		{ { KEY_W, KEY_D }, 2, -2, DIR_UP_RIGHT },
		{ { KEY_W, KEY_S, KEY_A }, -2, 2, DIR_DOWN_LEFT },
		{ { KEY_W, KEY_S }, 0, 2, DIR_DOWN },
		{ { KEY_A, KEY_D }, 2, 0, DIR_RIGHT },
		{ { KEY_UP, KEY_LEFT }, 0, 0, DIR_UP },		// player 2's keys move nobody in a one-player game
	};
	for ( const auto &c : cases ) {
		cTestGame test( MakeOpenScene() );
		cPlayer &player = test.AddPlayer( KIND_TAVESH, 320, 320 );
		player.SetDirection( DIR_UP );
		for ( int key : c.keys ) {
			test.SetKey( key, true );
		}
		ASSERT_TRUE( test.Frames() );
		int32_t x = 0, y = 0;
		player.GetPosition( x, y );
		EXPECT_EQ( x - 320, c.dx ) << "keys case with direction " << c.direction;
		EXPECT_EQ( y - 320, c.dy ) << "keys case with direction " << c.direction;
		EXPECT_EQ( player.GetDirection(), c.direction );
	}
}

TEST( InGameRuleTest, HeartbeatStartsAtTwentyFiveHealthAndStopsAboveIt ) {
	cTestGame test( MakeOpenScene() );
	cPlayer &player = test.AddPlayer( KIND_TAVESH, 320, 320 );
	const struct { int32_t health; bool beating; } cases[] = { { 26, false }, { 25, true }, { 1, true }, { 26, false }, { 24, true } };
	for ( const auto &c : cases ) {
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
	EXPECT_EQ( test.GetGame().GetGameState(), STATE_PLAYING );
}

// Enemies without a target within 299 pixels (truncated) of a player firing this frame turn to
// him; the boss only at 50 health or less.
TEST( InGameRuleTest, ShotsAreHeardWithin300PixelsAndByTheBossOnlyWhenWeak ) {
	const struct { int32_t kind, health, dx, dy, facing; } cases[] = {
		{ KIND_SOLDIER, 50, 299, 0, DIR_LEFT }, { KIND_SOLDIER, 50, 0, 300, DIR_DOWN },
		{ KIND_SOLDIER, 50, 213, 211, DIR_LEFT },		// 299.8 pixels, truncated
		{ KIND_BOSS, 50, 200, 0, DIR_LEFT },
		{ KIND_BOSS, 51, 200, 0, DIR_DOWN }, { KIND_BOSS, 60, 200, 0, DIR_DOWN },
	};
	for ( const auto &c : cases ) {
		cTestGame test( MakeOpenScene() );
		test.AddPlayer( KIND_TAVESH, 320, 300 ).SetJustShot( true );
		cEnemy &enemy = test.AddEnemy( c.kind, 320 + c.dx, 300 + c.dy, DIR_DOWN );
		enemy.SetHealth( c.health );
		test.GetGame().AlertEnemiesToShots( true );
		EXPECT_EQ( enemy.GetDirection(), c.facing ) << "kind " << c.kind << " at health " << c.health << ", ("
													<< c.dx << ", " << c.dy << ") from the shooter";
	}
	// In play, the fire key held is what makes the shot heard.
	cTestGame test( MakeOpenScene() );
	test.AddPlayer( KIND_TAVESH, 320, 300 );
	cEnemy &soldier = test.AddEnemy( KIND_SOLDIER, 320 + 299, 300, DIR_RIGHT );
	PullTrigger( test );
	ASSERT_TRUE( test.Frames() );
	EXPECT_EQ( soldier.GetDirection(), DIR_LEFT ) << "a soldier looking away turns to the shot";
}

// The players explode and leave; the end sounds start and the music stops. Nothing else moves in
// that frame and the keyboard state is not saved; the defeat screen lasts more than 7500 ms.
TEST( InGameRuleTest, DefeatFrameEndsThePlayersAloneAndTheScreenLastsSevenAndAHalfSeconds ) {
	cTestGame test( MakeOpenScene() );
	cPlayer &player = test.AddPlayer( KIND_LUMRA, 320, 320 );
	cEnemy &enemy = test.AddEnemy( KIND_SOLDIER, 320, 160, DIR_DOWN );
	const int32_t counter = enemy.GetShotCounter();
	player.SetDead( true );
	test.SetKey( KEY_K, true );
	test.GetClock().SetTickCount( 50000 );
	ASSERT_TRUE( test.Frames() );
	ASSERT_EQ( test.GetGame().GetGameState(), STATE_DEFEAT );
	cGame &game = test.GetGame();
	EXPECT_TRUE( game.GetPlayers()->empty() ) << "the players leave the game";
	EXPECT_EQ( game.GetExplosions()->size(), 1u );
	EXPECT_EQ( game.GetEndTime(), 50000u );
	EXPECT_EQ( test.GetPlayedSounds(), std::vector<int>( { SOUND_EXPLOSION, SOUND_GAME_OVER } ) );
	EXPECT_EQ( test.GetStoppedSounds(), std::vector<int>( { SOUND_HEARTBEAT, SOUND_STREETS_MUSIC, SOUND_BOSS_MUSIC } ) );
	int32_t x = 0, y = 0;
	enemy.GetPosition( x, y );
	EXPECT_EQ( y, 160 );
	EXPECT_EQ( enemy.GetShotCounter(), counter ) << "the enemies are not updated in the frame of the defeat";
	EXPECT_TRUE( game.GetInputLayer().GetKeyboard()->KeyChanged( KEY_K ) )
		<< "the keyboard state is not saved in the frame of the defeat";

	test.GetClock().SetTickCount( 50000 + 7500 );
	ASSERT_TRUE( test.Frames() );
	EXPECT_EQ( test.GetGame().GetGameState(), STATE_DEFEAT ) << "7500 msec have not yet passed";
	EXPECT_EQ( game.GetEnemies()->size(), 1u ) << "only the victory screen explodes the enemies";
	ASSERT_TRUE( test.Frames() );
	EXPECT_EQ( test.GetGame().GetGameState(), STATE_MAIN_MENU );
}

// Shooting the boss dead wins in that frame (its sounds are the hit pass's); the first frame of the
// victory screen explodes the enemies left and empties the bullets; it takes no clicks, and Escape
// leaves it with the end sounds stopped.
TEST( InGameRuleTest, BossKillWinsAndTheVictoryScreenClearsTheField ) {
	cTestGame test( MakeOpenScene() );
	cGame &game = test.GetGame();
	test.AddPlayer( KIND_TAVESH, 320, 400 );
	test.AddEnemy( KIND_BOSS, 320, 160, DIR_UP ).SetHealth( 20 );
	test.AddEnemy( KIND_SOLDIER, 40, 40, DIR_UP );
	game.GetBullets()->push_back( cBullet( 326, 175, DIR_UP, WEAPON_TAVESH, KIND_TAVESH ) );
	ASSERT_TRUE( test.Frames() );
	ASSERT_EQ( test.GetGame().GetGameState(), STATE_VICTORY ) << "the shot reaches the boss in this frame";
	EXPECT_EQ( game.GetEndTime(), test.GetClock().GetTickCount() - 15 ) << "set in the frame of the kill";
	ASSERT_EQ( game.GetEnemies()->size(), 1u ) << "the soldier outlives the boss for one frame";

	game.GetBullets()->push_back( cBullet( 100, 100, DIR_UP, WEAPON_TAVESH, KIND_TAVESH ) );
	const size_t explosionsBefore = game.GetExplosions()->size();
	ASSERT_TRUE( test.Frames() );
	EXPECT_TRUE( game.GetEnemies()->empty() ) << "the first frame of victory explodes the rest";
	EXPECT_TRUE( game.GetBullets()->empty() ) << "and the shots in flight vanish";
	ASSERT_EQ( game.GetExplosions()->size(), explosionsBefore + 1 );
	EXPECT_FALSE( game.GetExplosions()->back().IsImpact() ) << "the soldier goes up in a death explosion";
	ASSERT_TRUE( test.GetHeadless().Click( 160, 392 ) );		// the quit entry's place
	EXPECT_EQ( test.GetGame().GetGameState(), STATE_VICTORY ) << "the end screens take no clicks";
	EXPECT_FALSE( game.IsClickLatched() );

	test.ForgetSounds();
	test.SetKey( KEY_H, false );
	test.SetKey( KEY_ESCAPE, true );
	ASSERT_TRUE( test.Frames() );
	EXPECT_EQ( test.GetGame().GetGameState(), STATE_MAIN_MENU );
	// The end sounds stop, then the menu music takes over from the boss music.
	EXPECT_EQ( test.GetStoppedSounds(),
			   std::vector<int>( { SOUND_GAME_OVER, SOUND_LEVEL_COMPLETE, SOUND_EXPLOSION, SOUND_BOSS_MUSIC } ) );
}

// Escape pauses in the frame it is seen and does nothing more on the pause screen; the heartbeat
// stops there while the level music plays on, and the main menu brings the menu music back.
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
	ASSERT_EQ( test.GetGame().GetGameState(), STATE_PAUSE );
	EXPECT_TRUE( Has( test.GetStoppedSounds(), SOUND_HEARTBEAT ) ) << "stopped in the frame of the Escape";
	EXPECT_FALSE( Has( test.GetStoppedSounds(), levelMusic ) );
	ASSERT_TRUE( test.Frames( 5 ) );
	EXPECT_EQ( test.GetGame().GetGameState(), STATE_PAUSE ) << "Escape held on the pause screen does nothing";
	EXPECT_EQ( test.GetGame().GetSoundLayer().GetCurrentMusic(), levelMusic ) << "under the pause screen";
	test.GetGame().SetGameState( STATE_MAIN_MENU );
	ASSERT_TRUE( test.Frames() );
	EXPECT_EQ( test.GetGame().GetSoundLayer().GetCurrentMusic(), SOUND_MENU_MUSIC );
}
