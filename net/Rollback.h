// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRollback runs an online game ahead of the partner's inputs, so that this machine's own keys
// answer at once whatever the round trip: a step the partner's input has not reached yet is
// played with that input guessed (the last one received), up to MAX_GUESS steps ahead of the
// newest step both inputs confirm. The match is saved before every step played on a guess; when
// the partner's real input of such a step differs from the guess, the game goes back to the save
// of the first wrong step and plays forward again to where it was, at once. A step is confirmed
// when both its inputs are known and it was played with them: only confirmed steps go on (the
// recording, the state hash, what the step asked of the devices), each with the game in the state
// just after it. The lockstep keeps the inputs, the packets and the hashes; its next step is the
// next step to confirm. A step that ends the game (the player quit) ends it only once confirmed:
// until then it may be a guess's.

#include <cstdint>
#include <functional>
#include <vector>

#include "app/Match.h"
#include "net/OnlineInput.h"
#include "net/StepInput.h"
#include "replay/Recorder.h"

class cGame;
class cLockstep;

class cRollback {
public:
	static constexpr uint64_t MAX_GUESS = 10;		// steps played ahead of the confirmed ones
	static constexpr uint32_t MAX_LOCAL_DELAY = 2;	// steps
	static constexpr uint32_t LOCAL_DELAY_TRIP = 100;	// msec of round trip per step of local delay

	// Plays one step of the game with these inputs; again: the step was played before and is
	// played again after a correction. False when the player quit.
	using tRun = std::function<bool( uint64_t step, const cStepInput &own, const cStepInput &partner, bool again )>;
	// A step is confirmed; the game is in the state just after it when the step is one that
	// tLooks names (every step when none is set), else in the newest.
	using tConfirm = std::function<void( uint64_t step, const cStepInput &own, const cStepInput &partner )>;
	using tLooks = std::function<bool( uint64_t step )>;
	// True while the game goes back or plays steps again: what it starts then was started before.
	using tQuiet = std::function<void( bool quiet )>;

						cRollback( cGame &game, cLockstep &lockstep, tRun run, tConfirm confirm );
	// The recording goes back with the game (not owned; may be null).
	void				SetRecorder( cRecorder *recorder ) { this->recorder = recorder; }
	// The input whose requests to the devices wait for their step's confirmation (not owned; may
	// be null): it holds them from now on.
	void				SetInput( cOnlineInput *input );
	void				SetQuiet( tQuiet quiet ) { this->quiet = std::move( quiet ); }
	// Going to a confirmed step's state costs three copies of the match: only for these steps.
	void				SetLooks( tLooks looks ) { this->looks = std::move( looks ); }

	// The steps of its own input delay a machine takes on a line: a longer round trip sends the
	// own input earlier, so that fewer guesses go wrong.
	static uint32_t		ChooseLocalDelay( uint32_t roundTrip );

	// Steps 0 .. GetNewest() - 1 were played; the game shows the last of them.
	uint64_t			GetNewest() const { return newest; }
	// The next step may be played: it guesses no further than MAX_GUESS, its own input has room,
	// and the last step played did not end the game.
	bool				CanStep() const;
	// Plays the next step; sampled is the own input of the step the local delay names. False once
	// a confirmed step ended the game.
	bool				Step( const cStepInput &sampled );
	// After the lockstep took the partner's inputs: plays again from the first step whose guess
	// they prove wrong, then confirms what both inputs allow. False once a confirmed step ended
	// the game.
	bool				Correct();
	// The game and the recording go back to the last confirmed step: the online game ends there.
	void				GoBackToConfirmed();

	uint64_t			GetStepsAgain() const { return stepsAgain; }	// steps played again in all
	uint64_t			GetCorrections() const { return corrections; }

private:
	struct cSlot {
		cStepInput		own;
		cStepInput		partner;			// as played: known or guessed
		bool			known = false;
		bool			going = true;		// the step did not end the game
		cMatch			before;				// the match before the step
		cRecorder::cMark recorded;			// the recording before the step
		cOnlineInput::cRequests requests;	// of the step as played
	};

	cSlot &				GetSlot( uint64_t step ) { return slots[step % slots.size()]; }
	const cSlot &		GetSlot( uint64_t step ) const { return slots[step % slots.size()]; }
	void				Play( uint64_t step, bool again, bool saved );
	void				GoBack( uint64_t step );
	void				ConfirmDue();
	void				BeQuiet( bool on ) const;

	cGame &				game;
	cLockstep &			lockstep;
	tRun				run;
	tConfirm			confirm;
	tQuiet				quiet;
	tLooks				looks;
	cRecorder *			recorder = nullptr;
	cOnlineInput *		input = nullptr;
	std::vector<cSlot>	slots;				// steps confirmed .. newest - 1, and the one after
	cMatch				spare;				// the newest match while a confirmed one is looked at
	uint64_t			newest = 0;
	bool				ended = false;		// a confirmed step ended the game
	uint64_t			stepsAgain = 0;
	uint64_t			corrections = 0;
};
