// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cTownPlan reads the town's description (a text file of painting commands over the grid:
// streets, blocks, buildings, doors, boxes, cover, trees, cars) into one sTownCell per cell.
// Commands paint in file order, later ones over earlier ones; see docs/level.md for the format.

#include <string>
#include <vector>

#include "TownCell.h"

class cTownPlan {
public:
						cTownPlan();

	// False on the first line that cannot be understood, with "file:line: reason" in error.
	bool				Load( const std::string &path, std::string &error );
	bool				Parse( const std::string &text, const std::string &name, std::string &error );

	bool				IsInside( int column, int row ) const;
	const sTownCell &	GetCell( int column, int row ) const;
	const std::vector<sBuilding> &GetBuildings() const { return buildings; }
	const std::vector<sTree> &GetTrees() const { return trees; }
	const std::vector<sCar> &GetCars() const { return cars; }
	const std::vector<sLamp> &GetLamps() const { return lamps; }

private:
	struct sRect {
		int				column0, row0, column1, row1;
	};
	typedef std::vector<std::string> tWords;

	bool				RunCommand( const tWords &words, std::string &problem );
	bool				ReadRect( const tWords &words, size_t first, sRect &rect, std::string &problem ) const;
	bool				ReadCell( const tWords &words, size_t first, int &column, int &row, std::string &problem ) const;
	sTownCell &			At( int column, int row );

	bool				PaintGround( const tWords &words, std::string &problem );
	bool				PaintRoad( const tWords &words, bool crossing, std::string &problem );
	bool				PaintBuilding( const tWords &words, std::string &problem );
	bool				PaintRoof( const tWords &words, std::string &problem );
	bool				AddRoof( const std::string &word, const sRect &rect, bool solid, std::string &problem );
	bool				PaintWall( const tWords &words, std::string &problem );
	bool				PaintObjects( const tWords &words, eObject object, std::string &problem );
	bool				PaintClosed( const tWords &words, std::string &problem );
	bool				PlaceOne( const tWords &words, eObject object, std::string &problem );
	bool				PlaceCar( const tWords &words, std::string &problem );
	bool				PlaceTree( const tWords &words, std::string &problem );
	bool				PlaceLamp( const tWords &words, std::string &problem );
	// Whether the cells of the rectangle are free above, for a crown or a lamp's light.
	bool				IsFreeAbove( int column0, int row0, int column1, int row1, const char *what, std::string &problem ) const;

	std::vector<sTownCell>	cells;
	std::vector<sBuilding>	buildings;
	std::vector<sTree>		trees;
	std::vector<sCar>		cars;
	std::vector<sLamp>		lamps;
};

// Whether players walk on a kind of ground (when nothing stands on it).
bool					IsWalkableGround( eGround ground );
