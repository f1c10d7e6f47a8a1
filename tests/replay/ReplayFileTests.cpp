// SPDX-License-Identifier: GPL-3.0-or-later
// The replay file: a recording comes back whole, and every broken file is refused with its reason,
// whatever byte it stops at, without a giant allocation.

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "replay/ReplayFile.h"
#include "replay/TapeWriter.h"
#include "support/LogCapture.h"
#include "support/TempDir.h"

namespace {

// 250 steps of tape and their three checkpoints, the last two parts' names as in the first.
cRecording MakeRecording() {
	cRecording recording;
	recording.gameVersion = "1.0.0";
	recording.soundOpened = true;
	cTapeWriter writer;
	const uint8_t keys[256] = {};
	for ( uint32_t step = 1; step <= 250; step++ ) {
		writer.BeginStep( step == 7 );
		writer.PutKeyboard( true, keys );
		writer.PutTick( step * 15 );
	}
	recording.steps = writer.GetStepCount();
	recording.tape = writer.GetTape();
	for ( uint64_t step : { 100, 200, 250 } ) {
		recording.checkpoints.push_back( { step, step * 0x9E3779B97F4A7C15ull, { "game", "scene", "player 1" },
										   { uint32_t( step ), 2, 3 } } );
	}
	recording.checkpoints[2].names.push_back( "enemy 1" );
	recording.checkpoints[2].parts.push_back( 4 );
	return recording;
}

void PutVarintAt( std::vector<uint8_t> &bytes, size_t at, size_t oldLength, uint64_t value ) {
	std::vector<uint8_t> varint;
	do {
		varint.push_back( static_cast<uint8_t>( ( value & 0x7F ) | ( value >= 0x80 ? 0x80 : 0 ) ) );
		value >>= 7;
	} while ( value != 0 );
	bytes.erase( bytes.begin() + static_cast<long>( at ), bytes.begin() + static_cast<long>( at + oldLength ) );
	bytes.insert( bytes.begin() + static_cast<long>( at ), varint.begin(), varint.end() );
}

}

TEST( ReplayFileTest, ARecordingComesBackWhole ) {
	const cRecording recording = MakeRecording();
	const std::vector<uint8_t> bytes = cReplayFile::Encode( recording );
	cRecording read;
	std::string why;
	ASSERT_TRUE( cReplayFile::Decode( bytes.data(), bytes.size(), read, why ) ) << why;
	EXPECT_EQ( read.gameVersion, "1.0.0" );
	EXPECT_TRUE( read.soundOpened );
	EXPECT_EQ( read.steps, 250u );
	EXPECT_EQ( read.tape, recording.tape );
	ASSERT_EQ( read.checkpoints.size(), 3u );
	for ( size_t i = 0; i < 3; i++ ) {
		EXPECT_EQ( read.checkpoints[i].step, recording.checkpoints[i].step );
		EXPECT_EQ( read.checkpoints[i].total, recording.checkpoints[i].total );
		EXPECT_EQ( read.checkpoints[i].names, recording.checkpoints[i].names );
		EXPECT_EQ( read.checkpoints[i].parts, recording.checkpoints[i].parts );
	}
}

