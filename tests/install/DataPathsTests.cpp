// SPDX-License-Identifier: GPL-3.0-or-later
// Finding the game's data from anywhere: which folder wins the search, and where the log goes
// when the game does not run in its data folder.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "TempDir.h"
#include "log/Log.h"
#include "platform/DataPaths.h"

namespace {

// A folder that holds a resource tree as far as the search is concerned.
void MakeDataFolder( const cTempDir &folder, const std::string &name ) {
	std::filesystem::create_directories( folder.GetFile( name + "/resources/map" ) );
	folder.WriteFile( name + "/" + cDataPaths::PROBE_FILE, "1\n" );
}

}

TEST( DataPaths, CandidatesComeBestFirstEachOnce ) {
	struct sCase {
		const char *				variable;
		std::string					executableFolder;
		std::vector<std::string>	expected;
	};
	const std::string installed = "/usr/share/games/kormaveth2d";
	const sCase cases[] = {
		{ nullptr, "/usr/games/", { ".", "/usr/games", "/usr/share/kormaveth2d", installed } },
		{ "/opt/data/", "/usr/games", { "/opt/data", ".", "/usr/games", "/usr/share/kormaveth2d", installed } },
		{ "", "", { ".", installed } },		// an empty KMVT_DATA and an unknown executable folder count for nothing
		{ "./", "/usr/share/games/kormaveth2d/../../../games/", { ".", "/usr/games", "/usr/share/kormaveth2d", installed } },
	};
	for ( const sCase &c : cases ) {
		EXPECT_EQ( cDataPaths::ListCandidates( c.variable, c.executableFolder, installed ), c.expected )
			<< "KMVT_DATA " << ( c.variable ? c.variable : "unset" ) << ", executable in " << c.executableFolder;
	}
}

TEST( DataPaths, FirstFolderHoldingTheMapWins ) {
	struct sCase {
		std::vector<bool>	holdsData;	// per candidate a, b, c
		const char *		winner;		// nullptr: none, the root stays the working folder
	};
	const sCase cases[] = {
		{ { true, true, true }, "a" },
		{ { false, true, true }, "b" },
		{ { false, false, true }, "c" },
		{ { false, false, false }, nullptr },
	};
	for ( const sCase &c : cases ) {
		cTempDir folder;
		std::vector<std::string> candidates;
		for ( size_t i = 0; i < c.holdsData.size(); i++ ) {
			const std::string name( 1, char( 'a' + i ) );
			std::filesystem::create_directories( folder.GetFile( name + "/resources/map" ) );
			if ( c.holdsData[i] ) {
				MakeDataFolder( folder, name );
			}
			candidates.push_back( folder.GetFile( name ) );
		}
		cDataPaths paths;
		EXPECT_EQ( paths.Find( candidates ), c.winner != nullptr );
		EXPECT_EQ( paths.GetRoot(), c.winner ? folder.GetFile( c.winner ) : std::string( "." ) );
		EXPECT_FALSE( paths.IsInWorkingFolder() );
	}
}

TEST( DataPaths, LogStaysBesideDataInTheWorkingFolderElseGoesToTheStateFolder ) {
	cTempDir folder;
	MakeDataFolder( folder, "data" );
	folder.WriteFile( "a-file", "" );
	const std::string home = folder.GetPath();
	const std::string state = folder.GetFile( "state" );

	// The working folder, however KMVT_DATA names it, keeps the log: the tests run where the data is.
	const std::filesystem::path working = std::filesystem::current_path();
	for ( const std::string &name : { std::string( "." ), working.string(), working.string() + "/../" +
									  working.filename().string() + "/", working.string() + "/resources/.." } ) {
		cDataPaths inWorkingFolder;
		ASSERT_TRUE( inWorkingFolder.Find( { name, folder.GetFile( "data" ) } ) ) << name;
		EXPECT_EQ( inWorkingFolder.ChooseLogPath( state.c_str(), home.c_str() ), "log.txt" ) << "data in " << name;
	}

	cDataPaths elsewhere;
	ASSERT_TRUE( elsewhere.Find( { folder.GetFile( "data" ) } ) );
	EXPECT_EQ( elsewhere.ChooseLogPath( state.c_str(), home.c_str() ), state + "/kormaveth2d/log.txt" );
	EXPECT_TRUE( std::filesystem::is_directory( state + "/kormaveth2d" ) ) << "the state folder is created";
	EXPECT_EQ( elsewhere.ChooseLogPath( "relative/state", home.c_str() ), home + "/.local/state/kormaveth2d/log.txt" )
		<< "a relative XDG_STATE_HOME is ignored";
	EXPECT_EQ( elsewhere.ChooseLogPath( nullptr, home.c_str() ), home + "/.local/state/kormaveth2d/log.txt" );
	EXPECT_EQ( elsewhere.ChooseLogPath( nullptr, nullptr ), "" ) << "no home: the log goes to standard error";
	EXPECT_EQ( elsewhere.ChooseLogPath( folder.GetFile( "a-file" ).c_str(), nullptr ), "" )
		<< "a state home that is a file cannot hold the log's folder";
}

// The whole start from a folder without data: the log lands in the state folder, says once where
// the game looked, and the working folder stays untouched.
TEST( DataPaths, StartWithoutDataLogsTheSearchOnceInTheStateFolder ) {
	cTempDir folder;
	const std::filesystem::path before = std::filesystem::current_path();
	std::filesystem::create_directories( folder.GetFile( "work" ) );
	std::filesystem::current_path( folder.GetFile( "work" ) );
	setenv( cDataPaths::DATA_VARIABLE, folder.GetFile( "empty" ).c_str(), 1 );
	setenv( "XDG_STATE_HOME", folder.GetFile( "state" ).c_str(), 1 );

	cDataPaths paths;
	paths.SetUp( folder.GetFile( "bin/" ) );
	const std::string log = ReadWholeFile( folder.GetFile( "state/kormaveth2d/log.txt" ) );
	const bool workUntouched = std::filesystem::is_empty( folder.GetFile( "work" ) );

	std::filesystem::current_path( before );
	unsetenv( cDataPaths::DATA_VARIABLE );
	unsetenv( "XDG_STATE_HOME" );
	cLog::Restart( "log.txt" );
	if ( paths.IsFound() ) {
		GTEST_SKIP() << "the game's data is installed on this machine, in " << paths.GetRoot();
	}
	const std::string work = std::filesystem::canonical( folder.GetFile( "work" ) ).string();
	EXPECT_EQ( log.rfind( "No game data found; looked in: " + folder.GetFile( "empty" ) + ", " + work + ", " +
						  folder.GetFile( "bin" ) + ", " + folder.GetFile( "share/kormaveth2d" ), 0 ), 0u )
		<< log;
	EXPECT_EQ( log.find( '\n' ), log.size() - 1 ) << "one line: " << log;
	EXPECT_TRUE( workUntouched ) << "nothing may be written into the working folder";
}
