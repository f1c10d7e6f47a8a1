// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The page's reader of the settings file, for the browser build: the part of inih's interface the
// settings file uses (ini_parse_stream), read the way Debian's libinih reads it, so that one file
// gives the same settings on the desktop and in the page.

#ifdef __cplusplus
extern "C" {
#endif

// One name = value line of section; 0 counts as an error. A continuation line (indented, after a
// name) calls it again with the same name.
typedef int ( *ini_handler )( void *user, const char *section, const char *name, const char *value );
// Reads one line into the buffer, as fgets does; NULL at the end.
typedef char *( *ini_reader )( char *buffer, int size, void *stream );

// 0, or the number of the first line that was not a setting, a heading or a comment.
int ini_parse_stream( ini_reader reader, void *stream, ini_handler handler, void *user );

#ifdef __cplusplus
}
#endif
