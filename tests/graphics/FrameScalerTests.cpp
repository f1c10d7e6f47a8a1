// SPDX-License-Identifier: GPL-3.0-or-later
// The frame scaled to a window drawn by the processor: every output pixel shows the frame's pixel
// under its centre, the bars are black, and a frame that changed in a few rows since the last one
// leaves the output as a fresh scaling of it would, although only those rows are written again.

#include <SDL.h>
#include <gtest/gtest.h>

#include <memory>

#include "graphics/sdl/FrameScaler.h"

namespace {

const uint32_t BLACK = 0xFF000000;
const uint32_t GARBAGE = 0x12345678;

typedef std::unique_ptr<SDL_Surface, decltype( &SDL_FreeSurface )> tSurface;

tSurface MakeSurface( int width, int height, uint32_t fill ) {
	tSurface surface( SDL_CreateRGBSurfaceWithFormat( 0, width, height, 32, SDL_PIXELFORMAT_ARGB8888 ), SDL_FreeSurface );
	SDL_FillRect( surface.get(), nullptr, fill );
	return surface;
}

uint32_t &PixelAt( SDL_Surface &surface, int x, int y ) {
	return static_cast<uint32_t *>( surface.pixels )[y * surface.pitch / 4 + x];
}

// A 4 x 3 frame whose every pixel differs, so that a pixel taken from the wrong place shows.
void Paint( SDL_Surface &frame, uint32_t base ) {
	for ( int y = 0; y < frame.h; y++ ) {
		for ( int x = 0; x < frame.w; x++ ) {
			PixelAt( frame, x, y ) = base + static_cast<uint32_t>( 16 * y + x );
		}
	}
}

std::string Describe( const SDL_Rect &picture, int x, int y ) {
	return "picture " + std::to_string( picture.w ) + " x " + std::to_string( picture.h ) + " at (" +
		   std::to_string( picture.x ) + ", " + std::to_string( picture.y ) + "), output pixel (" + std::to_string( x ) +
		   ", " + std::to_string( y ) + ")";
}

// Every pixel of the output: the frame's pixel under its centre inside the picture, black outside.
void ExpectScaled( SDL_Surface &frame, SDL_Surface &output, const SDL_Rect &picture, const char *when ) {
	for ( int y = 0; y < output.h; y++ ) {
		for ( int x = 0; x < output.w; x++ ) {
			const bool inside = x >= picture.x && x < picture.x + picture.w && y >= picture.y && y < picture.y + picture.h;
			const uint32_t expected = !inside ? BLACK :
				PixelAt( frame, ( 2 * ( x - picture.x ) + 1 ) * frame.w / ( 2 * picture.w ), ( 2 * ( y - picture.y ) + 1 ) * frame.h / ( 2 * picture.h ) );
			ASSERT_EQ( PixelAt( output, x, y ), expected ) << when << ": " << Describe( picture, x, y );
		}
	}
}

TEST( FrameScalerTest, EachOutputPixelShowsTheFramePixelUnderItsCentreAfterEveryChange ) {
	const struct { int width, height; SDL_Rect picture; } outputs[] = {
		{ 4, 3, { 0, 0, 4, 3 } },			// the frame's own size
		{ 8, 6, { 0, 0, 8, 6 } },			// a whole multiple
		{ 13, 9, { 0, 0, 12, 9 } },			// 3 x, a column of bar on the right
		{ 17, 9, { 2, 0, 12, 9 } },			// between multiples, bars both sides
		{ 9, 12, { 0, 2, 9, 7 } },			// 2.25 x wide by 2.33 x high, bars above and below
		{ 3, 2, { 0, 0, 3, 2 } },			// smaller than the frame
	};
	for ( const auto &out : outputs ) {
		tSurface frame = MakeSurface( 4, 3, 0 );
		tSurface output = MakeSurface( out.width, out.height, GARBAGE );
		cFrameScaler scaler;
		Paint( *frame, 0xFF000100 );
		scaler.Scale( *frame, *output, out.picture, BLACK );
		ExpectScaled( *frame, *output, out.picture, "first frame" );
		PixelAt( *frame, 1, 1 ) = 0xFFABCDEF;
		PixelAt( *frame, 3, 2 ) = 0xFF0000FF;
		scaler.Scale( *frame, *output, out.picture, BLACK );
		ExpectScaled( *frame, *output, out.picture, "two pixels changed" );
		scaler.Scale( *frame, *output, out.picture, BLACK );
		ExpectScaled( *frame, *output, out.picture, "the same frame again" );
		Paint( *frame, 0xFF010000 );
		scaler.Scale( *frame, *output, out.picture, BLACK );
		ExpectScaled( *frame, *output, out.picture, "every pixel changed" );
		tSurface other = MakeSurface( out.width, out.height, GARBAGE );
		scaler.Scale( *frame, *other, out.picture, BLACK );
		ExpectScaled( *frame, *other, out.picture, "another output surface, unchanged frame" );
	}
}

}
