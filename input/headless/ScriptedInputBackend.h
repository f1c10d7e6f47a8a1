// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Input for tests and headless tools: the keys, the mouse and the pads are whatever the script set
// last. Scripted pads go through the same mapping and seats as real ones.

#include <map>
#include <string>

#include "input/InputBackend.h"
#include "input/Pads.h"

class cKeyBindings;

class cScriptedInputBackend : public cInputBackend {
public:
	// The keys set are the keys pressed; the bindings (not owned) fold them onto the actions.
	void			SetKeyBindings( const cKeyBindings *keyBindings ) { bindings = keyBindings; }
	// What the player's layout calls a key, when not its place name.
	void			SetKeyName( int key, const std::string &name ) { names[key] = name; }
	void			SetKey( int key, bool down );
	void			ReleaseAllKeys();
	void			SetMousePosition( int32_t x, int32_t y );	// 640 x 480 screen pixels
	void			SetButton( int button, bool down );
	void			SetFailReads( bool fail ) { failReads = fail; }	// every poll fails, retries too
	void			RequestPause() { pauseRequest = true; }			// as a lost focus would
	// A pad plugged in, its state, unplugged (a pause request when it drove a player).
	void			PlugPad( int id, const std::string &identity ) { pads.Connect( id, identity ); }
	void			SetPad( int id, const cPadState &state ) { pads.SetState( id, state ); }
	void			UnplugPad( int id );
	const cPads &	GetPads() const { return pads; }

	bool			AcquireKeyboard() override { return !failReads; }
	bool			UnacquireKeyboard() override { return true; }
	bool			ReadKeyboard( uint8_t state[256] ) override;
	bool			AcquireMouse( bool ) override { return !failReads; }
	bool			UnacquireMouse() override { return true; }
	bool			ReadMouse( cMouseReading &reading ) override;
	void			WarpMouse( int32_t x, int32_t y ) override;
	bool			TakePauseRequest() override;
	void			SetPlayerCount( int count ) override { pads.SetPlayerCount( count ); }
	void			SetPlaying( bool playing ) override { pads.SetPlaying( playing ); }
	void			Rumble( int player ) override;
	void			SetRawKeys( bool raw ) override { rawKeys = raw; }
	std::string		GetKeyName( int key ) const override;
	const char *	GetErrorCode() const override { return "scripted failure"; }
	const char *	GetErrorText() const override { return "the script made the device fail"; }

	int				GetWarpCount() const { return warps; }
	int				GetRumbleCount( int player ) const { return player == 1 || player == 2 ? rumbles[player - 1] : 0; }

private:
	uint8_t			keys[256] = {};
	const cKeyBindings *bindings = nullptr;
	bool			rawKeys = false;
	std::map<int, std::string> names;
	cMouseReading	mouse;
	bool			failReads = false;
	bool			pauseRequest = false;
	int				warps = 0;
	cPads			pads;
	int				rumbles[2] = {};	// of the pad of player 1 and of player 2
};
