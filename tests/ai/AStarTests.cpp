// The enemies' A* search on small hand-drawn maps. Every expected route below was worked out on
// paper from the search's rules: neighbours row by row from the top-left, costs 10 and 14,
// 10 x Manhattan to the target, ties rising in the heap, the stop when the target is first opened.

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "TestMaps.h"
#include "ai/AStar.h"
#include "world/Grid.h"

namespace {

using tCells = std::vector<std::pair<int32_t, int32_t>>;

std::string Describe( const tCells &cells ) {
	std::string text;
	for ( const auto &cell : cells ) {
		text += "(" + std::to_string( cell.first ) + "," + std::to_string( cell.second ) + ")";
	}
	return text.empty() ? "no cells" : text;
}

// A search as a path does it: a fresh object loaded with the walk layer.
class cSearch {
public:
	explicit cSearch( const std::vector<std::string> &picture ) : walk( DrawLayers( picture ).walk ) {
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

TEST( AStarTest, OpenGroundGoesStraightOrDiagonally ) {
	cSearch open( { "..........", "..........", "..........", "..........", "..........",
					"..........", "..........", ".........." } );
	ASSERT_EQ( open.Find( 2, 2, 7, 7 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( open.Cells(), ( tCells{ { 3, 3 }, { 4, 4 }, { 5, 5 }, { 6, 6 }, { 7, 7 } } ) )
		<< "5 right and 5 down is five diagonal steps, got " << Describe( open.Cells() );
	ASSERT_EQ( open.Find( 2, 2, 5, 2 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( open.Cells(), ( tCells{ { 3, 2 }, { 4, 2 }, { 5, 2 } } ) )
		<< "3 columns right is three steps along the row, got " << Describe( open.Cells() );
}

TEST( AStarTest, NeverCutsACorner ) {
	cSearch corner( { "####", "#.##", "#..#", "####" } );
	ASSERT_EQ( corner.Find( 1, 1, 2, 2 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( corner.Cells(), ( tCells{ { 1, 2 }, { 2, 2 } } ) )
		<< "with (2,1) walled the diagonal neighbour is reached in two straight steps";

	cSearch otherSide( { "####", "#..#", "##.#", "####" } );
	ASSERT_EQ( otherSide.Find( 1, 1, 2, 2 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( otherSide.Cells(), ( tCells{ { 2, 1 }, { 2, 2 } } ) ) << "with (1,2) walled";

	cSearch bothWalled( { "####", "#.##", "##.#", "####" } );
	EXPECT_EQ( bothWalled.Find( 1, 1, 2, 2 ), cAStar::RESULT_NO_PATH ) << "two cells touching only by a corner";
}

// From (2,1) both ways round the pillar cost the same; the cell added second rises over the
// first on equal F, so the right-hand way is searched and taken.
TEST( AStarTest, EqualCellsRiseOverTheirParentInTheHeap ) {
	cSearch pillar( { "#####", "#...#", "#.#.#", "#...#", "#####" } );
	ASSERT_EQ( pillar.Find( 2, 1, 2, 3 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( pillar.Cells(), ( tCells{ { 3, 1 }, { 3, 2 }, { 3, 3 }, { 2, 3 } } ) )
		<< "got " << Describe( pillar.Cells() );
}

// A room above a wall with a gap at each end. On paper: (3,2), (3,3) and (4,3) are expanded
// first; then (4,2) offers (5,3) a G of 28 instead of the 34 it had through (4,3), so the cell's
// parent becomes (4,2) and the path steps diagonally from (4,2) to (5,3).
TEST( AStarTest, ReopenedCellTakesTheCheaperParent ) {
	cSearch rooms( { "#######",
					 "#.....#",
					 "#.....#",
					 "#.....#",
					 "#.###.#",
					 "#.....#",
					 "#######" } );
	ASSERT_EQ( rooms.Find( 3, 1, 3, 5 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( rooms.Cells(), ( tCells{ { 4, 2 }, { 5, 3 }, { 5, 4 }, { 5, 5 }, { 4, 5 }, { 3, 5 } } ) )
		<< "got " << Describe( rooms.Cells() );
}

// After (3,1) is taken, (2,1) refills the heap's top with F 54 over (4,1) with F 54: the child
// rises over its equal parent, so the right-hand side is searched first and wins.
TEST( AStarTest, SiftDownLetsAnEqualChildRise ) {
	cSearch yard( { ".#...",
					"##...",
					".#.#.",
					".#...",
					"....." } );
	ASSERT_EQ( yard.Find( 3, 0, 3, 4 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( yard.Cells(), ( tCells{ { 4, 1 }, { 4, 2 }, { 4, 3 }, { 3, 4 } } ) )
		<< "got " << Describe( yard.Cells() );
}

// When (4,3) is taken, the heap's last item, (1,2) with F 64, moves to the top over children
// of F 70 and 64: the right child, (3,2), equal to it, rises, and the way east of the block is
// found; the way west by (1,2) would have been as long.
TEST( AStarTest, SiftDownTakesTheRightChildOnATie ) {
	cSearch block( { "#..#.",
					 ".....",
					 "..#.#",
					 ".....",
					 "...#." } );
	ASSERT_EQ( block.Find( 0, 4, 4, 1 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( block.Cells(), ( tCells{ { 1, 3 }, { 2, 3 }, { 3, 3 }, { 3, 2 }, { 3, 1 }, { 4, 1 } } ) )
		<< "got " << Describe( block.Cells() );
}

// From (2,3), (2,2) improves from G 50 to 30 and its F falls to 60, equal to the heap's top,
// (4,1): an improved item rises only when strictly cheaper, so the east side still wins.
TEST( AStarTest, ImprovedCellRisesOnlyWhenStrictlyCheaper ) {
	cSearch columns( { "#....",
					   ".#.#.",
					   ".....",
					   ".#.#.",
					   "#...." } );
	ASSERT_EQ( columns.Find( 3, 4, 3, 0 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( columns.Cells(), ( tCells{ { 4, 4 }, { 4, 3 }, { 4, 2 }, { 4, 1 }, { 4, 0 }, { 3, 0 } } ) )
		<< "got " << Describe( columns.Cells() );
}

TEST( AStarTest, TargetsThatCannotBeEnteredFindNothing ) {
	const char *what[] = { "an enemy's cell (99)", "a closed box (2)", "a closed door (3)", "a wall" };
	const char symbols[] = { 'E', 'B', 'D', '#' };
	for ( int i = 0; i < 4; i++ ) {
		std::string middle = ".....";
		middle[2] = symbols[i];
		cSearch room( { ".....", middle, "....." } );
		EXPECT_EQ( room.Find( 0, 1, 2, 1 ), cAStar::RESULT_NO_PATH ) << "target on " << what[i];
		EXPECT_EQ( room.search.GetPathLength(), 0 ) << what[i];
	}
}

TEST( AStarTest, ClosedCellsAreWalkedAround ) {
	cSearch street( { ".....", ".BDE.", "....." } );
	ASSERT_EQ( street.Find( 0, 1, 4, 1 ), cAStar::RESULT_FOUND );
	for ( const auto &cell : street.Cells() ) {
		EXPECT_FALSE( cell.second == 1 && cell.first >= 1 && cell.first <= 3 )
			<< "the way enters the closed cell " << Describe( { cell } );
	}
}

TEST( AStarTest, WalledOffTargetAndSameCellFindNothing ) {
	cSearch vault( { "......###", "......#.#", "......###" } );
	EXPECT_EQ( vault.Find( 0, 0, 7, 1 ), cAStar::RESULT_NO_PATH ) << "the reachable area is used up";
	EXPECT_EQ( vault.search.GetPathLength(), 0 );
	EXPECT_EQ( vault.Find( 2, 1, 2, 1 ), cAStar::RESULT_NO_PATH ) << "start and target the same cell";
	EXPECT_EQ( vault.Find( 0, 0, 60, 0 ), cAStar::RESULT_NO_PATH ) << "target beyond the grid";
	EXPECT_EQ( vault.Find( -1, 0, 2, 1 ), cAStar::RESULT_NO_PATH ) << "start beyond the grid";
}

// The start cell is only where the search begins: it may be walled or occupied.
TEST( AStarTest, StartCellIsNotTested ) {
	cSearch occupied( { "E...." } );
	ASSERT_EQ( occupied.Find( 0, 0, 2, 0 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( occupied.Cells(), ( tCells{ { 1, 0 }, { 2, 0 } } ) );
}

// The snapshot is taken once: a door opened after loading does not change the search.
TEST( AStarTest, SearchUsesTheSnapshotTakenWhenLoaded ) {
	cSearch hall( { "..D.." } );
	hall.walk[CellIndex( 2, 0 )] = WALK_FLOOR;
	EXPECT_EQ( hall.Find( 0, 0, 4, 0 ), cAStar::RESULT_NO_PATH ) << "the door was closed when loaded";
	hall.search.SetPassability( hall.walk.data() );
	EXPECT_EQ( hall.Find( 0, 0, 4, 0 ), cAStar::RESULT_FOUND ) << "loaded again after the door opened";
}

// Searches on one object move the marks on instead of clearing them, and give the same routes.
TEST( AStarTest, RepeatedSearchesOnOneObjectAgree ) {
	cSearch rooms( { "#######", "#.....#", "#.....#", "#.....#", "#.###.#", "#.....#", "#######" } );
	ASSERT_EQ( rooms.Find( 3, 1, 3, 5 ), cAStar::RESULT_FOUND );
	const tCells first = rooms.Cells();
	ASSERT_EQ( rooms.Find( 1, 5, 5, 1 ), cAStar::RESULT_FOUND );
	ASSERT_EQ( rooms.Find( 3, 1, 3, 5 ), cAStar::RESULT_FOUND );
	EXPECT_EQ( rooms.Cells(), first ) << "a later search saw the marks of an earlier one";
}

// Over a whole maze: every cell of the path is floor, each follows its predecessor as a king's
// move without cutting a corner, and the last is the target.
TEST( AStarTest, LongPathsAreChainsOfLegalSteps ) {
	const std::vector<std::string> maze = {
		"...................#",
		".#################.#",
		".#...............#.#",
		".#.#############.#.#",
		".#.#...........#.#.#",
		".#.#.#########.#.#.#",
		".#.#.#.......#.#.#.#",
		".#.#.#.#####.#.#.#.#",
		".#...#.....#...#...#",
		".###########.#######",
		"...................." };
	cSearch search( maze );
	ASSERT_EQ( search.Find( 0, 0, 7, 6 ), cAStar::RESULT_FOUND );
	const tCells cells = search.Cells();
	ASSERT_FALSE( cells.empty() );
	EXPECT_EQ( cells.back(), std::make_pair( 7, 6 ) );
	std::pair<int32_t, int32_t> from( 0, 0 );
	for ( const auto &cell : cells ) {
		const int32_t dx = cell.first - from.first;
		const int32_t dy = cell.second - from.second;
		EXPECT_TRUE( std::abs( dx ) <= 1 && std::abs( dy ) <= 1 && ( dx != 0 || dy != 0 ) )
			<< Describe( { from } ) << " to " << Describe( { cell } ) << " is not one step";
		EXPECT_EQ( maze[cell.second][cell.first], '.' ) << "the path enters " << Describe( { cell } );
		if ( dx != 0 && dy != 0 ) {
			EXPECT_EQ( maze[from.second][cell.first], '.' ) << "corner cut at " << Describe( { cell } );
			EXPECT_EQ( maze[cell.second][from.first], '.' ) << "corner cut at " << Describe( { cell } );
		}
		from = cell;
	}
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
