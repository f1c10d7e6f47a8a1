// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/ByteReader.h"

namespace {

const int VARINT_MAX_BYTES = 10;		// 64 bits at 7 a byte

}

bool cByteReader::Fail( const std::string &why ) {
	if ( error.empty() ) {
		error = why;
	}
	return false;
}

bool cByteReader::GetByte( uint8_t &value ) {
	if ( IsFailed() ) {
		return false;
	}
	if ( position >= size ) {
		return Fail( "the file ends early" );
	}
	value = data[position++];
	return true;
}

bool cByteReader::GetVarint( uint64_t &value ) {
	value = 0;
	for ( int i = 0; i < VARINT_MAX_BYTES; i++ ) {
		uint8_t byte = 0;
		if ( !GetByte( byte ) ) {
			return false;
		}
		if ( i == VARINT_MAX_BYTES - 1 && byte > 1 ) {
			break;
		}
		value |= static_cast<uint64_t>( byte & 0x7F ) << ( 7 * i );
		if ( ( byte & 0x80 ) == 0 ) {
			return true;
		}
	}
	return Fail( "a number is longer than 64 bits" );
}

bool cByteReader::GetSigned( int64_t &value ) {
	uint64_t bits = 0;
	if ( !GetVarint( bits ) ) {
		return false;
	}
	value = Unzigzag( bits );
	return true;
}

bool cByteReader::GetWord32( uint32_t &value ) {
	value = 0;
	for ( int i = 0; i < 4; i++ ) {
		uint8_t byte = 0;
		if ( !GetByte( byte ) ) {
			return false;
		}
		value |= static_cast<uint32_t>( byte ) << ( 8 * i );
	}
	return true;
}

bool cByteReader::GetWord64( uint64_t &value ) {
	uint32_t low = 0;
	uint32_t high = 0;
	if ( !GetWord32( low ) || !GetWord32( high ) ) {
		return false;
	}
	value = static_cast<uint64_t>( high ) << 32 | low;
	return true;
}

bool cByteReader::GetString( std::string &text, size_t maxLength ) {
	uint64_t length = 0;
	if ( !GetVarint( length ) ) {
		return false;
	}
	if ( length > maxLength ) {
		return Fail( "a name of " + std::to_string( length ) + " bytes, longer than " + std::to_string( maxLength ) );
	}
	if ( length > GetRemaining() ) {
		return Fail( "the file ends early" );
	}
	text.assign( reinterpret_cast<const char *>( data + position ), static_cast<size_t>( length ) );
	position += static_cast<size_t>( length );
	return true;
}

bool cByteReader::GetCount( uint64_t &count, size_t minBytes, const char *what ) {
	if ( !GetVarint( count ) ) {
		return false;
	}
	if ( minBytes > 0 && count > GetRemaining() / minBytes ) {
		return Fail( std::to_string( count ) + " " + what + " cannot fit in the " + std::to_string( GetRemaining() ) +
					 " bytes left" );
	}
	return true;
}

bool cByteReader::Skip( size_t count ) {
	if ( IsFailed() ) {
		return false;
	}
	if ( count > GetRemaining() ) {
		return Fail( "the file ends early" );
	}
	position += count;
	return true;
}
