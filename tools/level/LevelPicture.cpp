// SPDX-License-Identifier: GPL-3.0-or-later
#include "LevelPicture.h"

#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const uint32_t MISSING_TILE = 0xFFFF00FF;	// loud, so a broken code shows in every picture

uint32_t BlendPixel( uint32_t below, uint32_t above ) {
	const uint32_t alpha = above >> 24;
	if ( alpha == 0xFF ) {
		return above;
	}
	if ( alpha == 0 ) {
		return below;
	}
	uint32_t result = 0xFF000000;
	for ( int shift = 0; shift < 24; shift += 8 ) {
		const uint32_t a = ( above >> shift ) & 0xFF;
		const uint32_t b = ( below >> shift ) & 0xFF;
		result |= ( ( a * alpha + b * ( 255 - alpha ) + 127 ) / 255 ) << shift;
	}
	return result;
}

}

void BlendPicture( cTileCanvas &target, const cTileCanvas &picture, int sx, int sy, int w, int h, int x, int y ) {
	for ( int py = 0; py < h; py++ ) {
		for ( int px = 0; px < w; px++ ) {
			if ( target.IsInside( x + px, y + py ) && picture.IsInside( sx + px, sy + py ) ) {
				target.Set( x + px, y + py, BlendPixel( target.Get( x + px, y + py ), picture.Get( sx + px, sy + py ) ) );
			}
		}
	}
}

cTileCanvas Shrink( const cTileCanvas &picture, int factor ) {
	cTileCanvas small( picture.GetWidth() / factor, picture.GetHeight() / factor );
	for ( int y = 0; y < small.GetHeight(); y++ ) {
		for ( int x = 0; x < small.GetWidth(); x++ ) {
			uint32_t sums[3] = { 0, 0, 0 };
			for ( int dy = 0; dy < factor; dy++ ) {
				for ( int dx = 0; dx < factor; dx++ ) {
					const uint32_t pixel = picture.Get( x * factor + dx, y * factor + dy );
					sums[0] += ( pixel >> 16 ) & 0xFF;
					sums[1] += ( pixel >> 8 ) & 0xFF;
					sums[2] += pixel & 0xFF;
				}
			}
			const uint32_t count = uint32_t( factor * factor );
			small.Set( x, y, 0xFF000000 | ( sums[0] / count ) << 16 | ( sums[1] / count ) << 8 | ( sums[2] / count ) );
		}
	}
	return small;
}

cLevelPicture::cLevelPicture( const cScene &scene_, const cTileCanvas &sheet_ )
	: scene( scene_ ), sheet( sheet_ ), missingTiles( 0 ) {
}

cTileCanvas cLevelPicture::DrawWorld( bool indoorRoofsHidden ) const {
	missingTiles = 0;
	cTileCanvas world( WORLD_WIDTH, WORLD_HEIGHT, 0xFF000000 );
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			const int cell = CellIndex( column, row );
			DrawLayerCell( world, column, row, scene.GetBaseMap()[cell], true );
			DrawLayerCell( world, column, row, scene.GetObjectMap()[cell], false );
			if ( !( indoorRoofsHidden && scene.IsUnderRoof( column, row ) ) ) {
				DrawLayerCell( world, column, row, scene.GetOverMap()[cell], false );
			}
		}
	}
	return world;
}

void cLevelPicture::DrawLayerCell( cTileCanvas &world, int column, int row, int32_t code, bool ground ) const {
	const int32_t tile = ( ground && code == 0 ) ? 1 : code;
	if ( tile <= 0 ) {
		return;
	}
	const int tileCount = sheet.GetHeight() / CELL_SIZE;
	if ( tile > tileCount ) {
		missingTiles++;
		world.FillRect( column * CELL_SIZE, row * CELL_SIZE, CELL_SIZE, CELL_SIZE, MISSING_TILE );
		return;
	}
	BlendPicture( world, sheet, 0, ( tile - 1 ) * CELL_SIZE, CELL_SIZE, CELL_SIZE, column * CELL_SIZE, row * CELL_SIZE );
}
