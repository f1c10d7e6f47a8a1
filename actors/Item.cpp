#include "actors/Item.h"

#include <cstdlib>

#include "world/Grid.h"

namespace {

const int32_t BOB_STEPS_PER_PIXEL = 3;
const int32_t BOB_DEPTH = 6;				// in pixels an item sinks before it jumps back
const int32_t BOB_RESTART = -9;				// the counter after the deepest point: 3 pixels down

// The two boxes that hold something, and what they hold.
struct cBoxContent {
	int			column;
	int			row;
	int32_t		itemKind;
};
const cBoxContent BOX_CONTENTS[] = {
	{ 54, 28, ITEM_LUMRA_ENERGY },
	{ 51, 3, ITEM_TAVESH_ENERGY },
};

}

cItem::cItem( int32_t kind, int32_t x, int32_t y )
	: bobCounter( 0 ), bob( 0 ), kind( kind ), x( x ), y( y ) {
}

void cItem::AddBoxContent( int column, int row, tItemList &items ) {
	for ( const cBoxContent &box : BOX_CONTENTS ) {
		if ( box.column == column && box.row == row ) {
			items.push_back( cItem( box.itemKind, column * CELL_SIZE, row * CELL_SIZE ) );
		}
	}
}

void cItem::GetCell( int32_t &cx, int32_t &cy ) const {
	cx = ( x + BODY_SIZE / 2 ) / CELL_SIZE;
	cy = ( y + BODY_SIZE / 2 ) / CELL_SIZE;
}

bool cItem::IsInView( int32_t camX, int32_t camY ) const {
	return camX < x && x < camX + VIEW_WIDTH && camY < y && y < camY + VIEW_HEIGHT;
}

void cItem::Bob() {
	bob = std::abs( bobCounter / BOB_STEPS_PER_PIXEL );
	bobCounter = bob < BOB_DEPTH ? bobCounter + 1 : BOB_RESTART;
}
