// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/Mouse.h"

#include "log/Log.h"

cMouse::cMouse( cInputBackend *inputBackend, bool exclusiveMouse )
	: backend( inputBackend ), exclusive( exclusiveMouse ) {
	cLog::Instance();
	if ( backend == nullptr ) {
		return;
	}
	if ( !backend->AcquireMouse( exclusive ) ) {
		LogFailure( "Acquiring mouse" );
	}
	// The first poll only fills the buttons; it does not move the cursor.
	cMouseReading first;
	if ( !backend->ReadMouse( first ) ) {
		LogFailure( "Getting mouse device state" );
	}
	for ( int i = 0; i < 4; i++ ) {
		last.buttons[i] = first.buttons[i];
	}
}

cMouse::~cMouse() {
	if ( backend != nullptr ) {
		backend->UnacquireMouse();
	}
}

bool cMouse::Read() {
	if ( backend == nullptr ) {
		return true;
	}
	cMouseReading reading;
	if ( backend->ReadMouse( reading ) ) {
		Apply( reading );
		return true;
	}
	LogFailure( "Getting mouse device state" );
	if ( !backend->AcquireMouse( exclusive ) ) {
		LogFailure( "Acquiring mouse" );
		return false;
	}
	if ( backend->ReadMouse( reading ) ) {
		Apply( reading );
		return true;
	}
	LogFailure( "Getting mouse device state" );
	return false;
}

bool cMouse::Acquire() {
	if ( backend != nullptr && !backend->AcquireMouse( exclusive ) ) {
		LogFailure( "Acquiring mouse" );
		return false;
	}
	return true;
}

bool cMouse::Unacquire() {
	if ( backend != nullptr && !backend->UnacquireMouse() ) {
		LogFailure( "Unacquiring mouse" );
		return false;
	}
	return true;
}

bool cMouse::ButtonDown( int button ) const {
	return IsValidButton( button ) && ( last.buttons[button] & 0x80 ) != 0;
}

bool cMouse::ButtonUp( int button ) const {
	return !ButtonDown( button );
}

bool cMouse::InRect( int32_t left, int32_t top, int32_t right, int32_t bottom ) const {
	return x >= left && x < right && y >= top && y < bottom;
}

void cMouse::GetMovement( int32_t &dx, int32_t &dy ) const {
	dx = last.dx;
	dy = last.dy;
}

// The position is the game's: the platform's pointer follows it where it can.
void cMouse::SetPosition( int32_t newX, int32_t newY ) {
	if ( backend != nullptr && ( newX != x || newY != y ) ) {
		backend->WarpMouse( newX, newY );
	}
	x = newX;
	y = newY;
}

void cMouse::GetPosition( int32_t &outX, int32_t &outY ) const {
	outX = x;
	outY = y;
}

void cMouse::SetButton( int button, bool down ) {
	if ( IsValidButton( button ) ) {
		last.buttons[button] = down ? 0x80 : 0x00;
	}
}

void cMouse::Apply( const cMouseReading &reading ) {
	last = reading;
	if ( reading.hasPosition ) {
		x = reading.x;
		y = reading.y;
	} else {
		x += reading.dx;
		y += reading.dy;
	}
}

void cMouse::LogFailure( const char *text ) const {
	cLog::WriteError( text, backend->GetErrorCode(), backend->GetErrorText() );
}
