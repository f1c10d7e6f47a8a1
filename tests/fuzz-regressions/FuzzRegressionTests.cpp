// SPDX-License-Identifier: GPL-3.0-or-later
// What the fuzz targets found, kept as files beside this test (map/, wave/, picture/), replayed
// through the checks the targets run; with them the game's resource files, from which the fuzz
// corpora are seeded, and hostile inputs made here, so that the harness itself stays tested.
//
// Findings kept here:
//   map/zero-byte-in-number.txt          a zero byte inside the 3,288th number ended it early, so
//                                        "0<NUL>" loaded as 0 instead of being refused.
//   picture/gif-freeing-a-wild-pointer.gif   SDL_image's GIF decoder frees a pointer it never
//                                        allocated (a crash without the sanitizers); pictures are
//                                        now decoded as PNG only.
//   picture/gif-of-62451-by-62451.gif    146 bytes that made the GIF decoder ask for 3.9 GB.
//   picture/png-of-30000-by-30000.png    made here: 70 bytes of valid PNG header that made the
//                                        decoder ask for 3.6 GB before it found the data short;
//                                        a header promising more than the game's largest picture
//                                        is now refused before decoding.
//   picture/png-data-past-its-end.png    181 bytes whose data chunk claims 63,049: the decoder
//                                        inflated for 20 s; a file whose chunks run past its end
//                                        is now refused before decoding.

#include <SDL.h>
#include <SDL_image.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "TempDir.h"
#include "WaveBytes.h"
#include "fuzz/FuzzScratch.h"
#include "fuzz/InputChecks.h"
#include "graphics/sdl/SdlGraphicsBackend.h"
#include "world/Grid.h"

namespace {

typedef std::string ( *tCheck )( const uint8_t *data, size_t size );

const char *const FINDINGS_FOLDER = "tests/fuzz-regressions/";

std::string RunCheck( tCheck check, const std::string &bytes ) {
	return check( reinterpret_cast<const uint8_t *>( bytes.data() ), bytes.size() );
}

// The files of a folder in name order; none when the folder does not exist.
std::vector<std::string> ListFiles( const std::string &folder, const std::string &suffix ) {
	std::vector<std::string> files;
	std::error_code error;
	for ( const auto &entry : std::filesystem::directory_iterator( folder, error ) ) {
		const std::string name = entry.path().string();
		if ( entry.is_regular_file() && name.size() >= suffix.size() &&
			 name.compare( name.size() - suffix.size(), suffix.size(), suffix ) == 0 ) {
			files.push_back( name );
		}
	}
	std::sort( files.begin(), files.end() );
	return files;
}

// Runs the check over every file; returns how many files it saw.
size_t CheckEveryFile( tCheck check, const std::vector<std::string> &files ) {
	for ( const std::string &file : files ) {
		const std::string bytes = ReadWholeFile( file );
		EXPECT_EQ( RunCheck( check, bytes ), "" ) << file;
	}
	return files.size();
}

bool LoadsAsPicture( const std::string &bytes ) {
	SDL_Surface *surface = cSdlGraphicsBackend::LoadKeyedSurface(
		SDL_RWFromConstMem( bytes.data(), static_cast<int>( bytes.size() ) ), true, 0x00FF00FF );
	SDL_FreeSurface( surface );
	return surface != nullptr;
}

std::string Repeat( const std::string &text, int count, const std::string &separator ) {
	std::string joined;
	for ( int i = 0; i < count; i++ ) {
		joined += ( i > 0 ? separator : "" ) + text;
	}
	return joined;
}

// A canonical header announcing dataSize bytes, followed by the bytes given.
std::string WaveHeader( uint16_t channels, uint32_t rate, uint16_t bits, uint32_t dataSize ) {
	std::string header = MakeWave( sWaveShape { channels, rate, bits, 0 } );
	PutField( header, 40, dataSize, 4 );
	return header;
}

}

TEST( FuzzRegressions, SavedFindingsKeepEveryRule ) {
	size_t replayed = CheckEveryFile( CheckMapLayer, ListFiles( std::string( FINDINGS_FOLDER ) + "map", "" ) );
	replayed += CheckEveryFile( CheckWave, ListFiles( std::string( FINDINGS_FOLDER ) + "wave", "" ) );
	const std::vector<std::string> pictures = ListFiles( std::string( FINDINGS_FOLDER ) + "picture", "" );
	replayed += CheckEveryFile( CheckPicture, pictures );
	EXPECT_GE( replayed, 4u ) << "the saved findings were not found under " << FINDINGS_FOLDER;
	for ( const std::string &file : pictures ) {
		EXPECT_FALSE( LoadsAsPicture( ReadWholeFile( file ) ) ) << file << ": no finding is a picture the game can use";
	}
}

// The same files the fuzz corpora are seeded from.
TEST( FuzzRegressions, GameResourcesKeepEveryRule ) {
	const size_t maps = CheckEveryFile( CheckMapLayer, ListFiles( "resources/map", "map.txt" ) );
	const size_t sounds = CheckEveryFile( CheckWave, ListFiles( "resources/audio", ".wav" ) );
	size_t pictures = CheckEveryFile( CheckPicture, ListFiles( "resources/menu", ".png" ) );
	pictures += CheckEveryFile( CheckPicture, ListFiles( "resources/sprites", ".png" ) );
	pictures += CheckEveryFile( CheckPicture, ListFiles( "resources/map", ".png" ) );
	const size_t replays = CheckEveryFile( CheckReplayFile, ListFiles( "tests/replays", ".kmr" ) );
	EXPECT_EQ( maps, 4u );
	EXPECT_EQ( sounds, 15u );
	EXPECT_EQ( pictures, 27u ) << "the game's 23 pictures, the online game's three (waiting, connection lost, its seconds) and the glyphs of its lines";
	EXPECT_GE( replays, 1u );
}

