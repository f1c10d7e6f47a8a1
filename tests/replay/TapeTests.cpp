// SPDX-License-Identifier: GPL-3.0-or-later
// The tape: every kind of read comes back as it went in, whatever its size or sign, and a run of
// unchanging steps costs one repeat count.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "replay/TapeReader.h"
#include "replay/TapeWriter.h"

namespace {

void Put( cTapeWriter &writer, const cTapeStep &step ) {
	for ( const cTapeStep::cRead &read : step.reads ) {
		switch ( read.kind ) {
			case cTapeStep::TICK:		writer.PutTick( static_cast<uint32_t>( read.time ) ); break;
			case cTapeStep::CALENDAR:	writer.PutCalendar( static_cast<std::time_t>( read.time ) ); break;
			case cTapeStep::KEYBOARD:	writer.PutKeyboard( true, read.keys.data() ); break;
			case cTapeStep::MOUSE:		writer.PutMouse( true, read.mouse ); break;
			case cTapeStep::KEYBOARD_FAILED: writer.PutKeyboard( false, read.keys.data() ); break;
			case cTapeStep::MOUSE_FAILED: writer.PutMouse( false, read.mouse ); break;
		}
	}
}

// Writes the steps (the first is the preamble) and reads them back. Before each step the writer
// runs ahead, as a game played on guesses does: it writes the next steps with a key of its own
// held, and is rewound.
std::vector<cTapeStep> RoundTrip( const std::vector<cTapeStep> &steps, std::vector<uint8_t> &tape ) {
	const size_t AHEAD = 3;
	uint8_t guessed[256] = {};
	guessed[200] = 0x80;
	cTapeWriter writer;
	Put( writer, steps[0] );
	for ( size_t i = 1; i < steps.size(); i++ ) {
		cTapeWriter::cMark mark;
		writer.Mark( mark );
		for ( size_t j = i; j < std::min( i + AHEAD, steps.size() ); j++ ) {
			writer.BeginStep( steps[j].pause );
			Put( writer, steps[j] );
			writer.PutKeyboard( true, guessed );
		}
		writer.Rewind( mark );
		writer.BeginStep( steps[i].pause );
		Put( writer, steps[i] );
	}
	tape = writer.GetTape();
	std::string why;
	EXPECT_TRUE( cTapeReader::Check( tape.data(), tape.size(), steps.size() - 1, why ) ) << why;
	cTapeReader reader( tape.data(), tape.size() );
	std::vector<cTapeStep> read( 1 );
	EXPECT_TRUE( reader.ReadPreamble( read[0] ) );
	cTapeStep step;
	while ( reader.ReadStep( step ) ) {
		read.push_back( step );
	}
	EXPECT_TRUE( reader.IsAtEnd() );
	return read;
}

cTapeStep::cRead Time( cTapeStep::eKind kind, int64_t time ) {
	cTapeStep::cRead read;
	read.kind = kind;
	read.time = time;
	return read;
}

cTapeStep::cRead Keys( std::vector<std::pair<int, uint8_t>> down ) {
	cTapeStep::cRead read;
	read.kind = cTapeStep::KEYBOARD;
	for ( const auto &key : down ) {
		read.keys[key.first] = key.second;
	}
	return read;
}

cTapeStep::cRead Mouse( int32_t dx, int32_t wheel, bool has, int32_t x, int32_t y, uint8_t left ) {
	cTapeStep::cRead read;
	read.kind = cTapeStep::MOUSE;
	read.mouse.dx = dx;
	read.mouse.dy = -dx;
	read.mouse.wheel = wheel;
	read.mouse.hasPosition = has;
	read.mouse.x = x;
	read.mouse.y = y;
	read.mouse.buttons[0] = left;
	return read;
}

std::string Describe( const cTapeStep::cRead &read ) {
	std::string text = std::to_string( read.kind ) + ":" + std::to_string( read.time );
	if ( read.kind == cTapeStep::KEYBOARD ) {
		for ( int key = 0; key < 256; key++ ) {
			text += read.keys[key] != 0 ? " k" + std::to_string( key ) + "=" + std::to_string( read.keys[key] ) : "";
		}
	}
	if ( read.kind == cTapeStep::MOUSE ) {
		const cMouseReading &m = read.mouse;
		text += " " + std::to_string( m.dx ) + "," + std::to_string( m.dy ) + " w" + std::to_string( m.wheel ) + " p" +
				std::to_string( m.hasPosition ) + " " + std::to_string( m.x ) + "," + std::to_string( m.y ) + " b" +
				std::to_string( m.buttons[0] ) + std::to_string( m.buttons[1] ) + std::to_string( m.buttons[2] ) + std::to_string( m.buttons[3] );
	}
	return text;
}

void ExpectSameSteps( const std::vector<cTapeStep> &expected, const std::vector<cTapeStep> &actual ) {
	ASSERT_EQ( actual.size(), expected.size() );
	for ( size_t i = 0; i < expected.size(); i++ ) {
		EXPECT_EQ( actual[i].pause, expected[i].pause ) << "step " << i;
		ASSERT_EQ( actual[i].reads.size(), expected[i].reads.size() ) << "step " << i;
		for ( size_t j = 0; j < expected[i].reads.size(); j++ ) {
			EXPECT_EQ( Describe( actual[i].reads[j] ), Describe( expected[i].reads[j] ) ) << "step " << i << " read " << j;
		}
	}
}

}

