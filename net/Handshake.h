// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The handshake of an online game: both machines say who they are (cHello) and refuse each other at
// once when they would not play the same game, with one line that says what differs and what to do;
// the host then measures the round trip and chooses the input delay, the least that keeps the game
// from waiting while packets come on time.

#include <cstdint>
#include <string>

#include "net/NetMessage.h"

class cHandshake {
public:
	static constexpr uint64_t PROTOCOL = 1;

	// This machine: the game's version, the hash of the data under dataRoot, the build's
	// determinism fingerprint and the delay asked for (0: measure it).
	static cHello		MakeHello( const std::string &version, const std::string &dataRoot, uint64_t fingerprint,
								   uint32_t delay );
	// An empty text when the two machines can play together; otherwise the refusal line.
	static std::string	Compare( const cHello &own, const cHello &partner );
	// The host's --delay, else the partner's, else the least delay whose steps outlast the round
	// trip as measured between two steps' reads of the link, which holds the wait for the read,
	// with the margin for jitter; the game follows the line from there.
	static uint32_t		ChooseDelay( uint32_t hostAsked, uint32_t partnerAsked, uint32_t roundTripMsec );
};
