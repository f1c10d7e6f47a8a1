// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Painting helpers shared by the small sprites: shaded boxes and discs lit from the top-left,
// pixel glyphs, and the finishing pass that adds the dark outline and the soft drop shadow.

#include "Canvas.h"
#include "Palette.h"

void ShadedRect( cCanvas &canvas, int left, int top, int right, int bottom, const sRamp &ramp );
void ShadedCircle( cCanvas &canvas, float cx, float cy, float radius, const sRamp &ramp );
// rows of '#' (fill) and '.' (empty); each character covers scale x scale pixels.
void DrawGlyph( cCanvas &canvas, const char *const *rows, int rowCount, int x, int y, int scale, uint32_t argb );
// Outlines the opaque shapes in ink and lays a shadow to the bottom-right under them; the shadow
// only takes empty pixels, so colours stay those of the palette.
cCanvas FinishSprite( const cCanvas &shapes, int shadowOffset );
// Pixels of `art` copied over `target` where art is not empty.
void CopyNonEmpty( cCanvas &target, const cCanvas &art, int left, int top );
