// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphicsLayer.h"

#include <algorithm>
#include <vector>

#include "graphics/GraphicsBackend.h"
#include "log/Log.h"
#include "world/Grid.h"
#include "world/Scene.h"

// The map's tile layers drawn from the tile cache: the ground with its objects copied out of one
// texture, the over tiles blended from the other. The cache holds each cell's tiles exactly as the
// tile-by-tile drawing puts them on the frame, so the picture is the same pixel for pixel: the
// ground texture has the frame's own pixel format and is made as the frame is (opaque black, then
// the ground and the object tile blended), and the over texture holds each over tile's own pixels,
// alpha included, blended onto the frame as the tile itself would be.

namespace {

const uint32_t TRANSPARENT = 0x00000000;

cRect GetView( const cScene &scene ) {
	return { scene.GetCameraX(), scene.GetCameraY(), scene.GetCameraX() + VIEW_WIDTH, scene.GetCameraY() + VIEW_HEIGHT };
}

cRect GetCellArea( int32_t cell ) {
	const int32_t x = cell % MAP_COLUMNS * CELL_SIZE;
	const int32_t y = cell / MAP_COLUMNS * CELL_SIZE;
	return { x, y, x + CELL_SIZE, y + CELL_SIZE };
}

bool HaveSameColumns( const std::vector<cRect> &a, const std::vector<cRect> &b ) {
	return std::equal( a.begin(), a.end(), b.begin(), b.end(), []( const cRect &first, const cRect &second ) {
		return first.left == second.left && first.right == second.right;
	} );
}

}

// A device that stops drawing into textures leaves the cache for good: every tile is drawn again.
bool cGraphicsLayer::RefreshTileCache( const cScene &scene ) const {
	if ( !tileCache.IsReady() ) {
		return false;
	}
	std::vector<int32_t> groundCells;
	std::vector<int32_t> overCells;
	tileCache.TakeChanges( scene, groundCells, overCells );
	if ( groundCells.empty() && overCells.empty() ) {
		return true;
	}
	bool drawn = backend->SetTarget( tileCache.GetGround() );
	for ( size_t i = 0; drawn && i < groundCells.size(); i++ ) {
		backend->Fill( GetCellArea( groundCells[i] ), CLEAR_COLOUR );
		DrawCell( scene.GetBaseMap(), TILES_GROUND, groundCells[i], true );
		DrawCell( scene.GetObjectMap(), TILES_OBJECTS, groundCells[i], true );
	}
	drawn = drawn && backend->SetTarget( tileCache.GetOver() );
	for ( size_t i = 0; drawn && i < overCells.size(); i++ ) {
		backend->Fill( GetCellArea( overCells[i] ), TRANSPARENT );
		DrawCell( scene.GetOverMap(), TILES_OVER, overCells[i], false );
	}
	drawn = backend->SetTarget( nullptr ) && drawn;
	if ( !drawn ) {
		const std::string message = std::string( "Drawing every tile from now on: " ) + backend->GetErrorCode() + ": " +
									backend->GetErrorText();
		cLog::Write( message.c_str() );
		tileCache.Release( *backend );
	}
	return drawn;
}

void cGraphicsLayer::DrawCell( const int32_t *layer, eTileRule rule, int32_t cell, bool blend ) const {
	const int32_t tile = GetTileToDraw( layer[cell], rule );
	if ( tile == 0 || textures[TEX_TILES] == nullptr ) {
		return;
	}
	const cRect area = GetCellArea( cell );
	const cRect source = { 0, ( tile - 1 ) * CELL_SIZE, CELL_SIZE, tile * CELL_SIZE };
	const float x = static_cast<float>( area.left );
	const float y = static_cast<float>( area.top );
	if ( blend ) {
		backend->Draw( textures[TEX_TILES], &source, x, y, WHITE );
	} else {
		backend->Copy( textures[TEX_TILES], source, x, y );
	}
}

// The ground texture is opaque: copying it gives what blending it would, for less work.
void cGraphicsLayer::DrawCachedGround( const cScene &scene ) const {
	backend->Copy( tileCache.GetGround(), GetView( scene ), 0.0f, 0.0f );
}

// Only the cells that show an over tile are drawn, indoors without the roof area's: the runs of
// such cells along each row of the view, rows with the same runs joined into one rectangle.
void cGraphicsLayer::DrawCachedOver( const cScene &scene, bool indoors ) const {
	std::vector<cRect> band;		// in world pixels
	for ( int32_t row = scene.GetCameraCellY(); row < scene.GetCameraCellY() + VIEW_ROWS; row++ ) {
		const std::vector<cRect> runs = GetOverRuns( scene, row, indoors );
		if ( HaveSameColumns( band, runs ) ) {
			for ( cRect &run : band ) {
				run.bottom += CELL_SIZE;
			}
		} else {
			DrawCachedOverParts( band, GetView( scene ) );
			band = runs;
		}
	}
	DrawCachedOverParts( band, GetView( scene ) );
}

std::vector<cRect> cGraphicsLayer::GetOverRuns( const cScene &scene, int32_t row, bool indoors ) const {
	std::vector<cRect> runs;
	bool inRun = false;
	for ( int32_t column = scene.GetCameraCellX(); column < scene.GetCameraCellX() + VIEW_COLUMNS; column++ ) {
		const bool shown = IsInGrid( column, row ) &&
							GetTileToDraw( scene.GetOverMap()[CellIndex( column, row )], TILES_OVER ) != 0 &&
							!( indoors && scene.IsUnderRoof( column, row ) );
		if ( shown && inRun ) {
			runs.back().right += CELL_SIZE;
		} else if ( shown ) {
			runs.push_back( { column * CELL_SIZE, row * CELL_SIZE, ( column + 1 ) * CELL_SIZE, ( row + 1 ) * CELL_SIZE } );
		}
		inRun = shown;
	}
	return runs;
}

// Each part cut to the view, at its place on the screen.
void cGraphicsLayer::DrawCachedOverParts( const std::vector<cRect> &parts, const cRect &view ) const {
	for ( const cRect &part : parts ) {
		const cRect cut = { std::max( part.left, view.left ), std::max( part.top, view.top ),
							std::min( part.right, view.right ), std::min( part.bottom, view.bottom ) };
		if ( cut.GetWidth() > 0 && cut.GetHeight() > 0 ) {
			backend->Draw( tileCache.GetOver(), &cut, static_cast<float>( cut.left - view.left ),
							static_cast<float>( cut.top - view.top ), WHITE );
		}
	}
}
