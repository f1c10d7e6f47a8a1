// SPDX-License-Identifier: GPL-3.0-or-later
#include "Canvas.h"

#include <SDL.h>
#include <SDL_image.h>

#include <cassert>
#include <cmath>
#include <cstdio>

cCanvas::cCanvas( int width_, int height_, uint32_t fill ) : width( width_ ), height( height_ ),
	pixels( size_t( width_ ) * size_t( height_ ), fill ) {
	assert( width > 0 && height > 0 );
}

uint32_t cCanvas::Get( int x, int y ) const {
	return IsInside( x, y ) ? pixels[size_t( y ) * width + x] : 0;
}

void cCanvas::Set( int x, int y, uint32_t argb ) {
	if ( IsInside( x, y ) ) {
		pixels[size_t( y ) * width + x] = argb;
	}
}

void cCanvas::Blend( int x, int y, uint32_t argb ) {
	if ( IsInside( x, y ) ) {
		uint32_t &pixel = pixels[size_t( y ) * width + x];
		pixel = BlendColours( pixel, argb );
	}
}

void cCanvas::FillRect( int left, int top, int right, int bottom, uint32_t argb ) {
	for ( int y = top; y < bottom; y++ ) {
		for ( int x = left; x < right; x++ ) {
			Set( x, y, argb );
		}
	}
}

void cCanvas::BlendRect( int left, int top, int right, int bottom, uint32_t argb ) {
	for ( int y = top; y < bottom; y++ ) {
		for ( int x = left; x < right; x++ ) {
			Blend( x, y, argb );
		}
	}
}

// Pixel centres lie at half coordinates, so a circle at (16, 16) is symmetric about the middle.
void cCanvas::FillCircle( float cx, float cy, float radius, uint32_t argb ) {
	for ( int y = int( cy - radius ) - 1; y <= int( cy + radius ) + 1; y++ ) {
		for ( int x = int( cx - radius ) - 1; x <= int( cx + radius ) + 1; x++ ) {
			const float dx = x + 0.5f - cx;
			const float dy = y + 0.5f - cy;
			if ( dx * dx + dy * dy <= radius * radius ) {
				Set( x, y, argb );
			}
		}
	}
}

void cCanvas::BlendCircle( float cx, float cy, float radius, uint32_t argb ) {
	for ( int y = int( cy - radius ) - 1; y <= int( cy + radius ) + 1; y++ ) {
		for ( int x = int( cx - radius ) - 1; x <= int( cx + radius ) + 1; x++ ) {
			const float dx = x + 0.5f - cx;
			const float dy = y + 0.5f - cy;
			if ( dx * dx + dy * dy <= radius * radius ) {
				Blend( x, y, argb );
			}
		}
	}
}

void cCanvas::DrawLine( int x0, int y0, int x1, int y1, uint32_t argb ) {
	const int dx = std::abs( x1 - x0 );
	const int dy = -std::abs( y1 - y0 );
	const int sx = x0 < x1 ? 1 : -1;
	const int sy = y0 < y1 ? 1 : -1;
	int error = dx + dy;
	while ( true ) {
		Set( x0, y0, argb );
		if ( x0 == x1 && y0 == y1 ) {
			return;
		}
		const int twice = 2 * error;
		if ( twice >= dy ) {
			error += dy;
			x0 += sx;
		}
		if ( twice <= dx ) {
			error += dx;
			y0 += sy;
		}
	}
}

void cCanvas::Outline( uint32_t argb ) {
	const std::vector<uint32_t> before = pixels;
	auto opaqueBefore = [&]( int x, int y ) {
		return IsInside( x, y ) && ( before[size_t( y ) * width + x] >> 24 ) == 0xFF;
	};
	for ( int y = 0; y < height; y++ ) {
		for ( int x = 0; x < width; x++ ) {
			if ( ( before[size_t( y ) * width + x] >> 24 ) == 0xFF ) {
				continue;
			}
			if ( opaqueBefore( x - 1, y ) || opaqueBefore( x + 1, y ) || opaqueBefore( x, y - 1 ) || opaqueBefore( x, y + 1 ) ) {
				Set( x, y, argb );
			}
		}
	}
}

