// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cStateHash is a fingerprint of everything a game step changes: the game state and options, the
// cursor, the sound layer's music and heartbeat, the scene's layers and camera, and every player's,
// enemy's, shot's, item's and explosion's fields. Recordings compare it at checkpoints, and tests use
// it to show that drawing changes nothing. Each part of the state has a hash of its own, so that a
// difference can be named: "game", "scene", "player 1", "enemy 7", "bullets", "items", "explosions".

#include <cstdint>
#include <string>
#include <vector>

class cGame;

struct cStatePart {
	std::string			name;
	uint64_t			hash;
};

class cStateHash {
public:
	explicit			cStateHash( const cGame &game );

	uint64_t			GetTotal() const { return total; }
	const std::vector<cStatePart> &GetParts() const { return parts; }
	// The name of the first part, in this hash's order, that differs from other's or that only one
	// of the two has; an empty string when the two are the same.
	std::string			FindFirstDifference( const cStateHash &other ) const;

private:
	std::vector<cStatePart>	parts;
	uint64_t			total = 0;
};
