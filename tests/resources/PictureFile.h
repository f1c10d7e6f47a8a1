// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A picture of the resource tree read the way the game's loader reads it (SDL2_image), as
// 32-bit ARGB pixels, with the small queries the resource tests ask of it.

#include <cstdint>
#include <string>
#include <vector>

struct sPicture {
	int			width = 0;
	int			height = 0;
	std::vector<uint32_t> pixels;	// ARGB, row by row

	uint32_t	At( int x, int y ) const { return pixels[size_t( y ) * width + x]; }
	uint32_t	AlphaAt( int x, int y ) const { return At( x, y ) >> 24; }
	// Opaque pixels in the w x h cell at (left, top).
	int			CountOpaque( int left, int top, int w, int h ) const;
	// Pixels that differ between two cells of the same size.
	int			CountDifferent( int left, int top, const sPicture &other, int otherLeft, int otherTop, int w, int h ) const;
};

// False (with the reason in `error`) when the file is missing or not a picture.
bool LoadPicture( const std::string &path, sPicture &picture, std::string &error );
