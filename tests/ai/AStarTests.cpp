// SPDX-License-Identifier: GPL-3.0-or-later
// The enemies' A* search on small hand-drawn maps. Every expected route below was worked out on
// paper from the search's rules: neighbours row by row from the top-left, costs 10 and 14,
// 10 x Manhattan to the target, ties rising in the heap, the stop when the target is first opened.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "TestMaps.h"
#include "ai/AStar.h"
#include "world/Grid.h"

namespace {

using tCells = std::vector<std::pair<int32_t, int32_t>>;
using tPicture = std::vector<std::string>;

// A room above a wall with a gap at each end.
const tPicture ROOMS = { "#######", "#.....#", "#.....#", "#.....#", "#.###.#", "#.....#", "#######" };

// A search as a path does it: a fresh object loaded with the walk layer.
struct cSearch {
	explicit cSearch( const tPicture &picture ) : walk( DrawLayers( picture ).walk ) {
		search.InitPathBuffer();
		search.SetPassability( walk.data() );
	}
	int32_t Find( int32_t sx, int32_t sy, int32_t tx, int32_t ty ) { return search.FindPath( sx, sy, tx, ty ); }
	tCells Cells() const {
		tCells cells;
		for ( int32_t i = 1; i <= search.GetPathLength(); i++ ) {
			cells.emplace_back( search.ReadStepX( i ), search.ReadStepY( i ) );
		}
		return cells;
	}

