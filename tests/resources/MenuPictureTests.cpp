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
	{ "resources/menu/settings.png", { false, false, true, true, true } },
	{ "resources/menu/difficulty.png", { false, true, true, true, true } },
	{ "resources/menu/controls.png", { false, false, false, false, true } },
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

TEST( MenuPictures, LabelsLieOnlyInsideTheEntriesThatActOnThatScreen ) {
	const sPicture backdrop = Load( "tests/resources/menu_background.png" );
	ASSERT_EQ( backdrop.width, 640 );
	ASSERT_EQ( backdrop.height, 480 );
	for ( const sScreen &screen : SCREENS ) {
		const sPicture picture = Load( screen.path );
		ASSERT_EQ( picture.width, 640 ) << screen.path;
		ASSERT_EQ( picture.height, 480 ) << screen.path;
		int stray = 0, firstX = -1, firstY = -1;
		for ( int y = 0; y < 480; y++ ) {
			for ( int x = 0; x < 640; x++ ) {
				if ( picture.At( x, y ) != backdrop.At( x, y ) && !IsAllowed( screen, x, y ) ) {
					if ( stray++ == 0 ) {
						firstX = x;
						firstY = y;
					}
				}
			}
		}
		EXPECT_EQ( stray, 0 ) << screen.path << ": " << stray << " pixels drawn outside the used entries, the title and the panel, the first at (" << firstX << ", " << firstY << ")";
		for ( int entry = 0; entry < 5; entry++ ) {
			if ( screen.used[entry] ) {
				EXPECT_GT( CountChanged( picture, backdrop, ENTRIES[entry] ), 300 ) << screen.path << ": entry " << entry + 1 << " acts but has no label";
			}
		}
	}
}

TEST( MenuPictures, EveryScreenHasItsHeadingAndTheMainMenuItsTitle ) {
	const sPicture backdrop = Load( "tests/resources/menu_background.png" );
	for ( const sScreen &screen : SCREENS ) {
		const sPicture picture = Load( screen.path );
		EXPECT_GT( CountChanged( picture, backdrop, TITLE_AREA ), 2000 ) << screen.path << " has no heading";
	}
	const sPicture main = Load( "resources/menu/main.png" );
	EXPECT_GT( CountChanged( main, backdrop, { 0, 0, 640, 160 } ), 12000 ) << "the main menu's title should be large";
}

TEST( MenuPictures, TheLabelsOfOneEntryMatchTheLabelsOfAnotherInStyle ) {
	// one plate style on every screen: the plates' corners are the same colour everywhere
	const sPicture reference = Load( "resources/menu/main.png" );
	for ( const sScreen &screen : SCREENS ) {
		const sPicture picture = Load( screen.path );
		for ( int entry = 0; entry < 5; entry++ ) {
			if ( !screen.used[entry] ) {
				continue;
			}
			const sArea &rect = ENTRIES[entry];
			EXPECT_EQ( picture.At( rect.left, rect.top ), reference.At( rect.left, rect.top ) ) << screen.path << " entry " << entry + 1;
			EXPECT_EQ( picture.At( rect.right - 1, rect.bottom - 1 ), reference.At( rect.right - 1, rect.bottom - 1 ) ) << screen.path << " entry " << entry + 1;
		}
	}
}
