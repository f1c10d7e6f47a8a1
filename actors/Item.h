#pragma once
// cItem is a pickup lying on the map until a player who may take it walks onto it.

#include <cstdint>

#include "actors/ActorLists.h"

enum eItemKind : int32_t {
	ITEM_AMMO				= 0,	// machine-gun ammunition, tavesh only
	ITEM_UNUSED				= 1,
	ITEM_HEALTH				= 2,	// either character
	ITEM_TAVESH_ENERGY		= 3,	// energy upgrade, tavesh only
	ITEM_LUMRA_ENERGY		= 4,	// energy upgrade, lumra only
	ITEM_SPEED				= 5		// either character
};

class cItem {
public:
						cItem( int32_t kind, int32_t x, int32_t y );
	virtual				~cItem() = default;

	// What the opened box at the cell held: the two boxes of the level that hold the energy
	// upgrades add them to items, on the box's cell; every other box held nothing.
	static void			AddBoxContent( int column, int row, tItemList &items );

	int32_t				GetKind() const { return kind; }
	void				GetPosition( int32_t &outX, int32_t &outY ) const { outX = x; outY = y; }
	void				SetPosition( int32_t newX, int32_t newY ) { x = newX; y = newY; }
	// The cell under the item's centre.
	void				GetCell( int32_t &cx, int32_t &cy ) const;
	// Tested on the top-left corner, strictly inside the view.
	bool				IsInView( int32_t camX, int32_t camY ) const;
	int32_t				GetBobCounter() const { return bobCounter; }
	void				SetBobCounter( int32_t counter ) { bobCounter = counter; }
	// How far down the item is drawn in this step's frame, in pixels.
	int32_t				GetBob() const { return bob; }
	// Once per step while the item is in view: takes this step's depth, then the counter moves on.
	// The item sinks by up to 6 pixels and jumps back to half way.
	void				Bob();

private:
	int32_t				bobCounter;			// in steps in view
	int32_t				bob;				// in pixels, the depth of this step's frame
	int32_t				kind;
	int32_t				x;					// top-left corner of the 32 x 32 square, in world pixels
	int32_t				y;
};
