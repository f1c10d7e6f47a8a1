// The three tile layers as recorded draws: the order of the cells, cells beyond the grid, the
// empty codes of each layer, codes past the tile sheet, and the roofs that vanish while a player
// is indoors. The cut cells at the view's edges are checked on pixels.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>

#include "GraphicsFixtures.h"
#include "actors/ActorTypes.h"
#include "actors/Player.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t ROOF_TILE = 9;
const int32_t SHEET_TILES = 12;				// the test's tile sheet
const int32_t ROOF_COLUMN = 55;				// a cell of the indoor area
const int32_t ROOF_ROW = 20;
const int32_t OPEN_COLUMN = 50;				// a cell beside it
const int32_t INDOOR_CAMERA_X = 1280;		// shows columns 40 to 59
const int32_t INDOOR_CAMERA_Y = 544;		// shows rows 17 to 31

class TileLayerTest : public cRecordedFrameTest {
protected:
	TileLayerTest() {
		backend.SetTextureSize( PNG_TILES, CELL_SIZE, SHEET_TILES * CELL_SIZE );
		Reload();
	}

	// Only the ground is drawn when the other layers are empty, and the lists are.
	std::vector<tDraw> RenderTiles() {
		Render();
		return GetDraws( PNG_TILES );
	}
};

bool HasDrawAt( const std::vector<cRecordedFrameTest::tDraw> &draws, float x, float y ) {
	return std::any_of( draws.begin(), draws.end(), [x, y]( const cRecordedFrameTest::tDraw &draw ) {
		return draw.x == x && draw.y == y;
	} );
}

// Columns left to right outside, rows top to bottom inside, each cell's tile from its own code.
TEST_F( TileLayerTest, VisitsColumnsThenRowsAndPicksEachCellsTile ) {
	std::vector<int32_t> base = FilledLayer( 1 );
	base[CellIndex( 3, 4 )] = 5;		// the view's second column, third row
	scene = MakeDrawnScene( base, FilledLayer( 0 ), FilledLayer( 0 ) );
	SetCamera( 64, 64 );
	const std::vector<tDraw> draws = RenderTiles();
	ASSERT_EQ( draws.size(), 300u );
	EXPECT_EQ( draws[1].x, 0.0f ) << "the second draw is the first column's second row";
	EXPECT_EQ( draws[1].y, 32.0f );
	const tDraw &cell = draws[15 + 2];
	EXPECT_EQ( cell.x, 32.0f );
	EXPECT_EQ( cell.y, 64.0f );
	EXPECT_EQ( cell.source.top, 4 * 32 ) << "tile 5 starts at y 128 of the sheet";
	EXPECT_EQ( cell.source.bottom, 5 * 32 );
}

// The camera's limits keep cells past the grid in a zero-size column or row; a camera put beyond
// them must still not draw (or read) any cell outside the layer.
TEST_F( TileLayerTest, CellsBeyondTheGridAreSkipped ) {
	SetCamera( 1280, 1920 );
	EXPECT_EQ( RenderTiles().size(), 300u ) << "the bottom-right screen is 20 x 15 whole cells";

	SetCamera( 1290, 1930 );
	const std::vector<tDraw> draws = RenderTiles();
	EXPECT_EQ( draws.size(), 20u * 15u ) << "column 60 and row 75 are not drawn";
	for ( const tDraw &draw : draws ) {
		ASSERT_LT( draw.x, 630.0f ) << "a cell of column 60 or beyond was drawn";
		ASSERT_LT( draw.y, 470.0f ) << "a cell of row 75 or beyond was drawn";
	}
}

// Ground code 0 shows tile 1; objects and over tiles with 0 (objects also below 0) show nothing.
TEST_F( TileLayerTest, EmptyCodesOfEachLayer ) {
	std::vector<int32_t> base = FilledLayer( 3 );
	std::vector<int32_t> object = FilledLayer( 0 );
	std::vector<int32_t> over = FilledLayer( 0 );
	base[CellIndex( 0, 0 )] = 0;
	object[CellIndex( 1, 0 )] = 4;
	object[CellIndex( 2, 0 )] = -4;
	over[CellIndex( 3, 0 )] = 6;
	scene = MakeDrawnScene( base, object, over );
	SetCamera( 0, 0 );
	const std::vector<tDraw> draws = RenderTiles();
	ASSERT_EQ( draws.size(), 302u ) << "300 ground cells, one object and one over tile";
	EXPECT_EQ( draws[0].source.top, 0 ) << "ground code 0 is drawn as tile 1";
	EXPECT_EQ( draws[1].source.top, 2 * 32 ) << "the other ground cells show tile 3";
	EXPECT_EQ( draws[300].x, 32.0f ) << "the one object tile, at cell (1, 0)";
	EXPECT_EQ( draws[300].source.top, 3 * 32 );
	EXPECT_EQ( draws[301].x, 96.0f ) << "the one over tile, at cell (3, 0)";
	EXPECT_EQ( draws[301].source.top, 5 * 32 );
}

