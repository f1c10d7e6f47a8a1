// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cLevelPicture draws the level the way the game does: for every cell the ground tile (a code
// of 0 as tile 1), then the object tile, then the tile above the actors, roofs of the indoor
// area left out while someone stands inside. It pictures the whole map or one 640 x 480 view.

#include <cstdint>
#include <string>

#include "TileCanvas.h"

class cScene;

class cLevelPicture {
public:
					cLevelPicture( const cScene &scene, const cTileCanvas &sheet );

	// The whole world, 1920 x 2400 pixels.
	cTileCanvas		DrawWorld( bool indoorRoofsHidden ) const;
	// How many cells name a tile the sheet does not have; they are drawn magenta.
	int				GetMissingTileCount() const { return missingTiles; }

private:
	void			DrawLayerCell( cTileCanvas &world, int column, int row, int32_t code, bool ground ) const;

	const cScene &	scene;
	const cTileCanvas &sheet;
	mutable int		missingTiles;
};

// Source-over drawing of a picture at (x, y), as the game's sprite drawing blends.
void				BlendPicture( cTileCanvas &target, const cTileCanvas &picture, int sx, int sy, int w, int h, int x, int y );
// A smaller copy, each pixel the mean of a factor x factor block.
cTileCanvas			Shrink( const cTileCanvas &picture, int factor );
