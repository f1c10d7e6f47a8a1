// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRecorder records a run of the game: the game is given the recorder's input backend and clock,
// which pass the platform's through and note every value on the tape. A step begins with the input
// layer's poll, whose first question is the pause request, and ends when the driver says so:
// reads between the end of a step and the next poll are a tool's, not the game's, and pass
// unrecorded. Every 100 steps the recorder keeps a checkpoint of the watched game's state.

#include <memory>
#include <string>
#include <vector>

#include "replay/Checkpoint.h"
#include "replay/Recording.h"
#include "replay/TapeWriter.h"

class cClock;
class cGame;
class cInputBackend;
class cRecordingClock;
class cRecordingInput;

class cRecorder {
public:
						cRecorder( cInputBackend &platformInput, cClock &platformClock );
						~cRecorder();
						cRecorder( const cRecorder & ) = delete;
	cRecorder &			operator=( const cRecorder & ) = delete;

	cInputBackend &		GetInput();
	cClock &			GetClock();
	// The game whose state the checkpoints hold; not owned.
	void				Watch( const cGame &game ) { watched = &game; }

	// The recording up to now, the last step's checkpoint included.
	cRecording			GetRecording() const;
	bool				Save( const std::string &path, std::string &error ) const;

	// After every step of the game.
	void				EndStep() { betweenSteps = true; }

	// The recording as it is between two steps; Rewind takes back every step recorded after it,
	// for a game that went back to its state of then.
	struct cMark {
		cTapeWriter::cMark tape;
		size_t			checkpoints = 0;
	};
	void				Mark( cMark &mark ) const;
	void				Rewind( const cMark &mark );

	// From the recording backends.
	void				BeginStep( bool pause );
	bool				IsRecording() const { return !betweenSteps; }
	cTapeWriter &		GetTape() { return tape; }

private:
	cTapeWriter			tape;
	std::vector<cCheckpoint> checkpoints;
	const cGame *		watched = nullptr;
	bool				betweenSteps = false;
	std::unique_ptr<cRecordingInput> input;
	std::unique_ptr<cRecordingClock> clock;
};
