// The game's pictures as its drawing uses them: sizes, transparency, the cursor's colour key, the
// palette and outlines, the character sheet's bands and rows, items, shots, explosions and icons.

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

// The 21 pictures made by the art tool; the map's tile sheet is checked on its own below.
const sExpectedPicture PICTURES[] = {
	{ "resources/menu/main.png", 640, 480 },
	{ "resources/menu/settings.png", 640, 480 },
	{ "resources/menu/difficulty.png", 640, 480 },
	{ "resources/menu/controls.png", 640, 480 },
	{ "resources/menu/credits.png", 640, 480 },
	{ "resources/menu/charselection.png", 640, 480 },
	{ "resources/menu/pause.png", 640, 480 },
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

// Every opaque pixel on the rim of a shape (next to a pixel that is not opaque) is outline ink,
// so sprites read on any ground. Returns the number of rim pixels of another colour and where
// the first of them lies.
int CountUnoutlinedRim( const sPicture &picture, int left, int top, int w, int h, std::string &first ) {
	int wrong = 0;
	for ( int y = top; y < top + h; y++ ) {
		for ( int x = left; x < left + w; x++ ) {
			if ( picture.AlphaAt( x, y ) != 0xFF || picture.At( x, y ) == OUTLINE_INK ) {
				continue;
			}
			const bool rim = x == left || y == top || x == left + w - 1 || y == top + h - 1 ||
				picture.AlphaAt( x - 1, y ) != 0xFF || picture.AlphaAt( x + 1, y ) != 0xFF ||
				picture.AlphaAt( x, y - 1 ) != 0xFF || picture.AlphaAt( x, y + 1 ) != 0xFF;
			if ( rim && wrong++ == 0 ) {
				first = "(" + std::to_string( x ) + ", " + std::to_string( y ) + ")";
			}
		}
	}
	return wrong;
}

// Width of the opaque part of a cell.
int OpaqueWidth( const sPicture &picture, int left, int top, int size ) {
	int first = size, last = -1;
	for ( int y = top; y < top + size; y++ ) {
		for ( int x = 0; x < size; x++ ) {
			if ( picture.AlphaAt( left + x, y ) == 0xFF ) {
				first = std::min( first, x );
				last = std::max( last, x );
			}
		}
	}
	return last - first + 1;
}

}	// namespace

TEST( Pictures, AllLoadWithTheSizesTheDrawingUses ) {
	for ( const sExpectedPicture &expected : PICTURES ) {
		sPicture picture;
		std::string error;
		ASSERT_TRUE( LoadPicture( expected.path, picture, error ) ) << error;
		EXPECT_EQ( picture.width, expected.width ) << expected.path;
		EXPECT_EQ( picture.height, expected.height ) << expected.path;
	}
}

TEST( Pictures, TheTileSheetIsOneColumnOfCellsWhenPresent ) {
	if ( !std::ifstream( "resources/map/tiles.png" ) ) {
		GTEST_SKIP() << "the map's tile sheet is not in the tree yet";
	}
	const sPicture tiles = Load( "resources/map/tiles.png" );
	EXPECT_EQ( tiles.width, 32 );
	EXPECT_GT( tiles.height, 0 );
	EXPECT_EQ( tiles.height % 32, 0 ) << "tile code n occupies rows (n - 1) * 32 to n * 32";
}

