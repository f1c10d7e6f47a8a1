// The error log: emptied at every start, one entry per line, three-line error blocks, long entries
// cut, and a log that cannot be written never stops the game: its entries go to standard error.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "LogCapture.h"
#include "TempDir.h"
#include "log/Log.h"

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
