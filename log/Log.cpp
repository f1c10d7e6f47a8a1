// SPDX-License-Identifier: GPL-3.0-or-later
#include "log/Log.h"

#include <cstdio>
#include <cstring>

#include "log/Printable.h"

namespace {

std::string logPath = "log.txt";

// Formats one line into a zeroed entry buffer. A text too long for the entry is cut so that the
// line end still fits, and a control byte in it is written escaped: the log stays one entry per line.
void AppendLine( char *entry, const char *prefix, const char *text ) {
	const size_t used = std::strlen( entry );
	const size_t room = cLog::ENTRY_SIZE - 1 - used;	// characters left, the terminating zero aside
	if ( room == 0 ) {
		return;
	}
	std::snprintf( entry + used, room + 1, "%s%s", prefix, MakePrintable( text ? text : "" ).c_str() );
	size_t length = std::strlen( entry );
	if ( length == cLog::ENTRY_SIZE - 1 ) {
		entry[length - 1] = '\n';
	} else {
		entry[length] = '\n';
		entry[length + 1] = '\0';
	}
}

}

cLog::cLog() {
	Truncate();
}

cLog &cLog::Instance() {
	static cLog instance;
	return instance;
}

void cLog::Write( const char *text ) {
	Instance();
	char entry[ENTRY_SIZE] = {};
	AppendLine( entry, "", text );
	Append( entry );
}

void cLog::WriteError( const char *text, const char *code, const char *description ) {
	Instance();
	char entry[ENTRY_SIZE] = {};
	AppendLine( entry, "Error: ", text );
	AppendLine( entry, "Code: ", code );
	AppendLine( entry, "Description: ", description );
	Append( entry );
}

void cLog::Restart( const std::string &path ) {
	logPath = path;
	Instance();
	Truncate();
}

const std::string &cLog::GetPath() {
	return logPath;
}

// An entry that the file cannot take (a read-only folder, no folder at all) goes to standard
// error instead: the game goes on either way.
void cLog::Append( const char *entry ) {
	FILE *file = logPath.empty() ? nullptr : std::fopen( logPath.c_str(), "a+" );
	if ( file == nullptr ) {
		std::fputs( entry, stderr );
		return;
	}
	std::fwrite( entry, 1, std::strlen( entry ), file );
	std::fclose( file );
}

void cLog::Truncate() {
	if ( logPath.empty() ) {
		return;
	}
	FILE *file = std::fopen( logPath.c_str(), "w" );
	if ( file != nullptr ) {
		std::fclose( file );
	}
}
