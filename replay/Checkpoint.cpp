// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/Checkpoint.h"

#include "app/StateHash.h"

cCheckpoint cCheckpoint::Take( uint64_t step, const cStateHash &hash ) {
	cCheckpoint checkpoint;
	checkpoint.step = step;
	checkpoint.total = hash.GetTotal();
	for ( const cStatePart &part : hash.GetParts() ) {
		checkpoint.names.push_back( part.name );
		checkpoint.parts.push_back( static_cast<uint32_t>( part.hash ^ ( part.hash >> 32 ) ) );
	}
	return checkpoint;
}

std::string cCheckpoint::FindDifference( const cCheckpoint &other ) const {
	if ( total == other.total ) {
		return std::string();
	}
	for ( size_t i = 0; i < names.size(); i++ ) {
		size_t j = 0;
		while ( j < other.names.size() && other.names[j] != names[i] ) {
			j++;
		}
		if ( j == other.names.size() || other.parts[j] != parts[i] ) {
			return names[i];
		}
	}
	for ( const std::string &name : other.names ) {
		bool found = false;
		for ( const std::string &mine : names ) {
			found = found || mine == name;
		}
		if ( !found ) {
			return name;
		}
	}
	return "the whole state";
}
