// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/TapeWriter.h"

#include "replay/ByteWriter.h"
#include "replay/TapeCodes.h"

namespace {

void PutTagTo( std::vector<uint8_t> &out, uint8_t tag, uint64_t argument ) {
	const uint64_t inByte = argument < TAG_ARGUMENT_ESCAPE ? argument : TAG_ARGUMENT_ESCAPE;
	out.push_back( static_cast<uint8_t>( tag | inByte << TAG_ARGUMENT_SHIFT ) );
	if ( inByte == TAG_ARGUMENT_ESCAPE ) {
		cByteWriter rest;
		rest.PutVarint( argument - TAG_ARGUMENT_ESCAPE );
		out.insert( out.end(), rest.GetBytes().begin(), rest.GetBytes().end() );
	}
}

void PutSignedTo( std::vector<uint8_t> &out, int64_t value ) {
	cByteWriter bytes;
	bytes.PutSigned( value );
	out.insert( out.end(), bytes.GetBytes().begin(), bytes.GetBytes().end() );
}

// Differences of 32-bit values wrap, as the values do.
int64_t GetDifference( int32_t from, int32_t to ) {
	return static_cast<int32_t>( static_cast<uint32_t>( to ) - static_cast<uint32_t>( from ) );
}

}

void cTapeWriter::PutTag( uint8_t tag, uint64_t argument ) {
	PutTagTo( current.open, tag, argument );
}

void cTapeWriter::PutRepeats( std::vector<uint8_t> &out, uint64_t count ) {
	if ( count > 0 ) {
		PutTagTo( out, TAG_REPEAT, count - 1 );
	}
}

// The preamble is written as it is; a step equal to the one before it only counts a repeat.
void cTapeWriter::CloseStep() {
	if ( current.steps > 1 && current.open == current.previous ) {
		current.repeats++;
	} else {
		PutRepeats( tape, current.repeats );
		current.repeats = 0;
		tape.insert( tape.end(), current.open.begin(), current.open.end() );
		current.previous.swap( current.open );
	}
	current.open.clear();
}

void cTapeWriter::BeginStep( bool pause ) {
	CloseStep();
	current.steps++;
	PutTag( TAG_STEP, pause ? 1 : 0 );
}

void cTapeWriter::PutTick( uint32_t msec ) {
	PutTag( TAG_TICK, cByteWriter::Zigzag( GetDifference( static_cast<int32_t>( current.lastTick ), static_cast<int32_t>( msec ) ) ) );
	current.lastTick = msec;
}

void cTapeWriter::PutCalendar( std::time_t seconds ) {
	const int64_t now = static_cast<int64_t>( seconds );
	PutTag( TAG_CALENDAR, cByteWriter::Zigzag( static_cast<int64_t>( static_cast<uint64_t>( now ) - static_cast<uint64_t>( current.lastCalendar ) ) ) );
	current.lastCalendar = now;
}

void cTapeWriter::PutKeyboard( bool read, const uint8_t state[256] ) {
	if ( !read ) {
		PutTag( TAG_FAILED, FAILED_KEYBOARD );
		return;
	}
	std::vector<uint8_t> changes;
	for ( int key = 0; key < 256; key++ ) {
		if ( state[key] != current.lastKeys[key] ) {
			changes.push_back( static_cast<uint8_t>( key ) );
			changes.push_back( state[key] );
			current.lastKeys[key] = state[key];
		}
	}
	PutTag( TAG_KEYBOARD, changes.size() / 2 );
	current.open.insert( current.open.end(), changes.begin(), changes.end() );
}

void cTapeWriter::PutMouse( bool read, const cMouseReading &reading ) {
	if ( !read ) {
		PutTag( TAG_FAILED, FAILED_MOUSE );
		return;
	}
	const cMouseReading &last = current.lastMouse;
	uint64_t mask = 0;
	mask |= reading.dx != last.dx || reading.dy != last.dy ? MOUSE_MOTION : 0;
	mask |= reading.wheel != last.wheel ? MOUSE_WHEEL : 0;
	mask |= reading.hasPosition != last.hasPosition || reading.x != last.x || reading.y != last.y ? MOUSE_POSITION : 0;
	bool buttonsChanged = false;
	for ( int i = 0; i < 4; i++ ) {
		buttonsChanged = buttonsChanged || reading.buttons[i] != last.buttons[i];
	}
	mask |= buttonsChanged ? MOUSE_BUTTONS : 0;
	PutTag( TAG_MOUSE, mask );
	if ( mask & MOUSE_MOTION ) {
		PutSignedTo( current.open, GetDifference( last.dx, reading.dx ) );
		PutSignedTo( current.open, GetDifference( last.dy, reading.dy ) );
	}
	if ( mask & MOUSE_WHEEL ) {
		PutSignedTo( current.open, GetDifference( last.wheel, reading.wheel ) );
	}
	if ( mask & MOUSE_POSITION ) {
		current.open.push_back( reading.hasPosition ? 1 : 0 );
		PutSignedTo( current.open, GetDifference( last.x, reading.x ) );
		PutSignedTo( current.open, GetDifference( last.y, reading.y ) );
	}
	if ( mask & MOUSE_BUTTONS ) {
		current.open.insert( current.open.end(), reading.buttons, reading.buttons + 4 );
	}
	current.lastMouse = reading;
}

std::vector<uint8_t> cTapeWriter::GetTape() const {
	std::vector<uint8_t> whole = tape;
	if ( current.steps > 1 && current.open == current.previous ) {
		PutRepeats( whole, current.repeats + 1 );
	} else {
		PutRepeats( whole, current.repeats );
		whole.insert( whole.end(), current.open.begin(), current.open.end() );
	}
	return whole;
}

void cTapeWriter::Mark( cMark &mark ) const {
	mark.written = tape.size();
	mark.state = current;
}

void cTapeWriter::Rewind( const cMark &mark ) {
	tape.resize( mark.written );
	current = mark.state;
}
