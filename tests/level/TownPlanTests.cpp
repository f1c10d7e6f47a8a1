// SPDX-License-Identifier: GPL-3.0-or-later
// The level tool: how the town's description is read, how a cell's contents become its walk
// code and tiles, and that the map shipped in resources/map/ is exactly what the description
// in tools/level/town.txt gives.

#include <gtest/gtest.h>

#include <string>

#include "tools/level/LevelBuilder.h"
#include "tools/level/TownPlan.h"
#include "world/Grid.h"
#include "world/Scene.h"
#include "LogCapture.h"

namespace {

std::string ParseError( const std::string &text ) {
	cTownPlan plan;
	std::string error;
	EXPECT_FALSE( plan.Parse( text, "town", error ) ) << "'" << text << "' was accepted";
	return error;
}

TEST( TownPlanTest, RefusesABadLineAndNamesItsNumberAndFault ) {
	const struct {
		const char *	text;
		const char *	fault;
	} cases[] = {
		{ "paint 1 1", "town:1: unknown command 'paint'" },
		{ "fence 1 2 3", "town:1: 'fence' wants a cell or a rectangle" },
		{ "wall marble 1 1 2 2", "town:1: unknown wall 'marble' (known: brick, concrete, stone)" },
		{ "road row 0 0 10 1", "town:1: a road is an odd number of cells wide" },
		{ "ground grass 50 70 60 74", "town:1: the rectangle reaches outside the 60 x 75 grid" },
		{ "ground grass 5 5 4 4", "town:1: a rectangle is given by its top-left and then its bottom-right cell" },
		{ "ground grass 1 1 x 4", "town:1: 'x' is not a whole number" },
		{ "ground dirt 0 0 5 5\nbox 3 3", "town:2: a box stands on floor" },
		{ "ground asphalt 0 0 59 9\n# a comment\n\ncar red right 59 3", "town:4: the car's cell (60, 3) is outside the grid or taken" },
	};
	for ( const auto &test : cases ) {
		const std::string error = ParseError( test.text );
		EXPECT_EQ( error.rfind( test.fault, 0 ), 0u ) << "for '" << test.text << "' the error reads '" << error << "'";
	}
}

TEST( TownPlanTest, CarTakesItsCellAndTheOneItsFrontPointsTo ) {
	cTownPlan plan;
	std::string error;
	ASSERT_TRUE( plan.Parse( "ground asphalt 0 0 9 9\ncar red left 5 5\ncar blue up 2 2", "town", error ) ) << error;
	EXPECT_EQ( plan.GetCell( 5, 5 ).object, OBJECT_CAR );
	EXPECT_EQ( plan.GetCell( 4, 5 ).object, OBJECT_CAR );
	EXPECT_EQ( plan.GetCell( 6, 5 ).object, OBJECT_NONE );
	EXPECT_EQ( plan.GetCell( 2, 1 ).car, 1 ) << "a car facing up takes the cell above its rear";
	EXPECT_EQ( ParseError( "ground asphalt 0 0 9 9\ncar red left 5 5\ncar grey down 4 4" ),
				"town:3: the car's cell (4, 5) is outside the grid or taken" );
}

TEST( TownPlanTest, TreeCrownsShareNoCellWithRoofsOrOtherCrowns ) {
	EXPECT_EQ( ParseError( "ground grass 0 0 20 20\ntree 5 5\ntree 7 5" ), "town:3: the canopy meets something above cell (6, 4)" );
	EXPECT_EQ( ParseError( "building flat brick 0 0 4 4\ntree 5 2" ), "town:2: the canopy meets something above cell (4, 1)" );
	cTownPlan plan;
	std::string error;
	ASSERT_TRUE( plan.Parse( "ground grass 0 0 20 20\ntree 5 5\ntree 8 5", "town", error ) ) << error;
	EXPECT_EQ( plan.GetCell( 5, 5 ).object, OBJECT_TRUNK );
	EXPECT_EQ( plan.GetCell( 4, 6 ).over, OVER_CANOPY );
	EXPECT_EQ( plan.GetCell( 7, 6 ).overOwner, 1 );
}

class LevelBuilderTest : public ::testing::Test {
protected:
	void Build( const std::string &text ) {
		std::string error;
		ASSERT_TRUE( plan.Parse( text, "town", error ) ) << error;
		builder = std::make_unique<cLevelBuilder>( plan );
		builder->Build();
	}
	int32_t Walk( int column, int row ) const { return builder->GetWalkMap()[size_t( CellIndex( column, row ) )]; }
	std::string BaseName( int column, int row ) const { return builder->GetSheet().GetLegendLine( builder->GetBaseMap()[size_t( CellIndex( column, row ) )] ); }
	std::string ObjectName( int column, int row ) const { return builder->GetSheet().GetLegendLine( builder->GetObjectMap()[size_t( CellIndex( column, row ) )] ); }

