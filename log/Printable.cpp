// SPDX-License-Identifier: GPL-3.0-or-later
#include "log/Printable.h"

#include <cstdio>

namespace {

bool IsContinuation( unsigned char byte ) {
	return ( byte & 0xC0 ) == 0x80;
}

// The length of the printable UTF-8 character that starts at text[at], 0 when there is none: a
// stray or cut byte, or one of the C1 controls U+0080 to U+009F that terminals obey as C0's.
size_t MeasureCharacter( const std::string &text, size_t at ) {
	const unsigned char lead = static_cast<unsigned char>( text[at] );
	if ( lead >= 0x20 && lead < 0x7F ) {
		return 1;
	}
	size_t length = 0;
	if ( lead >= 0xC2 && lead <= 0xDF ) {
		length = 2;
	} else if ( lead >= 0xE0 && lead <= 0xEF ) {
		length = 3;
	} else if ( lead >= 0xF0 && lead <= 0xF4 ) {
		length = 4;
	}
	if ( length == 0 || at + length > text.size() ) {
		return 0;
	}
	for ( size_t i = 1; i < length; i++ ) {
		if ( !IsContinuation( static_cast<unsigned char>( text[at + i] ) ) ) {
			return 0;
		}
	}
	const bool isC1 = lead == 0xC2 && static_cast<unsigned char>( text[at + 1] ) < 0xA0;
	return isC1 ? 0 : length;
}

}

std::string MakePrintable( const std::string &text ) {
	std::string printable;
	printable.reserve( text.size() );
	for ( size_t at = 0; at < text.size(); ) {
		const size_t length = MeasureCharacter( text, at );
		if ( length > 0 ) {
			printable.append( text, at, length );
			at += length;
			continue;
		}
		char escaped[5];
		std::snprintf( escaped, sizeof( escaped ), "\\x%02X", static_cast<unsigned char>( text[at] ) );
		printable += escaped;
		at++;
	}
	return printable;
}
