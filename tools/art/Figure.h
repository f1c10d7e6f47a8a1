// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cFigure paints a character seen from above in its own frame of reference: a = forward along
// the facing, b = towards the character's right hand. The same description of a body therefore
// draws all four facings, and every part is shaded with the light coming from the top-left.

#include "Canvas.h"
#include "Palette.h"

enum eFacing {
	FACING_DOWN		= 0,
	FACING_LEFT		= 1,
	FACING_RIGHT	= 2,
	FACING_UP		= 3
};

class cFigure {
public:
	// scale enlarges the whole body around the centre (1 draws the description as it is)
					cFigure( cCanvas &canvas, float centreX, float centreY, eFacing facing, float scale = 1.0f );

	// A shaded ellipse centred at (a, b) with radii ra (forward) and rb (sideways).
	void			Ellipse( float a, float b, float ra, float rb, const sRamp &ramp );
	// A shaded box covering a0..a1 forward and b0..b1 sideways.
	void			Box( float a0, float a1, float b0, float b1, const sRamp &ramp );
	// One flat pixel at a local point.
	void			Dot( float a, float b, uint32_t argb );

	// Screen position of a local point.
	void			ToScreen( float a, float b, float &x, float &y ) const;
	// Local position of a pixel centre.
	void			ToLocal( int x, int y, float &a, float &b ) const;

private:
	cCanvas &		canvas;
	float			centreX;
	float			centreY;
	float			forwardX, forwardY;
	float			rightX, rightY;
	float			scale;
};

// A shade chosen by how much a surface normal (nx, ny in screen space, length up to 1) faces the light.
uint32_t ShadeForNormal( const sRamp &ramp, float nx, float ny );
