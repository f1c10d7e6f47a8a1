// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/InputChecks.h"

#include <cstdio>
#include <limits>
#include <memory>
#include <vector>

#include "fuzz/FuzzScratch.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

bool IsMapSpace( uint8_t byte ) {
	return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\v' || byte == '\f' || byte == '\r';
}

bool IsDigit( uint8_t byte ) {
	return byte >= '0' && byte <= '9';
}

// One token as the format defines a number: an optional sign, then decimal digits within the
// range of int32_t; only the last number of a layer may have anything glued after its digits.
bool ReadReferenceNumber( const uint8_t *token, size_t length, bool ignoreRest, int32_t &value ) {
	size_t at = 0;
	const bool negative = length > 0 && token[0] == '-';
	if ( length > 0 && ( token[0] == '-' || token[0] == '+' ) ) {
		at = 1;
	}
	if ( at == length ) {
		return false;
	}
	const int64_t limit = negative ? -static_cast<int64_t>( std::numeric_limits<int32_t>::min() )
								   : std::numeric_limits<int32_t>::max();
	int64_t magnitude = 0;
	const size_t firstDigit = at;
	for ( ; at < length; at++ ) {
		if ( !IsDigit( token[at] ) ) {
			if ( ignoreRest && at > firstDigit ) {
				break;
			}
			return false;
		}
		magnitude = magnitude * 10 + ( token[at] - '0' );
		if ( magnitude > limit ) {
			return false;
		}
	}
	value = static_cast<int32_t>( negative ? -magnitude : magnitude );
	return true;
}

// The layer read from the bytes without the game's code: the first 4500 whitespace-separated
// tokens must all be numbers; what follows the 4500th number is not looked at.
bool ReadReferenceLayer( const uint8_t *data, size_t size, std::vector<int32_t> &layer ) {
	layer.clear();
	size_t at = 0;
	while ( layer.size() < static_cast<size_t>( MAP_CELLS ) ) {
		while ( at < size && IsMapSpace( data[at] ) ) {
			at++;
		}
		if ( at == size ) {
			return false;
		}
		const size_t start = at;
		while ( at < size && !IsMapSpace( data[at] ) ) {
			at++;
		}
		int32_t value = 0;
		const bool last = layer.size() == static_cast<size_t>( MAP_CELLS - 1 );
		if ( !ReadReferenceNumber( data + start, at - start, last, value ) ) {
			return false;
		}
		layer.push_back( value );
	}
	return true;
}

// The first cell that holds something else than expected; a refused layer is expected to be all wall.
std::string FindDifferentCell( const int32_t *layer, const std::vector<int32_t> &expected, bool loaded ) {
	for ( int cell = 0; cell < MAP_CELLS; cell++ ) {
		if ( layer[cell] != expected[cell] ) {
			return ( loaded ? "" : "a refused layer: " ) + std::string( "cell " ) + std::to_string( cell ) + " holds " +
				   std::to_string( layer[cell] ) + " where " + std::to_string( expected[cell] ) + " was expected";
		}
	}
	return std::string();
}

struct cMapLoad {
	bool			loaded;
	bool			usable;
	bool			filesKept;		// the same descriptors open after the load as before it
	std::string		path;
	std::string		log;
};

std::string FindBrokenMapRule( const cMapLoad &load, const int32_t *layer, bool valid,
							   const std::vector<int32_t> &expected ) {
	if ( !load.filesKept ) {
		return "the map loader left a file open";
	}
	if ( load.loaded != load.usable ) {
		return "LoadWalkMap's result and IsUsable() disagree";
	}
	if ( valid != load.loaded ) {
		return valid ? "a layer of 4500 integers was refused" : "a file without 4500 integers was accepted as a layer";
	}
	if ( !load.loaded && load.log.find( "Error loading map " + load.path ) == std::string::npos ) {
		return "a refused layer left no line in the log";
	}
	return FindDifferentCell( layer, load.loaded ? expected : std::vector<int32_t>( MAP_CELLS, 0 ), load.loaded );
}

}

std::string CheckMapLayer( const uint8_t *data, size_t size ) {
	const cFuzzScratch &scratch = cFuzzScratch::Instance();
	scratch.RestartLog();
	const std::vector<int32_t> emptyLayer( MAP_CELLS, 0 );
	std::unique_ptr<cScene> scene = cScene::FromLayers( emptyLayer, emptyLayer, emptyLayer, emptyLayer );
	cMapLoad load = {};
	load.path = scratch.WriteInput( "walkmap.txt", data, size );
	if ( load.path.empty() ) {
		return "the harness cannot write the input to " + scratch.GetPath();
	}
	const int openBefore = CountOpenFiles();
	load.loaded = scene->LoadWalkMap( load.path );
	load.filesKept = CountOpenFiles() == openBefore;
	load.usable = scene->IsUsable();
	load.log = scratch.ReadLog();
	std::remove( load.path.c_str() );

	std::vector<int32_t> expected;
	const bool valid = ReadReferenceLayer( data, size, expected );
	return FindBrokenMapRule( load, scene->GetWalkMap(), valid, expected );
}
