// The map files, the walk test, doors, boxes and the roof area, on small maps made here.

#include <gtest/gtest.h>

#include <filesystem>

#include "LogCapture.h"
#include "TempDir.h"
#include "TestMaps.h"
#include "actors/Item.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

std::vector<int32_t> Numbered( int32_t offset ) {
	std::vector<int32_t> codes( MAP_CELLS );
	for ( int i = 0; i < MAP_CELLS; i++ ) {
		codes[i] = offset + i % 97;
	}
	return codes;
}

std::string Join( const std::vector<int32_t> &codes, const char *separator ) {
	std::string text;
	for ( int32_t code : codes ) {
		text += std::to_string( code ) + separator;
	}
	return text;
}

// Runs a test from another working directory, and goes back when it ends.
class cWorkingDirectory {
public:
	explicit cWorkingDirectory( const std::string &path ) : previous( std::filesystem::current_path() ) {
		std::filesystem::current_path( path );
	}
	~cWorkingDirectory() { std::filesystem::current_path( previous ); }

private:
	std::filesystem::path previous;
};

// A folder holding four good layers, each numbered differently, for one file to be spoilt.
class SceneFilesTest : public ::testing::Test {
protected:
	void SetUp() override {
		folder.WriteFile( "basemap.txt", FormatLayer( Numbered( 0 ) ) );
		folder.WriteFile( "objectmap.txt", FormatLayer( Numbered( 100 ) ) );
		folder.WriteFile( "walkmap.txt", FormatLayer( Numbered( 200 ) ) );
		folder.WriteFile( "overmap.txt", FormatLayer( Numbered( 300 ) ) );
	}
	std::string Path( const char *name ) const { return folder.GetFile( name ); }

	cLogCapture log;
	cTempDir folder;
};

TEST_F( SceneFilesTest, LoadsEachLayerRowByRowFromItsFile ) {
	cScene scene( folder.GetPath() + "/" );
	ASSERT_TRUE( scene.IsUsable() ) << log.GetText();
	EXPECT_EQ( log.GetText(), "" );
	const int cell = CellIndex( 59, 74 );
	EXPECT_EQ( scene.GetBaseMap()[cell], 0 + cell % 97 );
	EXPECT_EQ( scene.GetObjectMap()[cell], 100 + cell % 97 );
	EXPECT_EQ( scene.GetWalkMap()[cell], 200 + cell % 97 );
	EXPECT_EQ( scene.GetOverMap()[cell], 300 + cell % 97 ) << "the over layer must come from overmap.txt";
	EXPECT_EQ( scene.GetWalkMap()[CellIndex( 1, 1 )], 200 + 61 ) << "cell (1, 1) is the 61st number";
}

TEST_F( SceneFilesTest, LineBreaksSignsAndNumbersAfterTheLastAreIgnored ) {
	std::vector<int32_t> codes = Numbered( -40 );
	folder.WriteFile( "walkmap.txt", "\t" + Join( codes, "\n" ) + "5 6 7 junk" );
	folder.WriteFile( "basemap.txt", Join( codes, " " ) );
	folder.WriteFile( "overmap.txt", "+1 " + Join( std::vector<int32_t>( codes.begin() + 1, codes.end() ), "   " ) );
	cScene scene( folder.GetPath() + "/" );
	ASSERT_TRUE( scene.IsUsable() ) << log.GetText();
	EXPECT_EQ( std::vector<int32_t>( scene.GetWalkMap(), scene.GetWalkMap() + MAP_CELLS ), codes );
	EXPECT_EQ( std::vector<int32_t>( scene.GetBaseMap(), scene.GetBaseMap() + MAP_CELLS ), codes );
	EXPECT_EQ( scene.GetOverMap()[0], 1 ) << "a leading plus sign is allowed";
}

