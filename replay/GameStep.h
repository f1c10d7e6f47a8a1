// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One step of the game as the program runs it: read the input, process the step, move the
// pictures on, keep the music. Recordings are made and played in these steps.

#include "app/Game.h"

inline bool StepGame( cGame &game ) {
	return game.Step();
}