// A code past the sheet's last tile shows nothing in any layer rather than whatever lies there.
TEST_F( TileLayerTest, CodesPastTheSheetDrawNothing ) {
	std::vector<int32_t> base = FilledLayer( SHEET_TILES );
	std::vector<int32_t> object = FilledLayer( 0 );
	std::vector<int32_t> over = FilledLayer( 0 );
	base[CellIndex( 0, 0 )] = SHEET_TILES + 1;
	base[CellIndex( 1, 0 )] = -2;
	object[CellIndex( 2, 0 )] = SHEET_TILES + 1;
	over[CellIndex( 3, 0 )] = 1000000;
	over[CellIndex( 4, 0 )] = -1;
	scene = MakeDrawnScene( base, object, over );
	SetCamera( 0, 0 );
	const std::vector<tDraw> draws = RenderTiles();
	EXPECT_EQ( draws.size(), 298u ) << "the last tile draws, the two ground cells past the sheet do not";
	EXPECT_FALSE( HasDrawAt( draws, 0.0f, 0.0f ) );
	EXPECT_FALSE( HasDrawAt( draws, 32.0f, 0.0f ) );
}

// Without a tile sheet nothing of the layers is drawn, and the rest of the world still is.
TEST_F( TileLayerTest, MissingTileSheetLeavesTheGroundBlack ) {
	backend.SetMissingFile( PNG_TILES );
	Reload();
	AddPlayer( KIND_TAVESH, 100, 100 );
	SetCamera( 0, 0 );
	EXPECT_TRUE( RenderTiles().empty() );
	EXPECT_EQ( GetDraws( PNG_CHARACTERS ).size(), 2u ) << "the player and its portrait";
}

class RoofTest : public TileLayerTest {
protected:
	RoofTest() {
		std::vector<int32_t> over = FilledLayer( 0 );
		over[CellIndex( ROOF_COLUMN, ROOF_ROW )] = ROOF_TILE;
		over[CellIndex( OPEN_COLUMN, ROOF_ROW )] = ROOF_TILE;
		scene = MakeDrawnScene( FilledLayer( 1 ), FilledLayer( 0 ), over );
		SetCamera( INDOOR_CAMERA_X, INDOOR_CAMERA_Y );
	}

	// The screen positions of the roof tiles drawn this frame.
	std::set<std::pair<float, float>> RenderRoofs() {
		Render();
		std::set<std::pair<float, float>> roofs;
		for ( const tDraw &draw : GetDraws( PNG_TILES ) ) {
			if ( draw.source.top == ( ROOF_TILE - 1 ) * CELL_SIZE ) {
				roofs.insert( std::make_pair( draw.x, draw.y ) );
			}
		}
		return roofs;
	}
};

const std::pair<float, float> INDOOR_ROOF( ( ROOF_COLUMN - 40 ) * 32.0f, ( ROOF_ROW - 17 ) * 32.0f );
const std::pair<float, float> OUTDOOR_ROOF( ( OPEN_COLUMN - 40 ) * 32.0f, ( ROOF_ROW - 17 ) * 32.0f );

// A player's centre cell decides: at x 1744 the centre is in column 55, at x 1679 in column 52.
TEST_F( RoofTest, IndoorRoofsVanishWhileAPlayerIsInside ) {
	cPlayer &outside = AddPlayer( KIND_TAVESH, 1679, 800 );
	EXPECT_EQ( RenderRoofs(), ( std::set<std::pair<float, float>>{ INDOOR_ROOF, OUTDOOR_ROOF } ) )
		<< "nobody indoors: every roof is drawn";

	outside.SetPosition( 1680, 800 );		// the centre moves into column 53
	EXPECT_EQ( RenderRoofs(), ( std::set<std::pair<float, float>>{ OUTDOOR_ROOF } ) )
		<< "a player indoors hides the indoor area's roofs only";

	outside.SetPosition( 1679, 800 );
	EXPECT_EQ( RenderRoofs().size(), 2u ) << "the roofs come back when the player leaves";
}

// The second player counts as much as the first, even while down.
TEST_F( RoofTest, ADownedSecondPlayerIndoorsHidesTheRoofsToo ) {
	AddPlayer( KIND_TAVESH, 1000, 800 );
	cPlayer &partner = AddPlayer( KIND_LUMRA, ROOF_COLUMN * 32, 25 * 32 );
	partner.SetDead( true );
	EXPECT_EQ( RenderRoofs(), ( std::set<std::pair<float, float>>{ OUTDOOR_ROOF } ) );
}

}
