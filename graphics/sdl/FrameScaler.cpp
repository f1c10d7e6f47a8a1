// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/sdl/FrameScaler.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace {

// The source pixel an output pixel shows: the one under the output pixel's centre.
int SampleAt( int output, int sourceSize, int outputSize ) {
	return static_cast<int>( ( 2 * int64_t( output ) + 1 ) * sourceSize / ( 2 * int64_t( outputSize ) ) );
}

uint32_t *RowOf( SDL_Surface &surface, int y ) {
	return reinterpret_cast<uint32_t *>( static_cast<uint8_t *>( surface.pixels ) + int64_t( y ) * surface.pitch );
}

const uint32_t *RowOf( const SDL_Surface &surface, int y ) {
	return reinterpret_cast<const uint32_t *>( static_cast<const uint8_t *>( surface.pixels ) + int64_t( y ) * surface.pitch );
}

}

void cFrameScaler::CountRepeats( int frameWidth, int pictureWidth ) {
	if ( countedFor == pictureWidth && static_cast<int>( repeats.size() ) == frameWidth ) {
		return;
	}
	repeats.assign( static_cast<size_t>( frameWidth ), 0 );
	for ( int x = 0; x < pictureWidth; x++ ) {
		repeats[static_cast<size_t>( SampleAt( x, frameWidth, pictureWidth ) )]++;
	}
	widest = *std::max_element( repeats.begin(), repeats.end() );
	expanded.assign( static_cast<size_t>( pictureWidth + widest ), 0 );
	countedFor = pictureWidth;
}

// Every pixel is written WIDEST times and the next starts where its own repeats end, so that the
// loop has no branch on how wide a pixel is; the row is built in a buffer with room for the spill.
template <int WIDEST>
void cFrameScaler::ExpandRow( const uint32_t *frameRow ) {
	uint32_t *at = expanded.data();
	for ( size_t x = 0; x < repeats.size(); x++ ) {
		const uint32_t pixel = frameRow[x];
		for ( int copy = 0; copy < ( WIDEST > 0 ? WIDEST : widest ); copy++ ) {
			at[copy] = pixel;
		}
		at += repeats[x];
	}
}

// The frame's row as the picture shows it: the row itself at the frame's own size.
const uint32_t *cFrameScaler::ExpandRow( const uint32_t *frameRow, int width ) {
	if ( width == static_cast<int>( repeats.size() ) ) {
		return frameRow;
	}
	switch ( widest ) {
	case 1:		ExpandRow<1>( frameRow ); break;
	case 2:		ExpandRow<2>( frameRow ); break;
	case 3:		ExpandRow<3>( frameRow ); break;
	case 4:		ExpandRow<4>( frameRow ); break;
	default:	ExpandRow<0>( frameRow ); break;
	}
	return expanded.data();
}

bool cFrameScaler::cOutput::operator==( const cOutput &other ) const {
	return pixels == other.pixels && width == other.width && height == other.height && pitch == other.pitch &&
		   SDL_RectEquals( &picture, &other.picture ) && black == other.black;
}

// Compares each row of the frame with the one shown and keeps the new one.
void cFrameScaler::FindChangedRows( const SDL_Surface &frame, bool all ) {
	const size_t rowBytes = size_t( frame.w ) * sizeof( uint32_t );
	shown.resize( size_t( frame.w ) * size_t( frame.h ) );
	changed.resize( size_t( frame.h ) );
	for ( int y = 0; y < frame.h; y++ ) {
		uint32_t *before = shown.data() + size_t( y ) * size_t( frame.w );
		const uint32_t *now = RowOf( frame, y );
		changed[size_t( y )] = all || std::memcmp( before, now, rowBytes ) != 0;
		if ( changed[size_t( y )] ) {
			std::memcpy( before, now, rowBytes );
		}
	}
}

void cFrameScaler::Scale( const SDL_Surface &frame, SDL_Surface &output, const SDL_Rect &picture, uint32_t black ) {
	assert( frame.format->BytesPerPixel == 4 && output.format->BytesPerPixel == 4 );
	assert( picture.x >= 0 && picture.y >= 0 && picture.x + picture.w <= output.w && picture.y + picture.h <= output.h );
	const cOutput now = { output.pixels, output.w, output.h, output.pitch, picture, black };
	const bool all = !( now == written );
	written = now;
	CountRepeats( frame.w, picture.w );
	// At the frame's own size finding the rows that changed costs what writing them all does.
	if ( picture.w == frame.w && picture.h == frame.h ) {
		changed.assign( size_t( frame.h ), 1 );
	} else {
		FindChangedRows( frame, all );
	}
	if ( all ) {
		PaintBars( output, picture, black );
	}
	const uint32_t *widened = nullptr;
	for ( int y = 0, widenedRow = -1; y < picture.h; y++ ) {
		const int source = SampleAt( y, frame.h, picture.h );
		if ( !changed[size_t( source )] ) {
			continue;
		}
		if ( source != widenedRow ) {
			widened = ExpandRow( RowOf( frame, source ), picture.w );
			widenedRow = source;
		}
		std::memcpy( RowOf( output, picture.y + y ) + picture.x, widened, size_t( picture.w ) * sizeof( uint32_t ) );
	}
}

void cFrameScaler::PaintBars( SDL_Surface &output, const SDL_Rect &picture, uint32_t black ) {
	const int right = picture.x + picture.w;
	for ( int y = 0; y < output.h; y++ ) {
		uint32_t *row = RowOf( output, y );
		if ( y < picture.y || y >= picture.y + picture.h ) {
			std::fill_n( row, output.w, black );
		} else {
			std::fill_n( row, picture.x, black );
			std::fill_n( row + right, output.w - right, black );
		}
	}
}
