// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Where a character, item, explosion or bullet stands, as "(x, y)": a comparison that reads well
// when it fails. A bullet's float position is written to six digits.

#include <cstdint>
#include <sstream>
#include <string>

#include "actors/Bullet.h"

template <typename tThing>
std::string Where( const tThing &thing ) {
	int32_t x = 0;
	int32_t y = 0;
	thing.GetPosition( x, y );
	return "(" + std::to_string( x ) + ", " + std::to_string( y ) + ")";
}

inline std::string Where( const cBullet &bullet ) {
	float x = 0.0f;
	float y = 0.0f;
	bullet.GetPosition( x, y );
	std::ostringstream text;
	text << "(" << x << ", " << y << ")";
	return text.str();
}
