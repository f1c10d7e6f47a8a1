// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRandom is the game's one pseudo-random generator: the minimal standard engine, whose sequence
// the C++ standard fixes to the number, so that a seed draws the same numbers with every compiler,
// C library and processor. The game seeds it from the calendar second before each pass that draws.

#include <cstdint>
#include <ctime>
#include <random>

class cRandom {
public:
	// The second's low 32 bits seed the engine, so a 32-bit and a 64-bit time_t seed alike.
	static void		Seed( std::time_t second );
	// The engine's raw output, 1 to 2147483646; the game takes it modulo the size of its choice.
	static int32_t	Next();
	// The engine itself, so that a saved game takes it along and puts it back.
	static std::minstd_rand	GetEngine();
	static void		SetEngine( const std::minstd_rand &saved );
};
