// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cByteReader reads what cByteWriter wrote, from bytes that may be truncated or hostile: every
// read checks what is left, a varint longer than 64 bits is refused, and the first failure is
// kept as the reason the file is refused. After a failure every read fails.

#include <cstddef>
#include <cstdint>
#include <string>

class cByteReader {
public:
					cByteReader( const uint8_t *data, size_t size ) : data( data ), size( size ) {}

	bool			GetByte( uint8_t &value );
	bool			GetVarint( uint64_t &value );
	bool			GetSigned( int64_t &value );
	bool			GetWord32( uint32_t &value );
	bool			GetWord64( uint64_t &value );
	// A length-prefixed string of at most maxLength bytes.
	bool			GetString( std::string &text, size_t maxLength );
	// A count that the rest of the file must be able to hold, at minBytes bytes per counted thing.
	bool			GetCount( uint64_t &count, size_t minBytes, const char *what );
	bool			Skip( size_t count );

	size_t			GetPosition() const { return position; }
	size_t			GetRemaining() const { return size - position; }
	bool			IsAtEnd() const { return position == size; }
	bool			IsFailed() const { return !error.empty(); }
	const std::string &GetError() const { return error; }
	bool			Fail( const std::string &why );		// keeps the first reason; returns false

	static int64_t	Unzigzag( uint64_t value ) {
		return static_cast<int64_t>( value >> 1 ) ^ -static_cast<int64_t>( value & 1 );
	}

private:
	const uint8_t *	data;
	size_t			size;
	size_t			position = 0;
	std::string		error;
};
