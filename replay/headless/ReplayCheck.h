// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cReplayCheck plays a recording without a window or sound, as fast as it goes, comparing every
// checkpoint: what --verify runs, and the replay tests.

#include <cstdint>
#include <string>

struct cRecording;

struct cReplayOutcome {
	bool				matched = false;	// every step read as recorded and every checkpoint agreed
	uint64_t			steps = 0;			// steps played
	uint64_t			divergedAt = 0;		// the first step that went another way, 0 for none
	std::string			difference;			// what differed there
	uint64_t			finalHash = 0;		// the state hash after the last step played
};

class cReplayCheck {
public:
	// dataRoot is the folder that holds the resource tree.
	static cReplayOutcome	Run( const cRecording &recording, const std::string &dataRoot = "." );
	// --replay FILE --verify: reads and plays the file, prints the outcome and the final state's
	// hash, and gives the exit status: 0 when every checkpoint matched, 1 otherwise.
	static int				Verify( const std::string &path, const std::string &dataRoot );
};
