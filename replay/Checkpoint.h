// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cCheckpoint is what a recording keeps of the game's state after a step: the whole state's hash,
// and a short hash of each named part, so that a playback that went another way can say where.

#include <cstdint>
#include <string>
#include <vector>

class cStateHash;

struct cCheckpoint {
	uint64_t					step = 0;		// the number of steps played, 1 for the first
	uint64_t					total = 0;
	std::vector<std::string>	names;			// "game", "scene", "player 1", "enemy 7", ...
	std::vector<uint32_t>		parts;			// one per name

	static cCheckpoint			Take( uint64_t step, const cStateHash &hash );
	// An empty string when the two states are the same; otherwise the first part, in this
	// checkpoint's order, whose hash differs or that only one of the two has.
	std::string					FindDifference( const cCheckpoint &other ) const;
};
