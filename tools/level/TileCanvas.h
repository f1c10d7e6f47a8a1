// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cTileCanvas holds the pixels of a tile, or of a thing several cells large, while the level tool
// paints it: 32-bit ARGB, painted with the colours of the game's palette only. Shading steps
// from one palette colour to the next darker or lighter one, and soft edges are dithered, so
// that every tile stays inside the palette.

#include <cstdint>
#include <string>
#include <vector>

const int TILE_SIZE = 32;		// in pixels

class cTileCanvas {
public:
					cTileCanvas( int width, int height, uint32_t fill = 0 );

	int				GetWidth() const { return width; }
	int				GetHeight() const { return height; }
	bool			IsInside( int x, int y ) const { return x >= 0 && y >= 0 && x < width && y < height; }
	uint32_t		Get( int x, int y ) const;				// 0 outside the canvas
	void			Set( int x, int y, uint32_t argb );		// ignored outside the canvas
	bool			IsEmpty( int x, int y ) const { return ( Get( x, y ) >> 24 ) == 0; }
	const std::vector<uint32_t> &GetPixels() const { return pixels; }

	void			Fill( uint32_t argb );
	void			FillRect( int x, int y, int w, int h, uint32_t argb );
	// Sets the pixels of the rectangle whose place in a 4 x 4 ordered-dither pattern is below
	// level (0 none, 16 all): a flat mix of the colour into what is there.
	void			DitherRect( int x, int y, int w, int h, uint32_t argb, int level );
	// Steps the painted pixels of the rectangle to the next darker (or lighter) palette colour,
	// dithered by level like DitherRect.
	void			ShadeRect( int x, int y, int w, int h, int level );
	void			LightRect( int x, int y, int w, int h, int level );
	void			FillDisc( float cx, float cy, float radius, uint32_t argb );
	void			FillEllipse( float cx, float cy, float rx, float ry, uint32_t argb );
	void			DrawLine( int x0, int y0, int x1, int y1, uint32_t argb );
	// Scatters single pixels of a colour over the rectangle, chance in 1/256 per pixel.
	void			Speckle( uint32_t &seed, int x, int y, int w, int h, uint32_t argb, int chance );

	// Light from the top-left on a shape drawn over transparency: its outer pixels facing up or
	// left step lighter, those facing down or right step darker. The canvas's border is no edge.
	void			LightEdges();
	// Paints a translucent dark copy of the shape's silhouette, offset down and to the right,
	// into the transparent pixels around it.
	void			CastShadow( int dx, int dy, uint32_t alpha );

	void			CopyFrom( const cTileCanvas &source, int sx, int sy, int x, int y, int w, int h );
	cTileCanvas		Crop( int x, int y, int w, int h ) const;
	// The picture turned a quarter turn for a thing that faces another way: columns become rows.
	cTileCanvas		Transposed() const;
	cTileCanvas		FlippedX() const;
	cTileCanvas		FlippedY() const;

	bool			SavePng( const std::string &path ) const;
	// Reads a PNG file into ARGB pixels; false with the reason in error.
	static bool		LoadPng( const std::string &path, cTileCanvas &picture, std::string &error );

private:
	int				width;
	int				height;
	std::vector<uint32_t> pixels;
};

// The palette colour one step darker or lighter; alpha is kept.
uint32_t			DarkerColour( uint32_t argb );
uint32_t			LighterColour( uint32_t argb );
// The 4 x 4 ordered-dither threshold of a pixel, 0 to 15.
int					DitherThreshold( int x, int y );
// A small deterministic generator for the painting: the same seed paints the same tile.
uint32_t			NextRandom( uint32_t &seed );
int					RandomBelow( uint32_t &seed, int bound );
uint32_t			HashText( const std::string &text );
