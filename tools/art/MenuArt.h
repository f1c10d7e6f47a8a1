// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The menu screens and the two end-screen overlays, all on one town backdrop in one style.

#include "Canvas.h"
#include "MenuLayout.h"

class cMenuArtist;

// Draws the pictures; owns the fonts, which stay open while it lives.
class cMenuArt {
public:
					cMenuArt();
					~cMenuArt();

	bool			Open();		// loads the fonts; false when one is missing
	const cCanvas &	GetBackdrop() const { return backdrop; }
	cCanvas			MakeScreen( const sMenuScreen &screen ) const;
	// The screen as the game shows it with the default settings, its run-time texts written in.
	cCanvas			MakeShownScreen( const sMenuScreen &screen ) const;
	cCanvas			MakeEndOverlay( bool victory ) const;
	cCanvas			MakeWaitingOverlay() const;

private:
	cCanvas			backdrop;
	cMenuArtist *	artist;
};
