// SPDX-License-Identifier: GPL-3.0-or-later
// A path walking a mover from corner to corner: frames per cell, turns at corners, re-planning
// towards a new destination, and the ends of a path.

#include <vector>

#include "EnemyField.h"
#include "TestMaps.h"
#include "actors/ActorTypes.h"
#include "ai/Path.h"

namespace {

// A mover standing on a cell corner, as an enemy hands itself to its path, and that path.
struct cMover {
	cMover( const std::vector<int32_t> &walk, int32_t column, int32_t row, int32_t facing )
		: walk( walk ), x( column * CELL_SIZE ), y( row * CELL_SIZE ), cellX( column ), cellY( row ), facing( facing ) {}

	void Make( int32_t goalX, int32_t goalY ) { path.Make( walk.data(), cellX, cellY, goalX, goalY, facing ); }
	void SetNewTarget( int32_t goalX, int32_t goalY ) { path.SetNewTarget( walk.data(), goalX, goalY ); }
	int32_t Step( int32_t speed = 1 ) { return path.Step( speed, x, y, cellX, cellY, facing ); }
	// Steps until the path reports arrival; the number of frames it took, or -1 past the limit.
	int32_t WalkToEnd( int32_t speed = 1, int32_t limit = 2000 ) {
		for ( int32_t frame = 1; frame <= limit; frame++ ) {
			if ( Step( speed ) == cPath::STEP_ARRIVED ) {
				return frame;
			}
		}
		return -1;
	}
	tPoint GetPending() const {
		tPoint pending;
		path.GetPending( pending.first, pending.second );
		return pending;
	}

