// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/ReplayInput.h"

#include <cstring>

#include "replay/Replay.h"

bool cReplayInput::IsPassingThrough() const {
	return !replay.IsPlaying();
}

bool cReplayInput::TakePauseRequest() {
	const bool platformPause = platform != nullptr && platform->TakePauseRequest();
	if ( IsPassingThrough() ) {
		return platformPause;
	}
	return replay.BeginStep();
}

bool cReplayInput::ReadKeyboard( uint8_t state[256] ) {
	if ( IsPassingThrough() ) {
		return platform == nullptr || platform->ReadKeyboard( state );
	}
	uint8_t player[256] = {};
	if ( platform != nullptr && platform->ReadKeyboard( player ) ) {
		replay.NotePlayerKeys( player );
	}
	const cTapeStep::cRead *read = replay.TakeRead( cTapeStep::KEYBOARD, cTapeStep::KEYBOARD_FAILED );
	if ( read == nullptr ) {
		std::memset( state, 0, 256 );
		return true;
	}
	if ( read->kind == cTapeStep::KEYBOARD_FAILED ) {
		return false;
	}
	std::memcpy( state, read->keys.data(), 256 );
	return true;
}

bool cReplayInput::ReadMouse( cMouseReading &reading ) {
	if ( IsPassingThrough() ) {
		return platform == nullptr || platform->ReadMouse( reading );
	}
	cMouseReading player;
	if ( platform != nullptr ) {
		platform->ReadMouse( player );
	}
	const cTapeStep::cRead *read = replay.TakeRead( cTapeStep::MOUSE, cTapeStep::MOUSE_FAILED );
	if ( read == nullptr ) {
		reading = cMouseReading();
		return true;
	}
	if ( read->kind == cTapeStep::MOUSE_FAILED ) {
		return false;
	}
	reading = read->mouse;
	return true;
}

// The recorded game moved its own pointer; the player's stays where the player left it.
void cReplayInput::WarpMouse( int32_t x, int32_t y ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->WarpMouse( x, y );
	}
}

void cReplayInput::SetPlayerCount( int count ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->SetPlayerCount( count );
	}
}

void cReplayInput::Rumble( int player ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->Rumble( player );
	}
}

void cReplayInput::SetPlaying( bool playing ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->SetPlaying( playing );
	}
}

void cReplayInput::SetRawKeys( bool raw ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->SetRawKeys( raw );
	}
}

std::string cReplayInput::GetKeyName( int key ) const {
	return platform != nullptr ? platform->GetKeyName( key ) : cInputBackend::GetKeyName( key );
}

bool cReplayInput::AcquireKeyboard() {
	const bool acquired = platform == nullptr || platform->AcquireKeyboard();
	return acquired || !IsPassingThrough();
}

bool cReplayInput::UnacquireKeyboard() {
	const bool released = platform == nullptr || platform->UnacquireKeyboard();
	return released || !IsPassingThrough();
}

bool cReplayInput::AcquireMouse( bool exclusive ) {
	const bool acquired = platform == nullptr || platform->AcquireMouse( exclusive );
	return acquired || !IsPassingThrough();
}

bool cReplayInput::UnacquireMouse() {
	const bool released = platform == nullptr || platform->UnacquireMouse();
	return released || !IsPassingThrough();
}

const char *cReplayInput::GetErrorCode() const {
	return platform != nullptr ? platform->GetErrorCode() : "replay";
}

const char *cReplayInput::GetErrorText() const {
	return platform != nullptr ? platform->GetErrorText() : "no input device during a replay";
}