// Hostile map layers and sounds made here, at the readers' edges.
TEST( FuzzRegressions, HostileMapLayersAndSoundsKeepEveryRule ) {
	const std::string zeros = Repeat( "0", MAP_CELLS - 1, " " );
	const struct {
		tCheck			check;
		const char *	what;
		std::string		bytes;
	} cases[] = {
		{ CheckMapLayer, "an empty file", "" },
		{ CheckMapLayer, "blanks only", std::string( 5000, ' ' ) },
		{ CheckMapLayer, "4499 numbers", zeros },
		{ CheckMapLayer, "the lowest int32_t last", zeros + " -2147483648" },
		{ CheckMapLayer, "one beyond the highest int32_t last", zeros + " 2147483648" },
		{ CheckMapLayer, "a zero byte after the last number's digits", zeros + std::string( " 7\0", 3 ) + "9" },
		{ CheckMapLayer, "a zero byte alone as the last number", zeros + std::string( " \0", 2 ) },
		{ CheckMapLayer, "every kind of blank between numbers", Repeat( "1\t-2\v+3\f4\r\n", MAP_CELLS / 4 + 1, " " ) },
		{ CheckMapLayer, "4500 numbers, then anything", zeros + " 5 \xff\xfe garbage" },
		{ CheckMapLayer, "a lone sign last", zeros + " -" },
		{ CheckMapLayer, "64 KB of digits in one number", std::string( 65536, '7' ) },
		{ CheckWave, "an empty sound", "" },
		{ CheckWave, "43 bytes", WaveHeader( 2, 44100, 16, 0 ).substr( 0, 43 ) },
		{ CheckWave, "the smallest sound: one 8-bit mono sample", WaveHeader( 1, 8000, 8, 1 ) + "\x80" },
		{ CheckWave, "4 GB announced", WaveHeader( 2, 44100, 16, 0xFFFFFFFC ) + "abcd" },
		{ CheckWave, "one byte short", WaveHeader( 2, 44100, 16, 8 ) + "1234567" },
		{ CheckWave, "half a 16-bit frame", WaveHeader( 1, 22050, 16, 3 ) + "abc" },
		{ CheckWave, "no channels", WaveHeader( 0, 44100, 16, 4 ) + "abcd" },
	};
	for ( const auto &test : cases ) {
		EXPECT_EQ( RunCheck( test.check, test.bytes ), "" ) << test.what;
	}
}

// A well-formed PNG one pixel high, as wide as asked.
static std::string MakeWidePng( int width ) {
	SDL_Surface *surface = SDL_CreateRGBSurfaceWithFormat( 0, width, 1, 32, SDL_PIXELFORMAT_ARGB8888 );
	std::vector<char> buffer( 1 << 20 );
	SDL_RWops *out = SDL_RWFromMem( buffer.data(), static_cast<int>( buffer.size() ) );
	const bool saved = surface != nullptr && out != nullptr && IMG_SavePNG_RW( surface, out, 0 ) == 0;
	const Sint64 size = out != nullptr ? SDL_RWtell( out ) : 0;
	SDL_RWclose( out );
	SDL_FreeSurface( surface );
	return saved && size > 0 ? std::string( buffer.data(), static_cast<size_t>( size ) ) : std::string();
}

TEST( FuzzRegressions, OnlyPngPicturesAreDecoded ) {
	const std::string cursor = ReadWholeFile( "resources/menu/mouse.png" );
	ASSERT_FALSE( cursor.empty() );
	EXPECT_TRUE( LoadsAsPicture( cursor ) );
	EXPECT_TRUE( LoadsAsPicture( MakeWidePng( 16384 ) ) ) << "the widest picture the game takes";
	const struct {
		const char *	what;
		std::string		bytes;
	} refused[] = {
		{ "an empty file", "" },
		{ "the PNG signature alone", cursor.substr( 0, 8 ) },
		{ "the cursor cut in half", cursor.substr( 0, cursor.size() / 2 ) },
		{ "a BMP header", std::string( "BM" ) + std::string( 60, '\0' ) },
		{ "a whole PNG wider than the widest picture the game takes", MakeWidePng( 16385 ) },
	};
	for ( const auto &test : refused ) {
		EXPECT_EQ( RunCheck( CheckPicture, test.bytes ), "" ) << test.what;
		EXPECT_FALSE( LoadsAsPicture( test.bytes ) ) << test.what;
	}
}

// The scratch folder keeps the log of the last input only and no input file, and no check leaves
// a file open.
TEST( FuzzRegressions, ChecksLeaveNoFileBehind ) {
	const int openBefore = CountOpenFiles();
	EXPECT_EQ( RunCheck( CheckMapLayer, "1 2 x" ), "" );
	EXPECT_NE( cFuzzScratch::Instance().ReadLog().find( "number 3 is not an integer: 'x'" ), std::string::npos )
		<< "the refused layer's log line goes to the scratch folder";
	EXPECT_EQ( RunCheck( CheckWave, WaveHeader( 1, 8000, 8, 1 ) + "\x80" ), "" );
	EXPECT_EQ( RunCheck( CheckPicture, ReadWholeFile( "resources/menu/mouse.png" ) ), "" );
	EXPECT_EQ( CountOpenFiles(), openBefore );
	std::vector<std::string> left;
	for ( const auto &entry : std::filesystem::directory_iterator( cFuzzScratch::Instance().GetPath() ) ) {
		left.push_back( entry.path().filename().string() );
	}
	EXPECT_EQ( left, std::vector<std::string>( { "log.txt" } ) );
}