	std::vector<int32_t>	walk;
	cPath					path;
	int32_t					x, y, cellX, cellY, facing;
};

TEST( PathTest, WayToNowhereLeavesThePathIdle ) {
	cMover still( OpenWalk(), 4, 4, DIR_UP );
	still.Make( 4, 4 );
	EXPECT_TRUE( still.path.IsIdle() ) << "from a cell to itself";
	EXPECT_EQ( still.path.GetSearch(), nullptr ) << "no search is made for a path of no steps";
	EXPECT_EQ( still.facing, DIR_UP );

	cMover walled( DrawLayers( { "....#.", "....#.", "....#." } ).walk, 0, 0, DIR_UP );
	walled.Make( 5, 1 );
	EXPECT_TRUE( walled.path.IsIdle() ) << "an unreachable destination";
	EXPECT_EQ( walled.path.GetSearch(), nullptr );
	EXPECT_EQ( walled.facing, DIR_UP );
	walled.Make( 3, 0 );
	ASSERT_FALSE( walled.path.IsIdle() );
	walled.SetNewTarget( 5, 2 );
	EXPECT_EQ( walled.WalkToEnd( 1, CELL_SIZE ), -1 ) << "a failed re-plan reports no arrival";
	EXPECT_TRUE( walled.path.IsIdle() ) << "the re-plan at (1,0) found nothing";
	EXPECT_EQ( walled.path.GetSearch(), nullptr );
	EXPECT_EQ( walled.x, CELL_SIZE );
}

TEST( PathTest, EachCellTakesCellSizeOverSpeedFramesInEveryDirectionAndArrivalReleasesTheSearch ) {
	const int32_t lines[8][3] = { { 0, -1, DIR_UP }, { 0, 1, DIR_DOWN }, { 1, 0, DIR_RIGHT }, { -1, 0, DIR_LEFT },
		{ 1, -1, DIR_UP_RIGHT }, { -1, -1, DIR_UP_LEFT }, { 1, 1, DIR_DOWN_RIGHT }, { -1, 1, DIR_DOWN_LEFT } };
	for ( int32_t speed : { 1, 2 } ) {
		for ( const int32_t *line : lines ) {
			const tPoint goal( 4 + 3 * line[0], 4 + 3 * line[1] );
			cMover mover( OpenWalk(), 4, 4, DIR_IDLE );
			mover.Make( goal.first, goal.second );
			EXPECT_EQ( mover.facing, line[2] ) << "turned towards the first step";
			EXPECT_EQ( mover.WalkToEnd( speed ), 3 * CELL_SIZE / speed ) << "three cells facing " << line[2] << " at speed " << speed;
			EXPECT_EQ( tPoint( mover.x, mover.y ), tPoint( goal.first * CELL_SIZE, goal.second * CELL_SIZE ) ) << "facing " << line[2];
			EXPECT_EQ( mover.path.GetSearch(), nullptr ) << "the search object is released on arrival";
			EXPECT_FALSE( mover.path.IsIdle() ) << "the last direction stays until the owner stops the path";
		}
	}
}

// Heading right from (2,2), told mid-cell to go to (4,5) instead: the new search starts from the
// next corner, (3,2), and goes (4,3), (4,4), (4,5).
TEST( PathTest, NewTargetIsSearchedFromTheNextCorner ) {
	cMover mover( OpenWalk(), 2, 2, DIR_UP );
	mover.Make( 6, 2 );
	for ( int32_t frame = 1; frame <= 10; frame++ ) {
		mover.Step();
	}
	mover.SetNewTarget( 3, 2 );
	mover.SetNewTarget( 6, 7 );
	EXPECT_EQ( mover.GetPending(), tPoint( -1, -1 ) ) << "a goal in the destination's row or column is ignored";
	mover.SetNewTarget( 4, 5 );
	for ( int32_t frame = 11; frame < CELL_SIZE; frame++ ) {
		ASSERT_EQ( mover.Step(), cPath::STEP_MOVING );
	}
	EXPECT_EQ( mover.facing, DIR_RIGHT ) << "the old path is followed up to the corner";
	EXPECT_EQ( mover.Step(), cPath::STEP_MOVING );
	EXPECT_EQ( mover.cellX, 3 );
	EXPECT_EQ( mover.facing, DIR_DOWN_RIGHT ) << "re-planned from (3,2) towards (4,3)";
	tPoint target;
	mover.path.GetTarget( target.first, target.second );
	EXPECT_EQ( target, tPoint( 4, 5 ) );
	EXPECT_EQ( mover.WalkToEnd(), 3 * CELL_SIZE );
	EXPECT_EQ( tPoint( mover.x, mover.y ), tPoint( 4 * CELL_SIZE, 5 * CELL_SIZE ) );
}

TEST( PathTest, NewTargetOnTheCornerReachedEndsThePathIdle ) {
	cMover mover( OpenWalk(), 2, 2, DIR_UP );
	mover.Make( 5, 5 );
	mover.SetNewTarget( 3, 3 );
	for ( int32_t frame = 1; frame < CELL_SIZE; frame++ ) {
		ASSERT_EQ( mover.Step(), cPath::STEP_MOVING );
	}
	EXPECT_EQ( mover.Step(), cPath::STEP_ARRIVED ) << "the new destination is where the mover stands";
	EXPECT_TRUE( mover.path.IsIdle() );
	EXPECT_EQ( mover.path.GetSearch(), nullptr );
	EXPECT_EQ( mover.facing, DIR_DOWN_RIGHT ) << "the facing is left as it was";
	EXPECT_EQ( mover.GetPending(), tPoint( -1, -1 ) ) << "nothing is left pending";
	mover.path.Stop();
	mover.path.Release();
	EXPECT_TRUE( mover.path.IsIdle() );
}

TEST( PathTest, OnlyStraightAndDiagonalLinesSetTheFacing ) {
	struct cCase { int32_t dx, dy, from, expected; const char *what; };
	const cCase cases[] = {
		{ -3, 0, DIR_UP, DIR_LEFT, "left" },
		{ 0, 0, DIR_UP, DIR_LEFT, "the same cell counts as left" },
		{ 2, 0, DIR_UP, DIR_RIGHT, "right" },
		{ 0, -1, DIR_LEFT, DIR_UP, "up" },
		{ 0, 4, DIR_LEFT, DIR_DOWN, "down" },
		{ -2, -2, DIR_LEFT, DIR_UP_LEFT, "up-left" },
		{ -1, 1, DIR_LEFT, DIR_DOWN_LEFT, "down-left" },
		{ 3, -3, DIR_LEFT, DIR_UP_RIGHT, "up-right" },
		{ 1, 1, DIR_LEFT, DIR_DOWN_RIGHT, "down-right" },
		{ 2, 1, DIR_DOWN_LEFT, DIR_DOWN_LEFT, "a knight's move keeps the facing" },
	};
	for ( const cCase &c : cases ) {
		EXPECT_EQ( cPath::GetLineDirection( c.dx, c.dy, c.from ), c.expected ) << c.what;
	}
}

// Enemies walk at 1 or 2 pixels a frame; a speed that never lands on a corner is refused.
TEST( PathTest, SpeedThatDoesNotDivideTheCellIsRefused ) {
	EXPECT_TRUE( cPath::IsValidSpeed( 1 ) && cPath::IsValidSpeed( 2 ) && cPath::IsValidSpeed( 32 ) );
	EXPECT_FALSE( cPath::IsValidSpeed( 3 ) || cPath::IsValidSpeed( 0 ) || cPath::IsValidSpeed( -2 ) );
	cMover mover( OpenWalk(), 1, 1, DIR_UP );
	mover.Make( 4, 1 );
	EXPECT_DEBUG_DEATH( { EXPECT_EQ( mover.Step( 3 ), cPath::STEP_ARRIVED ); EXPECT_TRUE( mover.path.IsIdle() ); },
						"never reaches a corner" );
}

}
