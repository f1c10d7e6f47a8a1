// SPDX-License-Identifier: GPL-3.0-or-later
// The web page's reader of the settings file against Debian's libinih, which the desktop reads it
// with: every text gives the same calls with the same section, name and value, and the same result.

#include <gtest/gtest.h>
#include <ini.h>

#include <cstdio>
#include <cstring>
#include <string>

extern "C" int web_ini_parse_stream( ini_reader reader, void *stream, ini_handler handler, void *user );

namespace {

// Every call as one line; a name "refused" is refused.
int Note( void *user, const char *section, const char *name, const char *value ) {
	*static_cast<std::string *>( user ) += std::string( section ) + "|" + name + "|" + value + "\n";
	return std::strcmp( name, "refused" ) != 0;
}

std::string Parse( int ( *parse )( ini_reader, void *, ini_handler, void * ), std::string file ) {
	FILE *stream = fmemopen( &file[0], file.size(), "r" );
	std::string calls;
	const int result = parse( []( char *line, int size, void *from ) { return fgets( line, size, static_cast<FILE *>( from ) ); },
							  stream, Note, &calls );
	std::fclose( stream );
	return calls + "result " + std::to_string( result );
}

TEST( WebIniReader, ReadsEveryTextAsLibinih ) {
	const std::string longName( 60, 'n' );
	const std::string texts[] = {
		"[keys]\nplayer1.up = W\n\n[sound]\nmusic=7\neffects =   3   \n",
		"# a comment\n; another\n  ; indented\n[screen]\nstart = window ; the window\n",
		"a = 1;2\nb = 1 ;2\nc = 1\t;2\nd = \"x ; y\"\n",
		"name: value\nx = a = b\ny : a = b\n= empty name\nempty =\n",
		"\xEF\xBB\xBF[keys]\nplayer1.fire = Space\n",
		"[keys]\nplayer1.up = W\n  goes on\n\tand on ; cut\n[sound]\n  not after a heading\n",
		"  indented first = 1\n[keys\nno equals sign\n[ok] trailing\nafter = 2\n",
		"[" + longName + "]\n" + longName + " = cut to fifty\n",
		"a = 1\nrefused = 2\nnot a line\nrefused = 3\n",
		"[keys] ; heading comment\nk = " + std::string( 250, 'v' ) + "\nafter = 1\n",
		"a = 1\r\n[s]\r\nb = 2\r\n",
		"[]\n=\n:\n[ spaced ]\n spaced name  =  v  \n",
	};
	for ( const std::string &text : texts ) {
		EXPECT_EQ( Parse( web_ini_parse_stream, text ), Parse( ini_parse_stream, text ) ) << text;
	}
}

}