void cCanvas::Paste( const cCanvas &source, int x, int y, int scale ) {
	PasteRect( source, 0, 0, source.GetWidth(), source.GetHeight(), x, y, scale );
}

void cCanvas::PasteRect( const cCanvas &source, int sx, int sy, int w, int h, int x, int y, int scale ) {
	for ( int j = 0; j < h * scale; j++ ) {
		for ( int i = 0; i < w * scale; i++ ) {
			Blend( x + i, y + j, source.Get( sx + i / scale, sy + j / scale ) );
		}
	}
}

void cCanvas::Clear( uint32_t argb ) {
	std::fill( pixels.begin(), pixels.end(), argb );
}

bool cCanvas::SavePng( const std::string &path ) const {
	SDL_Surface *surface = SDL_CreateRGBSurfaceWithFormat( 0, width, height, 32, SDL_PIXELFORMAT_ARGB8888 );
	if ( surface == nullptr ) {
		std::fprintf( stderr, "cannot make a surface for %s: %s\n", path.c_str(), SDL_GetError() );
		return false;
	}
	for ( int y = 0; y < height; y++ ) {
		uint32_t *row = reinterpret_cast<uint32_t *>( static_cast<uint8_t *>( surface->pixels ) + size_t( y ) * surface->pitch );
		for ( int x = 0; x < width; x++ ) {
			row[x] = pixels[size_t( y ) * width + x];
		}
	}
	const bool saved = IMG_SavePNG( surface, path.c_str() ) == 0;
	if ( !saved ) {
		std::fprintf( stderr, "cannot write %s: %s\n", path.c_str(), IMG_GetError() );
	}
	SDL_FreeSurface( surface );
	return saved;
}

uint32_t BlendColours( uint32_t below, uint32_t above ) {
	const uint32_t aa = above >> 24;
	if ( aa == 0xFF ) {
		return above;
	}
	if ( aa == 0 ) {
		return below;
	}
	const float sa = aa / 255.0f;
	const float ba = ( below >> 24 ) / 255.0f;
	const float outA = sa + ba * ( 1.0f - sa );
	uint32_t result = uint32_t( std::lround( outA * 255.0f ) ) << 24;
	for ( int shift = 0; shift <= 16; shift += 8 ) {
		const float s = ( ( above >> shift ) & 0xFF ) / 255.0f;
		const float b = ( ( below >> shift ) & 0xFF ) / 255.0f;
		const float c = outA > 0.0f ? ( s * sa + b * ba * ( 1.0f - sa ) ) / outA : 0.0f;
		result |= uint32_t( std::lround( c * 255.0f ) ) << shift;
	}
	return result;
}

uint32_t MixColours( uint32_t a, uint32_t b, float t ) {
	uint32_t result = 0;
	for ( int shift = 0; shift <= 24; shift += 8 ) {
		const float ca = float( ( a >> shift ) & 0xFF );
		const float cb = float( ( b >> shift ) & 0xFF );
		result |= uint32_t( std::lround( ca + ( cb - ca ) * t ) ) << shift;
	}
	return result;
}

void FillPolygon( cCanvas &canvas, const sPoint *points, int count, uint32_t argb ) {
	for ( int y = 0; y < canvas.GetHeight(); y++ ) {
		for ( int x = 0; x < canvas.GetWidth(); x++ ) {
			const float px = x + 0.5f;
			const float py = y + 0.5f;
			bool inside = false;
			for ( int i = 0, j = count - 1; i < count; j = i++ ) {
				const sPoint &a = points[i];
				const sPoint &b = points[j];
				if ( ( a.y > py ) != ( b.y > py ) && px < ( b.x - a.x ) * ( py - a.y ) / ( b.y - a.y ) + a.x ) {
					inside = !inside;
				}
			}
			if ( inside ) {
				canvas.Set( x, y, argb );
			}
		}
	}
}