TEST( TapeTest, EveryReadComesBackAsItWasRecorded ) {
	const int64_t wrapTick = 0xFFFFFFF0;
	const std::vector<cTapeStep> steps = {
		{ false, { Mouse( 0, 0, true, 320, 240, 0 ), Time( cTapeStep::TICK, 5 ) } },		// the preamble
		{ false, { Keys( {} ), Mouse( 0, 0, true, 320, 240, 0 ), Time( cTapeStep::TICK, 20 ) } },
		{ true, { Keys( { { 17, 0x80 }, { 255, 0x80 }, { 0, 0x01 } } ), Mouse( -7, 3, true, 639, 0, 0x80 ),
				  Time( cTapeStep::TICK, wrapTick ), Time( cTapeStep::CALENDAR, 1700000000 ) } },
		{ false, { Keys( { { 17, 0x80 } } ), Mouse( 100000, -2, false, -5, 479, 0 ), Time( cTapeStep::TICK, 9 ),
				   Time( cTapeStep::TICK, 9 ), Time( cTapeStep::CALENDAR, 1699999999 ), Time( cTapeStep::CALENDAR, -4 ) } },
		{ false, { Time( cTapeStep::KEYBOARD_FAILED, 0 ), Time( cTapeStep::MOUSE_FAILED, 0 ), Keys( {} ),
				   Time( cTapeStep::CALENDAR, INT64_MAX ), Time( cTapeStep::CALENDAR, INT64_MIN ) } },
		{ false, {} },
	};
	std::vector<uint8_t> tape;
	ExpectSameSteps( steps, RoundTrip( steps, tape ) );
}

// Steps that change nothing but the clock's 15 msec cost a repeat count however many there are;
// the keys and the clock go on from the values the repeated bytes leave.
TEST( TapeTest, IdleStepsAreOneRepeat ) {
	std::vector<cTapeStep> steps( 1 );
	for ( int i = 1; i <= 5000; i++ ) {
		const bool held = i >= 2000 && i < 4000;
		steps.push_back( { false, { Keys( held ? std::vector<std::pair<int, uint8_t>>{ { 30, 0x80 } } : std::vector<std::pair<int, uint8_t>>{} ),
									Mouse( 0, 0, true, 10, 10, 0 ), Time( cTapeStep::TICK, 15 * i ) } } );
	}
	std::vector<uint8_t> tape;
	ExpectSameSteps( steps, RoundTrip( steps, tape ) );
	EXPECT_LT( tape.size(), 64u ) << "four bytes a step without the repeats";
}

TEST( TapeTest, BrokenTapesAreRefusedWithTheReason ) {
	const struct {
		const char *			name;
		std::vector<uint8_t>	tape;
		uint64_t				steps;
		const char *			why;
	} cases[] = {
		{ "a repeat first", { 0x01 }, 1, "a repeat with no step before it" },
		{ "an unknown entry", { 0x00, 0x07 }, 1, "unknown tape entry 7" },
		{ "a step flag of 2", { 0x10 }, 1, "a step was expected" },
		{ "too many keys", { 0x00, 0xFC, 0xE2, 0x01 }, 1, "more than 256 keys" },
		{ "keys cut short", { 0x00, 0x0C, 17 }, 1, "ends early" },
		{ "an unknown mouse field", { 0x00, 0x85 }, 1, "unknown fields" },
		{ "a position flag of 2", { 0x00, 0x25, 2, 0, 0 }, 1, "flag other than 0 or 1" },
		{ "fewer steps than said", { 0x00, 0x00 }, 3, "holds 2 steps where the header says 3" },
		{ "a repeat past the count", { 0x00, 0xF9, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01 }, 5, "more steps" },
		{ "a varint of 11 bytes", { 0x00, 0xFA, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x01 }, 1, "longer than 64 bits" },
	};
	for ( const auto &c : cases ) {
		std::string why;
		EXPECT_FALSE( cTapeReader::Check( c.tape.data(), c.tape.size(), c.steps, why ) ) << c.name;
		EXPECT_NE( why.find( c.why ), std::string::npos ) << c.name << ": " << why;
	}
	std::vector<uint8_t> crowded( 1, 0x00 );
	crowded.insert( crowded.end(), cTapeReader::MAX_READS_PER_STEP + 1, 0x02 );
	std::string why;
	EXPECT_FALSE( cTapeReader::Check( crowded.data(), crowded.size(), 1, why ) );
	EXPECT_NE( why.find( "more than 4096 reads" ), std::string::npos ) << why;
}
