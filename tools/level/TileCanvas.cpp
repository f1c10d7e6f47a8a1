// SPDX-License-Identifier: GPL-3.0-or-later
#include "TileCanvas.h"

#include <SDL.h>
#include <SDL_image.h>

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdlib>

#include "tools/art/Palette.h"

namespace {

// Each palette colour and its neighbours on the way to black and to white, chosen by hand so
// that a shaded surface keeps its hue (brick stays brown, grass stays green).
struct sShadeStep {
	uint32_t	colour;
	uint32_t	darker;
	uint32_t	lighter;
};

const sShadeStep SHADE_STEPS[] = {
	{ db32::BLACK,		db32::BLACK,		db32::INK },
	{ db32::INK,		db32::BLACK,		db32::SLATE },
	{ db32::PLUM,		db32::INK,			db32::BROWN_DARK },
	{ db32::BROWN_DARK,	db32::PLUM,			db32::BROWN },
	{ db32::BROWN,		db32::BROWN_DARK,	db32::TAN },
	{ db32::ORANGE,		db32::BROWN,		db32::TAN },
	{ db32::TAN,		db32::GOLD_DARK,	db32::SKIN },
	{ db32::SKIN,		db32::TAN,			db32::WHITE },
	{ db32::YELLOW,		db32::TAN,			db32::WHITE },
	{ db32::LIME,		db32::GREEN,		db32::WHITE },
	{ db32::GREEN,		db32::MOSS,			db32::LIME },
	{ db32::TEAL,		db32::MOSS,			db32::GREEN },
	{ db32::MOSS,		db32::OLIVE_DARK,	db32::TEAL },
	{ db32::OLIVE_DARK,	db32::SLATE,		db32::OLIVE },
	{ db32::SLATE,		db32::INK,			db32::GREY_DEEP },
	{ db32::INDIGO,		db32::INK,			db32::NAVY },
	{ db32::NAVY,		db32::INDIGO,		db32::SKY },
	{ db32::BLUE,		db32::INDIGO,		db32::SKY },
	{ db32::SKY,		db32::BLUE,			db32::ICE },
	{ db32::CYAN,		db32::NAVY,			db32::ICE },
	{ db32::ICE,		db32::STEEL,		db32::WHITE },
	{ db32::WHITE,		db32::ICE,			db32::WHITE },
	{ db32::STEEL,		db32::GREY,			db32::ICE },
	{ db32::GREY,		db32::GREY_DEEP,	db32::STEEL },
	{ db32::GREY_DARK,	db32::SLATE,		db32::GREY },
	{ db32::GREY_DEEP,	db32::SLATE,		db32::GREY_DARK },
	{ db32::VIOLET,		db32::PLUM,			db32::PINK },
	{ db32::RED,		db32::BROWN_DARK,	db32::ROSE },
	{ db32::ROSE,		db32::RED,			db32::PINK },
	{ db32::PINK,		db32::VIOLET,		db32::SKIN },
	{ db32::OLIVE,		db32::OLIVE_DARK,	db32::TAN },
	{ db32::GOLD_DARK,	db32::OLIVE_DARK,	db32::TAN },
};

const sShadeStep *FindShadeStep( uint32_t argb ) {
	const uint32_t opaque = argb | 0xFF000000;
	for ( const sShadeStep &step : SHADE_STEPS ) {
		if ( step.colour == opaque ) {
			return &step;
		}
	}
	return nullptr;
}

const int BAYER[4][4] = {
	{ 0, 8, 2, 10 },
	{ 12, 4, 14, 6 },
	{ 3, 11, 1, 9 },
	{ 15, 7, 13, 5 },
};

}

uint32_t DarkerColour( uint32_t argb ) {
	const sShadeStep *step = FindShadeStep( argb );
	assert( step != nullptr && "a tile is painted with a colour outside the palette" );
	return step != nullptr ? ( step->darker & 0x00FFFFFF ) | ( argb & 0xFF000000 ) : argb;
}

uint32_t LighterColour( uint32_t argb ) {
	const sShadeStep *step = FindShadeStep( argb );
	assert( step != nullptr && "a tile is painted with a colour outside the palette" );
	return step != nullptr ? ( step->lighter & 0x00FFFFFF ) | ( argb & 0xFF000000 ) : argb;
}

int DitherThreshold( int x, int y ) {
	return BAYER[y & 3][x & 3];
}

// xorshift32: small, fast and the same on every machine.
uint32_t NextRandom( uint32_t &seed ) {
	if ( seed == 0 ) {
		seed = 0x9E3779B9u;
	}
	seed ^= seed << 13;
	seed ^= seed >> 17;
	seed ^= seed << 5;
	return seed;
}

