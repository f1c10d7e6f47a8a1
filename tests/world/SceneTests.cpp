// The map files, the walk test, doors and boxes, on small maps made here.

#include <gtest/gtest.h>

#include <filesystem>
#include <utility>

#include "LogCapture.h"
#include "TempDir.h"
#include "TestGame.h"
#include "TestMaps.h"
#include "actors/ActorTypes.h"
#include "actors/Item.h"
#include "actors/Where.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

// Layer n holds 100 * n + (cell index mod 97), so every cell and every file can be told apart.
std::vector<int32_t> Numbered( int32_t layer ) {
	std::vector<int32_t> codes( MAP_CELLS );
	for ( int i = 0; i < MAP_CELLS; i++ ) {
		codes[i] = 100 * layer + i % 97;
	}
	return codes;
}

std::string Join( std::vector<int32_t>::const_iterator first, std::vector<int32_t>::const_iterator last,
				  const char *separator ) {
	std::string text;
	for ( auto code = first; code != last; ++code ) {
		text += std::to_string( *code ) + separator;
	}
	return text;
}

const char *const LAYER_FILES[4] = { "basemap.txt", "objectmap.txt", "walkmap.txt", "overmap.txt" };

class SceneFilesTest : public ::testing::Test {
protected:
	void SetUp() override {
		for ( int layer = 0; layer < 4; layer++ ) {
			folder.WriteFile( LAYER_FILES[layer], FormatLayer( Numbered( layer ) ) );
		}
	}
	cLogCapture log;
	cTempDir folder;
};

TEST_F( SceneFilesTest, EachLayerComesFromItsFileRowByRowWhateverTheLayout ) {
	const std::vector<int32_t> walk = Numbered( 2 );
	folder.WriteFile( "walkmap.txt", "\t" + Join( walk.begin(), walk.end() - 1, "\n" ) + "237junk +5 x" );
	folder.WriteFile( "overmap.txt", "+300 " + Join( walk.begin() + 1, walk.end(), "   " ) );
	cScene scene( folder.GetPath() + "/" );
	ASSERT_TRUE( scene.IsUsable() ) << log.GetText();
	EXPECT_EQ( log.GetText(), "" );
	const int cell = CellIndex( 59, 74 );
	EXPECT_EQ( scene.GetBaseMap()[cell], 0 + cell % 97 );
	EXPECT_EQ( scene.GetObjectMap()[cell], 100 + cell % 97 );
	EXPECT_EQ( scene.GetWalkMap()[CellIndex( 1, 1 )], 200 + 61 ) << "cell (1, 1) is number 61";
	EXPECT_EQ( std::vector<int32_t>( scene.GetWalkMap(), scene.GetWalkMap() + MAP_CELLS ), walk )
		<< "one number a line, then text glued to the 4500th number (237) and more after it";
	EXPECT_EQ( scene.GetOverMap()[0], 300 ) << "a leading plus sign is allowed";
	EXPECT_EQ( scene.GetOverMap()[cell], 200 + cell % 97 );
}

TEST_F( SceneFilesTest, BrokenFileIsNamedInTheLogAndMakesTheSceneUnusable ) {
	const std::vector<int32_t> codes = Numbered( 0 );
	typedef const int32_t *( cScene::*tLayer )() const;
	struct cBroken { const char *file; tLayer layer; std::string text; std::string problem; };
	const std::string first4498 = Join( codes.begin(), codes.begin() + 4498, " " );
	const cBroken cases[] = {
		{ "objectmap.txt", &cScene::GetObjectMap, Join( codes.begin(), codes.begin() + 4212, " " ), "4212 of 4500 numbers" },
		{ "overmap.txt", &cScene::GetOverMap, "", "0 of 4500 numbers" },
		{ "basemap.txt", &cScene::GetBaseMap, "1 2 1.5 4", "number 3 is not an integer: '1.5'" },
		{ "basemap.txt", &cScene::GetBaseMap, "7x", "number 1 is not an integer: '7x'" },
		{ "basemap.txt", &cScene::GetBaseMap, first4498 + " 7x 5", "number 4499 is not an integer: '7x'" },
		{ "walkmap.txt", &cScene::GetWalkMap, first4498 + " 1 x", "number 4500 is not an integer: 'x'" },
		{ "walkmap.txt", &cScene::GetWalkMap, "1 -", "number 2 is not an integer: '-'" },
		{ "walkmap.txt", &cScene::GetWalkMap, "99999999999", "number 1 is not an integer: '99999999999'" },
	};
	for ( const cBroken &c : cases ) {
		SetUp();
		folder.WriteFile( c.file, c.text );
		const size_t linesBefore = log.GetLines().size();
		cScene scene( folder.GetPath() + "/" );
		EXPECT_FALSE( scene.IsUsable() ) << c.problem;
		const std::vector<std::string> lines = log.GetLines();
		ASSERT_EQ( lines.size(), linesBefore + 1 ) << "one line for: " << c.problem;
		EXPECT_EQ( lines.back(), "Error loading map " + folder.GetFile( c.file ) + ": " + c.problem );
		EXPECT_EQ( ( scene.*c.layer )()[1], 0 ) << "the numbers read before the failure are cleared: " << c.problem;
	}
	std::filesystem::remove( folder.GetFile( "walkmap.txt" ) );
	cScene missing( folder.GetPath() + "/" );
	EXPECT_FALSE( missing.IsUsable() );
	EXPECT_EQ( log.GetLines().back(), "Error loading map " + folder.GetFile( "walkmap.txt" ) + ": the file cannot be opened" );
	EXPECT_FALSE( missing.IsFree( 32, 32, false ) ) << "a layer that failed reads as wall, not as garbage";
	EXPECT_EQ( missing.GetOverMap()[5], 305 ) << "the files after the broken one are still read";
}

