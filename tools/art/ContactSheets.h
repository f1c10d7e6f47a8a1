// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Contact sheets: the generated pictures enlarged on ground-like backgrounds, for people to look at.

#include "Canvas.h"

// The picture scaled up with nearest-neighbour over bands of dark asphalt and lighter pavement,
// each band `band` source pixels high, with a gap between the cells of a grid.
cCanvas MakeContactSheet( const cCanvas &picture, int scale, int cellWidth, int cellHeight );
