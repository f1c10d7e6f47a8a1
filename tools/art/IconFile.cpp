// SPDX-License-Identifier: GPL-3.0-or-later
#include "IconFile.h"

#include "Palette.h"
#include "SpriteTools.h"

#include <cassert>
#include <cstdint>
#include <cstdio>

namespace {

void Put16( std::vector<uint8_t> &out, uint32_t value ) {
	out.push_back( uint8_t( value ) );
	out.push_back( uint8_t( value >> 8 ) );
}

void Put32( std::vector<uint8_t> &out, uint32_t value ) {
	Put16( out, value & 0xFFFF );
	Put16( out, value >> 16 );
}

// One image entry: a BITMAPINFOHEADER of doubled height, BGRA rows bottom-up, then the 1-bit
// AND mask (set where the pixel is fully transparent), rows padded to 32 bits.
std::vector<uint8_t> EncodeImage( const cCanvas &image ) {
	const int size = image.GetWidth();
	const int maskStride = ( ( size + 31 ) / 32 ) * 4;
	std::vector<uint8_t> out;
	Put32( out, 40 );
	Put32( out, uint32_t( size ) );
	Put32( out, uint32_t( size * 2 ) );
	Put16( out, 1 );							// planes
	Put16( out, 32 );							// bits per pixel
	Put32( out, 0 );							// uncompressed
	Put32( out, uint32_t( size * size * 4 + maskStride * size ) );
	for ( int i = 0; i < 4; i++ ) {
		Put32( out, 0 );						// resolution and palette counts
	}
	for ( int y = size - 1; y >= 0; y-- ) {
		for ( int x = 0; x < size; x++ ) {
			const uint32_t argb = image.Get( x, y );
			out.push_back( uint8_t( argb ) );
			out.push_back( uint8_t( argb >> 8 ) );
			out.push_back( uint8_t( argb >> 16 ) );
			out.push_back( uint8_t( argb >> 24 ) );
		}
	}
	for ( int y = size - 1; y >= 0; y-- ) {
		std::vector<uint8_t> row( maskStride, 0 );
		for ( int x = 0; x < size; x++ ) {
			if ( ( image.Get( x, y ) >> 24 ) == 0 ) {
				row[x / 8] |= uint8_t( 0x80 >> ( x % 8 ) );
			}
		}
		out.insert( out.end(), row.begin(), row.end() );
	}
	return out;
}

}	// namespace

bool WriteIconFile( const std::string &path, const std::vector<cCanvas> &images ) {
	std::vector<uint8_t> file;
	Put16( file, 0 );
	Put16( file, 1 );							// an icon, not a cursor
	Put16( file, uint32_t( images.size() ) );
	std::vector<std::vector<uint8_t>> encoded;
	for ( const cCanvas &image : images ) {
		assert( image.GetWidth() == image.GetHeight() && image.GetWidth() < 256 );
		encoded.push_back( EncodeImage( image ) );
	}
	uint32_t offset = uint32_t( 6 + 16 * images.size() );
	for ( size_t i = 0; i < images.size(); i++ ) {
		file.push_back( uint8_t( images[i].GetWidth() ) );
		file.push_back( uint8_t( images[i].GetHeight() ) );
		file.push_back( 0 );					// no palette
		file.push_back( 0 );
		Put16( file, 1 );
		Put16( file, 32 );
		Put32( file, uint32_t( encoded[i].size() ) );
		Put32( file, offset );
		offset += uint32_t( encoded[i].size() );
	}
	for ( const std::vector<uint8_t> &bytes : encoded ) {
		file.insert( file.end(), bytes.begin(), bytes.end() );
	}
	FILE *out = std::fopen( path.c_str(), "wb" );
	if ( out == nullptr ) {
		std::fprintf( stderr, "cannot write %s\n", path.c_str() );
		return false;
	}
	const bool written = std::fwrite( file.data(), 1, file.size(), out ) == file.size();
	return std::fclose( out ) == 0 && written;
}

// A night-blue badge with the moon and an orange K, drawn on a grid of 16 units.
cCanvas MakeGameIcon( int size ) {
	const float u = size / 16.0f;
	cCanvas art( size, size );
	static const sRamp badge = { db32::INK, db32::INDIGO, db32::BLUE };
	const int inset = int( u );
	ShadedRect( art, inset, inset, size - inset, size - inset, badge );
	art.FillRect( inset + 1, inset + 1, size - inset - 1, size - inset - 1, db32::INDIGO );
	art.FillCircle( 12.6f * u, 3.9f * u, 1.7f * u, db32::ICE );			// the moon
	art.FillCircle( 13.3f * u, 3.4f * u, 1.5f * u, db32::INDIGO );
	const sPoint stem[] = { { 3.0f * u, 3.0f * u }, { 5.8f * u, 3.0f * u }, { 5.8f * u, 13.0f * u }, { 3.0f * u, 13.0f * u } };
	const sPoint upper[] = { { 5.4f * u, 8.4f * u }, { 9.0f * u, 3.0f * u }, { 11.8f * u, 3.0f * u }, { 7.4f * u, 9.6f * u } };
	const sPoint lower[] = { { 5.8f * u, 7.4f * u }, { 8.2f * u, 6.8f * u }, { 12.8f * u, 13.0f * u }, { 9.8f * u, 13.0f * u } };
	cCanvas letter( size, size );
	FillPolygon( letter, stem, 4, db32::ORANGE );
	FillPolygon( letter, upper, 4, db32::ORANGE );
	FillPolygon( letter, lower, 4, db32::ORANGE );
	for ( int y = 0; y < size; y++ ) {		// lit from the top-left: yellow where the letter begins
		for ( int x = 0; x < size; x++ ) {
			if ( letter.IsOpaque( x, y ) && ( !letter.IsOpaque( x - 1, y ) || !letter.IsOpaque( x, y - 1 ) ) ) {
				letter.Set( x, y, db32::YELLOW );
			}
		}
	}
	letter.Outline( db32::INK );
	CopyNonEmpty( art, letter, 0, 0 );
	return art;
}
