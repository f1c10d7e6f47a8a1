// SPDX-License-Identifier: GPL-3.0-or-later
// The game's pictures as its drawing uses them: sizes, transparency, the cursor's colour key, the
// character sheet's bands and rows, the HUD bars and the window icon.

#include "PictureFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

struct sExpectedPicture {
	const char *	path;
	int				width;
	int				height;
};

// The pictures made by the art tool other than the menu screens, which are checked with the
// menu; the map's tile sheet is checked with the level.
const sExpectedPicture PICTURES[] = {
	{ "resources/sprites/characters_trans.png", 480, 288 },
	{ "resources/sprites/items_trans.png", 192, 32 },
	{ "resources/sprites/bullets_trans.png", 80, 20 },
	{ "resources/sprites/explosion_trans.png", 224, 64 },
	{ "resources/sprites/health.png", 8, 8 },
	{ "resources/sprites/low_health.png", 8, 8 },
	{ "resources/sprites/energy.png", 8, 8 },
	{ "resources/sprites/ammo.png", 8, 8 },
	{ "resources/menu/mouse.png", 32, 32 },
	{ "resources/menu/youwin.png", 640, 480 },
	{ "resources/menu/youlose.png", 640, 480 },
	{ "resources/menu/glyphs.png", 112, 90 },		// 16 x 6 cells of the run-time lines
	{ "resources/sprites/exclamation.png", 16, 16 },
	{ "resources/sprites/query.png", 16, 16 },
	{ "resources/sprites/WTF.png", 32, 32 },
};

const uint32_t COLOUR_KEY = 0x00FF00FF;

sPicture Load( const std::string &path ) {
	sPicture picture;
	std::string error;
	EXPECT_TRUE( LoadPicture( path, picture, error ) ) << error;
	return picture;
}

}	// namespace

TEST( Pictures, AllLoadWithTheSizesTheDrawingUses ) {
	for ( const sExpectedPicture &expected : PICTURES ) {
		const sPicture picture = Load( expected.path );
		EXPECT_EQ( picture.width, expected.width ) << expected.path;
		EXPECT_EQ( picture.height, expected.height ) << expected.path;
	}
}

TEST( Pictures, EndOverlaysLetTheWorldShow ) {
	for ( const char *path : { "resources/menu/youwin.png", "resources/menu/youlose.png" } ) {
		const sPicture overlay = Load( path );
		int clear = 0, solid = 0;
		for ( uint32_t pixel : overlay.pixels ) {
			clear += ( pixel >> 24 ) == 0 ? 1 : 0;
			solid += ( pixel >> 24 ) == 0xFF ? 1 : 0;
		}
		const int total = int( overlay.pixels.size() );
		EXPECT_GT( clear, total / 3 ) << path << ": the world must show through most of it";
		EXPECT_GT( solid, total / 100 ) << path << ": the verdict must be readable";
		EXPECT_EQ( overlay.AlphaAt( 320, 100 ), 0u ) << path << ": the view above the band stays clear";
	}
}

TEST( Pictures, CursorIsOpaqueOnTheColourKeyWithItsTipAtTheHotSpot ) {
	const sPicture cursor = Load( "resources/menu/mouse.png" );
	int key = 0, opaque = 0, other = 0;
	for ( uint32_t pixel : cursor.pixels ) {
		if ( pixel == COLOUR_KEY ) {
			key++;
		} else if ( ( pixel >> 24 ) == 0xFF ) {
			opaque++;
		} else {
			other++;
		}
	}
	EXPECT_EQ( other, 0 ) << "pixels that are neither opaque nor exactly 0x00FF00FF would show as smudges";
	EXPECT_GT( key, 32 * 32 / 2 );
	EXPECT_GT( opaque, 40 );
	EXPECT_EQ( cursor.AlphaAt( 0, 0 ), 0xFFu ) << "the hot spot is the top-left pixel: the arrow's tip must be there";
	EXPECT_EQ( cursor.At( 31, 31 ), COLOUR_KEY );
}

