// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Plays the game online from a headless process, a bot at this machine's player: the host's bot is
// player 1 and its clicks drive the shared menus (through a two-player game, back to the main menu
// and out through the quit entry), the partner's bot plays player 2 in every game the host starts.
// Both pace their steps on the real clock, as the game does, so that two such processes play
// together over the loopback, and print how the online game ended with its final state hash.

#include <cstdint>
#include <string>

#include "harness/AutoplayGame.h"

struct cOnlineOptions {
	bool				host = true;
	std::string			partner;			// joining: the host's name or address
	uint16_t			port = 0;
	uint32_t			delay = 0;			// --delay; 0 lets the host measure it
	std::string			version;			// the version the hello names
	std::string			recordPath;			// where the online game's recording goes, or empty
	int					waitSeconds = 60;	// the host's wait for a partner
	cGameSetup			setup;
};

// The exit status: 0 when the online game was played and ended with the quit or the partner's
// loss, back at the main menu; 1 when it was refused, never began or went wrong.
int						PlayOnline( const cOnlineOptions &options );
