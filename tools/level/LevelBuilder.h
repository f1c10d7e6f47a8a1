// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cLevelBuilder turns the town plan into the level's four layers and its tile sheet: it picks
// every cell's ground, object and over tile (joining walls and fences to their neighbours,
// curbing sidewalks, casting shadows, choosing variants by a fixed hash of the cell) and derives
// the walk code from what stands on the cell.

#include <cstdint>
#include <string>
#include <vector>

#include "GroundTiles.h"
#include "ObjectTiles.h"
#include "OverTiles.h"
#include "TileSheet.h"
#include "TownPlan.h"

class cLevelBuilder {
public:
	explicit			cLevelBuilder( const cTownPlan &plan );

	void				Build();

	const std::vector<int32_t> &GetBaseMap() const { return baseMap; }
	const std::vector<int32_t> &GetObjectMap() const { return objectMap; }
	const std::vector<int32_t> &GetWalkMap() const { return walkMap; }
	const std::vector<int32_t> &GetOverMap() const { return overMap; }
	const cTileSheet &	GetSheet() const { return sheet; }

	// Writes basemap.txt, objectmap.txt, walkmap.txt, overmap.txt, tiles.png and the sheet's
	// legend tiles.txt into the folder (given with its trailing slash).
	bool				WriteFiles( const std::string &folder, std::string &error ) const;

private:
	int32_t				ChooseBaseTile( int column, int row );
	int32_t				ChooseObjectTile( int column, int row );
	int32_t				ChooseOverTile( int column, int row );
	int32_t				ChooseWalkCode( int column, int row ) const;

	sGroundLook			DescribeGround( int column, int row ) const;
	sObjectLook			DescribeObject( int column, int row ) const;
	sRoofLook			DescribeRoof( int column, int row ) const;
	sCanopyLook			DescribeCanopy( int column, int row ) const;

	// SIDE_ bits of the neighbours for which the test holds; outside the grid counts as outside.
	template <typename T>
	int					GetSides( int column, int row, bool outside, T test ) const;
	int					GetJoins( int column, int row ) const;
	int					GetCurbCorners( int column, int row ) const;
	int					GetShadows( int column, int row ) const;
	bool				IsRaised( int column, int row ) const;
	bool				IsUnderSolidRoof( int column, int row ) const;

	const cTownPlan &	plan;
	cTileSheet			sheet;
	std::vector<int32_t> baseMap;
	std::vector<int32_t> objectMap;
	std::vector<int32_t> walkMap;
	std::vector<int32_t> overMap;
};

// A fixed hash of a cell, so that the same map always gets the same variants.
uint32_t				HashCell( int column, int row, uint32_t salt );
