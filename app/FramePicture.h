// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the last frame drawn showed, so that a frame that would show the same picture is neither
// drawn nor presented: a menu or the pause screen changes only with the screen, its texts and the
// cursor, while the world moves on every step.

#include <cstdint>
#include <vector>

#include "graphics/MenuText.h"

class cGame;

class cFramePicture {
public:
	bool				IsChanged( const cGame &game ) const;
	// After a frame was drawn.
	void				Note( const cGame &game );
	// The picture on the screen was lost or must be shown anew: exposed, resized, shown again. It
	// is drawn twice: a renderer may see the window's new size only after a present (Mesa's
	// software GL reads it then), and fill the old size in the first frame.
	void				Forget() { framesOwed = FRAMES_AFTER_LOSS; }

private:
	static const int	FRAMES_AFTER_LOSS = 2;

	int					framesOwed = FRAMES_AFTER_LOSS;
	int32_t				state = 0;			// the game's screen
	int32_t				mouseX = 0;			// the cursor, in 640 x 480 screen pixels
	int32_t				mouseY = 0;
	std::vector<cMenuText>	texts;
};