TEST( Pictures, ScreensAreOpaqueAndTheEndOverlaysLetTheWorldShow ) {
	for ( int i = 0; i < 7; i++ ) {
		const sPicture screen = Load( PICTURES[i].path );
		int seeThrough = 0;
		for ( uint32_t pixel : screen.pixels ) {
			seeThrough += ( pixel >> 24 ) != 0xFF ? 1 : 0;
		}
		EXPECT_EQ( seeThrough, 0 ) << PICTURES[i].path << " must cover the whole screen";
	}
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

TEST( Pictures, EveryVisiblePixelIsAPaletteColour ) {
	for ( const sExpectedPicture &expected : PICTURES ) {
		const sPicture picture = Load( expected.path );
		int outside = 0;
		uint32_t example = 0;
		for ( uint32_t pixel : picture.pixels ) {
			if ( ( pixel >> 24 ) != 0 && !IsPaletteColour( pixel ) ) {
				outside++;
				example = pixel;
			}
		}
		EXPECT_EQ( outside, 0 ) << expected.path << ": e.g. 0x" << std::hex << example;
	}
}

TEST( Pictures, SpritesItemsShotsAndIconsHaveADarkOutline ) {
	const sPicture characters = Load( "resources/sprites/characters_trans.png" );
	std::string first;
	for ( int top = 0; top < 288; top += 32 ) {
		for ( int left = 0; left < 480; left += 32 ) {
			EXPECT_EQ( CountUnoutlinedRim( characters, left, top, 32, 32, first ), 0 ) << "the character frame at (" << left << ", " << top << ") lacks its outline at " << first;
		}
	}
	for ( const char *path : { "resources/sprites/items_trans.png", "resources/sprites/bullets_trans.png",
			"resources/sprites/exclamation.png", "resources/sprites/query.png", "resources/sprites/WTF.png" } ) {
		const sPicture picture = Load( path );
		EXPECT_EQ( CountUnoutlinedRim( picture, 0, 0, picture.width, picture.height, first ), 0 ) << path << ": first at " << first;
	}
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

TEST( CharacterSheet, WalkColumnsStrideAndSkillAndDownRowsLookDifferent ) {
	const sPicture sheet = Load( "resources/sprites/characters_trans.png" );
	for ( int kind = 0; kind < 5; kind++ ) {
		for ( int row = 0; row < 4; row++ ) {
			const int left = kind * 96;
			const int top = row * 32;
			EXPECT_GT( sheet.CountDifferent( left, top, sheet, left + 32, top, 32, 32 ), 10 ) << "kind " << kind << " row " << row << ": column 0 must be a stride";
			EXPECT_GT( sheet.CountDifferent( left + 64, top, sheet, left + 32, top, 32, 32 ), 10 ) << "kind " << kind << " row " << row << ": column 2 must be a stride";
			EXPECT_GT( sheet.CountDifferent( left, top, sheet, left + 64, top, 32, 32 ), 10 ) << "kind " << kind << " row " << row << ": the strides must differ";
			if ( kind < 2 ) {
				EXPECT_GT( sheet.CountDifferent( left + 32, top, sheet, left + 32, top + 128, 32, 32 ), 40 ) << "kind " << kind << " row " << row << ": the skill must show";
			}
		}
		for ( int other = 0; other < kind; other++ ) {
			EXPECT_GT( sheet.CountDifferent( kind * 96 + 32, 0, sheet, other * 96 + 32, 0, 32, 32 ), 200 ) << "kinds " << kind << " and " << other << " look alike";
		}
	}
	for ( int kind = 0; kind < 2; kind++ ) {
		for ( int row = 0; row < 4; row++ ) {
			EXPECT_GT( sheet.CountDifferent( kind * 96 + 32, 256, sheet, kind * 96 + 32, row * 32, 32, 32 ), 150 ) << "hero " << kind << " lying down looks like walking row " << row;
		}
	}
}

TEST( CharacterSheet, TheBossIsWidestAndTheMachineGunnerHeavierThanTheSoldier ) {
	const sPicture sheet = Load( "resources/sprites/characters_trans.png" );
	const int bossWidth = OpaqueWidth( sheet, 4 * 96 + 32, 0, 32 );
	for ( int kind = 0; kind < 4; kind++ ) {
		EXPECT_GT( bossWidth, OpaqueWidth( sheet, kind * 96 + 32, 0, 32 ) ) << "kind " << kind << " is as wide as the boss";
	}
	EXPECT_GT( sheet.CountOpaque( 3 * 96 + 32, 0, 32, 32 ), sheet.CountOpaque( 2 * 96 + 32, 0, 32, 32 ) );
}

TEST( SmallPictures, ItemsShotsAndExplosionFramesAreAllThereAndDistinct ) {
	const sPicture items = Load( "resources/sprites/items_trans.png" );
	for ( int kind : { 0, 2, 3, 4, 5 } ) {
		EXPECT_GT( items.CountOpaque( kind * 32, 0, 32, 32 ), 120 ) << "item kind " << kind;
		for ( int other : { 0, 2, 3, 4, 5 } ) {
			if ( other < kind ) {
				EXPECT_GT( items.CountDifferent( kind * 32, 0, items, other * 32, 0, 32, 32 ), 100 ) << "items " << kind << " and " << other;
			}
		}
	}
	const sPicture bullets = Load( "resources/sprites/bullets_trans.png" );
	for ( int weapon = 0; weapon < 4; weapon++ ) {
		EXPECT_EQ( bullets.AlphaAt( weapon * 20 + 10, 10 ), 0xFFu ) << "weapon " << weapon << "'s shot must sit in the middle of its box";
		for ( int other = 0; other < weapon; other++ ) {
			EXPECT_GT( bullets.CountDifferent( weapon * 20, 0, bullets, other * 20, 0, 20, 20 ), 20 ) << "shots " << weapon << " and " << other;
		}
	}
	const sPicture explosions = Load( "resources/sprites/explosion_trans.png" );
	for ( int row = 0; row < 2; row++ ) {
		for ( int frame = 0; frame < 7; frame++ ) {
			int visible = 0;
			for ( int y = 0; y < 32; y++ ) {
				for ( int x = 0; x < 32; x++ ) {
					visible += explosions.AlphaAt( frame * 32 + x, row * 32 + y ) != 0 ? 1 : 0;
				}
			}
			EXPECT_GT( visible, 8 ) << "explosion row " << row << " frame " << frame << " is empty";
			if ( frame > 0 ) {
				EXPECT_GT( explosions.CountDifferent( frame * 32, row * 32, explosions, ( frame - 1 ) * 32, row * 32, 32, 32 ), 20 ) << "row " << row << " frame " << frame << " does not move on";
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
