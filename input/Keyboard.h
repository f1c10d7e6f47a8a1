// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cKeyboard keeps the keyboard state polled this frame and the state saved at the end of the last
// in-game step, 256 bytes each indexed by key code, for the held and newly-pressed tests.

#include <cstdint>

class cInputBackend;

class cKeyboard {
public:
	explicit		cKeyboard( cInputBackend *backend );	// backend not owned; null for a scripted keyboard
					~cKeyboard();

	bool			Read();
	bool			Acquire();
	bool			Unacquire();
	void			Clear();

	bool			KeyDown( int key ) const;
	bool			KeyUp( int key ) const;
	bool			KeyChanged( int key ) const;
	void			SaveState();
	// Whether SaveState ran since the last call: only a step of play saves the state.
	bool			TakeStateSaved();
	// The state SaveState kept, for a saved game to take along and put back.
	void			GetSavedState( uint8_t keys[256] ) const;
	void			SetSavedState( const uint8_t keys[256] );

	// Scripted states for tests and tools: a key held (0x80) or released.
	void			SetKey( int key, bool down );
	void			ReleaseAll() { Clear(); }

private:
	static bool		IsValidKey( int key ) { return key >= 0 && key < 256; }
	void			LogFailure( const char *text ) const;

	cInputBackend *	backend;
	uint8_t			current[256] = {};
	uint8_t			previous[256] = {};
	bool			saved = false;
};
