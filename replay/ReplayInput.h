// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cReplayInput gives the game the recorded polls of the keyboard and the mouse while the replay
// plays, still polling the platform (when there is one) for the player's keys and dropping its
// pause requests; once the replay stops it passes the platform through.

#include "input/InputBackend.h"

class cReplay;

class cReplayInput : public cInputBackend {
public:
					cReplayInput( cInputBackend *platform, cReplay &replay ) : platform( platform ), replay( replay ) {}

	bool			AcquireKeyboard() override;
	bool			UnacquireKeyboard() override;
	bool			ReadKeyboard( uint8_t state[256] ) override;
	bool			AcquireMouse( bool exclusive ) override;
	bool			UnacquireMouse() override;
	bool			ReadMouse( cMouseReading &reading ) override;
	void			WarpMouse( int32_t x, int32_t y ) override;
	bool			TakePauseRequest() override;
	// What the game tells the pads reaches the player's pads only once the replay stopped.
	void			SetPlayerCount( int count ) override;
	void			Rumble( int player ) override;
	void			SetPlaying( bool playing ) override;
	void			SetRawKeys( bool raw ) override;
	std::string		GetKeyName( int key ) const override;
	const char *	GetErrorCode() const override;
	const char *	GetErrorText() const override;

private:
	bool			IsPassingThrough() const;

	cInputBackend *	platform;		// not owned; may be null
	cReplay &		replay;
};
