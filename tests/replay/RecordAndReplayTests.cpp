// SPDX-License-Identifier: GPL-3.0-or-later
// Recording and playback of a real game, headless: a scripted run through the menus into play
// replays exactly; a replay that goes another way stops at the first checkpoint that disagrees and
// names the part; once a replay ends, the player's own keys and clock take over; the run so far
// can be saved while the recording goes on.

#include <gtest/gtest.h>

#include "actors/GameState.h"
#include "app/Game.h"
#include "app/MenuEntries.h"
#include "app/StateHash.h"
#include "graphics/headless/RecordingGraphicsBackend.h"
#include "input/KeyBindings.h"
#include "input/KeyCodes.h"
#include "input/headless/ScriptedInputBackend.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "replay/Recorder.h"
#include "replay/Replay.h"
#include "replay/ReplayFile.h"
#include "replay/ReplaySound.h"
#include "program/Session.h"
#include "replay/GameStep.h"
#include "replay/headless/ReplayCheck.h"
#include "sound/headless/RecordingSoundBackend.h"
#include "support/LogCapture.h"
#include "support/TempDir.h"
#include "world/Scene.h"

namespace {

const int STEPS = 420;
const std::time_t CALENDAR = 1700000000;

void Click( cScriptedInputBackend &input, int step, int at, int entry ) {
	if ( step == at || step == at + 1 ) {
		const cRect &rect = MENU_ENTRIES[entry - 1];
		input.SetMousePosition( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 );
		input.SetButton( 0, step == at );
	}
}

// The key the player presses for the action that the game reads on gameKey.
int Physical( const cKeyBindings &bindings, int gameKey ) {
	for ( int action = 0; action < cKeyBindings::ACTIONS; action++ ) {
		if ( cKeyBindings::GetGameKey( 1, action ) == gameKey ) {
			return bindings.GetKey( 1, action );
		}
	}
	return gameKey;
}

// One player, tavesh; walks right firing, then turns, uses his skill, pauses with Escape and
// resumes, loses the focus and resumes; on the keys of bindings.
void PlayAGame( cScriptedInputBackend &input, int step, int turnKey, const cKeyBindings &keys ) {
	Click( input, step, 5, 1 );
	Click( input, step, 10, 3 );
	input.SetKey( Physical( keys, KEY_D ), step > 20 && step < 150 );
	input.SetKey( Physical( keys, KEY_H ), step > 30 && step % 20 < 10 );
	input.SetKey( Physical( keys, turnKey ), step >= 150 && step < 300 );
	input.SetKey( Physical( keys, KEY_J ), step == 160 );
	input.SetKey( KEY_ESCAPE, step == 330 );
	Click( input, step, 340, 4 );
	if ( step == 360 ) {
		input.RequestPause();
	}
	Click( input, step, 370, 4 );
}

// A game on the given input and sound, drawing nowhere, shut down when it goes.
struct cGameOn {
	cGameOn( cInputBackend &input, cSoundBackend *sound ) {
		graphics.SetRecording( false );
		cPlatform platform;
		platform.graphics = &graphics;
		platform.input = &input;
		platform.sound = sound;
		EXPECT_TRUE( game.Init( platform, false ) );
	}
	~cGameOn() { game.Finalize(); }

	cRecordingGraphicsBackend	graphics;
	cGame						game;
};

// The scripted game through a recorder, the clock moving 15 msec a step and the calendar second
// with it, as in the program; between steps a tool reads the clock, as the autoplay bots' probes
// do, which is no part of the game's steps.
cRecording Record( int turnKey, const cKeyBindings &keys = cKeyBindings() ) {
	cManualClock clock( 1000, CALENDAR );
	cScriptedInputBackend input;
	input.SetKeyBindings( &keys );
	cRecordingSoundBackend sound;
	cRecorder recorder( input, clock );
	SetClock( &recorder.GetClock() );
	cRecording recording;
	{
		cGameOn on( recorder.GetInput(), &sound );
		recorder.Watch( on.game );
		for ( int step = 1; step <= STEPS; step++ ) {
			PlayAGame( input, step, turnKey, keys );
			StepGame( on.game );
			recorder.EndStep();
			GetTickCount();
			clock.Advance( cGame::FRAME_TIME );
			clock.SetCalendarTime( CALENDAR + clock.GetTickCount() / 1000 );
		}
		EXPECT_EQ( on.game.GetGameState(), STATE_PLAYING ) << "the script should end in play";
		recording = recorder.GetRecording();
	}
	SetClock( nullptr );
	return recording;
}

}

