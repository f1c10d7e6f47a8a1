// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cByteWriter builds the bytes of a replay file: raw bytes, little-endian words, and the small
// integers that make up most of a recording as varints (7 bits a byte, low bits first), signed
// ones zigzagged first so that small negative numbers stay short too.

#include <cstdint>
#include <string>
#include <vector>

class cByteWriter {
public:
	void			PutByte( uint8_t value ) { bytes.push_back( value ); }
	void			PutBytes( const std::vector<uint8_t> &values ) { bytes.insert( bytes.end(), values.begin(), values.end() ); }
	void			PutVarint( uint64_t value );
	void			PutSigned( int64_t value ) { PutVarint( Zigzag( value ) ); }
	void			PutWord32( uint32_t value );
	void			PutWord64( uint64_t value );
	void			PutString( const std::string &text );	// its length as a varint, then the bytes

	const std::vector<uint8_t> &GetBytes() const { return bytes; }
	std::vector<uint8_t> &GetBytes() { return bytes; }

	static uint64_t	Zigzag( int64_t value ) {
		return ( static_cast<uint64_t>( value ) << 1 ) ^ ( value < 0 ? ~0ull : 0ull );
	}

private:
	std::vector<uint8_t>	bytes;
};
