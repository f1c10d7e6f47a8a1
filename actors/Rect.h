// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A rectangle of a picture in pixels, right and bottom exclusive.

#include <cstdint>

struct cRect {
	int32_t		left = 0;
	int32_t		top = 0;
	int32_t		right = 0;
	int32_t		bottom = 0;

	int32_t		GetWidth() const { return right - left; }
	int32_t		GetHeight() const { return bottom - top; }
};
