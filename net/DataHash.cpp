// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/DataHash.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

namespace {

const uint64_t FNV_OFFSET = 0xCBF29CE484222325ull;
const uint64_t FNV_PRIME = 0x100000001B3ull;
const size_t CHUNK = 1 << 16;

void Add( uint64_t &hash, const char *bytes, size_t size ) {
	for ( size_t i = 0; i < size; i++ ) {
		hash = ( hash ^ static_cast<uint8_t>( bytes[i] ) ) * FNV_PRIME;
	}
}

}

bool HashGameData( const std::string &root, uint64_t &hash ) {
	namespace fs = std::filesystem;
	hash = FNV_OFFSET;
	const fs::path tree = fs::path( root ) / "resources";
	std::error_code error;
	std::vector<std::string> files;
	for ( fs::recursive_directory_iterator it( tree, fs::directory_options::follow_directory_symlink, error ), end;
		  !error && it != end; it.increment( error ) ) {
		if ( it->is_regular_file( error ) ) {
			files.push_back( fs::relative( it->path(), tree, error ).generic_string() );
		}
	}
	std::sort( files.begin(), files.end() );
	bool whole = !error;
	std::vector<char> chunk( CHUNK );
	for ( const std::string &name : files ) {
		Add( hash, name.c_str(), name.size() + 1 );
		std::ifstream file( tree / name, std::ios::binary );
		whole = whole && file.good();
		while ( file.read( chunk.data(), static_cast<std::streamsize>( chunk.size() ) ) || file.gcount() > 0 ) {
			Add( hash, chunk.data(), static_cast<size_t>( file.gcount() ) );
		}
	}
	return whole;
}
