// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cLockstep keeps the two machines of an online game in step: a step runs only when both players'
// inputs for it are there, and nothing is guessed. A machine's input sampled while it runs step N is
// the input of step N + D (the input delay), so that it reaches the partner before the partner
// needs it; the first D steps have no input on either side. Every input packet repeats the inputs
// the partner has not acknowledged yet, so a lost packet costs nothing once a later one arrives,
// and duplicated, late or reordered packets change nothing. The delay may change during the game:
// a longer one repeats the last own input over the steps it adds, a shorter one drops the samples
// that would land on steps already given, so every step keeps exactly one input of each side and
// the partner needs to know nothing of it. After every HASH_EVERY steps each
// machine sends its state's hash with its parts; a difference stops the online game, naming the
// step and the first part that differs. A game that plays ahead of the partner's inputs
// (net/Rollback.h) keeps the same packets, window and hashes: its own inputs are given as it plays
// (Give), and the lockstep's step is the next one it confirms (Confirm).

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "net/NetMessage.h"
#include "net/Packet.h"
#include "replay/Checkpoint.h"

class cLockstep {
public:
	static constexpr uint64_t WINDOW = 128;				// steps of inputs held on each side
	static constexpr uint64_t HASH_EVERY = 60;			// steps
	static constexpr size_t	MAX_PENDING_HASHES = 4;		// on each side, waiting for the other's

	explicit			cLockstep( uint32_t delay );

	uint32_t			GetDelay() const { return delay; }
	// From the next step on, sampled inputs belong delay steps later (at most WINDOW / 2 - 1; 0 only
	// for a game that runs ahead).
	void				SetDelay( uint32_t delay );
	// Own steps 0 .. GetOwnEnd() - 1 have their input.
	uint64_t			GetOwnEnd() const { return ownEnd; }
	// The partner holds own steps 0 .. GetAcknowledged() - 1.
	uint64_t			GetAcknowledged() const { return acknowledged; }
	uint64_t			GetStep() const { return next; }		// steps run
	// The steps a packet from the partner may name now.
	cStepWindow			GetWindow() const;

	// Both inputs of the next step are there, and the own input it adds has room.
	bool				CanStep() const;
	// Runs the next step: sampled becomes the own input of step + D; gives both inputs of the step.
	void				Step( const cStepInput &sampled, cStepInput &own, cStepInput &partner );

	// A game that runs ahead of the partner's inputs gives its own input while it runs step
	// runStep, and confirms the steps behind it as the partner's inputs come.
	bool				CanGive( uint64_t runStep ) const;
	void				Give( uint64_t runStep, const cStepInput &sampled );
	// The own input of a step from GetStep() to GetOwnEnd() - 1.
	cStepInput			GetOwnInput( uint64_t step ) const;
	// The partner's input of a step from GetStep() on, when it is here.
	bool				FindPartnerInput( uint64_t step, cStepInput &input ) const;
	// The partner's input of the last step it gave without a gap.
	const cStepInput &	GetLastPartnerInput() const { return lastPartner; }
	bool				CanConfirm() const;
	// The next step is run: both its inputs are given.
	void				Confirm( cStepInput &own, cStepInput &partner );

	// The inputs the partner has not acknowledged (at most cPacket::MAX_INPUTS), and this side's
	// acknowledgement.
	cNetMessage			MakeInputs() const;
	// False when the partner acknowledges steps that were never sent.
	bool				TakeInputs( const cInputRun &run );
	// Steps of the partner's inputs held without a gap.
	uint64_t			GetPartnerInputs() const { return partnerHeld; }

	// After a step that ends a hash period: this side's hash, to send.
	static bool			IsHashStep( uint64_t steps ) { return steps > 0 && steps % HASH_EVERY == 0; }
	cNetMessage			TakeOwnHash( const cCheckpoint &checkpoint );
	// False when the report does not fit the names it refers to.
	bool				TakePartnerHash( const cHashReport &report );
	bool				IsOutOfStep() const { return outOfStepAt != 0; }
	uint64_t			GetOutOfStepStep() const { return outOfStepAt; }
	const std::string &	GetOutOfStepPart() const { return outOfStepPart; }

private:
	struct cSlot {
		uint64_t		step = UINT64_MAX;
		cStepInput		input;
	};

	void				Compare();
	// Own inputs up to step end - 1, each holding the one before.
	void				Hold( uint64_t end );

	uint32_t			firstDelay;			// the steps before it have no input on either side
	uint32_t			delay;
	uint64_t			next = 0;
	uint64_t			ownEnd;				// one past the last own input given
	std::vector<cSlot>	own;				// steps acknowledged .. ownEnd - 1
	std::vector<cSlot>	partner;			// steps next .. next + WINDOW - 1, as they come
	uint64_t			acknowledged;		// the partner holds own steps 0 .. acknowledged - 1
	uint64_t			partnerHeld;		// partner's steps 0 .. partnerHeld - 1 are here or run
	cStepInput			lastPartner;		// of step partnerHeld - 1
	std::deque<cCheckpoint>	ownHashes;
	std::deque<cCheckpoint>	partnerHashes;
	std::vector<std::string> ownNames;		// as last sent
	std::vector<std::string> partnerNames;	// as last received
	uint64_t			outOfStepAt = 0;
	std::string			outOfStepPart;
};
