// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRecordingInput passes the platform's input through to the game and notes on the recorder's tape
// every poll and what it gave.

#include "input/InputBackend.h"

class cRecorder;

class cRecordingInput : public cInputBackend {
public:
					cRecordingInput( cInputBackend &platform, cRecorder &recorder ) : platform( platform ), recorder( recorder ) {}

	bool			AcquireKeyboard() override { return platform.AcquireKeyboard(); }
	bool			UnacquireKeyboard() override { return platform.UnacquireKeyboard(); }
	bool			ReadKeyboard( uint8_t state[256] ) override;
	bool			AcquireMouse( bool exclusive ) override { return platform.AcquireMouse( exclusive ); }
	bool			UnacquireMouse() override { return platform.UnacquireMouse(); }
	bool			ReadMouse( cMouseReading &reading ) override;
	void			WarpMouse( int32_t x, int32_t y ) override { platform.WarpMouse( x, y ); }
	bool			TakePauseRequest() override;
	void			SetPlayerCount( int count ) override { platform.SetPlayerCount( count ); }
	void			Rumble( int player ) override { platform.Rumble( player ); }
	void			SetPlaying( bool playing ) override { platform.SetPlaying( playing ); }
	const char *	GetErrorCode() const override { return platform.GetErrorCode(); }
	const char *	GetErrorText() const override { return platform.GetErrorText(); }

private:
	cInputBackend &	platform;
	cRecorder &		recorder;
};
