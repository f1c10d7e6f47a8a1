// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The shared background of every menu screen: the town at night seen from above, rain-washed,
// blurred and darkened so that the writing stands out, dithered into the palette.

#include "Canvas.h"

constexpr int SCREEN_WIDTH = 640;
constexpr int SCREEN_HEIGHT = 480;

cCanvas MakeTownBackdrop();