TEST_F( SceneFilesTest, GameSceneReadsTheFourFilesUnderResourcesMap ) {
	cTempDir game;
	std::filesystem::create_directories( game.GetFile( "resources/map" ) );
	const std::filesystem::path previous = std::filesystem::current_path();
	std::filesystem::current_path( game.GetPath() );
	{
		cScene missing;
		EXPECT_FALSE( missing.IsUsable() );
	}
	for ( const char *name : LAYER_FILES ) {
		std::filesystem::copy_file( folder.GetFile( name ), game.GetFile( std::string( "resources/map/" ) + name ) );
	}
	cScene scene;
	std::filesystem::current_path( previous );
	EXPECT_EQ( log.GetLines(), ( std::vector<std::string>{
		"Error loading map ./resources/map/basemap.txt: the file cannot be opened",
		"Error loading map ./resources/map/objectmap.txt: the file cannot be opened",
		"Error loading map ./resources/map/walkmap.txt: the file cannot be opened",
		"Error loading map ./resources/map/overmap.txt: the file cannot be opened" } ) );
	EXPECT_TRUE( scene.IsUsable() );
	EXPECT_EQ( scene.GetWalkMap()[3], 203 );
	EXPECT_EQ( scene.GetCameraX(), 0 ) << "a new scene shows the bottom-left screen";
	EXPECT_EQ( scene.GetCameraY(), 1920 );
	EXPECT_EQ( scene.GetCameraCellY(), 60 );
	EXPECT_FALSE( scene.IsFinalAreaLocked() );
}

TEST( SceneLayersTest, LayerOfTheWrongSizeMakesAnUnusableScene ) {
	cLogCapture log;
	cTestLayers layers = DrawLayers( { "..." } );
	layers.walk.resize( 10 );
	EXPECT_FALSE( layers.Build()->IsUsable() );
	EXPECT_EQ( log.GetLines(), std::vector<std::string>{ "Error building map: the walk layer holds 10 of 4500 numbers" } );
}

// Cell (1, 1) is floor, (3, 1) floor under an enemy, (1, 3) to (4, 3) a box, a door and two
// odd codes; the open corridor of row 5 runs into the grid's edges.
TEST( SceneWalkTest, BodyIsFreeOnlyWithAllFourCornersOnFloorInsideTheWorld ) {
	cTestLayers layers = DrawLayers( {
		"######",
		"#.#E##",
		"######",
		"#BD..#" } );
	layers.walk[CellIndex( 3, 3 )] = -5;
	layers.walk[CellIndex( 4, 3 )] = 100;
	for ( int column = 0; column < MAP_COLUMNS; column++ ) {
		layers.walk[CellIndex( column, 5 )] = WALK_FLOOR;
	}
	std::unique_ptr<cScene> scene = layers.Build();
	EXPECT_TRUE( scene->IsFree( 32, 32, false ) ) << "all corners of (32, 32) lie in cell (1, 1)";
	EXPECT_FALSE( scene->IsFree( 33, 32, false ) ) << "the right corners of (33, 32) reach cell (2, 1)";
	EXPECT_FALSE( scene->IsFree( 32, 31, false ) ) << "the top corners of (32, 31) reach cell (1, 0)";
	EXPECT_TRUE( scene->IsFree( 96, 32, false ) ) << "an enemy's mark (99) does not block";
	EXPECT_TRUE( scene->IsFree( 44, 44, true ) ) << "a bullet box spans 20 pixels: 44 to 63";
	EXPECT_FALSE( scene->IsFree( 45, 32, true ) ) << "a bullet box at 45 reaches pixel 64";
	for ( int column = 1; column <= 4; column++ ) {
		EXPECT_FALSE( scene->IsFree( column * 32, 96, false ) ) << "walk code " << scene->GetWalkCode( column, 3 );
	}
	EXPECT_TRUE( scene->IsFree( 0, 160, false ) );
	EXPECT_FALSE( scene->IsFree( -1, 160, false ) ) << "pixel -1 would truncate into column 0";
	EXPECT_TRUE( scene->IsFree( 1888, 160, false ) );
	EXPECT_FALSE( scene->IsFree( 1889, 160, false ) ) << "pixel 1920 lies beyond the last column";
	EXPECT_FALSE( scene->IsFree( 100000, -100000, true ) );
	EXPECT_TRUE( MakeOpenScene()->IsFree( 0, 0, false ) ) << "the world's top-left corner";
	EXPECT_TRUE( scene->GetWalkCode( -1, 5 ) == 0 && scene->GetWalkCode( MAP_COLUMNS, 5 ) == 0 )
		<< "cells beyond the floor of the grid's edges read as wall";
}

