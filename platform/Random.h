// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRandom is the game's pseudo-random generator: the minimal standard engine, whose sequence the
// C++ standard fixes to the number, so that a seed draws the same numbers with every compiler,
// C library and processor. Each pass that draws makes its own, seeded from the calendar second,
// so nothing of one pass's draws reaches the next and no generator outlives its pass.

#include <cstdint>
#include <ctime>
#include <random>

class cRandom {
public:
	// The second's low 32 bits seed the engine, so a 32-bit and a 64-bit time_t seed alike.
	explicit		cRandom( std::time_t second );
	// The engine's raw output, 1 to 2147483646; the game takes it modulo the size of its choice.
	int32_t			Next();

private:
	std::minstd_rand	engine;
};
