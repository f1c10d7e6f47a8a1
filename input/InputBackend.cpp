// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/InputBackend.h"

#include "input/KeyNames.h"

// Without a layout of its own, a key is called by its place.
std::string cInputBackend::GetKeyName( int key ) const {
	const char *name = cKeyNames::GetPlaceName( key );
	return name != nullptr ? name : "";
}
