// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cForwardingInput passes every call on to the platform's input backend. The backends that stand
// between the game and the platform (the recording, online play) derive from it and take over only
// the calls they change.

#include "input/InputBackend.h"

class cForwardingInput : public cInputBackend {
public:
	explicit		cForwardingInput( cInputBackend &platform ) : platform( platform ) {}

	bool			AcquireKeyboard() override { return platform.AcquireKeyboard(); }
	bool			UnacquireKeyboard() override { return platform.UnacquireKeyboard(); }
	bool			ReadKeyboard( uint8_t state[256] ) override { return platform.ReadKeyboard( state ); }
	bool			AcquireMouse( bool exclusive ) override { return platform.AcquireMouse( exclusive ); }
	bool			UnacquireMouse() override { return platform.UnacquireMouse(); }
	bool			ReadMouse( cMouseReading &reading ) override { return platform.ReadMouse( reading ); }
	void			WarpMouse( int32_t x, int32_t y ) override { platform.WarpMouse( x, y ); }
	bool			TakePauseRequest() override { return platform.TakePauseRequest(); }
	void			SetPlayerCount( int count ) override { platform.SetPlayerCount( count ); }
	void			Rumble( int player ) override { platform.Rumble( player ); }
	void			SetPlaying( bool playing ) override { platform.SetPlaying( playing ); }
	void			SetRawKeys( bool raw ) override { platform.SetRawKeys( raw ); }
	std::string		GetKeyName( int key ) const override { return platform.GetKeyName( key ); }
	const char *	GetErrorCode() const override { return platform.GetErrorCode(); }
	const char *	GetErrorText() const override { return platform.GetErrorText(); }

protected:
	cInputBackend &	platform;
};