TEST_F( SceneFilesTest, MissingFileIsLoggedAndLeavesTheSceneUnusable ) {
	std::filesystem::remove( Path( "walkmap.txt" ) );
	cScene scene( folder.GetPath() + "/" );
	EXPECT_FALSE( scene.IsUsable() );
	EXPECT_EQ( log.GetLines(), std::vector<std::string>{
		"Error loading map " + Path( "walkmap.txt" ) + ": the file cannot be opened" } );
	EXPECT_FALSE( scene.IsFree( 32, 32, false ) ) << "a layer that failed must read as wall, not as garbage";
	EXPECT_EQ( scene.GetOverMap()[5], 305 ) << "the layers after the broken one are still read";
}

TEST_F( SceneFilesTest, ShortFileIsLoggedWithTheCountRead ) {
	std::vector<int32_t> codes = Numbered( 0 );
	codes.resize( 4212 );
	folder.WriteFile( "objectmap.txt", Join( codes, " " ) );
	cScene scene( folder.GetPath() + "/" );
	EXPECT_FALSE( scene.IsUsable() );
	EXPECT_TRUE( log.Contains( "Error loading map " + Path( "objectmap.txt" ) + ": 4212 of 4500 numbers" ) ) << log.GetText();
}

TEST_F( SceneFilesTest, TokenThatIsNotAnIntegerIsLogged ) {
	const char *badTokens[] = { "1.5", "abc", "7x", "99999999999", "-" };
	for ( const char *bad : badTokens ) {
		std::vector<int32_t> codes = Numbered( 0 );
		std::string text = Join( std::vector<int32_t>( codes.begin(), codes.begin() + 9 ), " " ) + bad + " "
							+ Join( std::vector<int32_t>( codes.begin() + 10, codes.end() ), " " );
		folder.WriteFile( "basemap.txt", text );
		const size_t linesBefore = log.GetLines().size();
		cScene scene( folder.GetPath() + "/" );
		EXPECT_FALSE( scene.IsUsable() ) << "token '" << bad << "'";
		const std::vector<std::string> lines = log.GetLines();
		ASSERT_EQ( lines.size(), linesBefore + 1 ) << "one line for token '" << bad << "'";
		EXPECT_EQ( lines.back(), "Error loading map " + Path( "basemap.txt" ) + ": number 10 is not an integer: '" + bad + "'" );
	}
}

TEST_F( SceneFilesTest, DefaultSceneReadsTheFourFilesUnderResourcesMap ) {
	cTempDir game;
	std::filesystem::create_directories( game.GetFile( "resources/map" ) );
	cWorkingDirectory inGame( game.GetPath() );
	{
		cScene missing;
		EXPECT_FALSE( missing.IsUsable() );
		EXPECT_EQ( log.GetLines(), ( std::vector<std::string>{
			"Error loading map ./resources/map/basemap.txt: the file cannot be opened",
			"Error loading map ./resources/map/objectmap.txt: the file cannot be opened",
			"Error loading map ./resources/map/walkmap.txt: the file cannot be opened",
			"Error loading map ./resources/map/overmap.txt: the file cannot be opened" } ) );
	}
	for ( const char *name : { "basemap.txt", "objectmap.txt", "walkmap.txt", "overmap.txt" } ) {
		std::filesystem::copy_file( Path( name ), game.GetFile( std::string( "resources/map/" ) + name ) );
	}
	cScene scene;
	EXPECT_TRUE( scene.IsUsable() );
	EXPECT_EQ( scene.GetWalkMap()[3], 203 );
}

TEST( SceneLayersTest, LayerOfTheWrongSizeMakesAnUnusableScene ) {
	cLogCapture log;
	cTestLayers layers = DrawLayers( { "..." } );
	layers.walk.resize( 10 );
	std::unique_ptr<cScene> scene = layers.Build();
	EXPECT_FALSE( scene->IsUsable() );
	EXPECT_TRUE( log.Contains( "Error building map: the walk layer holds 10 of 4500 numbers" ) ) << log.GetText();
	EXPECT_FALSE( scene->IsFree( 0, 0, false ) );
}

