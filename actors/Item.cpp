#include "actors/Item.h"

#include "world/Grid.h"

cItem::cItem( int32_t kind, int32_t x, int32_t y )
	: bobCounter( 0 ), kind( kind ), x( x ), y( y ) {
}

void cItem::GetCell( int32_t &cx, int32_t &cy ) const {
	cx = ( x + BODY_SIZE / 2 ) / CELL_SIZE;
	cy = ( y + BODY_SIZE / 2 ) / CELL_SIZE;
}

bool cItem::IsInView( int32_t camX, int32_t camY ) const {
	return camX < x && x < camX + VIEW_WIDTH && camY < y && y < camY + VIEW_HEIGHT;
}
