// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cReplay plays a recording back: the game is given the replay's input backend and clock, which
// give it, step by step, what the recorded game read, in the same order. After each step the
// driver asks CheckStep, which compares the checkpoint due with the game's state; reads between
// then and the next step (a tool's, not the game's) get the last values and are not compared. When the tape
// ends, when the replay went another way, or when it is stopped, the backends pass the platform's
// input and clock through: the player takes over, the tick count going on from the recording's.

#include <cstdint>
#include <memory>
#include <string>

#include "replay/Recording.h"
#include "replay/TapeReader.h"
#include "replay/TapeStep.h"

class cClock;
class cGame;
class cInputBackend;
class cReplayClock;
class cReplayInput;

class cReplay {
public:
	// platformInput may be null (no window): the player's keys then read as released.
	explicit			cReplay( const cRecording &recording, cInputBackend *platformInput, cClock &platformClock );
						~cReplay();
						cReplay( const cReplay & ) = delete;
	cReplay &			operator=( const cReplay & ) = delete;

	cInputBackend &		GetInput();
	cClock &			GetClock();

	// After every step of the game: whether it read everything the recording holds for it, in
	// order, and left the state the checkpoint due says. False (and the replay stops) when not.
	bool				CheckStep( const cGame &game );
	bool				IsPlaying() const { return !stopped; }
	bool				IsAtEnd() const { return step == recording.steps; }
	uint64_t			GetStep() const { return step; }			// steps played
	uint64_t			GetStepCount() const { return recording.steps; }
	bool				HasDiverged() const { return divergedAt != 0; }
	uint64_t			GetDivergedStep() const { return divergedAt; }
	const std::string &	GetDifference() const { return difference; }
	void				Stop();
	// Logs "Replay went another way at step N" and why, and stops the replay.
	void				Diverge( uint64_t atStep, const std::string &why );

	// The player's keys at the last poll, read while the game reads the tape.
	bool				IsPlayerKeyDown( int key ) const;
	bool				IsAnyPlayerKeyDown() const;

	// From the replay backends.
	bool				BeginStep();
	// The next read of the step if it is of that kind; null (the replay went another way) if not,
	// and null between a step's check and the next step, where the reads are not the game's.
	const cTapeStep::cRead *TakeRead( cTapeStep::eKind kind, cTapeStep::eKind orFailed );
	void				NotePlayerKeys( const uint8_t state[256] );

private:
	const cRecording &	recording;
	cTapeReader			reader;
	cTapeStep			current;			// the preamble until the first poll
	size_t				nextRead = 0;
	bool				betweenSteps = false;
	uint64_t			step = 0;
	bool				stopped = false;
	uint64_t			divergedAt = 0;
	std::string			difference;
	uint8_t				playerKeys[256] = {};
	std::unique_ptr<cReplayInput> input;
	std::unique_ptr<cReplayClock> clock;
};
