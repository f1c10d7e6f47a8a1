// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cOnlineInput stands between the game and the platform's keyboard and mouse. Alone it passes the
// platform through. In an online game the game reads the step's input that both machines put
// together, and the platform is polled once a step for this machine's own player only (Sample):
// the window's requests to pause are dropped, since a lost focus on one machine must not pause both.

#include "input/ForwardingInput.h"
#include "net/StepInput.h"

class cOnlineInput : public cForwardingInput {
public:
	explicit		cOnlineInput( cInputBackend &platform ) : cForwardingInput( platform ) {}

	// player 1 (the host) or 2 (the partner); 0 ends the online game.
	void			SetPlayer( int player );
	bool			IsOnline() const { return player != 0; }
	// This machine's player's keys and mouse now, for a step to come.
	cStepInput		Sample();
	// What the game reads in the step about to run.
	void			SetStepInput( const cStepInput &input ) { step = input; }

	// What a step asked of this machine's devices: the last cursor warp and the rumbles of its
	// player's pad.
	struct cRequests {
		bool		warp = false;
		int32_t		x = 0;
		int32_t		y = 0;
		int			rumbles = 0;
	};
	// Played ahead of the partner, a step may be a guess that a correction takes back: its
	// requests are held, taken with the step, and done once the step is confirmed.
	void			SetHolding( bool holding ) { this->holding = holding; held = cRequests(); }
	cRequests		TakeRequests();
	void			Do( const cRequests &requests );

	bool			ReadKeyboard( uint8_t state[256] ) override;
	bool			ReadMouse( cMouseReading &reading ) override;
	void			WarpMouse( int32_t x, int32_t y ) override;
	bool			TakePauseRequest() override;
	void			Rumble( int hitPlayer ) override;

private:
	static constexpr int HOST = 1;

	int				player = 0;
	bool			holding = false;
	cRequests		held;
	cStepInput		step;
};
