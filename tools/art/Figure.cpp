// SPDX-License-Identifier: GPL-3.0-or-later
#include "Figure.h"

#include <algorithm>
#include <cmath>

cFigure::cFigure( cCanvas &canvas_, float centreX_, float centreY_, eFacing facing, float scale_ ) :
	canvas( canvas_ ), centreX( centreX_ ), centreY( centreY_ ), scale( scale_ ) {
	static const float forward[4][2] = { { 0, 1 }, { -1, 0 }, { 1, 0 }, { 0, -1 } };
	forwardX = forward[facing][0];
	forwardY = forward[facing][1];
	// the right hand lies a quarter turn clockwise from the facing (y grows downwards)
	rightX = -forwardY;
	rightY = forwardX;
}

void cFigure::ToScreen( float a, float b, float &x, float &y ) const {
	x = centreX + ( a * forwardX + b * rightX ) * scale;
	y = centreY + ( a * forwardY + b * rightY ) * scale;
}

void cFigure::ToLocal( int x, int y, float &a, float &b ) const {
	const float dx = x + 0.5f - centreX;
	const float dy = y + 0.5f - centreY;
	a = ( dx * forwardX + dy * forwardY ) / scale;
	b = ( dx * rightX + dy * rightY ) / scale;
}

void cFigure::Ellipse( float a, float b, float ra, float rb, const sRamp &ramp ) {
	float cx, cy;
	ToScreen( a, b, cx, cy );
	const int reach = int( std::max( ra, rb ) * scale ) + 2;
	for ( int y = int( cy ) - reach; y <= int( cy ) + reach; y++ ) {
		for ( int x = int( cx ) - reach; x <= int( cx ) + reach; x++ ) {
			float pa, pb;
			ToLocal( x, y, pa, pb );
			const float na = ( pa - a ) / ra;
			const float nb = ( pb - b ) / rb;
			if ( na * na + nb * nb > 1.0f ) {
				continue;
			}
			const float nx = na * forwardX + nb * rightX;
			const float ny = na * forwardY + nb * rightY;
			canvas.Set( x, y, ShadeForNormal( ramp, nx, ny ) );
		}
	}
}

void cFigure::Box( float a0, float a1, float b0, float b1, const sRamp &ramp ) {
	float x0, y0, x1, y1;
	ToScreen( a0, b0, x0, y0 );
	ToScreen( a1, b1, x1, y1 );
	const int left = int( std::lround( std::min( x0, x1 ) ) );
	const int right = int( std::lround( std::max( x0, x1 ) ) );
	const int top = int( std::lround( std::min( y0, y1 ) ) );
	const int bottom = int( std::lround( std::max( y0, y1 ) ) );
	for ( int y = top; y < bottom; y++ ) {
		for ( int x = left; x < right; x++ ) {
			const bool litEdge = ( y == top && bottom - top > 1 ) || ( x == left && right - left > 1 );
			const bool darkEdge = ( y == bottom - 1 && bottom - top > 1 ) || ( x == right - 1 && right - left > 1 );
			uint32_t colour = ramp.mid;
			if ( litEdge && !darkEdge ) {
				colour = ramp.light;
			} else if ( darkEdge && !litEdge ) {
				colour = ramp.dark;
			}
			canvas.Set( x, y, colour );
		}
	}
}

void cFigure::Dot( float a, float b, uint32_t argb ) {
	float x, y;
	ToScreen( a, b, x, y );
	canvas.Set( int( std::floor( x ) ), int( std::floor( y ) ), argb );
}

uint32_t ShadeForNormal( const sRamp &ramp, float nx, float ny ) {
	// a highlight spot towards the top-left and a crescent of shade on the bottom-right rim
	const float hx = nx + 0.45f;
	const float hy = ny + 0.45f;
	if ( hx * hx + hy * hy < 0.2f ) {
		return ramp.light;
	}
	const float towardsLight = -( nx + ny ) * 0.7071f;
	if ( nx * nx + ny * ny > 0.5f && towardsLight < -0.2f ) {
		return ramp.dark;
	}
	return ramp.mid;
}
