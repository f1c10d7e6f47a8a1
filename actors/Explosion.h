// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cExplosion is a short animation left where a bullet struck or a character died. It does no
// damage; each step of the shown world moves it on, and the game removes it once it has shown its
// last picture.

#include <cstdint>

#include "actors/Rect.h"

class cScene;

class cExplosion {
public:
	static const int32_t FRAME_COUNT = 7;		// pictures in a row of the sheet

						cExplosion( int32_t x, int32_t y, bool impact );
	virtual				~cExplosion() = default;

	bool				IsFinished() const { return frame >= FRAME_COUNT; }
	bool				IsImpact() const { return impact; }
	void				GetPosition( int32_t &outX, int32_t &outY ) const { outX = x; outY = y; }
	int32_t				GetFrame() const { return frame; }
	int32_t				GetTicks() const { return ticks; }
	int32_t				GetShownFrame() const { return shownFrame; }
	// The picture this step's frame shows and where on the screen.
	void				GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene ) const;
	// Once per step of the shown world: takes the picture for this step's frame, then moves on.
	void				Animate();

private:
	int32_t				x;					// top-left corner of the 32 x 32 picture, in world pixels
	int32_t				y;
	int32_t				frame;				// column of the sheet, FRAME_COUNT when finished
	int32_t				shownFrame;			// the column drawn in this step's frame
	int32_t				ticks;				// in thirds of a picture's time for impacts
	bool				impact;				// a bullet's impact (fast, row 1) or a death (slow, row 0)
};
