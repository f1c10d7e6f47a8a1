// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The game in a browser's page: the browser calls the game once a frame, and the game never
// waits. The page itself (index.html) holds the rest: the canvas scaled to fit, the sound's
// start on the first click or key, full screen, the recording's download and a recording's
// opening.

#include <functional>

class cWebPage {
public:
	// Calls frame once every frame the browser draws until it returns false, then end once. The
	// caller's stack stays as it was, so frame and end may use its locals: this never returns.
	[[noreturn]] static void RunFrames( std::function<bool()> frame, std::function<void()> end );
};