int RandomBelow( uint32_t &seed, int bound ) {
	assert( bound > 0 );
	return int( NextRandom( seed ) % uint32_t( bound ) );
}

// FNV-1a.
uint32_t HashText( const std::string &text ) {
	uint32_t hash = 2166136261u;
	for ( unsigned char c : text ) {
		hash = ( hash ^ c ) * 16777619u;
	}
	return hash;
}

cTileCanvas::cTileCanvas( int width_, int height_, uint32_t fill )
	: width( width_ ), height( height_ ), pixels( size_t( width_ ) * size_t( height_ ), fill ) {
	assert( width > 0 && height > 0 );
}

uint32_t cTileCanvas::Get( int x, int y ) const {
	return IsInside( x, y ) ? pixels[size_t( y ) * width + x] : 0;
}

void cTileCanvas::Set( int x, int y, uint32_t argb ) {
	if ( IsInside( x, y ) ) {
		pixels[size_t( y ) * width + x] = argb;
	}
}

void cTileCanvas::Fill( uint32_t argb ) {
	pixels.assign( pixels.size(), argb );
}

void cTileCanvas::FillRect( int x, int y, int w, int h, uint32_t argb ) {
	DitherRect( x, y, w, h, argb, 16 );
}

void cTileCanvas::DitherRect( int x, int y, int w, int h, uint32_t argb, int level ) {
	for ( int py = y; py < y + h; py++ ) {
		for ( int px = x; px < x + w; px++ ) {
			if ( DitherThreshold( px, py ) < level ) {
				Set( px, py, argb );
			}
		}
	}
}

void cTileCanvas::ShadeRect( int x, int y, int w, int h, int level ) {
	for ( int py = y; py < y + h; py++ ) {
		for ( int px = x; px < x + w; px++ ) {
			if ( !IsEmpty( px, py ) && DitherThreshold( px, py ) < level ) {
				Set( px, py, DarkerColour( Get( px, py ) ) );
			}
		}
	}
}

void cTileCanvas::LightRect( int x, int y, int w, int h, int level ) {
	for ( int py = y; py < y + h; py++ ) {
		for ( int px = x; px < x + w; px++ ) {
			if ( !IsEmpty( px, py ) && DitherThreshold( px, py ) < level ) {
				Set( px, py, LighterColour( Get( px, py ) ) );
			}
		}
	}
}

// Pixel centres lie at half coordinates, so a disc at (16, 16) is symmetric about the middle.
void cTileCanvas::FillDisc( float cx, float cy, float radius, uint32_t argb ) {
	FillEllipse( cx, cy, radius, radius, argb );
}

void cTileCanvas::FillEllipse( float cx, float cy, float rx, float ry, uint32_t argb ) {
	for ( int y = int( cy - ry ) - 1; y <= int( cy + ry ) + 1; y++ ) {
		for ( int x = int( cx - rx ) - 1; x <= int( cx + rx ) + 1; x++ ) {
			const float dx = ( x + 0.5f - cx ) / rx;
			const float dy = ( y + 0.5f - cy ) / ry;
			if ( dx * dx + dy * dy <= 1.0f ) {
				Set( x, y, argb );
			}
		}
	}
}