	std::vector<int32_t>	walk;
	cAStar					search;
};

TEST( AStarTest, RoutesFollowTheNeighbourOrderTheHeapTiesAndTheCornerRule ) {
	struct cRoute { const char *what; tPicture picture; int32_t sx, sy, tx, ty; tCells cells; };
	const cRoute routes[] = {
		{ "(2,1) walled: the diagonal neighbour is reached in two straight steps, not by cutting the corner",
		  { "####", "#.##", "#..#", "####" }, 1, 1, 2, 2, { { 1, 2 }, { 2, 2 } } },
		{ "(1,2) walled: the corner is not cut on the other side either",
		  { "####", "#..#", "##.#", "####" }, 1, 1, 2, 2, { { 2, 1 }, { 2, 2 } } },
		{ "(4,2) offers (5,3) a G of 28 instead of 34 through (4,3): the re-opened cell takes (4,2) as parent",
		  ROOMS, 3, 1, 3, 5, { { 4, 2 }, { 5, 3 }, { 5, 4 }, { 5, 5 }, { 4, 5 }, { 3, 5 } } },
		{ "after (3,1) is taken, (2,1) refills the top with F 54 over (4,1) with F 54: the equal child rises "
		  "in the sift down, so the right-hand side wins",
		  { ".#...", "##...", ".#.#.", ".#...", "....." }, 3, 0, 3, 4, { { 4, 1 }, { 4, 2 }, { 4, 3 }, { 3, 4 } } },
		{ "when (4,3) is taken, (1,2) with F 64 moves to the top over children of F 70 and 64: the equal "
		  "right child rises, so the way east of the block is found",
		  { "#..#.", ".....", "..#.#", ".....", "...#." }, 0, 4, 4, 1, { { 1, 3 }, { 2, 3 }, { 3, 3 }, { 3, 2 }, { 3, 1 }, { 4, 1 } } },
		{ "from (2,3), (2,2) improves from G 50 to 30, its F 60 equal to the top (4,1): an improved cell rises "
		  "only when strictly cheaper, so the east side still wins",
		  { "#....", ".#.#.", ".....", ".#.#.", "#...." }, 3, 4, 3, 0, { { 4, 4 }, { 4, 3 }, { 4, 2 }, { 4, 1 }, { 4, 0 }, { 3, 0 } } },
		{ "the start cell is only where the search begins: it may be occupied", { "E...." }, 0, 0, 2, 0,
		  { { 1, 0 }, { 2, 0 } } },
		{ "the ways over and under the wall of column 7 both cost 122: over it; under with diagonals of 13 or 15, "
		  "straights of 11 or a weight of 9", { ".#.......", "..#......", "...#.#...", "...#...#.", ".#.....#.", "........." },
		  0, 1, 8, 3, { { 1, 2 }, { 2, 3 }, { 2, 4 }, { 3, 4 }, { 4, 4 }, { 5, 3 }, { 6, 3 }, { 6, 2 }, { 7, 2 }, { 8, 2 }, { 8, 3 } } },
		{ "along the bottom row (94), not the top (102); the top with diagonals of 13, straights of 9 or a weight of 11",
		  { ".#.......", "....#....", "........." }, 8, 2, 0, 0,
		  { { 7, 2 }, { 6, 2 }, { 5, 2 }, { 4, 2 }, { 3, 2 }, { 2, 1 }, { 1, 1 }, { 0, 1 }, { 0, 0 } } },
	};
	for ( const cRoute &route : routes ) {
		cSearch search( route.picture );
		EXPECT_EQ( search.Find( route.sx, route.sy, route.tx, route.ty ), cAStar::RESULT_FOUND ) << route.what;
		EXPECT_EQ( search.Cells(), route.cells ) << route.what;
	}
}

TEST( AStarTest, TargetsThatCannotBeEnteredOrReachedFindNothing ) {
	struct cCase { const char *what; tPicture picture; int32_t sx, sy, tx, ty; };
	const cCase cases[] = {
		{ "target on an enemy's cell (99)", { "..E.." }, 0, 0, 2, 0 },
		{ "target on a closed box (2)", { "..B.." }, 0, 0, 2, 0 },
		{ "target on a closed door (3)", { "..D.." }, 0, 0, 2, 0 },
		{ "target on a wall", { "..#.." }, 0, 0, 2, 0 },
		{ "two cells touching only by a corner", { "####", "#.##", "##.#", "####" }, 1, 1, 2, 2 },
		{ "a walled-off target: the reachable area is used up", { "......###", "......#.#", "......###" }, 0, 0, 7, 1 },
		{ "start and target the same cell", { "....." }, 2, 0, 2, 0 },
		{ "target beyond the grid", { "....." }, 0, 0, MAP_COLUMNS, 0 },
		{ "start beyond the grid", { "....." }, -1, 0, 2, 0 },
	};
	for ( const cCase &c : cases ) {
		cSearch search( c.picture );
		EXPECT_EQ( search.Find( c.sx, c.sy, c.tx, c.ty ), cAStar::RESULT_NO_PATH ) << c.what;
		EXPECT_EQ( search.search.GetPathLength(), 0 ) << c.what;
	}
}

// Searches on one object move the marks on instead of clearing them, and read the walk layer as
// it was when loaded: a door opened since does not count until it is loaded again.
TEST( AStarTest, OneObjectSearchesItsSnapshotAgainAndAgain ) {
	cSearch rooms( ROOMS );
	ASSERT_EQ( rooms.Find( 3, 1, 3, 5 ), cAStar::RESULT_FOUND );
	const tCells first = rooms.Cells();
	ASSERT_EQ( rooms.Find( 1, 5, 5, 1 ), cAStar::RESULT_FOUND );
	ASSERT_EQ( rooms.Find( 3, 1, 3, 5 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( rooms.Cells(), first ) << "a later search saw the marks of an earlier one";

	cSearch hall( { "..D.." } );
	hall.walk[CellIndex( 2, 0 )] = WALK_FLOOR;
	EXPECT_EQ( hall.Find( 0, 0, 4, 0 ), cAStar::RESULT_NO_PATH ) << "the door was closed when loaded";
	hall.search.SetPassability( hall.walk.data() );
	EXPECT_EQ( hall.Find( 0, 0, 4, 0 ), cAStar::RESULT_FOUND ) << "loaded again after the door opened";
}

// Cell 0 and cells beyond the length are refused: an assertion in a debug build, the target in
// a release build; with no path held, -1.
TEST( AStarTest, ReadingOutsideThePathIsRefused ) {
	cSearch row( { "......" } );
	ASSERT_EQ( row.Find( 0, 0, 3, 0 ), cAStar::RESULT_FOUND );
	EXPECT_DEBUG_DEATH( EXPECT_EQ( row.search.ReadStepX( 4 ), 3 ), "out of range" );
	EXPECT_DEBUG_DEATH( EXPECT_EQ( row.search.ReadStepY( 0 ), 0 ), "out of range" );
	row.search.FreePathBuffer();
	EXPECT_EQ( row.search.GetPathLength(), 0 );
	EXPECT_DEBUG_DEATH( EXPECT_EQ( row.search.ReadStepX( 1 ), -1 ), "out of range" );
}

TEST( AStarTest, PrintPathWritesTheLengthThenEveryCell ) {
	cSearch open( { ".....", ".....", ".....", ".....", "....." } );
	ASSERT_EQ( open.Find( 1, 2, 3, 4 ), cAStar::RESULT_FOUND );
	testing::internal::CaptureStdout();
	open.search.PrintPath();
	EXPECT_EQ( testing::internal::GetCapturedStdout(), "Path length: 2 \n(2,3),(3,4)," );
}

}
