#pragma once
// cExplosion is a short animation left where a bullet struck or a character died. It does no
// damage; drawing it advances it, and the game removes it once it has shown its last picture.

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
	// The picture to draw now and where on the screen; then the animation moves on.
	void				GetDrawInfo( cRect &rect, int32_t &screenX, int32_t &screenY, const cScene &scene );

private:
	int32_t				x;					// top-left corner of the 32 x 32 picture, in world pixels
	int32_t				y;
	int32_t				frame;				// column of the sheet, FRAME_COUNT when finished
	int32_t				ticks;				// in thirds of a picture's time for impacts
	bool				impact;				// a bullet's impact (fast, row 1) or a death (slow, row 0)
};
