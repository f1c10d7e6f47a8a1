// SPDX-License-Identifier: GPL-3.0-or-later
#include "LogCapture.h"

#include <algorithm>
#include <sstream>

#include "log/Log.h"

cLogCapture::cLogCapture() {
	cLog::Restart( folder.GetFile( "log.txt" ) );
}

cLogCapture::~cLogCapture() {
	cLog::Restart( "log.txt" );
}

std::string cLogCapture::GetText() const {
	return ReadWholeFile( cLog::GetPath() );
}

std::vector<std::string> cLogCapture::GetLines() const {
	std::vector<std::string> lines;
	std::istringstream text( GetText() );
	std::string line;
	while ( std::getline( text, line ) ) {
		lines.push_back( line );
	}
	return lines;
}

bool cLogCapture::Contains( const std::string &line ) const {
	const std::vector<std::string> lines = GetLines();
	return std::find( lines.begin(), lines.end(), line ) != lines.end();
}
