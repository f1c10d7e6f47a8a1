// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/Packet.h"

#include <algorithm>
#include <iterator>

#include "replay/ByteReader.h"
#include "replay/ByteWriter.h"

namespace {

const uint64_t PROTOCOL_LIMIT = 1u << 16;
// An input's tag: its kind in the low bits, then how many steps after it have the same input.
const uint8_t INPUT_WHOLE = 1;
const uint8_t INPUT_KEYS = 2;			// the keys only: the mouse is the one before it
const uint8_t INPUT_KIND_MASK = 3;
const int REPEAT_SHIFT = 2;
const size_t MAX_REPEATS = 63;
const uint8_t MOUSE_POSITION = 1;
const uint8_t MOUSE_MOTION = 2;
const uint8_t MOUSE_WHEEL = 4;
const int MOUSE_BUTTON_SHIFT = 4;
const uint8_t BUTTON_HELD = 0x80;

bool GetCoordinate( cByteReader &in, int32_t &value ) {
	int64_t read = 0;
	if ( !in.GetSigned( read ) ) {
		return false;
	}
	if ( read < -cPacket::MAX_POSITION || read > cPacket::MAX_POSITION ) {
		return in.Fail( "a mouse value out of range" );
	}
	value = static_cast<int32_t>( read );
	return true;
}

bool GetBounded( cByteReader &in, uint64_t &value, uint64_t most, const char *what ) {
	if ( !in.GetVarint( value ) ) {
		return false;
	}
	return value <= most || in.Fail( std::string( what ) + " too large" );
}

}

void cPacket::WriteKeys( cByteWriter &out, const cStepInput &input ) {
	out.PutByte( static_cast<uint8_t>( input.CountKeys() ) );
	for ( int key = 0; key < cStepInput::KEY_COUNT; key++ ) {
		if ( input.IsKeyDown( key ) ) {
			out.PutByte( static_cast<uint8_t>( key ) );
		}
	}
}

void cPacket::WriteMouse( cByteWriter &out, const cStepInput &input ) {
	const cMouseReading &mouse = input.mouse;
	uint8_t flags = 0;
	flags |= mouse.hasPosition ? MOUSE_POSITION : 0;
	flags |= mouse.dx != 0 || mouse.dy != 0 ? MOUSE_MOTION : 0;
	flags |= mouse.wheel != 0 ? MOUSE_WHEEL : 0;
	for ( int button = 0; button < 4; button++ ) {
		flags |= mouse.buttons[button] & BUTTON_HELD ? 1u << ( MOUSE_BUTTON_SHIFT + button ) : 0;
	}
	out.PutByte( flags );
	if ( flags & MOUSE_POSITION ) {
		out.PutSigned( mouse.x );
		out.PutSigned( mouse.y );
	}
	if ( flags & MOUSE_MOTION ) {
		out.PutSigned( mouse.dx );
		out.PutSigned( mouse.dy );
	}
	if ( flags & MOUSE_WHEEL ) {
		out.PutSigned( mouse.wheel );
	}
}

std::vector<uint8_t> cPacket::Write( const cNetMessage &message ) {
	cByteWriter out;
	out.PutByte( message.kind );
	switch ( message.kind ) {
		case NET_HELLO:
			out.PutVarint( message.hello.protocol );
			out.PutString( message.hello.version );
			out.PutWord64( message.hello.dataHash );
			out.PutWord64( message.hello.fingerprint );
			out.PutVarint( message.hello.delay );
			break;
		case NET_START:
			out.PutVarint( message.start.delay );
			out.PutWord32( message.start.startTick );
			out.PutSigned( message.start.startCalendar );
			out.PutWord64( message.start.token );
			break;
		case NET_INPUTS: {
			const cInputRun &run = message.inputs;
			out.PutVarint( run.acknowledged );
			out.PutVarint( run.first );
			out.PutVarint( run.inputs.size() );
			for ( size_t i = 0; i < run.inputs.size(); ) {
				const cStepInput &input = run.inputs[i];
				size_t repeats = 0;
				while ( i + repeats + 1 < run.inputs.size() && repeats < MAX_REPEATS && run.inputs[i + repeats + 1] == input ) {
					repeats++;
				}
				cStepInput keysOnly = i > 0 ? run.inputs[i - 1] : cStepInput();
				std::copy( std::begin( input.keys ), std::end( input.keys ), keysOnly.keys );
				const uint8_t kind = i > 0 && input == keysOnly ? INPUT_KEYS : INPUT_WHOLE;
				out.PutByte( static_cast<uint8_t>( kind | repeats << REPEAT_SHIFT ) );
				WriteKeys( out, input );
				if ( kind == INPUT_WHOLE ) {
					WriteMouse( out, input );
				}
				i += repeats + 1;
			}
			break;
		}
		case NET_HASH: {
			const cHashReport &hash = message.hash;
			out.PutVarint( hash.step );
			out.PutWord64( hash.total );
			out.PutVarint( hash.parts.size() );
			out.PutByte( hash.hasNames ? 1 : 0 );
			for ( size_t i = 0; hash.hasNames && i < hash.names.size(); i++ ) {
				out.PutString( hash.names[i] );
			}
			for ( uint32_t part : hash.parts ) {
				out.PutWord32( part );
			}
			break;
		}
		case NET_PING:
		case NET_PONG:
			out.PutWord32( message.time );
			break;
		case NET_DELAY:
			out.PutVarint( message.delayChange.step );
			out.PutVarint( message.delayChange.delay );
			break;
		case NET_RESUME:
			out.PutWord64( message.token );
			break;
		case NET_BYE:
			out.PutByte( message.reason );
			out.PutVarint( message.lastStep );
			if ( message.reason == BYE_OUT_OF_STEP ) {
				out.PutString( message.part );
			}
			break;
		default:
			break;
	}
	return out.GetBytes();
}

