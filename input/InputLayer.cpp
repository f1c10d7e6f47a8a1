// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/InputLayer.h"

#include "log/Log.h"

cInputLayer::~cInputLayer() {
	Release();
}

bool cInputLayer::Init( cInputBackend *inputBackend, bool exclusiveMouse, uint32_t devices ) {
	cLog::Instance();
	if ( inputBackend == nullptr ) {
		cLog::WriteError( "Creating DI object", "no input backend", "the platform has no keyboard or mouse" );
		return false;
	}
	backend = inputBackend;
	if ( devices & DEVICE_KEYBOARD ) {
		keyboard = std::make_unique<cKeyboard>( backend );
	}
	if ( devices & DEVICE_MOUSE ) {
		mouse = std::make_unique<cMouse>( backend, exclusiveMouse );
	}
	return true;
}

bool cInputLayer::Release() {
	Unacquire();
	keyboard.reset();
	mouse.reset();
	backend = nullptr;
	return true;
}

bool cInputLayer::Read() {
	cLog::Instance();
	pauseRequested = backend != nullptr && backend->TakePauseRequest();
	if ( backend != nullptr ) {
		backend->SetPlaying( keyboard && keyboard->TakeStateSaved() );
		backend->SetRawKeys( rawKeys );
	}
	if ( keyboard && !keyboard->Read() ) {
		cLog::Write( "Error reading from keyboard device!" );
		return false;
	}
	if ( mouse && !mouse->Read() ) {
		cLog::Write( "Error reading from mouse device!" );
		return false;
	}
	return true;
}

void cInputLayer::Acquire() {
	if ( keyboard ) {
		keyboard->Acquire();
	}
	if ( mouse ) {
		mouse->Acquire();
	}
}

void cInputLayer::Unacquire() {
	if ( keyboard ) {
		keyboard->Unacquire();
	}
	if ( mouse ) {
		mouse->Unacquire();
	}
}

bool cInputLayer::KeyDown( int key ) const {
	return keyboard && keyboard->KeyDown( key );
}

bool cInputLayer::KeyUp( int key ) const {
	return !keyboard || keyboard->KeyUp( key );
}

bool cInputLayer::MouseButtonDown( int button ) const {
	return mouse && mouse->ButtonDown( button );
}

bool cInputLayer::MouseButtonUp( int button ) const {
	return !mouse || mouse->ButtonUp( button );
}

void cInputLayer::GetMouseMovement( int32_t &dx, int32_t &dy ) const {
	dx = 0;
	dy = 0;
	if ( mouse ) {
		mouse->GetMovement( dx, dy );
	}
}

int32_t cInputLayer::GetMouseWheel() const {
	return mouse ? mouse->GetWheel() : 0;
}

void cInputLayer::SetMousePosition( int32_t x, int32_t y ) {
	if ( mouse ) {
		mouse->SetPosition( x, y );
	}
}

void cInputLayer::GetMousePosition( int32_t &x, int32_t &y ) const {
	x = 0;
	y = 0;
	if ( mouse ) {
		mouse->GetPosition( x, y );
	}
}

void cInputLayer::SetPlayerCount( int count ) {
	if ( backend != nullptr ) {
		backend->SetPlayerCount( count );
	}
}

void cInputLayer::Rumble( int player ) {
	if ( backend != nullptr ) {
		backend->Rumble( player );
	}
}

std::string cInputLayer::GetKeyName( int key ) const {
	return backend != nullptr ? backend->GetKeyName( key ) : std::string();
}