void cTileCanvas::DrawLine( int x0, int y0, int x1, int y1, uint32_t argb ) {
	const int dx = std::abs( x1 - x0 );
	const int dy = -std::abs( y1 - y0 );
	const int sx = x0 < x1 ? 1 : -1;
	const int sy = y0 < y1 ? 1 : -1;
	int error = dx + dy;
	for ( ;; ) {
		Set( x0, y0, argb );
		if ( x0 == x1 && y0 == y1 ) {
			break;
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

void cTileCanvas::Speckle( uint32_t &seed, int x, int y, int w, int h, uint32_t argb, int chance ) {
	for ( int py = y; py < y + h; py++ ) {
		for ( int px = x; px < x + w; px++ ) {
			if ( RandomBelow( seed, 256 ) < chance ) {
				Set( px, py, argb );
			}
		}
	}
}

// A shape that reaches the canvas's border goes on into the next cell: no edge there.
void cTileCanvas::LightEdges() {
	const cTileCanvas shape = *this;
	auto isOpen = [&shape]( int x, int y ) { return shape.IsInside( x, y ) && shape.IsEmpty( x, y ); };
	for ( int y = 0; y < height; y++ ) {
		for ( int x = 0; x < width; x++ ) {
			if ( shape.IsEmpty( x, y ) ) {
				continue;
			}
			const bool litSide = isOpen( x - 1, y ) || isOpen( x, y - 1 );
			const bool darkSide = isOpen( x + 1, y ) || isOpen( x, y + 1 );
			if ( litSide && !darkSide ) {
				Set( x, y, LighterColour( shape.Get( x, y ) ) );
			} else if ( darkSide && !litSide ) {
				Set( x, y, DarkerColour( shape.Get( x, y ) ) );
			}
		}
	}
}

void cTileCanvas::CastShadow( int dx, int dy, uint32_t alpha ) {
	const cTileCanvas shape = *this;
	const uint32_t shadow = db32::WithAlpha( db32::BLACK, alpha );
	for ( int y = 0; y < height; y++ ) {
		for ( int x = 0; x < width; x++ ) {
			if ( !shape.IsEmpty( x, y ) ) {
				continue;
			}
			for ( int step = 1; step <= std::max( dx, dy ); step++ ) {
				const int sx = x - std::min( step, dx );
				const int sy = y - std::min( step, dy );
				if ( !shape.IsEmpty( sx, sy ) && ( shape.Get( sx, sy ) >> 24 ) == 0xFF ) {
					Set( x, y, shadow );
					break;
				}
			}
		}
	}
}

void cTileCanvas::CopyFrom( const cTileCanvas &source, int sx, int sy, int x, int y, int w, int h ) {
	for ( int py = 0; py < h; py++ ) {
		for ( int px = 0; px < w; px++ ) {
			Set( x + px, y + py, source.Get( sx + px, sy + py ) );
		}
	}
}

cTileCanvas cTileCanvas::Crop( int x, int y, int w, int h ) const {
	cTileCanvas part( w, h );
	part.CopyFrom( *this, x, y, 0, 0, w, h );
	return part;
}

cTileCanvas cTileCanvas::Transposed() const {
	cTileCanvas turned( height, width );
	for ( int y = 0; y < height; y++ ) {
		for ( int x = 0; x < width; x++ ) {
			turned.Set( y, x, Get( x, y ) );
		}
	}
	return turned;
}

cTileCanvas cTileCanvas::FlippedX() const {
	cTileCanvas flipped( width, height );
	for ( int y = 0; y < height; y++ ) {
		for ( int x = 0; x < width; x++ ) {
			flipped.Set( width - 1 - x, y, Get( x, y ) );
		}
	}
	return flipped;
}

cTileCanvas cTileCanvas::FlippedY() const {
	cTileCanvas flipped( width, height );
	for ( int y = 0; y < height; y++ ) {
		for ( int x = 0; x < width; x++ ) {
			flipped.Set( x, height - 1 - y, Get( x, y ) );
		}
	}
	return flipped;
}

bool cTileCanvas::SavePng( const std::string &path ) const {
	SDL_Surface *surface = SDL_CreateRGBSurfaceWithFormat( 0, width, height, 32, SDL_PIXELFORMAT_ARGB8888 );
	if ( surface == nullptr ) {
		return false;
	}
	for ( int y = 0; y < height; y++ ) {
		uint32_t *row = reinterpret_cast<uint32_t *>( static_cast<uint8_t *>( surface->pixels ) + y * surface->pitch );
		for ( int x = 0; x < width; x++ ) {
			row[x] = pixels[size_t( y ) * width + x];
		}
	}
	const bool saved = IMG_SavePNG( surface, path.c_str() ) == 0;
	SDL_FreeSurface( surface );
	return saved;
}

bool cTileCanvas::LoadPng( const std::string &path, cTileCanvas &picture, std::string &error ) {
	SDL_Surface *loaded = IMG_Load( path.c_str() );
	if ( loaded == nullptr ) {
		error = "cannot read " + path + ": " + IMG_GetError();
		return false;
	}
	SDL_Surface *surface = SDL_ConvertSurfaceFormat( loaded, SDL_PIXELFORMAT_ARGB8888, 0 );
	SDL_FreeSurface( loaded );
	if ( surface == nullptr ) {
		error = "cannot convert " + path + ": " + SDL_GetError();
		return false;
	}
	picture = cTileCanvas( surface->w, surface->h );
	for ( int y = 0; y < surface->h; y++ ) {
		const uint32_t *row = reinterpret_cast<const uint32_t *>( static_cast<const uint8_t *>( surface->pixels ) + y * surface->pitch );
		for ( int x = 0; x < surface->w; x++ ) {
			picture.Set( x, y, row[x] );
		}
	}
	SDL_FreeSurface( surface );
	return true;
}
