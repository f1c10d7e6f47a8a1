#include "replay/headless/ReplayCheck.h"

#include "app/Game.h"
#include "app/GameState.h"
#include "app/StateHash.h"
#include "graphics/headless/RecordingGraphicsBackend.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "replay/Recording.h"
#include "replay/Replay.h"
#include "replay/ReplaySound.h"

bool cReplayCheck::StepGame( cGame &game ) {
	game.ReadInput();
	const bool going = game.Process();
	game.Render();
	return going;
}

cReplayOutcome cReplayCheck::Run( const cRecording &recording ) {
	cManualClock unused;
	cReplay replay( recording, nullptr, unused );
	cReplaySound sound( nullptr, recording.soundOpened );
	cRecordingGraphicsBackend graphics;
	graphics.SetRecording( false );
	SetClock( &replay.GetClock() );
	gameState = STATE_MAIN_MENU;
	cReplayOutcome outcome;
	{
		cGame game;
		cPlatform platform;
		platform.graphics = &graphics;
		platform.input = &replay.GetInput();
		platform.sound = &sound;
		if ( game.Init( platform, false ) ) {
			while ( replay.IsPlaying() && !replay.IsAtEnd() ) {
				const bool going = StepGame( game );
				if ( replay.CheckStep( game ) && !going && !replay.IsAtEnd() ) {
					replay.Diverge( replay.GetStep(), "the game quit before the recording's end" );
				}
			}
		} else {
			replay.Diverge( 0, "the game did not start" );
		}
		outcome.finalHash = cStateHash( game ).GetTotal();
		game.Finalize();
	}
	SetClock( nullptr );
	gameState = STATE_MAIN_MENU;
	outcome.matched = !replay.HasDiverged();
	outcome.steps = replay.GetStep();
	outcome.divergedAt = replay.GetDivergedStep();
	outcome.difference = replay.GetDifference();
	return outcome;
}
