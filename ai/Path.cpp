// SPDX-License-Identifier: GPL-3.0-or-later
#include "ai/Path.h"

#include <cassert>
#include <cstdlib>

#include "actors/ActorTypes.h"
#include "world/Grid.h"

cPath::cPath()
	: cellX( -1 ),
	cellY( -1 ),
	targetX( -1 ),
	targetY( -1 ),
	pendingX( -1 ),
	pendingY( -1 ),
	direction( DIR_IDLE ),
	walkMap( nullptr ) {
}

cPath::cPath( const cPath &other ) {
	*this = other;
}

cPath &cPath::operator=( const cPath &other ) {
	if ( this == &other ) {
		return *this;
	}
	cellX = other.cellX;
	cellY = other.cellY;
	targetX = other.targetX;
	targetY = other.targetY;
	pendingX = other.pendingX;
	pendingY = other.pendingY;
	direction = other.direction;
	search = other.search != nullptr ? std::make_unique<cAStar>( *other.search ) : nullptr;
	walkMap = other.walkMap;
	return *this;
}

void cPath::Relink( const int32_t *newWalkMap ) {
	if ( walkMap != nullptr ) {
		walkMap = newWalkMap;
	}
}

cPath::~cPath() {
	Release();
}

void cPath::Make( const int32_t *newWalkMap, int32_t startX, int32_t startY, int32_t goalX, int32_t goalY,
				  int32_t &facing ) {
	if ( startX == goalX && startY == goalY ) {
		return;
	}
	walkMap = newWalkMap;
	Release();
	search = std::make_unique<cAStar>();
	search->InitPathBuffer();
	search->SetPassability( walkMap );
	if ( search->FindPath( startX, startY, goalX, goalY ) != cAStar::RESULT_FOUND ) {
		Release();
		direction = DIR_IDLE;
		ClearPending();
		return;
	}
	cellX = startX;
	cellY = startY;
	targetX = goalX;
	targetY = goalY;
	ClearPending();
	int32_t stepX = 0;
	int32_t stepY = 0;
	search->ReadNextStep( stepX, stepY );
	PointTo( startX, startY, stepX, stepY, facing );
}

// Only a destination that differs in both column and row is worth a new search.
void cPath::SetNewTarget( const int32_t *newWalkMap, int32_t goalX, int32_t goalY ) {
	if ( goalX == targetX || goalY == targetY ) {
		return;
	}
	walkMap = newWalkMap;
	pendingX = goalX;
	pendingY = goalY;
}

// A diagonal frame moves speed pixels on both axes, so every step between two cells takes
// CELL_SIZE / speed frames and ends exactly on a corner.
int32_t cPath::Step( int32_t speed, int32_t &x, int32_t &y, int32_t &outCellX, int32_t &outCellY, int32_t &facing ) {
	assert( IsValidSpeed( speed ) && "a speed that does not divide the cell size never reaches a corner" );
	if ( !IsValidSpeed( speed ) ) {
		direction = DIR_IDLE;
		return STEP_ARRIVED;
	}
	int32_t dx = 0;
	int32_t dy = 0;
	GetDirectionVector( direction, dx, dy );
	x += dx * speed;
	y += dy * speed;
	if ( x % CELL_SIZE != 0 || y % CELL_SIZE != 0 ) {
		return STEP_MOVING;
	}
	cellX = x / CELL_SIZE;
	cellY = y / CELL_SIZE;
	outCellX = cellX;
	outCellY = cellY;
	if ( !HasPending() ) {
		return NextStep( facing );
	}
	return Replan( facing );
}

int32_t cPath::NextStep( int32_t &facing ) {
	if ( cellX == targetX && cellY == targetY ) {
		Release();
		return STEP_ARRIVED;
	}
	assert( search != nullptr && "a moving path holds its search" );
	if ( search == nullptr ) {
		direction = DIR_IDLE;
		return STEP_ARRIVED;
	}
	int32_t stepX = 0;
	int32_t stepY = 0;
	search->ReadNextStep( stepX, stepY );
	PointTo( cellX, cellY, stepX, stepY, facing );
	return STEP_MOVING;
}

// A pending destination that is the corner's own cell has been reached already: the path ends
// idle there instead of walking on towards the old one.
int32_t cPath::Replan( int32_t &facing ) {
	const int32_t goalX = pendingX;
	const int32_t goalY = pendingY;
	Release();
	if ( goalX == cellX && goalY == cellY ) {
		targetX = goalX;
		targetY = goalY;
		ClearPending();
		direction = DIR_IDLE;
		return STEP_ARRIVED;
	}
	Make( walkMap, cellX, cellY, goalX, goalY, facing );
	return STEP_MOVING;
}

void cPath::PointTo( int32_t fromX, int32_t fromY, int32_t toX, int32_t toY, int32_t &facing ) {
	direction = GetLineDirection( toX - fromX, toY - fromY, direction );
	facing = direction;
}

void cPath::Release() {
	if ( search != nullptr ) {
		search->FreePathBuffer();
		search.reset();
	}
}

int32_t cPath::GetLineDirection( int32_t dx, int32_t dy, int32_t current ) {
	if ( dy == 0 ) {
		return dx <= 0 ? DIR_LEFT : DIR_RIGHT;
	}
	if ( dx == 0 ) {
		return dy < 0 ? DIR_UP : DIR_DOWN;
	}
	if ( std::abs( dx ) != std::abs( dy ) ) {
		return current;
	}
	if ( dx < 0 ) {
		return dy < 0 ? DIR_UP_LEFT : DIR_DOWN_LEFT;
	}
	return dy < 0 ? DIR_UP_RIGHT : DIR_DOWN_RIGHT;
}

bool cPath::IsValidSpeed( int32_t speed ) {
	return speed > 0 && CELL_SIZE % speed == 0;
}
