// SPDX-License-Identifier: GPL-3.0-or-later
#include "SpriteTools.h"

#include "Figure.h"

void ShadedRect( cCanvas &canvas, int left, int top, int right, int bottom, const sRamp &ramp ) {
	canvas.FillRect( left, top, right, bottom, ramp.mid );
	canvas.FillRect( left, top, right, top + 1, ramp.light );
	canvas.FillRect( left, top, left + 1, bottom, ramp.light );
	canvas.FillRect( left + 1, bottom - 1, right, bottom, ramp.dark );
	canvas.FillRect( right - 1, top + 1, right, bottom, ramp.dark );
}

void ShadedCircle( cCanvas &canvas, float cx, float cy, float radius, const sRamp &ramp ) {
	for ( int y = int( cy - radius ) - 1; y <= int( cy + radius ) + 1; y++ ) {
		for ( int x = int( cx - radius ) - 1; x <= int( cx + radius ) + 1; x++ ) {
			const float nx = ( x + 0.5f - cx ) / radius;
			const float ny = ( y + 0.5f - cy ) / radius;
			if ( nx * nx + ny * ny <= 1.0f ) {
				canvas.Set( x, y, ShadeForNormal( ramp, nx, ny ) );
			}
		}
	}
}

void DrawGlyph( cCanvas &canvas, const char *const *rows, int rowCount, int x, int y, int scale, uint32_t argb ) {
	for ( int row = 0; row < rowCount; row++ ) {
		for ( int column = 0; rows[row][column] != '\0'; column++ ) {
			if ( rows[row][column] == '#' ) {
				canvas.FillRect( x + column * scale, y + row * scale, x + ( column + 1 ) * scale, y + ( row + 1 ) * scale, argb );
			}
		}
	}
}

cCanvas FinishSprite( const cCanvas &shapes, int shadowOffset ) {
	cCanvas outlined = shapes;
	outlined.Outline( db32::INK );
	cCanvas sprite( shapes.GetWidth(), shapes.GetHeight() );
	for ( int y = 0; y < sprite.GetHeight(); y++ ) {
		for ( int x = 0; x < sprite.GetWidth(); x++ ) {
			if ( shadowOffset > 0 && outlined.IsOpaque( x - shadowOffset, y - shadowOffset ) ) {
				sprite.Set( x, y, db32::WithAlpha( db32::BLACK, 0x60 ) );
			}
		}
	}
	CopyNonEmpty( sprite, outlined, 0, 0 );
	return sprite;
}

void CopyNonEmpty( cCanvas &target, const cCanvas &art, int left, int top ) {
	for ( int y = 0; y < art.GetHeight(); y++ ) {
		for ( int x = 0; x < art.GetWidth(); x++ ) {
			const uint32_t pixel = art.Get( x, y );
			if ( ( pixel >> 24 ) != 0 ) {
				target.Set( left + x, top + y, pixel );
			}
		}
	}
}
