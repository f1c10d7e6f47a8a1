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
	void			SetPlayer( int player ) { this->player = player; step = cStepInput(); }
	bool			IsOnline() const { return player != 0; }
	// This machine's player's keys and mouse now, for a step to come.
	cStepInput		Sample();
	// What the game reads in the step about to run.
	void			SetStepInput( const cStepInput &input ) { step = input; }
	// While quiet (a step played again), the game neither rumbles nor moves the platform's cursor.
	void			SetQuiet( bool quiet ) { this->quiet = quiet; }

	bool			ReadKeyboard( uint8_t state[256] ) override;
	bool			ReadMouse( cMouseReading &reading ) override;
	void			WarpMouse( int32_t x, int32_t y ) override;
	bool			TakePauseRequest() override;
	void			Rumble( int hitPlayer ) override;

private:
	static constexpr int HOST = 1;

	int				player = 0;
	bool			quiet = false;
	cStepInput		step;
};
