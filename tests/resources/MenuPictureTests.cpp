// SPDX-License-Identifier: GPL-3.0-or-later
// The menu pictures against the clickable entries: every screen is the shared town backdrop plus
// labels inside the entries that do something on that screen, writing in the title area at the
// top and in the side panel on the right, and nothing else.

#include "PictureFile.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct sArea {
	int			left, top, right, bottom;	// right and bottom exclusive

	bool		Contains( int x, int y ) const { return x >= left && x < right && y >= top && y < bottom; }
};

// The game's five entry rectangles, the same on every screen.
const sArea ENTRIES[5] = {
	{ 70, 248, 250, 273 }, { 70, 284, 250, 307 }, { 70, 317, 250, 340 }, { 70, 348, 250, 372 }, { 70, 381, 250, 404 },
};
const sArea TITLE_AREA = { 0, 0, 640, 232 };
const sArea PANEL_AREA = { 272, 232, 640, 480 };

struct sScreen {
	const char *	path;
	bool			used[5];	// the entries that act on this screen
};

const sScreen SCREENS[] = {
	{ "resources/menu/main.png", { true, true, true, true, true } },
	{ "resources/menu/settings.png", { true, true, true, true, true } },
	{ "resources/menu/sound.png", { true, true, false, false, true } },
	{ "resources/menu/difficulty.png", { false, true, true, true, true } },
	{ "resources/menu/controls.png", { false, false, true, true, true } },
	{ "resources/menu/credits.png", { false, false, false, false, true } },
	{ "resources/menu/charselection.png", { false, false, true, true, true } },
	{ "resources/menu/pause.png", { false, false, false, true, true } },
};

sPicture Load( const std::string &path ) {
	sPicture picture;
	std::string error;
	EXPECT_TRUE( LoadPicture( path, picture, error ) ) << error;
	return picture;
}

bool IsAllowed( const sScreen &screen, int x, int y ) {
	for ( int entry = 0; entry < 5; entry++ ) {
		if ( screen.used[entry] && ENTRIES[entry].Contains( x, y ) ) {
			return true;
		}
	}
	return TITLE_AREA.Contains( x, y ) || PANEL_AREA.Contains( x, y );
}

int CountChanged( const sPicture &picture, const sPicture &backdrop, const sArea &area ) {
	int changed = 0;
	for ( int y = area.top; y < area.bottom; y++ ) {
		for ( int x = area.left; x < area.right; x++ ) {
			changed += picture.At( x, y ) != backdrop.At( x, y ) ? 1 : 0;
		}
	}
	return changed;
}

}	// namespace

// Every screen covers the whole window, writes its heading in the title area and puts a label, on
// the main menu's plates, inside each entry that acts on it and nowhere else.
TEST( MenuPictures, ScreensAreOpaqueWithAHeadingAndLabelsOnlyInTheEntriesThatAct ) {
	const sPicture backdrop = Load( "tests/resources/menu_background.png" );
	const sPicture reference = Load( "resources/menu/main.png" );
	ASSERT_EQ( backdrop.width, 640 );
	ASSERT_EQ( backdrop.height, 480 );
	for ( const sScreen &screen : SCREENS ) {
		const sPicture picture = Load( screen.path );
		ASSERT_EQ( picture.width, 640 ) << screen.path;
		ASSERT_EQ( picture.height, 480 ) << screen.path;
		int stray = 0, firstX = -1, firstY = -1, seeThrough = 0;
		for ( int y = 0; y < 480; y++ ) {
			for ( int x = 0; x < 640; x++ ) {
				seeThrough += picture.AlphaAt( x, y ) != 0xFF ? 1 : 0;
				if ( picture.At( x, y ) != backdrop.At( x, y ) && !IsAllowed( screen, x, y ) && stray++ == 0 ) {
					firstX = x;
					firstY = y;
				}
			}
		}
		EXPECT_EQ( seeThrough, 0 ) << screen.path << " must cover the whole screen";
		EXPECT_EQ( stray, 0 ) << screen.path << ": " << stray << " pixels drawn outside the used entries, the title and the panel, the first at (" << firstX << ", " << firstY << ")";
		EXPECT_GT( CountChanged( picture, backdrop, TITLE_AREA ), 2000 ) << screen.path << " has no heading";
		for ( int entry = 0; entry < 5; entry++ ) {
			if ( !screen.used[entry] ) {
				continue;
			}
			const sArea &rect = ENTRIES[entry];
			EXPECT_GT( CountChanged( picture, backdrop, rect ), 300 ) << screen.path << ": entry " << entry + 1 << " acts but has no label";
			EXPECT_EQ( picture.At( rect.left, rect.top ), reference.At( rect.left, rect.top ) ) << screen.path << " entry " << entry + 1 << ": another plate style";
			EXPECT_EQ( picture.At( rect.right - 1, rect.bottom - 1 ), reference.At( rect.right - 1, rect.bottom - 1 ) ) << screen.path << " entry " << entry + 1 << ": another plate style";
		}
	}
	EXPECT_GT( CountChanged( reference, backdrop, { 0, 0, 640, 160 } ), 12000 ) << "the main menu's title should be large";
}
