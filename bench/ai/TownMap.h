// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The walk layer the path-finding benchmark searches: the level's own when its map files are
// there, otherwise a town of street blocks drawn here, with closed street ends that force detours.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class cScene;

// The level's scene from <root>/resources/map/, or the drawn town when the level cannot be read.
std::unique_ptr<cScene>		LoadTownScene( const std::string &root, std::string &description );
// 4500 walk codes: streets two cells wide around blocks, some street pieces closed, and a wall
// across the middle of the town with one gap at its right end.
std::vector<int32_t>		DrawTownWalkLayer();
