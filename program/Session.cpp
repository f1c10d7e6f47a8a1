// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/Session.h"

#include <cinttypes>
#include <cstdio>

#include "actors/GameState.h"
#include "app/Game.h"
#include "app/StateHash.h"
#include "input/KeyCodes.h"
#include "log/Printable.h"
#include "net/NetSession.h"
#include "replay/GameStep.h"
#include "replay/Recorder.h"
#include "replay/Replay.h"
#include "replay/ReplayFile.h"
#include "replay/ReplaySound.h"

cSession::cSession() = default;

cSession::~cSession() = default;

bool cSession::Open( const cCommandLine &line, cInputBackend &platformInput, cSoundBackend *platformSound,
					 cClock &platformClock, std::string &error ) {
	input = &platformInput;
	sound = platformSound;
	clock = &platformClock;
	if ( line.online != cCommandLine::ALONE ) {
		return true;		// the online session records its games itself
	}
	if ( line.mode == cCommandLine::RECORD ) {
		recorder = std::make_unique<cRecorder>( platformInput, platformClock );
		recordPath = line.file;
		input = &recorder->GetInput();
		clock = &recorder->GetClock();
	} else if ( line.mode == cCommandLine::REPLAY ) {
		if ( !cReplayFile::Load( line.file, recording, error ) ) {
			return false;
		}
		replay = std::make_unique<cReplay>( recording, &platformInput, platformClock );
		replaySound = std::make_unique<cReplaySound>( platformSound, recording.soundOpened );
		input = &replay->GetInput();
		clock = &replay->GetClock();
		sound = replaySound.get();
	}
	return true;
}

// Both machines' sound layers open, whatever their devices do: the state the two compare holds it.
void cSession::OpenOnline( const cCommandLine &line, cLink &link, const cHello &hello, cPacingClock &time ) {
	const cNetSession::eRole role = line.online == cCommandLine::HOST ? cNetSession::HOST : cNetSession::JOIN;
	const std::string recordPath = line.mode == cCommandLine::RECORD ? line.file : std::string();
	online = std::make_unique<cNetSession>( link, role, hello, recordPath, *input, *clock, time );
	replaySound = std::make_unique<cReplaySound>( sound, true );
	online->SetSound( replaySound.get() );
	input = &online->GetInput();
	clock = &online->GetClock();
	sound = replaySound.get();
}

bool cSession::IsWaitingForPartner() const {
	return online && online->IsWaiting();
}

int cSession::GetConnectionLostSeconds() const {
	return online ? online->GetConnectionLostSeconds() : -1;
}

void cSession::Watch( const cGame &game ) {
	watched = &game;
	if ( recorder ) {
		recorder->Watch( game );
	}
}

bool cSession::IsReplaying() const {
	return replay && replay->IsPlaying();
}

bool cSession::Step( cGame &game ) {
	if ( online ) {
		return online->Step( game );
	}
	if ( !IsReplaying() ) {
		const bool going = StepGame( game );
		if ( recorder ) {
			recorder->EndStep();
		}
		return going;
	}
	if ( replay->IsPlayerKeyDown( KEY_ESCAPE ) ) {
		EndReplay( game );
		return true;
	}
	const int steps = replay->IsAnyPlayerKeyDown() ? FAST_STEPS : 1;
	for ( int i = 0; i < steps; i++ ) {
		if ( replay->IsAtEnd() ) {
			break;
		}
		StepGame( game );	// a recorded quit ends the replay, not the program
		if ( !replay->CheckStep( game ) ) {
			break;
		}
	}
	if ( replay->IsAtEnd() || !replay->IsPlaying() ) {
		EndReplay( game );
	}
	return true;
}

// The state hash at the replay's end goes to the standard output, to compare with the recording's.
void cSession::EndReplay( cGame &game ) {
	replay->Stop();
	std::printf( "Replay left at step %" PRIu64 " of %" PRIu64 "; state hash: %016" PRIx64 "\n", replay->GetStep(),
				 replay->GetStepCount(), cStateHash( game ).GetTotal() );
	game.ClearGame();
	game.SetGameState( STATE_MAIN_MENU );
}

bool cSession::Close( std::string &error ) {
	if ( online && watched != nullptr ) {
		online->Close( *watched );
	}
	if ( !recorder ) {
		return true;
	}
	const cRecording made = recorder->GetRecording();
	if ( !made.checkpoints.empty() ) {
		std::printf( "Recorded %" PRIu64 " steps to %s; final state hash: %016" PRIx64 "\n", made.steps,
					 MakePrintable( recordPath ).c_str(), made.checkpoints.back().total );
	}
	return cReplayFile::Save( recordPath, made, error );
}

bool cSession::SaveRecording( std::string &error ) const {
	if ( !recorder ) {
		error = "this run is not recorded";
		return false;
	}
	return recorder->Save( recordPath, error );
}
