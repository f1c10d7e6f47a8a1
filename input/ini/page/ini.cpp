// SPDX-License-Identifier: GPL-3.0-or-later
#include "ini.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace {

const int MAX_LINE = 200;			// in bytes, the line's end included
const int MAX_SECTION = 50;			// a longer heading or name is cut to this, its end included
const char *const COMMENT_STARTS = ";#";
const char *const INLINE_COMMENT_STARTS = ";";	// after a space only

bool IsSpace( char c ) {
	return std::isspace( static_cast<unsigned char>( c ) ) != 0;
}

char *SkipSpaces( char *text ) {
	while ( *text != '\0' && IsSpace( *text ) ) {
		text++;
	}
	return text;
}

char *CutSpaces( char *text ) {
	char *end = text + std::strlen( text );
	while ( end > text && IsSpace( end[-1] ) ) {
		*--end = '\0';
	}
	return text;
}

// The first of stops (none when null) or the first comment after a space; the text's end if neither.
char *FindStopOrComment( char *text, const char *stops ) {
	bool afterSpace = false;
	for ( ; *text != '\0'; text++ ) {
		if ( ( stops != nullptr && std::strchr( stops, *text ) != nullptr ) ||
			 ( afterSpace && std::strchr( INLINE_COMMENT_STARTS, *text ) != nullptr ) ) {
			break;
		}
		afterSpace = IsSpace( *text );
	}
	return text;
}

void CopyCut( char *to, const char *from ) {
	const size_t length = std::min( std::strlen( from ), static_cast<size_t>( MAX_SECTION - 1 ) );
	std::memcpy( to, from, length );
	to[length] = '\0';
}

}

int ini_parse_stream( ini_reader reader, void *stream, ini_handler handler, void *user ) {
	char line[MAX_LINE];
	char section[MAX_SECTION] = "";
	char lastName[MAX_SECTION] = "";
	int number = 0;
	int error = 0;
	const auto fail = [&]() { error = error != 0 ? error : number; };
	while ( reader( line, MAX_LINE, stream ) != nullptr ) {
		number++;
		char *start = line;
		if ( number == 1 && std::strncmp( start, "\xEF\xBB\xBF", 3 ) == 0 ) {
			start += 3;		// the byte order mark of UTF-8
		}
		start = SkipSpaces( CutSpaces( start ) );
		if ( *start == '\0' || std::strchr( COMMENT_STARTS, *start ) != nullptr ) {
			continue;
		}
		if ( lastName[0] != '\0' && start > line ) {
			// An indented line goes on with the last name's value, comment and all.
			if ( handler( user, section, lastName, start ) == 0 ) {
				fail();
			}
		} else if ( *start == '[' ) {
			char *end = FindStopOrComment( start + 1, "]" );
			if ( *end != ']' ) {
				fail();
				continue;
			}
			*end = '\0';
			CopyCut( section, start + 1 );
			lastName[0] = '\0';
		} else {
			char *end = FindStopOrComment( start, "=:" );
			if ( *end != '=' && *end != ':' ) {
				fail();
				continue;
			}
			*end = '\0';
			const char *name = CutSpaces( start );
			char *value = end + 1;
			*FindStopOrComment( value, nullptr ) = '\0';
			value = CutSpaces( SkipSpaces( value ) );
			CopyCut( lastName, name );
			if ( handler( user, section, name, value ) == 0 ) {
				fail();
			}
		}
	}
	return error;
}
