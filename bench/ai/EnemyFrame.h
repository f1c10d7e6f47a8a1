// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// One UpdateEnemies frame measured: the level's 24 enemies set out along the top street of the
// town, where the boss also waits, and two players walking up and down it on a fixed round, so
// that the enemies notice them, chase, re-plan every eighth frame, attack and shoot.

#include <benchmark/benchmark.h>

#include <string>

class cEnemyFrameBench {
public:
	static constexpr int FRAMES = 5000;			// timed frames, after the warm-up
	static constexpr int WARM_UP_FRAMES = 120;	// enough for every enemy in sight to notice

	explicit			cEnemyFrameBench( const std::string &resourceRoot ) : root( resourceRoot ) {}
	void				Register() const;

private:
	std::string			root;
};
