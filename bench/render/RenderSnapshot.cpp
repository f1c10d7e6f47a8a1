// SPDX-License-Identifier: GPL-3.0-or-later
// Draws the busy frame of the renderer's benchmark over the level's map and saves it as a PNG,
// to look at what the world's drawing puts on the screen.
//   render-snapshot OUTPUT.png [FOLDER]     FOLDER holds resources/ (the working directory by default)

#include <cstdio>
#include <memory>
#include <string>

#include "BusyWorld.h"
#include "OffscreenFrame.h"
#include "world/Scene.h"

namespace {

const int32_t CAMERA_X = 16;		// in pixels
const int32_t CAMERA_Y = 1910;
const int WARM_UP_FRAMES = 10;		// lets the walks and explosions move on from their first pictures

}

int main( int argc, char **argv ) {
	if ( argc < 2 ) {
		std::fprintf( stderr, "usage: render-snapshot OUTPUT.png [FOLDER]\n" );
		return 2;
	}
	const std::string root = argc > 2 ? argv[2] : ".";
	cOffscreenFrame frame;
	if ( !frame.Load( root ) ) {
		return 1;
	}
	std::unique_ptr<cScene> level( new cScene( root + "/resources/map/" ) );
	if ( !level->IsUsable() ) {
		std::fprintf( stderr, "the level's map did not load (see log.txt); drawing a map of every tile instead\n" );
		level = cBusyWorld::MakeFullLayersScene( frame.GetTileCount() );
	}
	cBusyWorld world( std::move( level ), CAMERA_X, CAMERA_Y );
	for ( int i = 0; i < WARM_UP_FRAMES; i++ ) {
		frame.Render( world );
	}
	return frame.SavePng( argv[1] ) ? 0 : 1;
}