bool cPacket::ReadStep( cByteReader &in, const cStepWindow &window, uint64_t &step, const char *what ) {
	if ( !in.GetVarint( step ) ) {
		return false;
	}
	if ( step < window.low || step >= window.high ) {
		return in.Fail( std::string( what ) + " " + std::to_string( step ) + " outside the steps " +
						std::to_string( window.low ) + " to " + std::to_string( window.high - 1 ) );
	}
	return true;
}

bool cPacket::ReadKeys( cByteReader &in, cStepInput &input ) {
	std::fill( std::begin( input.keys ), std::end( input.keys ), 0 );
	uint8_t count = 0;
	if ( !in.GetByte( count ) ) {
		return false;
	}
	if ( count > MAX_KEYS_HELD ) {
		return in.Fail( "too many keys held" );
	}
	for ( int i = 0; i < count; i++ ) {
		uint8_t key = 0;
		if ( !in.GetByte( key ) ) {
			return false;
		}
		input.SetKey( key, true );
	}
	return true;
}

bool cPacket::ReadMouse( cByteReader &in, cStepInput &input ) {
	uint8_t flags = 0;
	if ( !in.GetByte( flags ) ) {
		return false;
	}
	if ( flags & 0x08 ) {
		return in.Fail( "an unknown mouse flag" );
	}
	cMouseReading &mouse = input.mouse;
	mouse = cMouseReading();
	mouse.hasPosition = flags & MOUSE_POSITION;
	for ( int button = 0; button < 4; button++ ) {
		mouse.buttons[button] = flags & ( 1u << ( MOUSE_BUTTON_SHIFT + button ) ) ? BUTTON_HELD : 0;
	}
	bool read = true;
	if ( flags & MOUSE_POSITION ) {
		read = GetCoordinate( in, mouse.x ) && GetCoordinate( in, mouse.y );
	}
	if ( read && ( flags & MOUSE_MOTION ) ) {
		read = GetCoordinate( in, mouse.dx ) && GetCoordinate( in, mouse.dy );
	}
	if ( read && ( flags & MOUSE_WHEEL ) ) {
		read = GetCoordinate( in, mouse.wheel );
	}
	return read;
}

bool cPacket::ReadInputs( cByteReader &in, const cStepWindow &window, cInputRun &run ) {
	uint64_t count = 0;
	if ( !GetBounded( in, run.acknowledged, window.high, "an acknowledgement" ) ||
		 !ReadStep( in, window, run.first, "first step" ) || !GetBounded( in, count, MAX_INPUTS, "an input count" ) ) {
		return false;
	}
	if ( count > 0 && run.first + count > window.high ) {
		return in.Fail( "inputs beyond the window of steps" );
	}
	run.inputs.resize( count );
	for ( size_t i = 0; i < count; ) {
		uint8_t tag = 0;
		if ( !in.GetByte( tag ) ) {
			return false;
		}
		const uint8_t kind = tag & INPUT_KIND_MASK;
		const size_t repeats = tag >> REPEAT_SHIFT;
		if ( i > 0 ) {
			run.inputs[i] = run.inputs[i - 1];
		}
		const bool read = ( kind == INPUT_WHOLE || ( kind == INPUT_KEYS && i > 0 ) ) && ReadKeys( in, run.inputs[i] ) &&
						  ( kind == INPUT_KEYS || ReadMouse( in, run.inputs[i] ) );
		if ( !read || i + repeats >= count ) {
			return in.Fail( "a broken step input" );
		}
		std::fill( run.inputs.begin() + static_cast<long>( i ) + 1, run.inputs.begin() + static_cast<long>( i + repeats ) + 1, run.inputs[i] );
		i += repeats + 1;
	}
	return true;
}

