// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cPads keeps the pads plugged in, what each holds, and which player each drives, for any input
// backend: the backend reports pads coming and going and their states, and asks for the keys,
// the cursor's step and the click they add to the keyboard and the mouse.
//
// Which pad is whose: at the start of a game, in the order the pads were plugged in, the first pad
// drives player 1 and the second player 2, except that a lone pad in a two-player game drives
// player 2 (the other player keeps W A S D). A pad plugged in later takes the seat of a pad that
// went away, the same pad first, or a seat nobody has; a pad that went away keeps its seat.

#include <cstdint>
#include <string>
#include <vector>

#include "input/PadState.h"

class cPads {
public:
	static constexpr int NO_PAD = -1;

	// id is the backend's handle for the pad; identity names the device (the same pad plugged in
	// again has the same identity, two pads of one make may share it).
	void			Connect( int id, const std::string &identity );
	// True when the pad drove a player: the player has left the controls.
	bool			Disconnect( int id );
	void			SetState( int id, const cPadState &state );
	// At the start of every game: 1 or 2 players; the seats are given again.
	void			SetPlayerCount( int count );
	// In play the pads drive their players only: the cursor stays, and a south button held from
	// play (fire) is no click when it is let go on the pause or end screen.
	void			SetPlaying( bool playing ) { inPlay = playing; }

	int				GetPlayer( int id ) const;			// 1, 2, or 0 for a pad that drives nobody
	int				GetPad( int player ) const;			// the id of the pad plugged in for the player, or NO_PAD
	bool			IsConnected( int id ) const { return Find( id ) != nullptr; }
	size_t			GetCount() const { return pads.size(); }

	void			PressKeys( uint8_t keys[256] ) const;
	void			GetCursorStep( int32_t &dx, int32_t &dy ) const;
	bool			IsClickHeld() const;		// a south button pressed outside play and held

private:
	struct cPad {
		int			id;
		std::string	identity;
		cPadState	state;
		bool		firing = false;		// the south button is held since a frame of play
	};
	struct cSeat {
		bool		taken = false;
		std::string	identity;			// of the pad that took the seat
		int			pad = NO_PAD;		// while that pad is plugged in
	};

	const cPad *	Find( int id ) const;
	int				ChooseSeat( const std::string &identity ) const;
	void			Sit( int seat, const cPad &pad );

	std::vector<cPad>	pads;			// in the order they were plugged in
	cSeat				seats[2];		// player 1's and player 2's
	int					playerCount = 1;
	bool				inPlay = false;
};
