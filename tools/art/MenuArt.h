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
	cCanvas			MakeConnectionLostOverlay() const;
	// The glyphs of the seconds left: "0" to "9" and "s", each centred in a cell of one width.
	cCanvas			MakeCountdownGlyphs() const;
	// The glyph sheet: the game writes its run-time lines with it (program/NoticePicture.h).
	cCanvas			MakeGlyphSheet() const;

	static const int GLYPH_COLUMNS = 16;
	static const int GLYPH_ROWS = 6;
	static const int GLYPH_FIRST = 32;
	static const int GLYPH_HEIGHT = 15;		// pixels; the width is the font's

private:
	cCanvas			backdrop;
	cMenuArtist *	artist;
};
