// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/TapeReader.h"

#include "replay/TapeCodes.h"

namespace {

int32_t AddWrapping( int32_t value, int64_t difference ) {
	return static_cast<int32_t>( static_cast<uint32_t>( value ) + static_cast<uint32_t>( difference ) );
}

}

cTapeReader::cTapeReader( const uint8_t *tapeData, size_t size ) : data( tapeData ), tape( tapeData, size ) {
	lastKeys.kind = cTapeStep::KEYBOARD;
}

bool cTapeReader::ReadTag( cByteReader &bytes, uint8_t &kind, uint64_t &argument ) {
	uint8_t tag = 0;
	if ( !bytes.GetByte( tag ) ) {
		return false;
	}
	kind = tag & TAG_KIND_MASK;
	argument = tag >> TAG_ARGUMENT_SHIFT;
	if ( argument < TAG_ARGUMENT_ESCAPE ) {
		return true;
	}
	uint64_t rest = 0;
	if ( !bytes.GetVarint( rest ) ) {
		return false;
	}
	if ( rest > UINT64_MAX - TAG_ARGUMENT_ESCAPE ) {
		return bytes.Fail( "a tape entry's number is too large" );
	}
	argument += rest;
	return true;
}

// Whether the next byte opens a step or a repeat, which ends the reads of the step before.
bool cTapeReader::PeeksStep( const cByteReader &bytes, const uint8_t *start ) {
	const uint8_t kind = start[bytes.GetPosition()] & TAG_KIND_MASK;
	return kind == TAG_STEP || kind == TAG_REPEAT;
}

bool cTapeReader::ReadMouse( cByteReader &bytes, uint64_t mask, cMouseReading &reading ) {
	if ( mask > MOUSE_ALL ) {
		return bytes.Fail( "a mouse poll with unknown fields" );
	}
	int64_t a = 0;
	int64_t b = 0;
	if ( mask & MOUSE_MOTION ) {
		if ( !bytes.GetSigned( a ) || !bytes.GetSigned( b ) ) {
			return false;
		}
		reading.dx = AddWrapping( reading.dx, a );
		reading.dy = AddWrapping( reading.dy, b );
	}
	if ( mask & MOUSE_WHEEL ) {
		if ( !bytes.GetSigned( a ) ) {
			return false;
		}
		reading.wheel = AddWrapping( reading.wheel, a );
	}
	if ( mask & MOUSE_POSITION ) {
		uint8_t has = 0;
		if ( !bytes.GetByte( has ) || !bytes.GetSigned( a ) || !bytes.GetSigned( b ) ) {
			return false;
		}
		if ( has > 1 ) {
			return bytes.Fail( "a mouse position flag other than 0 or 1" );
		}
		reading.hasPosition = has == 1;
		reading.x = AddWrapping( reading.x, a );
		reading.y = AddWrapping( reading.y, b );
	}
	if ( mask & MOUSE_BUTTONS ) {
		for ( uint8_t &button : reading.buttons ) {
			if ( !bytes.GetByte( button ) ) {
				return false;
			}
		}
	}
	return true;
}

bool cTapeReader::ReadRead( cByteReader &bytes, uint8_t kind, uint64_t argument, cTapeStep::cRead &read ) {
	switch ( kind ) {
		case TAG_TICK:
			lastTick = static_cast<uint32_t>( lastTick + static_cast<uint64_t>( cByteReader::Unzigzag( argument ) ) );
			read.kind = cTapeStep::TICK;
			read.time = lastTick;
			return true;
		case TAG_CALENDAR:
			lastCalendar = static_cast<int64_t>( static_cast<uint64_t>( lastCalendar ) + static_cast<uint64_t>( cByteReader::Unzigzag( argument ) ) );
			read.kind = cTapeStep::CALENDAR;
			read.time = lastCalendar;
			return true;
		case TAG_KEYBOARD:
			if ( argument > 256 ) {
				return bytes.Fail( "a keyboard poll that changes more than 256 keys" );
			}
			for ( uint64_t i = 0; i < argument; i++ ) {
				uint8_t key = 0;
				if ( !bytes.GetByte( key ) || !bytes.GetByte( lastKeys.keys[key] ) ) {
					return false;
				}
			}
			read = lastKeys;
			return true;
		case TAG_MOUSE:
			if ( !ReadMouse( bytes, argument, lastMouse ) ) {
				return false;
			}
			read.kind = cTapeStep::MOUSE;
			read.mouse = lastMouse;
			return true;
		case TAG_FAILED:
			if ( argument > FAILED_MOUSE ) {
				return bytes.Fail( "a failed poll of an unknown device" );
			}
			read.kind = argument == FAILED_KEYBOARD ? cTapeStep::KEYBOARD_FAILED : cTapeStep::MOUSE_FAILED;
			return true;
		default:
			return bytes.Fail( "an unknown tape entry " + std::to_string( kind ) );
	}
}

