// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/TileCache.h"

#include "graphics/GraphicsBackend.h"
#include "world/Grid.h"
#include "world/Scene.h"

bool cTileCache::Create( cGraphicsBackend &backend ) {
	Release( backend );
	ground = backend.CreateTargetTexture( WORLD_WIDTH, WORLD_HEIGHT, false );
	over = backend.CreateTargetTexture( WORLD_WIDTH, WORLD_HEIGHT, true );
	if ( ground == nullptr || over == nullptr ) {
		Release( backend );
		return false;
	}
	return true;
}

void cTileCache::Release( cGraphicsBackend &backend ) {
	for ( cTexture **texture : { &ground, &over } ) {
		if ( *texture != nullptr ) {
			backend.ReleaseTexture( *texture );
			*texture = nullptr;
		}
	}
	baseCodes.clear();
	objectCodes.clear();
	overCodes.clear();
}

void cTileCache::TakeChanges( const cScene &scene, std::vector<int32_t> &groundCells,
							std::vector<int32_t> &overCells ) {
	groundCells.clear();
	overCells.clear();
	const int32_t *base = scene.GetBaseMap();
	const int32_t *objects = scene.GetObjectMap();
	const int32_t *overs = scene.GetOverMap();
	const bool first = baseCodes.empty();
	if ( first ) {
		baseCodes.assign( base, base + MAP_CELLS );
		objectCodes.assign( objects, objects + MAP_CELLS );
		overCodes.assign( overs, overs + MAP_CELLS );
	}
	for ( int32_t cell = 0; cell < MAP_CELLS; cell++ ) {
		if ( first || base[cell] != baseCodes[cell] || objects[cell] != objectCodes[cell] ) {
			groundCells.push_back( cell );
			baseCodes[cell] = base[cell];
			objectCodes[cell] = objects[cell];
		}
		if ( first || overs[cell] != overCodes[cell] ) {
			overCells.push_back( cell );
			overCodes[cell] = overs[cell];
		}
	}
}
