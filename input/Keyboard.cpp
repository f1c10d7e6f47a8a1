// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/Keyboard.h"

#include <cstring>

#include "input/InputBackend.h"
#include "log/Log.h"

cKeyboard::cKeyboard( cInputBackend *inputBackend ) : backend( inputBackend ) {
	cLog::Instance();
	if ( backend != nullptr && !backend->AcquireKeyboard() ) {
		LogFailure( "Acquiring keyboard!" );
	}
}

cKeyboard::~cKeyboard() {
	if ( backend != nullptr ) {
		backend->UnacquireKeyboard();
	}
}

// One retry after taking the device again, as after the window regained the focus.
bool cKeyboard::Read() {
	if ( backend == nullptr ) {
		return true;
	}
	if ( backend->ReadKeyboard( current ) ) {
		return true;
	}
	LogFailure( "Getting keyboard device state" );
	if ( !backend->AcquireKeyboard() ) {
		LogFailure( "Acquiring keyboard!" );
		return false;
	}
	if ( backend->ReadKeyboard( current ) ) {
		return true;
	}
	LogFailure( "Getting keyboard device state" );
	return false;
}

bool cKeyboard::Acquire() {
	Clear();
	if ( backend != nullptr && !backend->AcquireKeyboard() ) {
		LogFailure( "Acquiring keyboard!" );
		return false;
	}
	return true;
}

bool cKeyboard::Unacquire() {
	Clear();
	if ( backend != nullptr && !backend->UnacquireKeyboard() ) {
		LogFailure( "Unacquiring keyboard!" );
		return false;
	}
	return true;
}

void cKeyboard::Clear() {
	std::memset( current, 0, sizeof( current ) );
}

bool cKeyboard::KeyDown( int key ) const {
	return IsValidKey( key ) && ( current[key] & 0x80 ) != 0;
}

bool cKeyboard::KeyUp( int key ) const {
	return !KeyDown( key );
}

bool cKeyboard::KeyChanged( int key ) const {
	return IsValidKey( key ) && current[key] != previous[key];
}

void cKeyboard::SaveState() {
	std::memcpy( previous, current, sizeof( previous ) );
	saved = true;
}

bool cKeyboard::TakeStateSaved() {
	const bool wasSaved = saved;
	saved = false;
	return wasSaved;
}

void cKeyboard::GetSavedState( uint8_t keys[256] ) const {
	std::memcpy( keys, previous, sizeof( previous ) );
}

void cKeyboard::SetSavedState( const uint8_t keys[256] ) {
	std::memcpy( previous, keys, sizeof( previous ) );
}

void cKeyboard::SetKey( int key, bool down ) {
	if ( IsValidKey( key ) ) {
		current[key] = down ? 0x80 : 0x00;
	}
}

void cKeyboard::LogFailure( const char *text ) const {
	cLog::WriteError( text, backend->GetErrorCode(), backend->GetErrorText() );
}
