// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A line of text a menu screen shows over its picture, known only while the game runs: a key's
// name in the player's layout, a volume, a message.

#include <cstdint>
#include <string>

struct cMenuText {
	int32_t			x = 0;				// the text's top-left corner, in 640 x 480 screen pixels
	int32_t			y = 0;
	std::string		text;				// UTF-8
	uint32_t		colour = 0xFFFFFFFF;	// ARGB

	bool			operator==( const cMenuText &other ) const {
		return x == other.x && y == other.y && text == other.text && colour == other.colour;
	}
};
