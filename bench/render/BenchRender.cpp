// SPDX-License-Identifier: GPL-3.0-or-later
// Measures one whole frame of the running game's drawing on SDL's software renderer into an
// off-screen surface: a busy view with 24 enemies, shots, explosions, items and both HUDs, over
// the level's map and over a map that draws all three tile layers in every cell; the level's map
// also drawn tile by tile, as before the tile cache, and at 1x, scaled to a 2x window and to a
// 1920 x 1080 screen, with the view still and scrolling.
//   bench-render [--resources=FOLDER] [benchmark options]
// FOLDER holds resources/ (the working directory by default). The figure to read is the median.

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "BusyWorld.h"
#include "OffscreenFrame.h"
#include "world/Scene.h"

namespace {

const int32_t CAMERA_X = 16;		// in pixels: off the cell edges, so 21 x 16 cells are drawn
const int32_t CAMERA_Y = 1910;
const int REPETITIONS = 15;

// A scrolling view moves the camera a pixel every frame, back and forth, so that every row of
// the frame changes; a still one shows the same frame again, as a view does where the player stands.
void RenderFrames( benchmark::State &state, cOffscreenFrame &frame, cBusyWorld &world, bool scrolling ) {
	int32_t step = 0;
	for ( auto _ : state ) {
		world.RestartExplosions();
		if ( scrolling ) {
			world.GetScene().SetCameraPosition( CAMERA_X + step++ % 2, CAMERA_Y );
		}
		frame.Render( world );
	}
	state.counters["frames/s"] = benchmark::Counter( static_cast<double>( state.iterations() ), benchmark::Counter::kIsRate );
}

// Takes --resources=FOLDER out of the arguments before the benchmark library reads them.
std::string TakeResourceFolder( int &argc, char **argv ) {
	const char *const flag = "--resources=";
	std::string root = ".";
	int kept = 0;
	for ( int i = 0; i < argc; i++ ) {
		if ( std::strncmp( argv[i], flag, std::strlen( flag ) ) == 0 ) {
			root = argv[i] + std::strlen( flag );
		} else {
			argv[kept++] = argv[i];
		}
	}
	argc = kept;
	return root;
}

void Register( const char *name, cOffscreenFrame &frame, cBusyWorld &world, bool scrolling = false ) {
	benchmark::RegisterBenchmark( name, [&frame, &world, scrolling]( benchmark::State &state ) {
		RenderFrames( state, frame, world, scrolling );
	} )
		->Unit( benchmark::kMicrosecond )
		->Repetitions( REPETITIONS )
		->ReportAggregatesOnly( true );
}

}

int main( int argc, char **argv ) {
	const std::string root = TakeResourceFolder( argc, argv );
	benchmark::Initialize( &argc, argv );
	cOffscreenFrame frame;
	cOffscreenFrame tileByTile;
	cOffscreenFrame twice( 2 * VIEW_WIDTH, 2 * VIEW_HEIGHT );
	cOffscreenFrame fullHd( 1920, 1080 );
	if ( !frame.Load( root ) || !tileByTile.Load( root ) || !twice.Load( root ) || !fullHd.Load( root ) ) {
		return 1;
	}
	tileByTile.SetCachedTiles( false );
	std::unique_ptr<cScene> level( new cScene( root + "/resources/map/" ) );
	std::unique_ptr<cBusyWorld> levelWorld;
	if ( level->IsUsable() ) {
		levelWorld.reset( new cBusyWorld( std::move( level ), CAMERA_X, CAMERA_Y ) );
		Register( "Render/busy-frame-level-map", frame, *levelWorld );
		Register( "Render/busy-frame-level-map-tile-by-tile", tileByTile, *levelWorld );
		for ( bool scrolling : { false, true } ) {
			const std::string view = scrolling ? "-scrolling" : "-still";
			Register( ( "Render/busy-frame-level-map" + view ).c_str(), frame, *levelWorld, scrolling );
			Register( ( "Render/busy-frame-level-map-1280x960" + view ).c_str(), twice, *levelWorld, scrolling );
			Register( ( "Render/busy-frame-level-map-1920x1080" + view ).c_str(), fullHd, *levelWorld, scrolling );
		}
	}
	cBusyWorld fullWorld( cBusyWorld::MakeFullLayersScene( frame.GetTileCount() ), CAMERA_X, CAMERA_Y );
	Register( "Render/busy-frame-all-layers-full", frame, fullWorld );
	benchmark::RunSpecifiedBenchmarks();
	benchmark::Shutdown();
	return 0;
}
