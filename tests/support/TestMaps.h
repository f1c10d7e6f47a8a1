// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Tiny hand-made maps for tests: a walk layer drawn as text, one character per cell, laid on
// the grid at any cell; everything outside the picture is wall.
//   '.' floor (1)   '#' wall (0)   'B' closed box (2)   'D' closed door (3)   'E' enemy mark (99)
// Boxes, doors and walls also get an object tile, so that opening them shows in the object layer.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class cScene;
class cTempDir;

const int32_t TEST_WALL_TILE = 5;
const int32_t TEST_BOX_TILE = 7;
const int32_t TEST_DOOR_TILE = 8;
const int32_t TEST_GROUND_TILE = 1;

// The four layers of a test map, open to changes before the scene is built.
struct cTestLayers {
	std::vector<int32_t>		base;
	std::vector<int32_t>		object;
	std::vector<int32_t>		walk;
	std::vector<int32_t>		over;

	std::unique_ptr<cScene>		Build() const;
	// Writes the layers as basemap.txt, objectmap.txt, walkmap.txt and overmap.txt into the folder
	// (under the subfolder given, which must exist).
	void						WriteFiles( const cTempDir &folder, const std::string &under = "" ) const;
};

// The picture's top-left character lands on cell (column, row). A character not in the legend
// or a picture reaching out of the grid fails the test.
cTestLayers						DrawLayers( const std::vector<std::string> &picture, int column = 0, int row = 0 );
std::unique_ptr<cScene>			MakeScene( const std::vector<std::string> &picture, int column = 0, int row = 0 );
// Every cell floor: for tests of the camera and of open-field movement.
std::unique_ptr<cScene>			MakeOpenScene();
// A layer in the map file format: 75 lines of 60 numbers.
std::string						FormatLayer( const std::vector<int32_t> &codes );
