// SPDX-License-Identifier: GPL-3.0-or-later
#include "TextRenderer.h"

#include <SDL.h>
#include <SDL_ttf.h>

#include <cstdio>

namespace {
const char *const FONT_FOLDER = "/usr/share/fonts/truetype/dejavu/";
}

cTextRenderer::cTextRenderer() : font( nullptr ) {
}

cTextRenderer::~cTextRenderer() {
	if ( font != nullptr ) {
		TTF_CloseFont( font );
	}
}

bool cTextRenderer::Open( const std::string &fontFile, int size ) {
	if ( TTF_WasInit() == 0 && TTF_Init() != 0 ) {
		std::fprintf( stderr, "TTF_Init: %s\n", TTF_GetError() );
		return false;
	}
	const std::string path = FONT_FOLDER + fontFile;
	font = TTF_OpenFont( path.c_str(), size );
	if ( font == nullptr ) {
		std::fprintf( stderr, "cannot open the font %s: %s\n", path.c_str(), TTF_GetError() );
		return false;
	}
	return true;
}

int cTextRenderer::GetWidth( const std::string &text ) const {
	int width = 0;
	int height = 0;
	if ( font == nullptr || TTF_SizeUTF8( font, text.c_str(), &width, &height ) != 0 ) {
		return 0;
	}
	return width;
}

cCanvas cTextRenderer::Render( const std::string &text, uint32_t argb ) const {
	const SDL_Color white = { 255, 255, 255, 255 };
	SDL_Surface *surface = font != nullptr ? TTF_RenderUTF8_Solid( font, text.c_str(), white ) : nullptr;
	if ( surface == nullptr ) {
		std::fprintf( stderr, "cannot render \"%s\"\n", text.c_str() );
		return cCanvas( 1, 1 );
	}
	cCanvas canvas( surface->w, surface->h );
	SDL_LockSurface( surface );
	for ( int y = 0; y < surface->h; y++ ) {
		const uint8_t *row = static_cast<const uint8_t *>( surface->pixels ) + size_t( y ) * surface->pitch;
		for ( int x = 0; x < surface->w; x++ ) {
			if ( row[x] != 0 ) {		// index 0 is the background of a solid rendering
				canvas.Set( x, y, argb );
			}
		}
	}
	SDL_UnlockSurface( surface );
	SDL_FreeSurface( surface );
	return canvas;
}