bool cPacket::ReadHash( cByteReader &in, const cStepWindow &window, cHashReport &hash ) {
	uint64_t count = 0;
	uint8_t hasNames = 0;
	if ( !ReadStep( in, window, hash.step, "hash of step" ) || !in.GetWord64( hash.total ) ||
		 !GetBounded( in, count, MAX_PARTS, "a part count" ) || !in.GetByte( hasNames ) ) {
		return false;
	}
	if ( hasNames > 1 ) {
		return in.Fail( "a broken names flag" );
	}
	hash.hasNames = hasNames == 1;
	hash.names.assign( hash.hasNames ? count : 0, std::string() );
	for ( std::string &name : hash.names ) {
		if ( !in.GetString( name, MAX_NAME ) ) {
			return false;
		}
	}
	hash.parts.assign( count, 0 );
	for ( uint32_t &part : hash.parts ) {
		if ( !in.GetWord32( part ) ) {
			return false;
		}
	}
	return true;
}

bool cPacket::Read( const uint8_t *data, size_t size, const cStepWindow &window, cNetMessage &message,
					std::string &why ) {
	message = cNetMessage();
	if ( size == 0 || size > MAX_SIZE ) {
		why = "a packet of " + std::to_string( size ) + " bytes";
		return false;
	}
	cByteReader in( data, size );
	uint8_t kind = 0;
	in.GetByte( kind );
	if ( kind < NET_HELLO || kind >= NET_MESSAGE_END ) {
		why = "a packet of unknown kind " + std::to_string( kind );
		return false;
	}
	message.kind = static_cast<eNetMessage>( kind );
	uint64_t value = 0;
	bool read = false;
	switch ( message.kind ) {
		case NET_HELLO:
			read = GetBounded( in, message.hello.protocol, PROTOCOL_LIMIT, "a protocol" ) &&
				   in.GetString( message.hello.version, MAX_VERSION ) && in.GetWord64( message.hello.dataHash ) &&
				   in.GetWord64( message.hello.fingerprint ) && GetBounded( in, value, MAX_DELAY, "a delay" );
			message.hello.delay = static_cast<uint32_t>( value );
			break;
		case NET_START:
			read = GetBounded( in, value, MAX_DELAY, "a delay" ) && in.GetWord32( message.start.startTick ) &&
				   in.GetSigned( message.start.startCalendar ) && in.GetWord64( message.start.token );
			message.start.delay = static_cast<uint32_t>( value );
			break;
		case NET_INPUTS:
			read = ReadInputs( in, window, message.inputs );
			break;
		case NET_HASH:
			read = ReadHash( in, window, message.hash );
			break;
		case NET_PING:
		case NET_PONG:
			read = in.GetWord32( message.time );
			break;
		case NET_DELAY:
			read = ReadStep( in, window, message.delayChange.step, "delay change at step" ) &&
				   GetBounded( in, value, MAX_DELAY, "a delay" ) && ( value > 0 || in.Fail( "a delay of 0 steps" ) );
			message.delayChange.delay = static_cast<uint32_t>( value );
			break;
		case NET_RESUME:
			read = in.GetWord64( message.token );
			break;
		case NET_BYE:
			read = in.GetByte( kind ) && ( kind < BYE_REASON_END || in.Fail( "an unknown reason to leave" ) );
			message.reason = static_cast<eByeReason>( kind );
			read = read && ( message.reason == BYE_QUIT || message.reason == BYE_OUT_OF_STEP
								 ? ReadStep( in, window, message.lastStep, "last step" )
								 : GetBounded( in, message.lastStep, 0, "a last step" ) );
			read = read && ( message.reason != BYE_OUT_OF_STEP || in.GetString( message.part, MAX_NAME ) );
			break;
		default:
			break;
	}
	if ( read && !in.IsAtEnd() ) {
		in.Fail( std::to_string( in.GetRemaining() ) + " bytes after the message" );
	}
	if ( in.IsFailed() || !read ) {
		why = in.GetError().empty() ? std::string( "a broken packet" ) : in.GetError();
		message = cNetMessage();
		return false;
	}
	return true;
}
