// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/FuzzScratch.h"

#include <dirent.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "log/Log.h"

namespace {

const char *const LOG_NAME = "log.txt";

}

cFuzzScratch &cFuzzScratch::Instance() {
	static cFuzzScratch scratch;
	return scratch;
}

// Without its folder the harness cannot tell a reader's fault from its own, so it stops at once.
cFuzzScratch::cFuzzScratch() {
	std::error_code error;
	const std::filesystem::path base = std::filesystem::temp_directory_path( error );
	std::string pattern = ( ( error ? std::filesystem::path( "/tmp" ) : base ) / "kmvt-fuzz-XXXXXX" ).string();
	if ( mkdtemp( pattern.data() ) == nullptr ) {
		std::fprintf( stderr, "kmvt fuzz: cannot make a scratch folder from %s\n", pattern.c_str() );
		std::abort();
	}
	path = pattern;
}

cFuzzScratch::~cFuzzScratch() {
	std::error_code ignored;
	std::filesystem::remove_all( path, ignored );
}

std::string cFuzzScratch::WriteInput( const char *name, const uint8_t *data, size_t size ) const {
	const std::string file = path + "/" + name;
	FILE *stream = std::fopen( file.c_str(), "wb" );
	if ( stream == nullptr ) {
		return std::string();
	}
	const bool written = size == 0 || std::fwrite( data, 1, size, stream ) == size;
	if ( std::fclose( stream ) != 0 || !written ) {
		std::remove( file.c_str() );
		return std::string();
	}
	return file;
}

void cFuzzScratch::RestartLog() const {
	cLog::Restart( path + "/" + LOG_NAME );
}

std::string cFuzzScratch::ReadLog() const {
	std::ifstream file( path + "/" + LOG_NAME, std::ios::binary );
	std::stringstream contents;
	contents << file.rdbuf();
	return contents.str();
}

// The listing's own descriptor is open while it is read, so it is left out of the count.
int CountOpenFiles() {
	DIR *folder = opendir( "/proc/self/fd" );
	if ( folder == nullptr ) {
		return -1;
	}
	int count = 0;
	while ( const dirent *entry = readdir( folder ) ) {
		if ( entry->d_name[0] != '.' ) {
			count++;
		}
	}
	closedir( folder );
	return count - 1;
}
