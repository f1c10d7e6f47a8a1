// SPDX-License-Identifier: GPL-3.0-or-later
#include "ContactSheets.h"

#include "Palette.h"

cCanvas MakeContactSheet( const cCanvas &picture, int scale, int cellWidth, int cellHeight ) {
	const int gap = 4;
	const int columns = picture.GetWidth() / cellWidth;
	const int rows = picture.GetHeight() / cellHeight;
	const int pitchX = cellWidth * scale + gap;
	const int pitchY = cellHeight * scale + gap;
	cCanvas sheet( columns * pitchX + gap, rows * pitchY + gap, db32::BLACK );
	for ( int row = 0; row < rows; row++ ) {
		for ( int column = 0; column < columns; column++ ) {
			const int x = gap + column * pitchX;
			const int y = gap + row * pitchY;
			// alternate the ground so the pictures are seen on both kinds of floor
			const uint32_t ground = ( row + column ) % 2 == 0 ? 0xFF2A2B33 : 0xFF595652;
			sheet.FillRect( x, y, x + cellWidth * scale, y + cellHeight * scale, ground );
			sheet.PasteRect( picture, column * cellWidth, row * cellHeight, cellWidth, cellHeight, x, y, scale );
		}
	}
	return sheet;
}
