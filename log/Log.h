// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cLog appends the failures of the running game to log.txt, in the working directory unless the
// program points it elsewhere before its first entry. The file is emptied by the first Instance()
// of a run, so it only ever holds the last run. Entries that cannot be written to the file go to
// standard error. Every text is written printable (log/Printable.h): one entry never spans more
// lines than it has, and nothing in it can drive a terminal.

#include <string>

class cLog {
public:
	static const int ENTRY_SIZE = 256;	// an entry holds at most ENTRY_SIZE - 1 characters

	static cLog &	Instance();
	static void		Write( const char *text );
	// One three-line block: the step that failed, the failing call with its result, the platform's text.
	static void		WriteError( const char *text, const char *code, const char *description );

	// Points the log at another file and empties it, as a new run would; an empty path sends the
	// entries to standard error. Called first, it is the only file the run touches.
	static void		Restart( const std::string &path );
	static const std::string &GetPath();

private:
					cLog();
	static void		Append( const char *entry );
	static void		Truncate();
};
