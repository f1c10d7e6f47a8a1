// Starting a game from the menus on the real level: the players, the speed item and the 24 enemies
// in their fixed order and strength, the first update in the click's frame, two games alike, and a
// map that cannot be read keeping the game in the main menu.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "LogCapture.h"
#include "TempDir.h"
#include "TestMaps.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "app/GameState.h"
#include "platform/headless/HeadlessGame.h"
#include "sound/headless/RecordingSoundBackend.h"
#include "world/Scene.h"

namespace {

const int32_t ENTRY_X = 160;
const int32_t ENTRY_Y[6] = { 0, 260, 295, 328, 360, 392 };

struct cExpectedEnemy {
	int32_t		kind;
	int32_t		x, y;
	int32_t		direction;
};

const cExpectedEnemy LEVEL_ENEMIES[24] = {
	{ 2, 224, 1600, 2 }, { 2, 384, 1600, 2 }, { 2, 288, 1504, 2 }, { 2, 192, 1120, 2 }, { 2, 544, 1088, 4 },
	{ 2, 544, 1216, 4 }, { 3, 1184, 1120, 4 }, { 3, 1184, 1248, 4 }, { 2, 1632, 1120, 4 }, { 2, 1664, 1280, 4 },
	{ 2, 1536, 768, 3 }, { 2, 1600, 704, 2 }, { 2, 1536, 544, 2 }, { 2, 1568, 160, 2 }, { 2, 1344, 192, 3 },
	{ 3, 800, 224, 3 }, { 3, 704, 160, 3 }, { 3, 704, 288, 3 }, { 2, 224, 160, 3 }, { 2, 224, 224, 3 },
	{ 2, 224, 288, 3 }, { 3, 160, 192, 3 }, { 3, 160, 256, 3 }, { 4, 96, 224, 3 },
};

class NewGameTest : public ::testing::Test {
protected:
	void SetUp() override { ASSERT_TRUE( headless.Start() ); }
	// From the main menu: the player count, then the character entry (3 tavesh, 4 lumra).
	void StartGame( int playersEntry, int characterEntry ) {
		gameState = STATE_MAIN_MENU;
		ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[playersEntry] ) );
		ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[characterEntry] ) );
	}
	void SetDifficulty( int entry ) {
		gameState = STATE_DIFFICULTY;
		ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[entry] ) );
	}
	cGame &Game() { return headless.GetGame(); }

	cRecordingSoundBackend	sound;
	cHeadlessGame			headless { &sound };
};

void ExpectLevelEnemies( const tCharacterList &enemies, int32_t difficulty ) {
	ASSERT_EQ( enemies.size(), 24u );
	const int32_t healthPerLevel[5] = { 0, 0, 50, 75, 250 };
	for ( size_t i = 0; i < enemies.size(); i++ ) {
		const cEnemy *enemy = dynamic_cast<const cEnemy *>( enemies[i].get() );
		ASSERT_NE( enemy, nullptr );
		const cExpectedEnemy &expected = LEVEL_ENEMIES[i];
		int32_t x = 0, y = 0;
		enemy->GetPosition( x, y );
		EXPECT_EQ( enemy->GetKind(), expected.kind ) << "enemy " << i + 1;
		EXPECT_EQ( x, expected.x ) << "enemy " << i + 1;
		EXPECT_EQ( y, expected.y ) << "enemy " << i + 1;
		EXPECT_EQ( enemy->GetDirection(), expected.direction ) << "enemy " << i + 1 << "'s facing";
		EXPECT_EQ( enemy->GetHealth(), healthPerLevel[expected.kind] * difficulty ) << "enemy " << i + 1;
	}
}

}

TEST_F( NewGameTest, OnePlayerGameHasThePlayerTheSpeedItemAndTheLevelsEnemies ) {
	SetDifficulty( 2 );	// difficulty 1
	StartGame( 1, 4 );
	ASSERT_EQ( gameState, STATE_PLAYING );
	ASSERT_NE( Game().GetScene(), nullptr );
	ASSERT_EQ( Game().GetPlayers()->size(), 1u );
	const cPlayer *player = dynamic_cast<const cPlayer *>( Game().GetPlayers()->front().get() );
	ASSERT_NE( player, nullptr );
	int32_t x = 0, y = 0;
	player->GetPosition( x, y );
	EXPECT_EQ( player->GetKind(), KIND_LUMRA );
	EXPECT_EQ( x, 224 );
	EXPECT_EQ( y, 2240 );
	ASSERT_EQ( Game().GetItems()->size(), 1u );
	Game().GetItems()->front().GetPosition( x, y );
	EXPECT_EQ( Game().GetItems()->front().GetKind(), 5 );
	EXPECT_EQ( x, 1120 );
	EXPECT_EQ( y, 1344 );
	ExpectLevelEnemies( *Game().GetEnemies(), 1 );
	EXPECT_EQ( Game().GetScene()->GetCameraY(), 1888 ) << "the first update runs in the frame of the click";
}

