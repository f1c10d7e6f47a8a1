// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cKeyNames names every key by its place on a US PC keyboard, whatever the player's layout prints
// on it: the names of the settings file, which thus means the same keys under every layout. What
// a player sees on the screen is the layout's own name, from the input backend.

#include <string>

class cKeyNames {
public:
	// Null for a key code without a place name.
	static const char *	GetPlaceName( int key );
	// The key code of a place name, any case; 0 when no key has it.
	static int			FindPlace( const std::string &name );
};
