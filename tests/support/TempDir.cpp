// SPDX-License-Identifier: GPL-3.0-or-later
#include "TempDir.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

cTempDir::cTempDir() {
	std::string pattern = ( std::filesystem::temp_directory_path() / "kmvt-test-XXXXXX" ).string();
	if ( mkdtemp( pattern.data() ) != nullptr ) {
		path = pattern;
	}
}

cTempDir::~cTempDir() {
	std::error_code ignored;
	if ( !path.empty() ) {
		std::filesystem::permissions( path, std::filesystem::perms::owner_all, ignored );
		std::filesystem::remove_all( path, ignored );
	}
}

void cTempDir::WriteFile( const std::string &name, const std::string &contents ) const {
	std::ofstream file( GetFile( name ), std::ios::binary );
	file << contents;
}

std::string ReadWholeFile( const std::string &path ) {
	std::ifstream file( path, std::ios::binary );
	std::stringstream contents;
	contents << file.rdbuf();
	return contents.str();
}
