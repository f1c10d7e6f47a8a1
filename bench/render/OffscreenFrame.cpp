// SPDX-License-Identifier: GPL-3.0-or-later
#include "OffscreenFrame.h"

#include <SDL_image.h>

#include <cstdio>

#include "BusyWorld.h"
#include "actors/GameState.h"
#include "world/Grid.h"
#include "world/Scene.h"

cOffscreenFrame::cOffscreenFrame( int width, int height )
	: surface( SDL_CreateRGBSurfaceWithFormat( 0, width, height, 32, SDL_PIXELFORMAT_ARGB8888 ) ) {
	if ( surface != nullptr ) {
		backend.reset( new cSdlGraphicsBackend( surface ) );
	}
}

cOffscreenFrame::~cOffscreenFrame() {
	layer.ReleaseTextures();
	layer.Release();
	backend.reset();
	SDL_FreeSurface( surface );
}

bool cOffscreenFrame::Load( const std::string &root ) {
	if ( backend == nullptr || !layer.Init( backend.get(), false ) ) {
		std::fprintf( stderr, "no software renderer: %s\n", SDL_GetError() );
		return false;
	}
	layer.LoadTextures( root );
	for ( int i = 0; i < cGraphicsLayer::TEXTURE_COUNT; i++ ) {
		if ( layer.GetTexture( static_cast<cGraphicsLayer::eTexture>( i ) ) == nullptr ) {
			std::fprintf( stderr, "warning: picture %d of the layer is missing under %s (see log.txt)\n", i, root.c_str() );
		}
	}
	return true;
}

int32_t cOffscreenFrame::GetTileCount() const {
	int32_t width = 0;
	int32_t height = 0;
	backend->GetTextureSize( layer.GetTexture( cGraphicsLayer::TEX_TILES ), width, height );
	return height / CELL_SIZE;
}

void cOffscreenFrame::Render( cBusyWorld &world ) {
	layer.Render( STATE_PLAYING, 0, 0, &world.GetScene(), &world.GetPlayers(), &world.GetEnemies(), &world.GetBullets(),
				&world.GetExplosions(), &world.GetItems() );
}

bool cOffscreenFrame::SavePng( const std::string &path ) const {
	if ( IMG_SavePNG( surface, path.c_str() ) != 0 ) {
		std::fprintf( stderr, "cannot write %s: %s\n", path.c_str(), SDL_GetError() );
		return false;
	}
	return true;
}