TEST( SceneLayersTest, NewSceneShowsTheBottomLeftScreen ) {
	std::unique_ptr<cScene> scene = MakeOpenScene();
	EXPECT_TRUE( scene->IsUsable() );
	EXPECT_EQ( scene->GetCameraX(), 0 );
	EXPECT_EQ( scene->GetCameraY(), 1920 );
	EXPECT_EQ( scene->GetCameraCellX(), 0 );
	EXPECT_EQ( scene->GetCameraCellY(), 60 );
	EXPECT_FALSE( scene->IsFinalAreaLocked() );
}

// Cell (1, 1) is the only floor in its neighbourhood but for an enemy mark at (3, 1).
TEST( SceneWalkTest, BodyIsFreeOnlyWhenAllFourCornersAreOnFloor ) {
	std::unique_ptr<cScene> scene = MakeScene( {
		"#####",
		"#.#E#",
		"#####" } );
	EXPECT_TRUE( scene->IsFree( 32, 32, false ) ) << "all corners of (32, 32) lie in cell (1, 1)";
	EXPECT_FALSE( scene->IsFree( 33, 32, false ) ) << "the right corners of (33, 32) reach cell (2, 1)";
	EXPECT_FALSE( scene->IsFree( 32, 31, false ) ) << "the top corners of (32, 31) reach cell (1, 0)";
	EXPECT_TRUE( scene->IsFree( 96, 32, false ) ) << "an enemy's mark (99) does not block";
	EXPECT_TRUE( scene->IsFree( 44, 44, true ) ) << "a bullet box spans 20 pixels: 44 to 63";
	EXPECT_FALSE( scene->IsFree( 45, 32, true ) ) << "a bullet box at 45 reaches pixel 64";
}

TEST( SceneWalkTest, BoxesDoorsAndOtherCodesBlock ) {
	cTestLayers layers = DrawLayers( { "B", "D", ".", ".", "." } );
	layers.walk[CellIndex( 0, 2 )] = -5;
	layers.walk[CellIndex( 0, 3 )] = 100;
	std::unique_ptr<cScene> scene = layers.Build();
	for ( int row = 0; row < 4; row++ ) {
		EXPECT_FALSE( scene->IsFree( 0, row * 32, false ) ) << "walk code " << scene->GetWalkMap()[CellIndex( 0, row )];
	}
	EXPECT_TRUE( scene->IsFree( 0, 4 * 32, false ) );
}

// Integer division truncates towards zero, so a pixel left of or above the world would fall
// into the edge cells; it must count as outside.
TEST( SceneWalkTest, CornerOutsideTheWorldIsNeverFree ) {
	std::unique_ptr<cScene> scene = MakeOpenScene();
	EXPECT_TRUE( scene->IsFree( 0, 0, false ) );
	EXPECT_FALSE( scene->IsFree( -1, 0, false ) );
	EXPECT_FALSE( scene->IsFree( 0, -1, true ) );
	EXPECT_TRUE( scene->IsFree( 1888, 2368, false ) ) << "the bottom-right cell";
	EXPECT_FALSE( scene->IsFree( 1889, 2368, false ) );
	EXPECT_FALSE( scene->IsFree( 1888, 2369, false ) );
	EXPECT_FALSE( scene->IsFree( 100000, -100000, true ) );
	EXPECT_EQ( scene->GetWalkCode( -1, 0 ), 0 );
	EXPECT_EQ( scene->GetWalkCode( 60, 0 ), 0 );
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
	const std::vector<std::pair<int, int>> opened = { { 1, 1 }, { 2, 1 }, { 2, 2 }, { 2, 3 }, { 3, 3 }, { 4, 3 },
													  { 4, 2 }, { 5, 2 }, { 4, 1 } };
	for ( const auto &cell : opened ) {
		const int index = CellIndex( cell.first, cell.second );
		EXPECT_EQ( scene->GetWalkMap()[index], WALK_FLOOR ) << "door (" << cell.first << ", " << cell.second << ")";
		EXPECT_EQ( scene->GetObjectMap()[index], 0 ) << "door tile (" << cell.first << ", " << cell.second << ")";
	}
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 1, 4 )], WALK_DOOR ) << "(1, 4) touches the group only diagonally";
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 5, 4 )], WALK_DOOR ) << "(5, 4) touches the group only diagonally";
	EXPECT_EQ( scene->GetObjectMap()[CellIndex( 5, 4 )], TEST_DOOR_TILE );
	EXPECT_EQ( scene->GetObjectMap()[CellIndex( 0, 0 )], TEST_WALL_TILE ) << "walls keep their tiles";
}

