// SPDX-License-Identifier: GPL-3.0-or-later
#include "TileSheet.h"

#include <algorithm>
#include <cassert>
#include <fstream>

int32_t cTileSheet::Request( const std::string &category, const std::string &name, const tPainter &paint ) {
	const auto found = numbers.find( name );
	if ( found != numbers.end() ) {
		return found->second;
	}
	cTileCanvas tile( TILE_SIZE, TILE_SIZE );
	paint( tile );
	tiles.push_back( tile );
	legend.push_back( category + " " + name );
	const int32_t number = int32_t( tiles.size() );
	numbers[name] = number;
	return number;
}

const cTileCanvas &cTileSheet::GetTile( int32_t number ) const {
	assert( number >= 1 && number <= GetCount() );
	return tiles[size_t( number - 1 )];
}

const std::string &cTileSheet::GetLegendLine( int32_t number ) const {
	assert( number >= 1 && number <= GetCount() );
	return legend[size_t( number - 1 )];
}

cTileCanvas cTileSheet::Compose() const {
	cTileCanvas sheet( TILE_SIZE, TILE_SIZE * std::max( 1, GetCount() ) );
	for ( int i = 0; i < GetCount(); i++ ) {
		sheet.CopyFrom( tiles[size_t( i )], 0, 0, 0, i * TILE_SIZE, TILE_SIZE, TILE_SIZE );
	}
	return sheet;
}

bool cTileSheet::SavePng( const std::string &path ) const {
	return Compose().SavePng( path );
}

bool cTileSheet::SaveLegend( const std::string &path ) const {
	std::ofstream file( path );
	if ( !file.is_open() ) {
		return false;
	}
	file << "# tile number, category, name; written by the level tool with tiles.png\n";
	for ( size_t i = 0; i < legend.size(); i++ ) {
		file << ( i + 1 ) << ' ' << legend[i] << '\n';
	}
	return bool( file );
}
