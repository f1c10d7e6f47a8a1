// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/web/WebPage.h"

#include <emscripten.h>

#include <cstdlib>
#include <utility>

namespace {

std::function<bool()> frameFunction;
std::function<void()> endFunction;

void RunFrame() {
	if ( frameFunction() ) {
		return;
	}
	emscripten_cancel_main_loop();
	endFunction();
	emscripten_run_script( "if (Module.onGameEnded) Module.onGameEnded();" );
}

}

void cWebPage::RunFrames( std::function<bool()> frame, std::function<void()> end ) {
	frameFunction = std::move( frame );
	endFunction = std::move( end );
	// 0 frames a second: at the browser's own frame rate. The last 1 keeps this call from
	// returning, with the stack of its callers intact.
	emscripten_set_main_loop( RunFrame, 0, 1 );
	std::abort();		// not reached
}