// Only the game writes 99; one read from the walk file is floor, cleared with the enemies' marks.
TEST( SceneWalkTest, EnemyMarkReadFromTheMapIsPlainFloorAfterTheFirstFrame ) {
	cTestGame game( MakeScene( { "E.E", "..." } ) );
	game.AddPlayer( KIND_TAVESH, 32, 32 );
	ASSERT_TRUE( game.Frames( 1 ) );
	EXPECT_TRUE( game.GetScene().GetWalkCode( 0, 0 ) == WALK_FLOOR && game.GetScene().GetWalkCode( 2, 0 ) == WALK_FLOOR )
		<< "the first cell of the grid too";
}

TEST( SceneDoorTest, OpeningOneDoorCellOpensItsWholeGroupButNotDiagonals ) {
	std::unique_ptr<cScene> scene = MakeScene( {
		"#######",
		"#DD.D.#",
		"#.D.DD#",
		"#.DDD.#",
		"#D...D#",
		"#######" } );
	scene->OpenDoor( 1, 1 );
	const int opened[][2] = { { 1, 1 }, { 2, 1 }, { 2, 2 }, { 2, 3 }, { 3, 3 }, { 4, 3 }, { 4, 2 }, { 5, 2 }, { 4, 1 } };
	for ( const int *cell : opened ) {
		const int index = CellIndex( cell[0], cell[1] );
		EXPECT_EQ( scene->GetWalkMap()[index], WALK_FLOOR ) << "door (" << cell[0] << ", " << cell[1] << ")";
		EXPECT_EQ( scene->GetObjectMap()[index], 0 ) << "door tile (" << cell[0] << ", " << cell[1] << ")";
	}
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 1, 4 )], WALK_DOOR ) << "(1, 4) touches the group only diagonally";
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 5, 4 )], WALK_DOOR ) << "(5, 4) touches the group only diagonally";
	EXPECT_EQ( scene->GetObjectMap()[CellIndex( 5, 4 )], TEST_DOOR_TILE );
	EXPECT_EQ( scene->GetObjectMap()[CellIndex( 0, 0 )], TEST_WALL_TILE ) << "walls keep their tiles";
}

TEST( SceneDoorTest, DoorGroupsAlongTheEdgesOrFillingTheMapOpenWithoutLeavingIt ) {
	cTestLayers layers = DrawLayers( {} );
	for ( int column = 0; column < MAP_COLUMNS; column++ ) {
		layers.walk[CellIndex( column, 0 )] = WALK_DOOR;
		layers.walk[CellIndex( column, MAP_ROWS - 1 )] = WALK_DOOR;
	}
	std::unique_ptr<cScene> scene = layers.Build();
	scene->OpenDoor( 59, 0 );
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 0, 0 )], WALK_FLOOR ) << "the top row is one group";
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 0, MAP_ROWS - 1 )], WALK_DOOR ) << "the bottom row is another";
	scene->OpenDoor( 60, 74 );
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 59, 74 )], WALK_DOOR ) << "a cell outside the grid opens nothing";

	layers.walk.assign( MAP_CELLS, WALK_DOOR );
	scene = layers.Build();
	scene->OpenDoor( 30, 40 );
	EXPECT_EQ( std::vector<int32_t>( scene->GetWalkMap(), scene->GetWalkMap() + MAP_CELLS ),
			   std::vector<int32_t>( MAP_CELLS, WALK_FLOOR ) ) << "a door as large as the map";
}

TEST( SceneBoxTest, TheTwoItemBoxesHoldTheEnergyUpgrades ) {
	cTestLayers layers = DrawLayers( { "B" }, 54, 28 );
	layers.walk[CellIndex( 51, 3 )] = WALK_BOX;
	layers.walk[CellIndex( 10, 10 )] = WALK_BOX;
	std::unique_ptr<cScene> scene = layers.Build();
	tItemList items;
	for ( const auto &box : { std::make_pair( 54, 28 ), std::make_pair( 10, 10 ), std::make_pair( 51, 3 ) } ) {
		scene->OpenBox( box.first, box.second );
		cItem::AddBoxContent( box.first, box.second, items );
	}
	ASSERT_EQ( items.size(), 2u ) << "only two boxes hold anything";
	EXPECT_TRUE( items[0].GetKind() == ITEM_LUMRA_ENERGY && items[1].GetKind() == ITEM_TAVESH_ENERGY );
	EXPECT_EQ( Where( items[0] ) + Where( items[1] ), "(1728, 896)(1632, 96)" ) << "each on its box's cell";
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 54, 28 )], WALK_FLOOR );
	EXPECT_EQ( scene->GetObjectMap()[CellIndex( 54, 28 )], 0 ) << "the box's tile goes";
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 10, 10 )], WALK_FLOOR );
}

}