	cTownPlan plan;
	std::unique_ptr<cLevelBuilder> builder;
};

TEST_F( LevelBuilderTest, WalkCodeFollowsWhatStandsOnTheCell ) {
	Build( "ground sidewalk 1 1 8 8\n"
			"ground grass 10 1 12 3\n"
			"door 2 2 2 3\n"
			"box 4 4\n"
			"wall brick 6 1 6 8\n"
			"closed 7 7\n"
			"building flat brick 20 20 24 24\n"
			"ground indoor 30 30 34 34\n"
			"wall concrete 30 30 30 34\n"
			"roof metal 30 30 34 34\n" );
	EXPECT_EQ( Walk( 1, 1 ), WALK_FLOOR ) << "sidewalk";
	EXPECT_EQ( Walk( 2, 2 ), WALK_DOOR );
	EXPECT_EQ( Walk( 2, 3 ), WALK_DOOR );
	EXPECT_EQ( Walk( 4, 4 ), WALK_BOX );
	EXPECT_EQ( Walk( 6, 5 ), 0 ) << "wall";
	EXPECT_EQ( Walk( 7, 7 ), 0 ) << "closed sidewalk";
	EXPECT_EQ( Walk( 11, 2 ), 0 ) << "grass is not walked on";
	EXPECT_EQ( Walk( 22, 22 ), 0 ) << "inside a solid building";
	EXPECT_EQ( Walk( 32, 32 ), WALK_FLOOR ) << "under a roof alone";
	EXPECT_EQ( Walk( 30, 32 ), 0 ) << "a wall under a roof";
	EXPECT_EQ( ObjectName( 30, 32 ).find( "joins-15" ), std::string::npos ) << "a wall under a roof that lifts shows its edges";
	EXPECT_NE( ObjectName( 21, 22 ).find( "joins-15" ), std::string::npos ) << "inside a solid building every wall looks alike";
	EXPECT_EQ( Walk( 50, 50 ), 0 ) << "the bare ground everything starts from";
	EXPECT_EQ( builder->GetSheet().GetLegendLine( 1 ), "floor asphalt.0" ) << "tile 1, drawn for a ground code of 0, is plain asphalt";
}

TEST_F( LevelBuilderTest, NeighboursShapeTheTiles ) {
	Build( "ground sidewalk 0 0 20 20\n"
			"ground asphalt 0 10 20 12\n"
			"wall brick 3 3 7 3\n"
			"door 10 2 11 2\n" );
	EXPECT_EQ( ObjectName( 5, 3 ).substr( 0, 16 ), "wall wall.brick." );
	EXPECT_NE( ObjectName( 5, 3 ).find( "joins-10" ), std::string::npos ) << "a wall in a run joins east and west: " << ObjectName( 5, 3 );
	EXPECT_NE( ObjectName( 3, 3 ).find( "joins-2" ), std::string::npos ) << "the run's west end joins east only: " << ObjectName( 3, 3 );
	EXPECT_EQ( ObjectName( 10, 2 ), "door door.row joins-2" );
	EXPECT_EQ( ObjectName( 11, 2 ), "door door.row joins-8" );
	EXPECT_EQ( BaseName( 5, 9 ), "floor sidewalk.0 edges-4" ) << "the curb faces the street below";
	EXPECT_EQ( BaseName( 5, 13 ), "floor sidewalk.0 edges-1" ) << "the curb faces the street above";
	EXPECT_EQ( BaseName( 5, 4 ), "floor sidewalk.0 shadow-1" ) << "the wall above casts its shadow";
	EXPECT_EQ( BaseName( 8, 3 ), "floor sidewalk.0 shadow-2" ) << "the wall's end to the left casts its shadow";
	EXPECT_EQ( BaseName( 8, 4 ), "floor sidewalk.0 shadow-4" ) << "only the corner of the wall reaches the cell below-right";
}

TEST_F( LevelBuilderTest, SameDescriptionGivesTheSameLevel ) {
	cTownPlan town;
	std::string error;
	ASSERT_TRUE( town.Load( "tools/level/town.txt", error ) ) << error;
	cLevelBuilder first( town );
	cLevelBuilder second( town );
	first.Build();
	second.Build();
	EXPECT_EQ( first.GetBaseMap(), second.GetBaseMap() );
	EXPECT_EQ( first.GetObjectMap(), second.GetObjectMap() );
	EXPECT_EQ( first.GetWalkMap(), second.GetWalkMap() );
	EXPECT_EQ( first.GetOverMap(), second.GetOverMap() );
	EXPECT_EQ( first.GetSheet().Compose().GetPixels(), second.GetSheet().Compose().GetPixels() );
}

// Whoever changes the description must regenerate the map, or the game plays an older town.
TEST_F( LevelBuilderTest, ShippedMapIsWhatTheDescriptionGives ) {
	cTownPlan town;
	std::string error;
	ASSERT_TRUE( town.Load( "tools/level/town.txt", error ) ) << error;
	cLevelBuilder built( town );
	built.Build();
	cLogCapture log;
	const cScene shipped;
	ASSERT_TRUE( shipped.IsUsable() ) << log.GetText();
	const int32_t *layers[4] = { shipped.GetBaseMap(), shipped.GetObjectMap(), shipped.GetWalkMap(), shipped.GetOverMap() };
	const std::vector<int32_t> *expected[4] = { &built.GetBaseMap(), &built.GetObjectMap(), &built.GetWalkMap(), &built.GetOverMap() };
	const char *const names[4] = { "basemap.txt", "objectmap.txt", "walkmap.txt", "overmap.txt" };
	for ( int layer = 0; layer < 4; layer++ ) {
		for ( int cell = 0; cell < MAP_CELLS; cell++ ) {
			if ( layers[layer][cell] != ( *expected[layer] )[size_t( cell )] ) {
				ADD_FAILURE() << "resources/map/" << names[layer] << " differs from tools/level/town.txt at (" << cell % MAP_COLUMNS << ", "
								<< cell / MAP_COLUMNS << "); run scripts/make-level.sh";
				break;
			}
		}
	}
	cTileCanvas sheet( 1, 1 );
	ASSERT_TRUE( cTileCanvas::LoadPng( "resources/map/tiles.png", sheet, error ) ) << error;
	EXPECT_TRUE( sheet.GetPixels() == built.GetSheet().Compose().GetPixels() ) << "resources/map/tiles.png is not the sheet the tool draws; run scripts/make-level.sh";
}

}
