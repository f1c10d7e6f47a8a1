// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The map's three tile layers change only when a door or a box opens: cTileCache holds them drawn
// once into two textures the size of the map, the ground with its objects (opaque) and the
// over-actor tiles (transparent where a cell has none), and tells which cells changed since they
// were drawn, so that only those are drawn again.

#include <cstdint>
#include <vector>

class cGraphicsBackend;
class cScene;
class cTexture;

class cTileCache {
public:
	// False, holding nothing, when the device cannot draw into textures.
	bool				Create( cGraphicsBackend &backend );
	void				Release( cGraphicsBackend &backend );
	bool				IsReady() const { return ground != nullptr; }

	cTexture *			GetGround() const { return ground; }
	cTexture *			GetOver() const { return over; }

	// The cells (as indexes of the layers) whose ground or object code and those whose over code
	// differ from the codes the textures were last drawn with, every cell the first time; the
	// scene's codes count as drawn from now on.
	void				TakeChanges( const cScene &scene, std::vector<int32_t> &groundCells,
									std::vector<int32_t> &overCells );

private:
	cTexture *			ground = nullptr;
	cTexture *			over = nullptr;
	// The codes last drawn; empty until the first drawing.
	std::vector<int32_t> baseCodes;
	std::vector<int32_t> objectCodes;
	std::vector<int32_t> overCodes;
};
