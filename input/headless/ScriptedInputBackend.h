#pragma once
// Input for tests and headless tools: the keys and the mouse are whatever the script set last.

#include <string>

#include "input/InputBackend.h"

class cScriptedInputBackend : public cInputBackend {
public:
	void			SetKey( int key, bool down );
	void			ReleaseAllKeys();
	void			SetMousePosition( int32_t x, int32_t y );	// 640 x 480 screen pixels
	void			SetButton( int button, bool down );
	void			SetFailReads( bool fail ) { failReads = fail; }	// every poll fails, retries too
	void			RequestPause() { pauseRequest = true; }			// as a lost focus would

	bool			AcquireKeyboard() override { return !failReads; }
	bool			UnacquireKeyboard() override { return true; }
	bool			ReadKeyboard( uint8_t state[256] ) override;
	bool			AcquireMouse( bool ) override { return !failReads; }
	bool			UnacquireMouse() override { return true; }
	bool			ReadMouse( cMouseReading &reading ) override;
	void			WarpMouse( int32_t x, int32_t y ) override;
	bool			TakePauseRequest() override;
	const char *	GetErrorCode() const override { return "scripted failure"; }
	const char *	GetErrorText() const override { return "the script made the device fail"; }

	int				GetWarpCount() const { return warps; }

private:
	uint8_t			keys[256] = {};
	cMouseReading	mouse;
	bool			failReads = false;
	bool			pauseRequest = false;
	int				warps = 0;
};
