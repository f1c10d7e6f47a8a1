// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/Recorder.h"

#include "app/Game.h"
#include "app/StateHash.h"
#include "replay/RecordingClock.h"
#include "replay/RecordingInput.h"
#include "replay/ReplayFile.h"
#include "Version.h"

cRecorder::cRecorder( cInputBackend &platformInput, cClock &platformClock )
	: input( std::make_unique<cRecordingInput>( platformInput, *this ) ),
	  clock( std::make_unique<cRecordingClock>( platformClock, *this ) ) {
}

cRecorder::~cRecorder() = default;

cInputBackend &cRecorder::GetInput() {
	return *input;
}

cClock &cRecorder::GetClock() {
	return *clock;
}

// The state at a step's poll is the state the step before left.
void cRecorder::BeginStep( bool pause ) {
	const uint64_t done = tape.GetStepCount();
	if ( watched != nullptr && done > 0 && done % cRecording::CHECKPOINT_EVERY == 0 ) {
		checkpoints.push_back( cCheckpoint::Take( done, cStateHash( *watched ) ) );
	}
	tape.BeginStep( pause );
	betweenSteps = false;
}

void cRecorder::Mark( cMark &mark ) const {
	tape.Mark( mark.tape );
	mark.checkpoints = checkpoints.size();
}

void cRecorder::Rewind( const cMark &mark ) {
	tape.Rewind( mark.tape );
	checkpoints.resize( mark.checkpoints );
	betweenSteps = true;
}

cRecording cRecorder::GetRecording() const {
	cRecording recording;
	recording.gameVersion = KMVT_VERSION;
	recording.soundOpened = watched != nullptr && watched->GetSoundLayer().IsEnabled();
	recording.steps = tape.GetStepCount();
	recording.tape = tape.GetTape();
	recording.checkpoints = checkpoints;
	// The last step's checkpoint, even at a round number: its poll never came.
	if ( watched != nullptr && recording.steps > 0 ) {
		recording.checkpoints.push_back( cCheckpoint::Take( recording.steps, cStateHash( *watched ) ) );
	}
	return recording;
}

bool cRecorder::Save( const std::string &path, std::string &error ) const {
	return cReplayFile::Save( path, GetRecording(), error );
}
