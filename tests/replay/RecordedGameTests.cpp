// SPDX-License-Identifier: GPL-3.0-or-later
// Every recorded game under tests/replays/ plays back exactly: each of its steps reads what the
// recorded game read, and the state agrees with every checkpoint. A change to the rules that alters
// the course of a game fails here, naming the file, the first step that went another way and the
// part of the state that differs. scripts/rerecord.sh makes the files again after a deliberate one.

#include <gtest/gtest.h>

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "replay/ReplayFile.h"
#include "replay/headless/ReplayCheck.h"

namespace {

std::vector<std::string> ListRecordings() {
	std::vector<std::string> names;
	std::error_code error;
	for ( const auto &entry : std::filesystem::directory_iterator( KMVT_RECORDINGS, error ) ) {
		if ( entry.path().extension() == ".kmr" ) {
			names.push_back( entry.path().stem().string() );
		}
	}
	std::sort( names.begin(), names.end() );
	return names;
}

class RecordedGame : public testing::TestWithParam<std::string> {};

}

TEST_P( RecordedGame, PlaysBackExactly ) {
	const std::string file = std::string( KMVT_RECORDINGS ) + "/" + GetParam() + ".kmr";
	cRecording recording;
	std::string error;
	ASSERT_TRUE( cReplayFile::Load( file, recording, error ) ) << error;
	const cReplayOutcome outcome = cReplayCheck::Run( recording );
	EXPECT_TRUE( outcome.matched ) << file << " went another way at step " << outcome.divergedAt << " of "
								   << recording.steps << ": " << outcome.difference;
	EXPECT_EQ( outcome.steps, recording.steps ) << file;
	char hash[24];
	std::snprintf( hash, sizeof( hash ), "%016" PRIx64, outcome.finalHash );
	RecordProperty( "final_state_hash", hash );
	std::printf( "%s: %" PRIu64 " steps, final state hash %s\n", GetParam().c_str(), outcome.steps, hash );
}

// The nine games scripts/rerecord.sh makes.
TEST( RecordedGames, AreThere ) {
	EXPECT_GE( ListRecordings().size(), 9u ) << "the recordings are missing from " << KMVT_RECORDINGS;
}

INSTANTIATE_TEST_SUITE_P( Replays, RecordedGame, testing::ValuesIn( ListRecordings() ),
						  []( const testing::TestParamInfo<std::string> &info ) {
							  std::string name = info.param;
							  std::replace( name.begin(), name.end(), '-', '_' );
							  return name;
						  } );
