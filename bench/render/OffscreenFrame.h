// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The game's drawing on SDL's software renderer into a surface of its own, 640 x 480 or the size of
// a window it is scaled to: no window, no display. For the renderer's benchmark and for snapshots
// of a frame as a PNG.

#include <SDL.h>

#include <cstdint>
#include <memory>
#include <string>

#include "graphics/GraphicsLayer.h"
#include "graphics/sdl/SdlGraphicsBackend.h"
#include "world/Grid.h"

class cBusyWorld;

class cOffscreenFrame {
public:
	explicit			cOffscreenFrame( int width = VIEW_WIDTH, int height = VIEW_HEIGHT );
						~cOffscreenFrame();
						cOffscreenFrame( const cOffscreenFrame & ) = delete;
	cOffscreenFrame &	operator=( const cOffscreenFrame & ) = delete;

	// Loads the game's pictures from the folder that holds resources/; false when the renderer
	// could not be made. Pictures that are missing are named on stderr.
	bool				Load( const std::string &root );
	// The map from the tile cache (the game's way) or every tile each frame (as before the cache).
	void				SetCachedTiles( bool on ) { layer.SetCachedTiles( on ); }
	// Whole tiles in the loaded tile sheet.
	int32_t				GetTileCount() const;
	// One whole frame of play: clear, world, HUD, present.
	void				Render( cBusyWorld &world );
	bool				SavePng( const std::string &path ) const;

private:
	SDL_Surface *		surface;
	std::unique_ptr<cSdlGraphicsBackend> backend;
	cGraphicsLayer		layer;
};