// The same tape against another game's checkpoints, a game that turned up instead of left at step
// 150; and a tape whose sound device is said not to have opened.
TEST( RecordAndReplayTest, AReplayThatGoesAnotherWayStopsAtTheFirstCheckpointThatDisagrees ) {
	cLogCapture log;
	const cRecording left = Record( KEY_A );
	cRecording mixed = Record( KEY_W );
	mixed.tape = left.tape;
	cReplayOutcome outcome = cReplayCheck::Run( mixed );
	EXPECT_FALSE( outcome.matched );
	EXPECT_EQ( outcome.divergedAt, 200u );
	EXPECT_EQ( outcome.steps, 200u ) << "the replay stops at the difference";
	EXPECT_EQ( outcome.difference, "the state differs from the recording's in part \"scene\"" ) << "the camera follows the player";
	EXPECT_TRUE( log.Contains( "Replay went another way at step 200" ) ) << log.GetText();

	cRecording silent = left;
	silent.soundOpened = false;
	outcome = cReplayCheck::Run( silent );
	EXPECT_EQ( outcome.divergedAt, 100u );
	EXPECT_EQ( outcome.difference, "the state differs from the recording's in part \"game\"" );
}

// The recording holds what the player did, not which keys did it: played on other keys, the same
// game records the same tape, which replays on the default keys.
TEST( RecordAndReplayTest, AGameRecordedOnOtherKeysReplaysOnTheDefaultKeys ) {
	cKeyBindings moved;
	const int keys[] = { 0x26, 0x39, 0x1C, KEY_W, KEY_H };	// L, Space, Return on right, fire and skill
	const int actions[] = { cKeyBindings::RIGHT, cKeyBindings::FIRE, cKeyBindings::SKILL, cKeyBindings::LEFT, cKeyBindings::UP };
	for ( int i = 0; i < 5; i++ ) {
		moved.SetKey( 1, actions[i], keys[i] );
	}
	const cRecording usual = Record( KEY_A );
	const cRecording remapped = Record( KEY_A, moved );
	ASSERT_EQ( remapped.checkpoints.size(), usual.checkpoints.size() );
	EXPECT_EQ( remapped.checkpoints.back().total, usual.checkpoints.back().total );
	const cReplayOutcome outcome = cReplayCheck::Run( remapped );
	EXPECT_TRUE( outcome.matched );
	EXPECT_EQ( outcome.finalHash, usual.checkpoints.back().total );
}

// A scripted game replays exactly. While the replay plays, the game reads the tape and the
// player's Escape is only watched; after it, the game reads the player's keys, and the tick count
// goes on from the recording's last.
TEST( RecordAndReplayTest, AScriptedGameReplaysExactlyAndThenThePlayerTakesOver ) {
	const cRecording recording = Record( KEY_A );
	ASSERT_EQ( recording.checkpoints.size(), 5u );
	EXPECT_EQ( recording.checkpoints.back().step, static_cast<uint64_t>( STEPS ) );
	EXPECT_EQ( cReplayCheck::Run( recording ).finalHash, recording.checkpoints.back().total );
	cScriptedInputBackend player;
	player.SetKey( KEY_ESCAPE, true );
	cManualClock clock( 5, CALENDAR );
	cReplay replay( recording, &player, clock );
	cReplaySound sound( nullptr, recording.soundOpened );
	SetClock( &replay.GetClock() );
	{
		cGameOn on( replay.GetInput(), &sound );
		cGame &game = on.game;
		while ( replay.IsPlaying() && !replay.IsAtEnd() ) {
			StepGame( game );
			replay.CheckStep( game );
			EXPECT_TRUE( replay.IsPlayerKeyDown( KEY_ESCAPE ) );
		}
		ASSERT_FALSE( replay.HasDiverged() ) << "step " << replay.GetDivergedStep() << ": " << replay.GetDifference();
		EXPECT_EQ( game.GetGameState(), STATE_PLAYING );
		const uint32_t lastTick = replay.GetClock().GetTickCount();
		replay.Stop();
		StepGame( game );
		EXPECT_EQ( game.GetGameState(), STATE_PAUSE ) << "the player's Escape";
		clock.Advance( cGame::FRAME_TIME );
		EXPECT_EQ( replay.GetClock().GetTickCount(), lastTick + cGame::FRAME_TIME );
	}
	SetClock( nullptr );
}

