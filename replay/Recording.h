// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRecording is a recorded game as the replay file holds it: which game made it, whether its sound
// device opened, the tape of everything the game read from the platform, and the checkpoints.

#include <cstdint>
#include <string>
#include <vector>

#include "replay/Checkpoint.h"

struct cRecording {
	static const uint64_t		CHECKPOINT_EVERY = 100;		// steps

	std::string					gameVersion;
	bool						soundOpened = false;
	uint64_t					steps = 0;
	std::vector<uint8_t>		tape;
	// After steps 100, 200, ... and after the last step.
	std::vector<cCheckpoint>	checkpoints;

	// The number of checkpoints a recording of so many steps holds.
	static uint64_t				CountCheckpoints( uint64_t steps ) { return ( steps + CHECKPOINT_EVERY - 1 ) / CHECKPOINT_EVERY; }
	static uint64_t				GetCheckpointStep( uint64_t index, uint64_t steps );
};