// The reads up to the next step, repeat or the end; step null only checks them.
bool cTapeReader::ReadReads( cByteReader &bytes, cTapeStep *step ) {
	size_t count = 0;
	cTapeStep::cRead read;
	while ( !bytes.IsAtEnd() && !PeeksStep( bytes, data ) ) {
		uint8_t kind = 0;
		uint64_t argument = 0;
		if ( ++count > MAX_READS_PER_STEP ) {
			return bytes.Fail( "a step with more than " + std::to_string( MAX_READS_PER_STEP ) + " reads" );
		}
		if ( !ReadTag( bytes, kind, argument ) || !ReadRead( bytes, kind, argument, read ) ) {
			return false;
		}
		if ( step != nullptr ) {
			step->reads.push_back( read );
		}
	}
	return true;
}

bool cTapeReader::ReadPreamble( cTapeStep &step ) {
	step = cTapeStep();
	return ReadReads( tape, &step );
}

// A step's tag and its reads.
bool cTapeReader::ReadStepFrom( cByteReader &bytes, cTapeStep *step ) {
	uint8_t kind = 0;
	uint64_t argument = 0;
	if ( !ReadTag( bytes, kind, argument ) ) {
		return false;
	}
	if ( kind != TAG_STEP || argument > 1 ) {
		return bytes.Fail( "a step was expected, found tape entry " + std::to_string( kind ) );
	}
	if ( step != nullptr ) {
		step->pause = argument == 1;
		step->reads.clear();
	}
	return ReadReads( bytes, step );
}

// A repeat reads the last step's bytes again, from the values as they are now.
bool cTapeReader::ReadStep( cTapeStep &step ) {
	if ( repeatsLeft > 0 ) {
		repeatsLeft--;
		cByteReader bytes( data, previousEnd );
		bytes.Skip( previousStart );
		return ReadStepFrom( bytes, &step ) || tape.Fail( bytes.GetError() );
	}
	if ( tape.IsFailed() || tape.IsAtEnd() ) {
		return false;
	}
	uint64_t count = 0;
	if ( ReadRepeat( count ) ) {
		repeatsLeft = count;
		return !tape.IsFailed() && ReadStep( step );
	}
	const size_t start = tape.GetPosition();
	if ( !ReadStepFrom( tape, &step ) ) {
		return false;
	}
	previousStart = start;
	previousEnd = tape.GetPosition();
	hasPrevious = true;
	return true;
}

// Whether a repeat comes next; count is then the number of steps it stands for.
bool cTapeReader::ReadRepeat( uint64_t &count ) {
	if ( tape.IsAtEnd() || ( data[tape.GetPosition()] & TAG_KIND_MASK ) != TAG_REPEAT ) {
		return false;
	}
	uint8_t kind = 0;
	uint64_t argument = 0;
	if ( !ReadTag( tape, kind, argument ) ) {
		return true;
	}
	if ( !hasPrevious ) {
		tape.Fail( "a repeat with no step before it" );
		return true;
	}
	if ( argument == UINT64_MAX ) {
		tape.Fail( "a repeat count too large" );
		return true;
	}
	count = argument + 1;
	return true;
}

bool cTapeReader::Check( const uint8_t *data, size_t size, uint64_t steps, std::string &why ) {
	cTapeReader reader( data, size );
	cTapeStep scratch;
	uint64_t count = 0;
	if ( reader.ReadPreamble( scratch ) ) {
		while ( !reader.tape.IsAtEnd() && !reader.tape.IsFailed() && count <= steps ) {
			uint64_t repeats = 0;
			if ( reader.ReadRepeat( repeats ) ) {
				count += repeats <= steps - count ? repeats : steps + 1 - count;
			} else if ( reader.ReadStepFrom( reader.tape, nullptr ) ) {
				reader.hasPrevious = true;
				count++;
			}
		}
	}
	if ( reader.tape.IsFailed() ) {
		why = "broken tape at byte " + std::to_string( reader.tape.GetPosition() ) + ": " + reader.tape.GetError();
		return false;
	}
	if ( count != steps ) {
		why = "the tape holds " + ( count > steps ? std::string( "more" ) : std::to_string( count ) ) +
			  " steps where the header says " + std::to_string( steps );
		return false;
	}
	return true;
}