// In the window: a held key plays four recorded steps a step, Escape leaves at once, and either
// way the player then has the main menu with no game behind it.
TEST( RecordAndReplayTest, TheWindowsReplayRunsFastOnAKeyAndLeavesOnEscape ) {
	cTempDir dir;
	std::string error;
	ASSERT_TRUE( cReplayFile::Save( dir.GetFile( "game.kmr" ), Record( KEY_A ), error ) );
	const char *argv[] = { "kormaveth2d", "--replay", "" };
	const std::string file = dir.GetFile( "game.kmr" );
	argv[2] = file.c_str();
	for ( const int key : { KEY_K, KEY_ESCAPE } ) {
		cScriptedInputBackend player;
		cManualClock clock( 5, CALENDAR );
		cSession session;
		ASSERT_TRUE( session.Open( cCommandLine::Parse( 3, argv ), player, nullptr, clock, error ) ) << error;
		SetClock( &session.GetClock() );
		cGameOn on( session.GetInput(), session.GetSound() );
		cGame &game = on.game;
		int steps = 0;
		for ( ; session.IsReplaying() && steps < STEPS; steps++ ) {
			player.SetKey( key, steps >= 50 );
			EXPECT_TRUE( session.Step( game ) );
		}
		// 51 steps at 1, then the key seen at the poll of step 52: 4 a step up to the end.
		EXPECT_EQ( steps, key == KEY_K ? 51 + ( STEPS - 51 + 3 ) / 4 : 52 ) << "key " << key;
		EXPECT_EQ( game.GetGameState(), STATE_MAIN_MENU );
		EXPECT_EQ( game.GetScene(), nullptr );
	}
	SetClock( nullptr );
}

// The page's download: the recording so far, written to the recording's file while the run goes
// on; the file at the end holds the whole run. A run not recorded has nothing to save.
TEST( RecordAndReplayTest, TheRecordingSoFarIsSavedWhileTheRunGoesOn ) {
	cTempDir dir;
	const std::string file = dir.GetFile( "run.kmr" );
	const char *argv[] = { "kormaveth2d", "--record", file.c_str() };
	std::string error;
	cScriptedInputBackend player;
	cManualClock clock( 5, CALENDAR );
	cSession session;
	ASSERT_TRUE( session.Open( cCommandLine::Parse( 3, argv ), player, nullptr, clock, error ) ) << error;
	SetClock( &session.GetClock() );
	{
		cGameOn on( session.GetInput(), session.GetSound() );
		session.Watch( on.game );
		int step = 1;
		for ( const int saveAt : { 150, STEPS } ) {
			for ( ; step <= saveAt; step++ ) {
				PlayAGame( player, step, KEY_A, cKeyBindings() );
				ASSERT_TRUE( session.Step( on.game ) );
				clock.Advance( cGame::FRAME_TIME );
			}
			ASSERT_TRUE( session.SaveRecording( error ) ) << error;
			cRecording saved;
			ASSERT_TRUE( cReplayFile::Load( file, saved, error ) ) << error;
			EXPECT_EQ( saved.steps, static_cast<uint64_t>( saveAt ) );
			ASSERT_FALSE( saved.checkpoints.empty() );
			EXPECT_EQ( saved.checkpoints.back().total, cStateHash( on.game ).GetTotal() ) << "saved at " << saveAt;
		}
	}
	SetClock( nullptr );
	cSession alone;		// the same program, without --record
	ASSERT_TRUE( alone.Open( cCommandLine::Parse( 1, argv ), player, nullptr, clock, error ) );
	EXPECT_FALSE( alone.SaveRecording( error ) );
	EXPECT_FALSE( error.empty() );
}
