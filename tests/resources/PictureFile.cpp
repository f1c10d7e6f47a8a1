// SPDX-License-Identifier: GPL-3.0-or-later
#include "PictureFile.h"

#include <SDL.h>
#include <SDL_image.h>

#include <algorithm>

int sPicture::CountOpaque( int left, int top, int w, int h ) const {
	int count = 0;
	for ( int y = top; y < top + h; y++ ) {
		for ( int x = left; x < left + w; x++ ) {
			count += AlphaAt( x, y ) == 0xFF ? 1 : 0;
		}
	}
	return count;
}

int sPicture::CountDifferent( int left, int top, const sPicture &other, int otherLeft, int otherTop, int w, int h ) const {
	int count = 0;
	for ( int y = 0; y < h; y++ ) {
		for ( int x = 0; x < w; x++ ) {
			count += At( left + x, top + y ) != other.At( otherLeft + x, otherTop + y ) ? 1 : 0;
		}
	}
	return count;
}

bool LoadPicture( const std::string &path, sPicture &picture, std::string &error ) {
	SDL_Surface *loaded = IMG_Load( path.c_str() );
	if ( loaded == nullptr ) {
		error = path + ": " + IMG_GetError();
		return false;
	}
	// a plain copy into ARGB keeps the colour of fully transparent pixels (the cursor's key)
	SDL_Surface *argb = SDL_ConvertSurfaceFormat( loaded, SDL_PIXELFORMAT_ARGB8888, 0 );
	SDL_FreeSurface( loaded );
	if ( argb == nullptr ) {
		error = path + ": " + SDL_GetError();
		return false;
	}
	picture.width = argb->w;
	picture.height = argb->h;
	picture.pixels.resize( size_t( argb->w ) * argb->h );
	SDL_LockSurface( argb );
	for ( int y = 0; y < argb->h; y++ ) {
		const uint32_t *row = reinterpret_cast<const uint32_t *>( static_cast<const uint8_t *>( argb->pixels ) + size_t( y ) * argb->pitch );
		std::copy( row, row + argb->w, picture.pixels.begin() + size_t( y ) * argb->w );
	}
	SDL_UnlockSurface( argb );
	SDL_FreeSurface( argb );
	return true;
}
