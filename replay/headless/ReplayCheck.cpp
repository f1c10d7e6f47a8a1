// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/headless/ReplayCheck.h"

#include <cinttypes>
#include <cstdio>

#include "actors/GameState.h"
#include "app/Game.h"
#include "app/StateHash.h"
#include "graphics/headless/RecordingGraphicsBackend.h"
#include "log/Printable.h"
#include "platform/Clock.h"
#include "platform/Platform.h"
#include "replay/Recording.h"
#include "replay/GameStep.h"
#include "replay/Replay.h"
#include "replay/ReplayFile.h"
#include "replay/ReplaySound.h"


cReplayOutcome cReplayCheck::Run( const cRecording &recording, const std::string &dataRoot ) {
	cManualClock unused;
	cReplay replay( recording, nullptr, unused );
	cReplaySound sound( nullptr, recording.soundOpened );
	cRecordingGraphicsBackend graphics;
	graphics.SetRecording( false );
	SetClock( &replay.GetClock() );
	cReplayOutcome outcome;
	{
		cGame game;
		cPlatform platform;
		platform.graphics = &graphics;
		platform.input = &replay.GetInput();
		platform.sound = &sound;
		platform.dataRoot = dataRoot;
		if ( game.Init( platform, false ) ) {
			while ( replay.IsPlaying() && !replay.IsAtEnd() ) {
				const bool going = ::StepGame( game );
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
	outcome.matched = !replay.HasDiverged();
	outcome.steps = replay.GetStep();
	outcome.divergedAt = replay.GetDivergedStep();
	outcome.difference = replay.GetDifference();
	return outcome;
}

int cReplayCheck::Verify( const std::string &path, const std::string &dataRoot ) {
	cRecording recording;
	std::string error;
	if ( !cReplayFile::Load( path, recording, error ) ) {
		std::fprintf( stderr, "%s\n", MakePrintable( error ).c_str() );
		return 1;
	}
	const cReplayOutcome outcome = Run( recording, dataRoot );
	if ( outcome.matched ) {
		std::printf( "Replay %s: %" PRIu64 " steps, every checkpoint matched\n", MakePrintable( path ).c_str(), outcome.steps );
	} else {
		std::printf( "Replay went another way at step %" PRIu64 ": %s\n", outcome.divergedAt, outcome.difference.c_str() );
	}
	std::printf( "Final state hash: %016" PRIx64 "\n", outcome.finalHash );
	return outcome.matched ? 0 : 1;
}
