// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cMouse keeps the cursor position in 640 x 480 screen pixels and the buttons of the last poll.

#include <cstdint>

#include "input/InputBackend.h"

class cMouse {
public:
					cMouse( cInputBackend *backend, bool exclusive );	// backend not owned; may be null
					~cMouse();

	bool			Read();
	bool			Acquire();
	bool			Unacquire();

	bool			ButtonDown( int button ) const;
	bool			ButtonUp( int button ) const;
	// Right and bottom edges excluded.
	bool			InRect( int32_t left, int32_t top, int32_t right, int32_t bottom ) const;

	void			GetMovement( int32_t &dx, int32_t &dy ) const;
	int32_t			GetWheel() const { return last.wheel; }
	void			SetPosition( int32_t newX, int32_t newY );
	void			GetPosition( int32_t &outX, int32_t &outY ) const;

	// Scripted states for tests and tools.
	void			SetButton( int button, bool down );

private:
	static bool		IsValidButton( int button ) { return button >= 0 && button < 4; }
	void			Apply( const cMouseReading &reading );
	void			LogFailure( const char *text ) const;

	int32_t			x = 0;
	int32_t			y = 0;
	cInputBackend *	backend;
	bool			exclusive;
	cMouseReading	last;
};
