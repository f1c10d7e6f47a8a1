// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cCanvas is a picture being drawn by the art tool: 32-bit ARGB pixels, simple painting
// operations and the PNG export through SDL2_image.

#include <cstdint>
#include <string>
#include <vector>

class cCanvas {
public:
					cCanvas( int width, int height, uint32_t fill = 0x00000000 );

	int				GetWidth() const { return width; }
	int				GetHeight() const { return height; }
	bool			IsInside( int x, int y ) const { return x >= 0 && y >= 0 && x < width && y < height; }

	uint32_t		Get( int x, int y ) const;				// 0 outside the canvas
	void			Set( int x, int y, uint32_t argb );		// ignored outside the canvas
	void			Blend( int x, int y, uint32_t argb );	// source-over with the colour's own alpha
	bool			IsOpaque( int x, int y ) const { return ( Get( x, y ) >> 24 ) == 0xFF; }
	bool			IsEmpty( int x, int y ) const { return ( Get( x, y ) >> 24 ) == 0; }

	void			FillRect( int left, int top, int right, int bottom, uint32_t argb );	// right, bottom exclusive
	void			BlendRect( int left, int top, int right, int bottom, uint32_t argb );
	void			FillCircle( float cx, float cy, float radius, uint32_t argb );
	void			BlendCircle( float cx, float cy, float radius, uint32_t argb );
	void			DrawLine( int x0, int y0, int x1, int y1, uint32_t argb );

	// Every empty pixel that touches an opaque one along an edge gets the outline colour.
	void			Outline( uint32_t argb );
	// Copies another canvas here with source-over blending; scale repeats each pixel.
	void			Paste( const cCanvas &source, int x, int y, int scale = 1 );
	void			PasteRect( const cCanvas &source, int sx, int sy, int w, int h, int x, int y, int scale = 1 );
	void			Clear( uint32_t argb = 0x00000000 );

	const std::vector<uint32_t> &GetPixels() const { return pixels; }
	bool			SavePng( const std::string &path ) const;

private:
	int				width;
	int				height;
	std::vector<uint32_t> pixels;
};

// Source-over of two ARGB colours, alpha included.
uint32_t BlendColours( uint32_t below, uint32_t above );
// A straight mix of two colours, t in [0, 1] towards b.
uint32_t MixColours( uint32_t a, uint32_t b, float t );

struct sPoint {
	float		x;
	float		y;
};
// Fills the pixels whose centres lie inside a closed polygon (even-odd rule).
void FillPolygon( cCanvas &canvas, const sPoint *points, int count, uint32_t argb );