TEST( CharacterSheet, BandsRowsAndColumnsHoldTheRightFigures ) {
	const sPicture sheet = Load( "resources/sprites/characters_trans.png" );
	for ( int kind = 0; kind < 5; kind++ ) {
		const bool hero = kind < 2;
		for ( int row = 0; row < 9; row++ ) {
			for ( int column = 0; column < 3; column++ ) {
				const int opaque = sheet.CountOpaque( kind * 96 + column * 32, row * 32, 32, 32 );
				if ( row < 4 || hero ) {
					EXPECT_GT( opaque, 150 ) << "kind " << kind << " row " << row << " column " << column << " is missing its figure";
				} else {
					EXPECT_EQ( opaque, 0 ) << "kind " << kind << " has no skill or down rows, row " << row << " should be empty";
				}
			}
		}
	}
}

TEST( SmallPictures, HudBarSlicesAreOpaqueAndEachBarHasItsOwnColour ) {
	const char *paths[4] = { "resources/sprites/health.png", "resources/sprites/low_health.png",
		"resources/sprites/energy.png", "resources/sprites/ammo.png" };
	sPicture bars[4];
	for ( int i = 0; i < 4; i++ ) {
		bars[i] = Load( paths[i] );
		ASSERT_GE( bars[i].height, 8 ) << paths[i];
		EXPECT_EQ( bars[i].CountOpaque( 0, 0, 1, 8 ), 8 ) << paths[i] << ": the drawn 1 x 8 slice must be solid";
		for ( int j = 0; j < i; j++ ) {
			EXPECT_GT( bars[i].CountDifferent( 0, 0, bars[j], 0, 0, 1, 8 ), 4 ) << paths[i] << " and " << paths[j];
		}
	}
}

TEST( WindowIcon, HoldsA32AndA64PixelImageThatSdlCanRead ) {
	std::ifstream in( "resources/icon/kmvt.ico", std::ios::binary );
	ASSERT_TRUE( in ) << "resources/icon/kmvt.ico is missing";
	const std::vector<unsigned char> bytes( ( std::istreambuf_iterator<char>( in ) ), std::istreambuf_iterator<char>() );
	ASSERT_GE( bytes.size(), 6u );
	auto u16 = [&]( size_t at ) { return unsigned( bytes[at] | bytes[at + 1] << 8 ); };
	auto u32 = [&]( size_t at ) { return u16( at ) | u16( at + 2 ) << 16; };
	EXPECT_EQ( u16( 2 ), 1u ) << "type 1 is an icon";
	const unsigned count = u16( 4 );
	ASSERT_GE( bytes.size(), 6 + 16 * size_t( count ) );
	bool has32 = false, has64 = false;
	for ( unsigned i = 0; i < count; i++ ) {
		const size_t entry = 6 + 16 * i;
		const unsigned size = bytes[entry];
		const size_t length = u32( entry + 8 ), offset = u32( entry + 12 );
		ASSERT_LE( offset + length, bytes.size() ) << "image " << i << " runs past the end of the file";
		EXPECT_EQ( u32( offset ), 40u ) << "image " << i << " should be a plain bitmap";
		EXPECT_EQ( u32( offset + 4 ), size ) << "image " << i;
		EXPECT_EQ( u32( offset + 8 ), 2 * size ) << "image " << i << ": a bitmap with its mask is twice as high";
		has32 |= size == 32;
		has64 |= size == 64;
	}
	EXPECT_TRUE( has32 && has64 ) << "the window needs the icon at 32 and 64 pixels";
	const sPicture icon = Load( "resources/icon/kmvt.ico" );
	EXPECT_TRUE( icon.width == 32 || icon.width == 64 );
	EXPECT_EQ( icon.width, icon.height );
	EXPECT_GT( icon.CountOpaque( 0, 0, icon.width, icon.height ), icon.width * icon.height / 2 );
}