TEST( SceneDoorTest, DoorsAlongTheGridsEdgeOpenWithoutLeavingIt ) {
	cTestLayers layers = DrawLayers( {} );
	for ( int column = 0; column < MAP_COLUMNS; column++ ) {
		layers.walk[CellIndex( column, 0 )] = WALK_DOOR;
		layers.walk[CellIndex( column, MAP_ROWS - 1 )] = WALK_DOOR;
	}
	std::unique_ptr<cScene> scene = layers.Build();
	scene->OpenDoor( 59, 0 );
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 0, 0 )], WALK_FLOOR ) << "the top row is one group";
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 0, MAP_ROWS - 1 )], WALK_DOOR ) << "the bottom row is another";
	scene->OpenDoor( -1, 5 );
	scene->OpenDoor( 60, 74 );
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 59, 74 )], WALK_DOOR ) << "a cell outside the grid opens nothing";
}

TEST( SceneDoorTest, DoorGroupFillingTheWholeMapOpens ) {
	cTestLayers layers = DrawLayers( {} );
	layers.walk.assign( MAP_CELLS, WALK_DOOR );
	std::unique_ptr<cScene> scene = layers.Build();
	scene->OpenDoor( 30, 40 );
	EXPECT_EQ( std::vector<int32_t>( scene->GetWalkMap(), scene->GetWalkMap() + MAP_CELLS ),
			   std::vector<int32_t>( MAP_CELLS, WALK_FLOOR ) );
}

TEST( SceneBoxTest, TheTwoItemBoxesHoldTheEnergyUpgrades ) {
	cTestLayers layers = DrawLayers( { "B" }, 54, 28 );
	layers.walk[CellIndex( 51, 3 )] = WALK_BOX;
	layers.walk[CellIndex( 10, 10 )] = WALK_BOX;
	layers.object[CellIndex( 10, 10 )] = TEST_BOX_TILE;
	std::unique_ptr<cScene> scene = layers.Build();
	tItemList items;

	scene->OpenBox( 54, 28, items );
	ASSERT_EQ( items.size(), 1u );
	int32_t x = 0;
	int32_t y = 0;
	items[0].GetPosition( x, y );
	EXPECT_EQ( items[0].GetKind(), ITEM_LUMRA_ENERGY );
	EXPECT_EQ( x, 1728 );
	EXPECT_EQ( y, 896 );
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 54, 28 )], WALK_FLOOR );
	EXPECT_EQ( scene->GetObjectMap()[CellIndex( 54, 28 )], 0 );

	scene->OpenBox( 51, 3, items );
	ASSERT_EQ( items.size(), 2u );
	items[1].GetPosition( x, y );
	EXPECT_EQ( items[1].GetKind(), ITEM_TAVESH_ENERGY );
	EXPECT_EQ( x, 1632 );
	EXPECT_EQ( y, 96 );

	scene->OpenBox( 10, 10, items );
	EXPECT_EQ( items.size(), 2u ) << "any other box is empty";
	EXPECT_EQ( scene->GetWalkMap()[CellIndex( 10, 10 )], WALK_FLOOR );
	EXPECT_EQ( scene->GetObjectMap()[CellIndex( 10, 10 )], 0 );
}

TEST( SceneRoofTest, IndoorAreaSpansColumns53OnAndRows17To39 ) {
	std::unique_ptr<cScene> scene = MakeOpenScene();
	EXPECT_TRUE( scene->IsUnderRoof( 53, 17 ) );
	EXPECT_TRUE( scene->IsUnderRoof( 59, 39 ) );
	EXPECT_FALSE( scene->IsUnderRoof( 52, 20 ) );
	EXPECT_FALSE( scene->IsUnderRoof( 55, 16 ) );
	EXPECT_FALSE( scene->IsUnderRoof( 55, 40 ) );
}

}
