// SPDX-License-Identifier: GPL-3.0-or-later
#include "TownBackdrop.h"

#include "Palette.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

namespace {

struct sLight {
	float		r, g, b;
};

// A picture in linear floating-point colour, blurred before it is brought back to the palette.
class cFloatImage {
public:
	cFloatImage() : pixels( size_t( SCREEN_WIDTH ) * SCREEN_HEIGHT, sLight{ 0, 0, 0 } ) {}

	sLight &		At( int x, int y ) { return pixels[size_t( y ) * SCREEN_WIDTH + x]; }
	const sLight &	At( int x, int y ) const { return pixels[size_t( y ) * SCREEN_WIDTH + x]; }

	void Fill( int left, int top, int right, int bottom, uint32_t argb ) {
		const sLight colour = ToLight( argb );
		for ( int y = std::max( top, 0 ); y < std::min( bottom, SCREEN_HEIGHT ); y++ ) {
			for ( int x = std::max( left, 0 ); x < std::min( right, SCREEN_WIDTH ); x++ ) {
				At( x, y ) = colour;
			}
		}
	}

	// Light added around a point, falling off with the square of the distance.
	void Glow( float cx, float cy, float radius, uint32_t argb, float strength ) {
		const sLight colour = ToLight( argb );
		for ( int y = std::max( int( cy - radius ), 0 ); y < std::min( int( cy + radius ) + 1, SCREEN_HEIGHT ); y++ ) {
			for ( int x = std::max( int( cx - radius ), 0 ); x < std::min( int( cx + radius ) + 1, SCREEN_WIDTH ); x++ ) {
				const float d = std::hypot( x - cx, y - cy ) / radius;
				if ( d < 1.0f ) {
					const float k = strength * ( 1.0f - d ) * ( 1.0f - d );
					At( x, y ).r += colour.r * k;
					At( x, y ).g += colour.g * k;
					At( x, y ).b += colour.b * k;
				}
			}
		}
	}

	void BoxBlur( int radius ) {
		std::vector<sLight> copy = pixels;
		BlurPass( copy, pixels, radius, true );
		BlurPass( pixels, copy, radius, false );
		pixels = copy;
	}

	static sLight ToLight( uint32_t argb ) {
		return { ( ( argb >> 16 ) & 0xFF ) / 255.0f, ( ( argb >> 8 ) & 0xFF ) / 255.0f, ( argb & 0xFF ) / 255.0f };
	}

private:
	static void BlurPass( const std::vector<sLight> &from, std::vector<sLight> &to, int radius, bool horizontal ) {
		for ( int y = 0; y < SCREEN_HEIGHT; y++ ) {
			for ( int x = 0; x < SCREEN_WIDTH; x++ ) {
				sLight sum = { 0, 0, 0 };
				for ( int k = -radius; k <= radius; k++ ) {
					const int sx = horizontal ? std::clamp( x + k, 0, SCREEN_WIDTH - 1 ) : x;
					const int sy = horizontal ? y : std::clamp( y + k, 0, SCREEN_HEIGHT - 1 );
					const sLight &p = from[size_t( sy ) * SCREEN_WIDTH + sx];
					sum.r += p.r;
					sum.g += p.g;
					sum.b += p.b;
				}
				const float n = 2.0f * radius + 1.0f;
				to[size_t( y ) * SCREEN_WIDTH + x] = { sum.r / n, sum.g / n, sum.b / n };
			}
		}
	}

