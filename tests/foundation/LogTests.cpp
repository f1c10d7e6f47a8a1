// The error log: emptied at every start, one entry per line, three-line error blocks, long entries
// cut, control bytes escaped, and a log that cannot be written never stops the game: its entries go
// to standard error.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

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
// that shows it: control bytes and bytes of no printable character are written as \xHH.
TEST( Log, ControlBytesInATextAreWrittenEscaped ) {
	const struct {
		std::string	text;
		const char *expected;
	} cases[] = {
		{ "replay.kmr", "replay.kmr" },
		{ "a\nb", "a\\x0Ab" },
		{ "\x1b[2J\x1b]0;title\x07", "\\x1B[2J\\x1B]0;title\\x07" },
		{ std::string( "nul\0here", 8 ), "nul\\x00here" },
		{ "\x1f \x20 ~ \x7f", "\\x1F   ~ \\x7F" },
		{ "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x8e\xae", "caf\xc3\xa9 \xe2\x82\xac \xf0\x9f\x8e\xae" },	// printable UTF-8 stays
		{ "\xc2\x9b" "31m \xc2\xa0", "\\xC2\\x9B31m \xc2\xa0" },	// C1's CSI escaped, U+00A0 the first printable
		{ "\x9b" "31m", "\\x9B31m" },										// a lone byte of no character
		{ "cut \xe2\x82", "cut \\xE2\\x82" },								// a character cut short
		{ "\xc3\x28", "\\xC3(" },
		{ "\\x1B stays", "\\x1B stays" },									// escaped once is escaped
	};
	for ( const auto &c : cases ) {
		EXPECT_EQ( MakePrintable( c.text ), c.expected ) << "text '" << c.text << "'";
		EXPECT_EQ( MakePrintable( c.expected ), c.expected ) << "escaping twice changes nothing: " << c.expected;
	}

	cLogCapture log;
	cLog::Write( "Error reading replay evil\n\x1b[31mname: no such file" );
	cLog::WriteError( "Creating \x1b]0;x\x07", "code\r", "text\n" );
	EXPECT_EQ( log.GetLines(), ( std::vector<std::string>{ "Error reading replay evil\\x0A\\x1B[31mname: no such file",
														   "Error: Creating \\x1B]0;x\\x07", "Code: code\\x0D",
														   "Description: text\\x0A" } ) );
}
