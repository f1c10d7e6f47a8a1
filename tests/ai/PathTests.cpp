// A path walking a mover from corner to corner: frames per cell, turns at corners, re-planning
// towards a new destination, and the ends of a path.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TestMaps.h"
#include "actors/ActorTypes.h"
#include "ai/Path.h"
#include "world/Grid.h"

namespace {

// A mover standing on a cell corner, as an enemy hands itself to its path.
struct cMover {
	cMover( int32_t column, int32_t row, int32_t facing )
		: x( column * CELL_SIZE ), y( row * CELL_SIZE ), cellX( column ), cellY( row ), facing( facing ) {}

	int32_t Step( cPath &path, int32_t speed ) { return path.Step( speed, x, y, cellX, cellY, facing ); }
	// Steps until the path reports arrival; the number of frames it took, or -1 past the limit.
	int32_t WalkToEnd( cPath &path, int32_t speed, int32_t limit = 2000 ) {
		for ( int32_t frame = 1; frame <= limit; frame++ ) {
			if ( Step( path, speed ) == cPath::STEP_ARRIVED ) {
				return frame;
			}
		}
		return -1;
	}

	int32_t x, y, cellX, cellY, facing;
};

std::vector<int32_t> OpenWalk() {
	std::vector<int32_t> walk( MAP_CELLS, WALK_FLOOR );
	return walk;
}

TEST( PathTest, MakeFromACellToItselfChangesNothing ) {
	const std::vector<int32_t> walk = OpenWalk();
	cPath path;
	cMover mover( 4, 4, DIR_UP );
	path.Make( walk.data(), 4, 4, 4, 4, mover.facing );
	EXPECT_TRUE( path.IsIdle() );
	EXPECT_EQ( path.GetSearch(), nullptr ) << "no search is made for a path of no steps";
	EXPECT_EQ( mover.facing, DIR_UP );
}

TEST( PathTest, EachCellTakesCellSizeOverSpeedFrames ) {
	const std::vector<int32_t> walk = OpenWalk();
	for ( int32_t speed : { 1, 2 } ) {
		cPath straight;
		cMover right( 1, 0, DIR_UP );
		straight.Make( walk.data(), 1, 0, 4, 0, right.facing );
		EXPECT_EQ( right.facing, DIR_RIGHT ) << "turned towards the first step";
		EXPECT_EQ( right.WalkToEnd( straight, speed ), 3 * CELL_SIZE / speed ) << "three cells right at speed " << speed;
		EXPECT_EQ( right.x, 4 * CELL_SIZE );
		EXPECT_EQ( right.y, 0 );

		cPath diagonal;
		cMover downRight( 1, 1, DIR_UP );
		diagonal.Make( walk.data(), 1, 1, 3, 3, downRight.facing );
		EXPECT_EQ( downRight.facing, DIR_DOWN_RIGHT );
		EXPECT_EQ( downRight.WalkToEnd( diagonal, speed ), 2 * CELL_SIZE / speed ) << "two diagonal cells at speed " << speed;
		EXPECT_EQ( downRight.x, 3 * CELL_SIZE );
		EXPECT_EQ( downRight.y, 3 * CELL_SIZE );
	}
}

TEST( PathTest, ArrivalIsReportedOnceAndReleasesTheSearch ) {
	const std::vector<int32_t> walk = OpenWalk();
	cPath path;
	cMover mover( 5, 5, DIR_DOWN );
	path.Make( walk.data(), 5, 5, 5, 4, mover.facing );
	ASSERT_NE( path.GetSearch(), nullptr );
	EXPECT_EQ( mover.facing, DIR_UP );
	EXPECT_EQ( mover.WalkToEnd( path, 1 ), CELL_SIZE );
	EXPECT_EQ( path.GetSearch(), nullptr ) << "the search object is released on arrival";
	EXPECT_FALSE( path.IsIdle() ) << "the last direction stays until the owner stops the path";
	path.Stop();
	EXPECT_TRUE( path.IsIdle() );
}

// An L-shaped street: right along the top row, then down at (3,0).
TEST( PathTest, MoverTurnsAtTheCornerWhereTheWayBends ) {
	const std::vector<int32_t> walk = DrawLayers( { "....#", "###.#", "###.#" } ).walk;
	cPath path;
	cMover mover( 0, 0, DIR_LEFT );
	path.Make( walk.data(), 0, 0, 3, 2, mover.facing );
	EXPECT_EQ( mover.facing, DIR_RIGHT );
	for ( int32_t frame = 1; frame < 3 * CELL_SIZE; frame++ ) {
		mover.Step( path, 1 );
	}
	EXPECT_EQ( mover.facing, DIR_RIGHT ) << "one pixel before (3,0)";
	mover.Step( path, 1 );
	EXPECT_EQ( mover.facing, DIR_DOWN ) << "standing on (3,0)";
	EXPECT_EQ( mover.WalkToEnd( path, 1 ), 2 * CELL_SIZE );
	EXPECT_EQ( mover.y, 2 * CELL_SIZE );
}

TEST( PathTest, NewTargetInTheSameColumnOrRowIsIgnored ) {
	const std::vector<int32_t> walk = OpenWalk();
	cPath path;
	cMover mover( 2, 2, DIR_UP );
	path.Make( walk.data(), 2, 2, 6, 4, mover.facing );
	path.SetNewTarget( walk.data(), 6, 9 );
	path.SetNewTarget( walk.data(), 1, 4 );
	int32_t pendingX = 0;
	int32_t pendingY = 0;
	path.GetPending( pendingX, pendingY );
	EXPECT_EQ( pendingX, -1 ) << "same column or same row as (6,4)";
	EXPECT_EQ( pendingY, -1 );
	path.SetNewTarget( walk.data(), 7, 5 );
	path.GetPending( pendingX, pendingY );
	EXPECT_EQ( pendingX, 7 );
	EXPECT_EQ( pendingY, 5 );
}

// Heading right from (2,2), told mid-cell to go to (4,5) instead: the new search starts from the
// next corner, (3,2), and goes (4,3), (4,4), (4,5).
TEST( PathTest, NewTargetIsSearchedFromTheNextCorner ) {
	const std::vector<int32_t> walk = OpenWalk();
	cPath path;
	cMover mover( 2, 2, DIR_UP );
	path.Make( walk.data(), 2, 2, 6, 2, mover.facing );
	for ( int32_t frame = 1; frame <= 10; frame++ ) {
		mover.Step( path, 1 );
	}
	path.SetNewTarget( walk.data(), 4, 5 );
	for ( int32_t frame = 11; frame < CELL_SIZE; frame++ ) {
		ASSERT_EQ( mover.Step( path, 1 ), cPath::STEP_MOVING );
	}
	EXPECT_EQ( mover.facing, DIR_RIGHT ) << "the old path is followed up to the corner";
	EXPECT_EQ( mover.Step( path, 1 ), cPath::STEP_MOVING );
	EXPECT_EQ( mover.cellX, 3 );
	EXPECT_EQ( mover.facing, DIR_DOWN_RIGHT ) << "re-planned from (3,2) towards (4,3)";
	int32_t targetX = 0;
	int32_t targetY = 0;
	path.GetTarget( targetX, targetY );
	EXPECT_EQ( targetX, 4 );
	EXPECT_EQ( targetY, 5 );
	EXPECT_EQ( mover.WalkToEnd( path, 1 ), 3 * CELL_SIZE );
	EXPECT_EQ( mover.x, 4 * CELL_SIZE );
	EXPECT_EQ( mover.y, 5 * CELL_SIZE );
}

TEST( PathTest, NewTargetOnTheCornerReachedEndsThePathIdle ) {
	const std::vector<int32_t> walk = OpenWalk();
	cPath path;
	cMover mover( 2, 2, DIR_UP );
	path.Make( walk.data(), 2, 2, 5, 5, mover.facing );
	path.SetNewTarget( walk.data(), 3, 3 );
	for ( int32_t frame = 1; frame < CELL_SIZE; frame++ ) {
		ASSERT_EQ( mover.Step( path, 1 ), cPath::STEP_MOVING );
	}
	EXPECT_EQ( mover.Step( path, 1 ), cPath::STEP_ARRIVED ) << "the new destination is where the mover stands";
	EXPECT_TRUE( path.IsIdle() );
	EXPECT_EQ( path.GetSearch(), nullptr );
	EXPECT_EQ( mover.facing, DIR_DOWN_RIGHT ) << "the facing is left as it was";
	int32_t pendingX = 0;
	int32_t pendingY = 0;
	path.GetPending( pendingX, pendingY );
	EXPECT_EQ( pendingX, -1 ) << "nothing is left pending";
	path.Stop();
	path.Release();
	EXPECT_TRUE( path.IsIdle() );
}

TEST( PathTest, UnreachableDestinationLeavesThePathIdle ) {
	const std::vector<int32_t> walk = DrawLayers( { "....#.", "....#.", "....#." } ).walk;
	cPath path;
	cMover mover( 0, 0, DIR_UP );
	path.Make( walk.data(), 0, 0, 5, 1, mover.facing );
	EXPECT_TRUE( path.IsIdle() ) << "idle right after Make";
	EXPECT_EQ( path.GetSearch(), nullptr );
	EXPECT_EQ( mover.facing, DIR_UP );

	path.Make( walk.data(), 0, 0, 3, 0, mover.facing );
	ASSERT_FALSE( path.IsIdle() );
	path.SetNewTarget( walk.data(), 5, 2 );
	EXPECT_EQ( mover.WalkToEnd( path, 1, CELL_SIZE ), -1 ) << "a failed re-plan reports no arrival";
	EXPECT_TRUE( path.IsIdle() ) << "the re-plan at (1,0) found nothing";
	EXPECT_EQ( path.GetSearch(), nullptr );
	EXPECT_EQ( mover.x, CELL_SIZE );
}

TEST( PathTest, PointToFacesStraightAndDiagonalLinesOnly ) {
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
	const std::vector<int32_t> walk = OpenWalk();
	for ( const cCase &c : cases ) {
		cPath path;
		int32_t facing = DIR_IDLE;
		// A one-cell path first, so that the path's own direction is c.from.
		int32_t fromX = 10;
		int32_t fromY = 10;
		int32_t vx = 0;
		int32_t vy = 0;
		GetDirectionVector( c.from, vx, vy );
		path.Make( walk.data(), fromX, fromY, fromX + vx, fromY + vy, facing );
		ASSERT_EQ( path.GetDirection(), c.from );
		path.PointTo( 5, 5, 5 + c.dx, 5 + c.dy, facing );
		EXPECT_EQ( path.GetDirection(), c.expected ) << c.what;
		EXPECT_EQ( facing, c.expected ) << c.what << ": the facing is copied out";
	}
}

// Enemies walk at 1 or 2 pixels a frame; a speed that never lands on a corner is refused.
TEST( PathTest, SpeedThatDoesNotDivideTheCellIsRefused ) {
	EXPECT_TRUE( cPath::IsValidSpeed( 1 ) && cPath::IsValidSpeed( 2 ) && cPath::IsValidSpeed( 32 ) );
	EXPECT_FALSE( cPath::IsValidSpeed( 3 ) || cPath::IsValidSpeed( 0 ) || cPath::IsValidSpeed( -2 ) );
	const std::vector<int32_t> walk = OpenWalk();
	cPath path;
	cMover mover( 1, 1, DIR_UP );
	path.Make( walk.data(), 1, 1, 4, 1, mover.facing );
	EXPECT_DEBUG_DEATH( { EXPECT_EQ( mover.Step( path, 3 ), cPath::STEP_ARRIVED ); EXPECT_TRUE( path.IsIdle() ); },
						"never reaches a corner" );
}

}
