// SPDX-License-Identifier: GPL-3.0-or-later
// Starting a game from the menus on the real level: the players, the speed item and the 24 enemies
// in their fixed order and strength, the first update in the click's frame, two games alike, and a
// map that cannot be read keeping the game in the main menu.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "LogCapture.h"
#include "TempDir.h"
#include "TestMaps.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "harness/HeadlessGame.h"
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
		Game().SetGameState( STATE_MAIN_MENU );
		ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[playersEntry] ) );
		ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[characterEntry] ) );
	}
	void SetDifficulty( int entry ) {
		Game().SetGameState( STATE_DIFFICULTY );
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
		const cExpectedEnemy &expected = LEVEL_ENEMIES[i];
		int32_t x = 0, y = 0;
		enemies[i]->GetPosition( x, y );
		EXPECT_TRUE( enemies[i]->GetKind() == expected.kind && x == expected.x && y == expected.y &&
					 enemies[i]->GetDirection() == expected.direction &&
					 enemies[i]->GetHealth() == healthPerLevel[expected.kind] * difficulty )
			<< "enemy " << i + 1 << " is kind " << enemies[i]->GetKind() << " at (" << x << ", " << y << ") facing "
			<< enemies[i]->GetDirection() << " with health " << enemies[i]->GetHealth();
	}
}

}

// The players by the options, the speed item and the level's enemies at the difficulty chosen (2
// when the difficulty screen was never visited); the first update runs in the frame of the click.
// Choosing one player after a two-player game builds a one-player game, and nothing a game did
// lasts into the next: the map is read anew.
TEST_F( NewGameTest, GameTakesThePlayersCharactersAndDifficultyChosen ) {
	std::vector<int32_t> firstWalk;
	const struct { int difficultyEntry, playersEntry, characterEntry; std::vector<int32_t> kinds; int32_t difficulty; } cases[] = {
		{ 0, 2, 3, { KIND_TAVESH, KIND_LUMRA }, 2 },
		{ 0, 1, 3, { KIND_TAVESH }, 2 },
		{ 2, 1, 4, { KIND_LUMRA }, 1 },
		{ 4, 2, 4, { KIND_LUMRA, KIND_TAVESH }, 3 },
	};
	for ( const auto &c : cases ) {
		if ( c.difficultyEntry != 0 ) {
			SetDifficulty( c.difficultyEntry );
		}
		StartGame( c.playersEntry, c.characterEntry );
		ASSERT_EQ( Game().GetGameState(), STATE_PLAYING );
		const tCharacterList &players = *Game().GetPlayers();
		ASSERT_EQ( players.size(), c.kinds.size() );
		for ( size_t i = 0; i < players.size(); i++ ) {
			int32_t x = 0, y = 0;
			players[i]->GetPosition( x, y );
			EXPECT_EQ( players[i]->GetKind(), c.kinds[i] ) << "player " << i + 1;
			EXPECT_EQ( x, i == 0 ? 224 : 384 ) << "player " << i + 1;
			EXPECT_EQ( y, 2240 ) << "player " << i + 1;
		}
		ASSERT_EQ( Game().GetItems()->size(), 1u );
		const cItem &item = Game().GetItems()->front();
		int32_t x = 0, y = 0;
		item.GetPosition( x, y );
		EXPECT_TRUE( item.GetKind() == 5 && x == 1120 && y == 1344 ) << "the speed item";
		ExpectLevelEnemies( *Game().GetEnemies(), c.difficulty );
		EXPECT_EQ( Game().GetScene()->GetCameraY(), 1888 ) << "the first update runs in the frame of the click";
		const int32_t *walk = Game().GetScene()->GetWalkMap();
		if ( firstWalk.empty() ) {
			firstWalk.assign( walk, walk + MAP_CELLS );
		}
		EXPECT_EQ( firstWalk, std::vector<int32_t>( walk, walk + MAP_CELLS ) ) << "the map is read anew";
		Game().GetEnemies()->erase( Game().GetEnemies()->begin() );
		Game().GetScene()->OpenBox( 51, 3 );
		cItem::AddBoxContent( 51, 3, *Game().GetItems() );
		Game().SetGameState( STATE_PAUSE );
	}
}

TEST_F( NewGameTest, PauseKeepsTheGameAndANewGameReplacesIt ) {
	StartGame( 1, 3 );
	const cScene *first = Game().GetScene();
	Game().SetGameState( STATE_PAUSE );
	ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[4] ) );	// resume
	EXPECT_EQ( Game().GetGameState(), STATE_PLAYING );
	EXPECT_EQ( Game().GetScene(), first ) << "resuming does not rebuild the level";
	Game().SetGameState( STATE_PAUSE );
	ASSERT_TRUE( headless.Click( ENTRY_X, ENTRY_Y[5] ) );	// to the main menu
	EXPECT_EQ( Game().GetGameState(), STATE_MAIN_MENU );
	EXPECT_EQ( Game().GetScene(), first ) << "an abandoned game stays until the next one";
	EXPECT_EQ( Game().GetEnemies()->size(), 24u );
}

// The game reads ./resources/map/ from the folder it runs in; here that is a folder with a broken map.
class BrokenMapTest : public NewGameTest {
protected:
	void SetUp() override {
		NewGameTest::SetUp();
		original = std::filesystem::current_path();
		std::filesystem::create_directories( folder.GetFile( "resources/map" ) );
		DrawLayers( { "...." }, 5, 5 ).WriteFiles( folder, "resources/map/" );
		std::filesystem::current_path( folder.GetPath() );
	}
	void TearDown() override { std::filesystem::current_path( original ); }

	cTempDir				folder;
	std::filesystem::path	original;
};

// A short or a missing layer keeps the game in the main menu, with each file named in the log; the
// next click tries again and the repaired map starts.
TEST_F( BrokenMapTest, BrokenLayersKeepTheGameInTheMainMenuAndTheNextClickTriesAgain ) {
	std::ofstream( "resources/map/walkmap.txt" ) << "1 1 1\n1 1\n";
	std::filesystem::remove( "resources/map/overmap.txt" );
	cLogCapture log;
	StartGame( 2, 4 );
	EXPECT_EQ( Game().GetGameState(), STATE_MAIN_MENU );
	EXPECT_TRUE( Game().GetPlayers()->empty() && Game().GetEnemies()->empty() && Game().GetItems()->empty() );
	EXPECT_TRUE( log.Contains( "Error loading map ./resources/map/walkmap.txt: 5 of 4500 numbers" ) ) << log.GetText();
	EXPECT_NE( log.GetText().find( "./resources/map/overmap.txt" ), std::string::npos ) << log.GetText();
	EXPECT_TRUE( log.Contains( "Error starting a new game: the map could not be loaded" ) ) << log.GetText();
	ASSERT_TRUE( headless.Frames( 3 ) ) << "the menus go on";

	for ( const char *layer : { "walkmap.txt", "overmap.txt" } ) {
		std::filesystem::copy_file( "resources/map/basemap.txt", std::string( "resources/map/" ) + layer,
									std::filesystem::copy_options::overwrite_existing );
	}
	StartGame( 2, 4 );
	EXPECT_EQ( Game().GetGameState(), STATE_PLAYING ) << "the repaired map starts";
	EXPECT_EQ( Game().GetPlayers()->size(), 2u );
}
