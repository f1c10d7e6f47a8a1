// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cTileSheet is the tile sheet being made: each distinct tile is painted once, the first time a
// cell asks for it, and gets the next tile number (1 at the top of the sheet). The sheet also
// writes its legend, one line per tile: number, category and name, for people and for the map
// test.

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "TileCanvas.h"

class cTileSheet {
public:
	typedef std::function<void( cTileCanvas &tile )> tPainter;

	// The number of the tile called name, painted by paint on first use. The category is the
	// legend's first word: floor, ground, wall, fence, door, box, prop, roof, canopy or glow.
	int32_t				Request( const std::string &category, const std::string &name, const tPainter &paint );

	int					GetCount() const { return int( tiles.size() ); }
	const cTileCanvas &	GetTile( int32_t number ) const;
	// "category name" of a tile, as the legend lists it.
	const std::string &	GetLegendLine( int32_t number ) const;
	// The whole sheet: one column of tiles, tile n at y = (n - 1) x 32.
	cTileCanvas			Compose() const;
	bool				SavePng( const std::string &path ) const;
	bool				SaveLegend( const std::string &path ) const;

private:
	std::map<std::string, int32_t> numbers;	// by name
	std::vector<cTileCanvas>	tiles;		// tile n at n - 1
	std::vector<std::string>	legend;		// "category name", tile n at n - 1
};
