// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/ByteWriter.h"

void cByteWriter::PutVarint( uint64_t value ) {
	while ( value >= 0x80 ) {
		bytes.push_back( static_cast<uint8_t>( value | 0x80 ) );
		value >>= 7;
	}
	bytes.push_back( static_cast<uint8_t>( value ) );
}

void cByteWriter::PutWord32( uint32_t value ) {
	for ( int i = 0; i < 4; i++ ) {
		bytes.push_back( static_cast<uint8_t>( value >> ( 8 * i ) ) );
	}
}

void cByteWriter::PutWord64( uint64_t value ) {
	PutWord32( static_cast<uint32_t>( value ) );
	PutWord32( static_cast<uint32_t>( value >> 32 ) );
}

void cByteWriter::PutString( const std::string &text ) {
	PutVarint( text.size() );
	bytes.insert( bytes.end(), text.begin(), text.end() );
}