	std::vector<sLight> pixels;
};

uint32_t Hash( int a, int b ) {
	uint32_t h = uint32_t( a ) * 374761393u + uint32_t( b ) * 668265263u;
	h = ( h ^ ( h >> 13 ) ) * 1274126177u;
	return h ^ ( h >> 16 );
}

const int STREET_ROWS[] = { 150, 380 };		// centre lines of the streets, in screen pixels
const int STREET_COLUMNS[] = { 40, 290, 540 };
const int STREET_HALF = 26;
const int WALK = 10;							// sidewalk width

bool IsStreet( int x, int y, int margin ) {
	for ( int row : STREET_ROWS ) {
		if ( std::abs( y - row ) < STREET_HALF + margin ) {
			return true;
		}
	}
	for ( int column : STREET_COLUMNS ) {
		if ( std::abs( x - column ) < STREET_HALF + margin ) {
			return true;
		}
	}
	return false;
}

void DrawGround( cFloatImage &image ) {
	static const uint32_t roofs[] = { db32::INDIGO, db32::PLUM, db32::SLATE, db32::GREY_DEEP, db32::NAVY, db32::BROWN_DARK };
	for ( int y = 0; y < SCREEN_HEIGHT; y++ ) {
		for ( int x = 0; x < SCREEN_WIDTH; x++ ) {
			if ( IsStreet( x, y, 0 ) ) {
				image.At( x, y ) = cFloatImage::ToLight( db32::INK );
			} else if ( IsStreet( x, y, WALK ) ) {
				image.At( x, y ) = cFloatImage::ToLight( db32::GREY_DEEP );
			} else {
				// roofs: a 60-pixel lot grid inside the blocks, one roof colour per lot
				const uint32_t lot = Hash( x / 60, y / 52 );
				image.At( x, y ) = cFloatImage::ToLight( roofs[lot % 6] );
				if ( x % 60 < 2 || y % 52 < 2 ) {
					image.At( x, y ) = cFloatImage::ToLight( db32::BLACK );
				}
			}
		}
	}
}

void DrawLaneMarks( cFloatImage &image ) {
	for ( int row : STREET_ROWS ) {
		for ( int x = 0; x < SCREEN_WIDTH; x += 32 ) {
			if ( !IsStreet( x, row - 60, 0 ) ) {
				image.Fill( x, row - 1, x + 16, row + 1, db32::TAN );
			}
		}
	}
	for ( int column : STREET_COLUMNS ) {
		for ( int y = 0; y < SCREEN_HEIGHT; y += 32 ) {
			if ( !IsStreet( column - 60, y, 0 ) ) {
				image.Fill( column - 1, y, column + 1, y + 16, db32::TAN );
			}
		}
	}
}

// Street lamps along the sidewalks, lit shop windows, a few cars with their rear lights.
void DrawLights( cFloatImage &image ) {
	for ( int row : STREET_ROWS ) {
		for ( int x = 70; x < SCREEN_WIDTH; x += 120 ) {
			image.Glow( float( x ), float( row - STREET_HALF - 4 ), 70.0f, db32::YELLOW, 0.55f );
			image.Glow( float( x + 60 ), float( row + STREET_HALF + 4 ), 60.0f, db32::ORANGE, 0.45f );
		}
	}
	for ( int i = 0; i < 26; i++ ) {
		const uint32_t h = Hash( i, 99 );
		const int x = int( h % SCREEN_WIDTH );
		const int y = int( ( h >> 10 ) % SCREEN_HEIGHT );
		if ( !IsStreet( x, y, WALK ) ) {
			image.Fill( x, y, x + 8, y + 5, ( h & 1 ) != 0 ? db32::YELLOW : db32::TAN );
			image.Glow( x + 4.0f, y + 2.0f, 24.0f, db32::ORANGE, 0.3f );
		}
	}
	const int cars[][3] = { { 120, 138, 0 }, { 420, 392, 1 }, { 278, 230, 2 }, { 552, 60, 2 } };
	for ( const auto &car : cars ) {
		const bool across = car[2] < 2;
		const int w = across ? 34 : 18;
		const int h = across ? 18 : 34;
		image.Fill( car[0], car[1], car[0] + w, car[1] + h, car[2] == 1 ? db32::RED : db32::NAVY );
		image.Glow( car[0] + ( across ? 0.0f : 9.0f ), car[1] + ( across ? 9.0f : 34.0f ), 16.0f, db32::RED, 0.6f );
	}
	image.Glow( 560.0f, 40.0f, 260.0f, db32::SKY, 0.25f );		// moonlight from the top right
}

// Bayer-ordered dithering between the two nearest palette colours keeps the soft blur without
// leaving the palette.
uint32_t Dither( const sLight &colour, int x, int y ) {
	static const int bayer[4][4] = { { 0, 8, 2, 10 }, { 12, 4, 14, 6 }, { 3, 11, 1, 9 }, { 15, 7, 13, 5 } };
	uint32_t best = db32::BLACK, second = db32::BLACK;
	float bestDistance = 1e9f, secondDistance = 1e9f;
	for ( uint32_t candidate : db32::ALL ) {
		const sLight c = cFloatImage::ToLight( candidate );
		const float d = ( c.r - colour.r ) * ( c.r - colour.r ) * 0.3f + ( c.g - colour.g ) * ( c.g - colour.g ) * 0.59f + ( c.b - colour.b ) * ( c.b - colour.b ) * 0.11f;
		if ( d < bestDistance ) {
			second = best;
			secondDistance = bestDistance;
			best = candidate;
			bestDistance = d;
		} else if ( d < secondDistance ) {
			second = candidate;
			secondDistance = d;
		}
	}
	const float a = std::sqrt( bestDistance );
	const float b = std::sqrt( secondDistance );
	const float towardsSecond = a / std::max( a + b, 1e-6f );		// 0..0.5
	const float threshold = ( bayer[y % 4][x % 4] + 0.5f ) / 16.0f;
	return towardsSecond > threshold ? second : best;
}

}	// namespace

cCanvas MakeTownBackdrop() {
	cFloatImage image;
	DrawGround( image );
	DrawLaneMarks( image );
	DrawLights( image );
	image.BoxBlur( 3 );
	image.BoxBlur( 3 );
	cCanvas canvas( SCREEN_WIDTH, SCREEN_HEIGHT );
	for ( int y = 0; y < SCREEN_HEIGHT; y++ ) {
		for ( int x = 0; x < SCREEN_WIDTH; x++ ) {
			// darken towards the left, where the menu entries are, and towards the corners
			const float dx = ( x - 380.0f ) / 420.0f;
			const float dy = ( y - 240.0f ) / 300.0f;
			const float vignette = std::clamp( 1.0f - 0.55f * ( dx * dx + dy * dy ), 0.35f, 1.0f );
			sLight c = image.At( x, y );
			c = { c.r * 0.7f * vignette, c.g * 0.7f * vignette, c.b * 0.75f * vignette };
			canvas.Set( x, y, Dither( c, x, y ) );
		}
	}
	return canvas;
}