TEST_F( NewGameTest, TwoPlayerGameTakesBothCharactersAtTheHardestDifficulty ) {
	SetDifficulty( 4 );	// difficulty 3
	StartGame( 2, 4 );	// player 1 lumra, player 2 tavesh
	ASSERT_EQ( Game().GetPlayers()->size(), 2u );
	const cCharacter &first = *Game().GetPlayers()->at( 0 );
	const cCharacter &second = *Game().GetPlayers()->at( 1 );
	int32_t x = 0, y = 0;
	first.GetPosition( x, y );
	EXPECT_EQ( first.GetKind(), KIND_LUMRA );
	EXPECT_EQ( x, 224 );
	second.GetPosition( x, y );
	EXPECT_EQ( second.GetKind(), KIND_TAVESH );
	EXPECT_EQ( x, 384 );
	EXPECT_EQ( y, 2240 );
	ExpectLevelEnemies( *Game().GetEnemies(), 3 );
}

TEST_F( NewGameTest, OnePlayerAfterTwoBuildsAOnePlayerGameWithTheSameDefaults ) {
	StartGame( 2, 3 );
	ASSERT_EQ( Game().GetPlayers()->size(), 2u );
	gameState = STATE_PAUSE;
	StartGame( 1, 3 );
	ASSERT_EQ( Game().GetPlayers()->size(), 1u );
	EXPECT_EQ( Game().GetPlayers()->front()->GetKind(), KIND_TAVESH );
	ExpectLevelEnemies( *Game().GetEnemies(), 2 );	// never visited the difficulty screen
}

TEST_F( NewGameTest, PauseKeepsTheGameAndANewGameReplacesIt ) {
	StartGame( 1, 3 );
	const cScene *first = Game().GetScene();
	gameState = STATE_PAUSE;
	ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[4] ) );	// resume
	EXPECT_EQ( gameState, STATE_PLAYING );
	EXPECT_EQ( Game().GetScene(), first ) << "resuming does not rebuild the level";
	gameState = STATE_PAUSE;
	ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[5] ) );	// to the main menu
	EXPECT_EQ( gameState, STATE_MAIN_MENU );
	EXPECT_EQ( Game().GetScene(), first ) << "an abandoned game stays until the next one";
	EXPECT_EQ( Game().GetEnemies()->size(), 24u );
}

TEST_F( NewGameTest, TwoGamesInARowStartAlike ) {
	StartGame( 1, 3 );
	std::vector<int32_t> firstWalk( Game().GetScene()->GetWalkMap(), Game().GetScene()->GetWalkMap() + MAP_CELLS );
	Game().GetEnemies()->erase( Game().GetEnemies()->begin() );	// what the first game did must not last
	Game().GetScene()->OpenBox( 51, 3, *Game().GetItems() );
	StartGame( 1, 3 );
	std::vector<int32_t> secondWalk( Game().GetScene()->GetWalkMap(), Game().GetScene()->GetWalkMap() + MAP_CELLS );
	EXPECT_EQ( firstWalk, secondWalk ) << "the map is read anew";
	ExpectLevelEnemies( *Game().GetEnemies(), 2 );
	EXPECT_EQ( Game().GetItems()->size(), 1u );
}

// The game reads ./resources/map/ from the folder it runs in; here that is a folder with a broken map.
class BrokenMapTest : public NewGameTest {
protected:
	void SetUp() override {
		NewGameTest::SetUp();
		original = std::filesystem::current_path();
		std::filesystem::create_directories( folder.GetFile( "resources/map" ) );
		cTempDir mapFolder;
		DrawLayers( { "...." }, 5, 5 ).WriteFiles( mapFolder );
		for ( const char *name : { "basemap.txt", "objectmap.txt", "walkmap.txt", "overmap.txt" } ) {
			std::filesystem::copy_file( mapFolder.GetFile( name ), folder.GetFile( std::string( "resources/map/" ) + name ) );
		}
		std::filesystem::current_path( folder.GetPath() );
	}
	void TearDown() override { std::filesystem::current_path( original ); }

	cTempDir				folder;
	std::filesystem::path	original;
};

TEST_F( BrokenMapTest, ShortWalkLayerKeepsTheGameInTheMainMenu ) {
	std::ofstream( "resources/map/walkmap.txt" ) << "1 1 1\n1 1\n";
	cLogCapture log;
	StartGame( 1, 3 );
	EXPECT_EQ( gameState, STATE_MAIN_MENU );
	EXPECT_TRUE( Game().GetPlayers()->empty() );
	EXPECT_TRUE( Game().GetEnemies()->empty() );
	EXPECT_TRUE( Game().GetItems()->empty() );
	EXPECT_TRUE( log.Contains( "Error loading map ./resources/map/walkmap.txt: 5 of 4500 numbers" ) ) << log.GetText();
	EXPECT_TRUE( log.Contains( "Error starting a new game: the map could not be loaded" ) ) << log.GetText();
	ASSERT_TRUE( headless.Frames( 3 ) ) << "the menus go on";
}

TEST_F( BrokenMapTest, MissingLayerKeepsTheGameInTheMainMenuAndTheNextClickTriesAgain ) {
	std::filesystem::remove( "resources/map/overmap.txt" );
	cLogCapture log;
	StartGame( 2, 4 );
	EXPECT_EQ( gameState, STATE_MAIN_MENU );
	EXPECT_NE( log.GetText().find( "./resources/map/overmap.txt" ), std::string::npos ) << log.GetText();

	std::filesystem::copy_file( "resources/map/basemap.txt", "resources/map/overmap.txt" );
	StartGame( 2, 4 );
	EXPECT_EQ( gameState, STATE_PLAYING ) << "the repaired map starts";
	EXPECT_EQ( Game().GetPlayers()->size(), 2u );
}