// Magic 4 bytes, format version at 4, the version string's length at 5, "1.0.0", the sound flag at
// 11, the step count at 12 (two bytes for 250), the tape's length at 14.
TEST( ReplayFileTest, BrokenFilesAreRefusedWithTheirReason ) {
	const std::vector<uint8_t> good = cReplayFile::Encode( MakeRecording() );
	const struct {
		const char *	name;
		std::function<void( std::vector<uint8_t> & )> spoil;
		const char *	why;
	} cases[] = {
		{ "empty", []( std::vector<uint8_t> &b ) { b.clear(); }, "not a replay file (too short)" },
		{ "another magic", []( std::vector<uint8_t> &b ) { b[0] = 'X'; }, "not a replay file" },
		{ "format 2", []( std::vector<uint8_t> &b ) { b[4] = 2; }, "format version 2, this game reads version 1" },
		{ "a long version", []( std::vector<uint8_t> &b ) { b[5] = 100; }, "a name of 100 bytes" },
		{ "sound flag 2", []( std::vector<uint8_t> &b ) { b[11] = 2; }, "the sound flag is 2" },
		{ "2^60 steps", []( std::vector<uint8_t> &b ) { PutVarintAt( b, 12, 2, 1ull << 60 ); }, "need more checkpoints than the file can hold" },
		{ "a tape longer than the file", []( std::vector<uint8_t> &b ) { PutVarintAt( b, 14, 1, 1ull << 40 ); }, "tape bytes cannot fit" },
		{ "one step more", []( std::vector<uint8_t> &b ) { PutVarintAt( b, 12, 2, 251 ); }, "holds 250 steps where the header says 251" },
		{ "a byte after the end", []( std::vector<uint8_t> &b ) { b.push_back( 0 ); }, "1 bytes after the last checkpoint" },
		{ "no names at first", []( std::vector<uint8_t> &b ) { b[15 + b[14] + 8] = 0; }, "the first checkpoint names no parts" },
		{ "names flag 2", []( std::vector<uint8_t> &b ) { b[15 + b[14] + 8] = 2; }, "names flag is 2" },
		{ "2^40 parts", []( std::vector<uint8_t> &b ) { PutVarintAt( b, 15 + b[14] + 9, 1, 1ull << 40 ); }, "state parts cannot fit" },
	};
	for ( const auto &c : cases ) {
		std::vector<uint8_t> bytes = good;
		c.spoil( bytes );
		cRecording read;
		std::string why;
		EXPECT_FALSE( cReplayFile::Decode( bytes.data(), bytes.size(), read, why ) ) << c.name;
		EXPECT_NE( why.find( c.why ), std::string::npos ) << c.name << ": " << why;
		EXPECT_TRUE( read.tape.empty() && read.checkpoints.empty() ) << c.name << ": a refused file leaves nothing";
	}
}

// Cut anywhere, or with any one byte flipped, the file is refused or read, never more.
TEST( ReplayFileTest, EveryCutAndFlippedByteEndsInADefinedOutcome ) {
	const std::vector<uint8_t> good = cReplayFile::Encode( MakeRecording() );
	for ( size_t size = 0; size < good.size(); size++ ) {
		cRecording read;
		std::string why;
		EXPECT_FALSE( cReplayFile::Decode( good.data(), size, read, why ) ) << "cut at " << size;
		EXPECT_FALSE( why.empty() ) << "cut at " << size;
	}
	for ( size_t at = 0; at < good.size(); at++ ) {
		std::vector<uint8_t> bytes = good;
		bytes[at] ^= 0xFF;
		cRecording read;
		std::string why;
		const bool decoded = cReplayFile::Decode( bytes.data(), bytes.size(), read, why );
		EXPECT_NE( decoded, !why.empty() ) << "flipped at " << at;
	}
}

TEST( ReplayFileTest, SaveAndLoadSayWhatWentWrongInOneLine ) {
	cTempDir dir;
	cLogCapture log;
	std::string error;
	cRecording read;
	EXPECT_FALSE( cReplayFile::Load( dir.GetFile( "missing.kmr" ), read, error ) );
	EXPECT_EQ( error, "Error reading replay " + dir.GetFile( "missing.kmr" ) + ": No such file or directory" );
	EXPECT_FALSE( cReplayFile::Save( dir.GetFile( "no/such/folder.kmr" ), MakeRecording(), error ) );
	EXPECT_EQ( error, "Error writing replay " + dir.GetFile( "no/such/folder.kmr" ) + ": No such file or directory" );
	ASSERT_TRUE( cReplayFile::Save( dir.GetFile( "game.kmr" ), MakeRecording(), error ) ) << error;
	EXPECT_TRUE( cReplayFile::Load( dir.GetFile( "game.kmr" ), read, error ) ) << error;
	EXPECT_EQ( read.steps, 250u );
	dir.WriteFile( "text.kmr", "KMRP but not a replay" );
	EXPECT_FALSE( cReplayFile::Load( dir.GetFile( "text.kmr" ), read, error ) );
	EXPECT_EQ( log.GetLines().size(), 3u );
}
