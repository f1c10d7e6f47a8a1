// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The colour-key rule for loaded pictures: a pixel equal to the key in all four channels becomes
// transparent black; every other pixel, an opaque pixel of the key's colour included, stays.

#include <cstddef>
#include <cstdint>

inline void ApplyColourKey( uint32_t *pixels, size_t count, uint32_t colourKey ) {	// pixels in ARGB
	for ( size_t i = 0; i < count; i++ ) {
		if ( pixels[i] == colourKey ) {
			pixels[i] = 0x00000000;
		}
	}
}
