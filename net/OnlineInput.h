// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cOnlineInput stands between the game and the platform's keyboard and mouse. Alone it passes the
// platform through. In an online game the game reads the step's input that both machines put
// together, and the platform is polled once a step for this machine's own player only (Sample):
// the window's requests to pause are dropped, since a lost focus on one machine must not pause both.

#include "input/InputBackend.h"
#include "net/StepInput.h"

class cOnlineInput : public cInputBackend {
public:
	explicit		cOnlineInput( cInputBackend &platform ) : platform( platform ) {}

	// player 1 (the host) or 2 (the partner); 0 ends the online game.
	void			SetPlayer( int player ) { this->player = player; step = cStepInput(); }
	bool			IsOnline() const { return player != 0; }
	// This machine's player's keys and mouse now, for a step to come.
	cStepInput		Sample();
	// What the game reads in the step about to run.
	void			SetStepInput( const cStepInput &input ) { step = input; }

	bool			AcquireKeyboard() override { return platform.AcquireKeyboard(); }
	bool			UnacquireKeyboard() override { return platform.UnacquireKeyboard(); }
	bool			ReadKeyboard( uint8_t state[256] ) override;
	bool			AcquireMouse( bool exclusive ) override { return platform.AcquireMouse( exclusive ); }
	bool			UnacquireMouse() override { return platform.UnacquireMouse(); }
	bool			ReadMouse( cMouseReading &reading ) override;
	void			WarpMouse( int32_t x, int32_t y ) override;
	bool			TakePauseRequest() override;
	void			SetPlayerCount( int count ) override { platform.SetPlayerCount( count ); }
	void			Rumble( int hitPlayer ) override;
	void			SetPlaying( bool playing ) override { platform.SetPlaying( playing ); }
	const char *	GetErrorCode() const override { return platform.GetErrorCode(); }
	const char *	GetErrorText() const override { return platform.GetErrorText(); }

private:
	static constexpr int HOST = 1;

	cInputBackend &	platform;
	int				player = 0;
	cStepInput		step;
};
