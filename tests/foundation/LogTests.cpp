// SPDX-License-Identifier: GPL-3.0-or-later
// The error log: emptied at every start, one entry per line, three-line error blocks, long entries
// cut, control bytes escaped, and a log that cannot be written never stops the game: its entries go
// to standard error.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "LogCapture.h"
#include "TempDir.h"
#include "log/Log.h"
#include "log/Printable.h"

TEST( Log, RestartEmptiesTheFileAndWritesAppendLines ) {
	cTempDir folder;
	folder.WriteFile( "log.txt", "a line from the last run\n" );
	cLog::Restart( folder.GetFile( "log.txt" ) );
	EXPECT_EQ( ReadWholeFile( folder.GetFile( "log.txt" ) ), "" ) << "a new run must start with an empty log";

	cLog::Write( "Error initializing Sound!" );
	cLog::Write( "Error reading Input!" );
	EXPECT_EQ( ReadWholeFile( folder.GetFile( "log.txt" ) ), "Error initializing Sound!\nError reading Input!\n" );
	cLog::Restart( "log.txt" );
}

TEST( Log, LongEntriesAreCutAt255CharactersAndStillEndTheLine ) {
	cLogCapture log;
	cLog::Write( std::string( 400, 'x' ).c_str() );
	cLog::Write( "next" );
	const std::string text = log.GetText();
	ASSERT_EQ( text.size(), 255u + 5u ) << "the long entry must be cut to 255 characters, line end included";
	EXPECT_EQ( text.substr( 0, 254 ), std::string( 254, 'x' ) );
	EXPECT_EQ( text.substr( 254 ), "\nnext\n" ) << "the cut entry must still end its line";

	cLog::Restart( cLog::GetPath() );
	cLog::WriteError( std::string( 300, 'y' ).c_str(), "code", "text" );
	EXPECT_EQ( log.GetText().size(), 255u ) << "an error block is one entry of at most 255 characters";
}

TEST( Log, NullTextsWriteEmptyFields ) {
	cLogCapture log;
	cLog::WriteError( "Creating DI object", nullptr, nullptr );
	EXPECT_EQ( log.GetText(), "Error: Creating DI object\nCode: \nDescription: \n" );
}

TEST( Log, EntriesTheFileCannotTakeGoToStandardError ) {
	cTempDir folder;
	const std::string missingFolderLog = folder.GetFile( "no/such/folder/log.txt" );
	for ( const std::string &path : { missingFolderLog, std::string() } ) {	// no file, or no folder for one
		cLog::Restart( path );
		testing::internal::CaptureStderr();
		cLog::Write( "Error initializing Graphics!" );
		cLog::WriteError( "Creating Direct3D device", "code", "text" );
		EXPECT_EQ( testing::internal::GetCapturedStderr(),
				   "Error initializing Graphics!\nError: Creating Direct3D device\nCode: code\nDescription: text\n" )
			<< "log path '" << path << "'";
	}
	EXPECT_FALSE( std::filesystem::exists( missingFolderLog ) ) << "nothing can be written there";
	cLog::Restart( "log.txt" );
}

// A name from outside (a file, an argument) cannot break a line of the log or drive the terminal
// that shows it: control bytes and bytes of no printable character are written as \xHH, once.
TEST( Log, ControlBytesInATextAreWrittenEscaped ) {
	const struct { std::string text; const char *expected; } cases[] = {
		{ "a\nb\x7f", "a\\x0Ab\\x7F" }, { "\x1b[2J\x1f ~", "\\x1B[2J\\x1F ~" }, { std::string( "\0", 1 ), "\\x00" },
		{ "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x8e\xae \xc2\xa0", "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x8e\xae \xc2\xa0" },
		{ "\xc2\x9b" "1m \x9b \xe2\x82", "\\xC2\\x9B1m \\x9B \\xE2\\x82" },	// C1's CSI, a stray byte, a cut character
	};
	for ( const auto &c : cases ) {
		EXPECT_EQ( MakePrintable( c.text ), c.expected ) << "text '" << c.text << "'";
		EXPECT_EQ( MakePrintable( c.expected ), c.expected ) << "escaping twice changes nothing";
	}
	cLogCapture log;
	cLog::WriteError( "Reading evil\n\x1b[31mname", "code\r", "text" );
	EXPECT_EQ( log.GetText(), "Error: Reading evil\\x0A\\x1B[31mname\nCode: code\\x0D\nDescription: text\n" );
}
