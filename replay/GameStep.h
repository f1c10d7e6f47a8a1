#pragma once
// One step of the game as the program runs it: read the input, process the step, move the
// pictures on. Recordings are made and played in these steps.

#include "app/Game.h"

inline bool StepGame( cGame &game ) {
	game.ReadInput();
	const bool going = game.Process();
	game.Render();
	return going;
}
