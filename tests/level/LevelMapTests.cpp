// SPDX-License-Identifier: GPL-3.0-or-later
// The level as it ships: the four map files, the tile sheet and its legend, checked against
// what the game's constants expect of them. The start cells, the boxes, the camera zones, the
// entrance of the final area, the boss's area, the hall and its roof, the doors, the route from
// the start to the boss, the enemies' streets and the map's edge. Every failure names its cell.

#include <gtest/gtest.h>

#include <SDL.h>
#include <SDL_image.h>

#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "LogCapture.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

struct sCell {
	int		column;
	int		row;
};

const sCell PLAYER_STARTS[] = { { 7, 70 }, { 12, 70 } };
const sCell SPEED_ITEM = { 35, 42 };
const sCell BOSS_START = { 3, 7 };
// Every enemy's start, in the order of the game's table; the boss is last.
const sCell ENEMY_STARTS[] = {
	{ 7, 50 }, { 12, 50 }, { 9, 47 }, { 6, 35 }, { 17, 34 }, { 17, 38 }, { 37, 35 }, { 37, 39 },
	{ 51, 35 }, { 52, 40 }, { 48, 24 }, { 50, 22 }, { 48, 17 }, { 49, 5 }, { 42, 6 }, { 25, 7 },
	{ 22, 5 }, { 22, 9 }, { 7, 5 }, { 7, 7 }, { 7, 9 }, { 5, 6 }, { 5, 8 }, { 3, 7 },
};
const sCell LUMRA_UPGRADE_BOX = { 54, 28 };		// inside the hall
const sCell TAVESH_UPGRADE_BOX = { 51, 3 };		// top right, reachable with every door shut

// The hall whose roof the game hides while a player is inside.
const int HALL_FIRST_COLUMN = 53;
const int HALL_LAST_COLUMN = 59;
const int HALL_FIRST_ROW = 17;
const int HALL_LAST_ROW = 39;

// The boss wanders to floor cells of this area.
const int BOSS_AREA_LAST_COLUMN = 18;
const int BOSS_AREA_LAST_ROW = 13;
const int BOSS_AREA_MIN_FLOOR = 60;
const int BOSS_AREA_MIN_COVER = 4;

const int STEP = 2;								// in pixels: a player's step at normal speed
const int STEP_COLUMNS = WORLD_WIDTH / STEP;
const int STEP_ROWS = WORLD_HEIGHT / STEP;

const char *const LEGEND_PATH = "resources/map/tiles.txt";
const char *const SHEET_PATH = "resources/map/tiles.png";

std::string Name( int column, int row ) {
	return "(" + std::to_string( column ) + ", " + std::to_string( row ) + ")";
}

// Every position a player's body reaches from its start in steps of two pixels along the axes,
// as the game's walk test allows, and the cells its centre passes through.
class cBodyReach {
public:
	cBodyReach( const cScene &scene, int startX, int startY )
		: positions( size_t( STEP_COLUMNS ) * STEP_ROWS, 0 ), centres( MAP_CELLS, 0 ) {
		if ( !scene.IsFree( startX, startY, false ) ) {
			return;
		}
		std::vector<int> open = { Index( startX, startY ) };
		positions[size_t( open.back() )] = 1;
		while ( !open.empty() ) {
			const int at = open.back();
			open.pop_back();
			const int x = ( at % STEP_COLUMNS ) * STEP;
			const int y = ( at / STEP_COLUMNS ) * STEP;
			centres[size_t( CellIndex( ( x + BODY_SIZE / 2 ) / CELL_SIZE, ( y + BODY_SIZE / 2 ) / CELL_SIZE ) )] = 1;
			const int moves[4][2] = { { STEP, 0 }, { -STEP, 0 }, { 0, STEP }, { 0, -STEP } };
			for ( const int *move : moves ) {
				const int nx = x + move[0];
				const int ny = y + move[1];
				if ( nx < 0 || ny < 0 || nx >= WORLD_WIDTH || ny >= WORLD_HEIGHT || positions[size_t( Index( nx, ny ) )] ) {
					continue;
				}
				if ( scene.IsFree( nx, ny, false ) ) {
					positions[size_t( Index( nx, ny ) )] = 1;
					open.push_back( Index( nx, ny ) );
				}
			}
		}
	}

	bool	ReachesPosition( int x, int y ) const { return positions[size_t( Index( x, y ) )] != 0; }
	bool	ReachesCell( int column, int row ) const { return centres[size_t( CellIndex( column, row ) )] != 0; }
	bool	ReachesNextTo( const sCell &cell ) const {
		return ReachesCell( cell.column + 1, cell.row ) || ReachesCell( cell.column - 1, cell.row )
			|| ReachesCell( cell.column, cell.row + 1 ) || ReachesCell( cell.column, cell.row - 1 );
	}

private:
	static int Index( int x, int y ) { return ( y / STEP ) * STEP_COLUMNS + x / STEP; }

	std::vector<uint8_t> positions;
	std::vector<uint8_t> centres;		// by cell
};

// The shipped level, its tile sheet's size and the legend's category of every tile.
class LevelMapTest : public ::testing::Test {
protected:
	void SetUp() override {
		scene = std::make_unique<cScene>();
		ASSERT_TRUE( scene->IsUsable() ) << "the four map files in resources/map/ do not load: " << log.GetText();
		LoadLegend();
		LoadSheetSize();
	}

	int32_t Walk( int column, int row ) const { return scene->GetWalkMap()[CellIndex( column, row )]; }
	int32_t Base( int column, int row ) const { return scene->GetBaseMap()[CellIndex( column, row )]; }
	int32_t Object( int column, int row ) const { return scene->GetObjectMap()[CellIndex( column, row )]; }
	int32_t Over( int column, int row ) const { return scene->GetOverMap()[CellIndex( column, row )]; }
	bool IsFloor( int column, int row ) const { return IsInGrid( column, row ) && Walk( column, row ) == WALK_FLOOR; }
	bool IsInHall( int column, int row ) const {
		return column >= HALL_FIRST_COLUMN && column <= HALL_LAST_COLUMN && row >= HALL_FIRST_ROW && row <= HALL_LAST_ROW;
	}
	// The legend's category of a tile code: floor, ground, wall, fence, door, box, prop, roof or
	// canopy; "none" for 0 and "missing" for a code the sheet does not have.
	std::string Category( int32_t code ) const {
		if ( code == 0 ) {
			return "none";
		}
		return code > 0 && size_t( code ) <= categories.size() ? categories[size_t( code - 1 )] : "missing";
	}

	// The same level with every door open, as lumra leaves it.
	std::unique_ptr<cScene> WithDoorsOpen() const {
		std::vector<int32_t> walk( scene->GetWalkMap(), scene->GetWalkMap() + MAP_CELLS );
		for ( int32_t &code : walk ) {
			code = code == WALK_DOOR ? WALK_FLOOR : code;
		}
		return cScene::FromLayers( std::vector<int32_t>( scene->GetBaseMap(), scene->GetBaseMap() + MAP_CELLS ),
								std::vector<int32_t>( scene->GetObjectMap(), scene->GetObjectMap() + MAP_CELLS ), walk,
								std::vector<int32_t>( scene->GetOverMap(), scene->GetOverMap() + MAP_CELLS ) );
	}

	// The floor cells joined to start within columns and rows up to the last ones given: by the
	// four sides or, as the path search moves, also diagonally past two floor cells.
	std::vector<uint8_t> FloorJoinedTo( sCell start, bool diagonals, int lastColumn, int lastRow ) const {
		std::vector<uint8_t> reached( MAP_CELLS, 0 );
		std::vector<sCell> open = { start };
		reached[size_t( CellIndex( start.column, start.row ) )] = 1;
		while ( !open.empty() ) {
			const sCell cell = open.back();
			open.pop_back();
			for ( int dr = -1; dr <= 1; dr++ ) {
				for ( int dc = -1; dc <= 1; dc++ ) {
					const int c = cell.column + dc;
					const int r = cell.row + dr;
					if ( c > lastColumn || r > lastRow || !IsFloor( c, r ) || reached[size_t( CellIndex( c, r ) )] ) {
						continue;
					}
					if ( dc != 0 && dr != 0 && !( diagonals && IsFloor( cell.column + dc, cell.row ) && IsFloor( cell.column, cell.row + dr ) ) ) {
						continue;
					}
					reached[size_t( CellIndex( c, r ) )] = 1;
					open.push_back( { c, r } );
				}
			}
		}
		return reached;
	}

	cLogCapture log;
	std::unique_ptr<cScene> scene;
	std::vector<std::string> categories;	// tile n at n - 1
	int sheetWidth = 0;
	int sheetHeight = 0;

private:
	void LoadLegend() {
		std::ifstream file( LEGEND_PATH );
		ASSERT_TRUE( file.is_open() ) << LEGEND_PATH << " is missing";
		std::string line;
		while ( std::getline( file, line ) ) {
			if ( line.empty() || line[0] == '#' ) {
				continue;
			}
			std::istringstream words( line );
			int number = 0;
			std::string category;
			words >> number >> category;
			ASSERT_EQ( number, int( categories.size() ) + 1 ) << LEGEND_PATH << ": tiles are listed in order, line '" << line << "'";
			categories.push_back( category );
		}
	}

	void LoadSheetSize() {
		SDL_Surface *sheet = IMG_Load( SHEET_PATH );
		ASSERT_NE( sheet, nullptr ) << SHEET_PATH << " cannot be read: " << IMG_GetError();
		sheetWidth = sheet->w;
		sheetHeight = sheet->h;
		SDL_FreeSurface( sheet );
	}
};

TEST_F( LevelMapTest, TileSheetIsOneColumnThatTheLegendNamesTileByTile ) {
	EXPECT_EQ( sheetWidth, CELL_SIZE ) << "the sheet is one column of 32-pixel tiles";
	EXPECT_EQ( sheetHeight % CELL_SIZE, 0 ) << "the sheet's height is a whole number of tiles";
	EXPECT_EQ( int( categories.size() ), sheetHeight / CELL_SIZE ) << "the legend lists every tile of the sheet once";
	// Textures of more than 8192 pixels are refused by some graphics drivers.
	EXPECT_LE( sheetHeight, 8192 ) << "the sheet holds " << sheetHeight / CELL_SIZE << " tiles, more than 256";
	EXPECT_EQ( Category( 1 ), "floor" ) << "the game draws a ground code of 0 as tile 1, which must be a floor";
}

TEST_F( LevelMapTest, EveryDrawnCodeIsATileOfTheSheet ) {
	const int tiles = sheetHeight / CELL_SIZE;
	const char *const layerNames[3] = { "ground", "object", "over" };
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			const int32_t codes[3] = { Base( column, row ), Object( column, row ), Over( column, row ) };
			for ( int layer = 0; layer < 3; layer++ ) {
				EXPECT_TRUE( codes[layer] >= 0 && codes[layer] <= tiles )
					<< layerNames[layer] << " layer at " << Name( column, row ) << " holds " << codes[layer]
					<< ", but the sheet has tiles 1 to " << tiles;
			}
			EXPECT_NE( Base( column, row ), 0 ) << "the ground at " << Name( column, row ) << " is left empty";
		}
	}
}

TEST_F( LevelMapTest, StartSpawnAndItemCellsAreFloorABodyFits ) {
	std::vector<sCell> cells( std::begin( PLAYER_STARTS ), std::end( PLAYER_STARTS ) );
	cells.push_back( SPEED_ITEM );
	cells.insert( cells.end(), std::begin( ENEMY_STARTS ), std::end( ENEMY_STARTS ) );
	for ( const sCell &cell : cells ) {
		EXPECT_EQ( Walk( cell.column, cell.row ), WALK_FLOOR ) << "start cell " << Name( cell.column, cell.row ) << " is not floor";
		EXPECT_TRUE( scene->IsFree( cell.column * CELL_SIZE, cell.row * CELL_SIZE, false ) )
			<< "a body placed on " << Name( cell.column, cell.row ) << " does not fit";
	}
}

TEST_F( LevelMapTest, UpgradeBoxesAreClosedCratesOnFloorWithAFloorNeighbour ) {
	for ( const sCell &box : { LUMRA_UPGRADE_BOX, TAVESH_UPGRADE_BOX } ) {
		const std::string where = Name( box.column, box.row );
		EXPECT_EQ( Walk( box.column, box.row ), WALK_BOX ) << "the upgrade box at " << where << " is not a closed box";
		EXPECT_EQ( Category( Object( box.column, box.row ) ), "box" ) << "no box tile at " << where;
		EXPECT_EQ( Category( Base( box.column, box.row ) ), "floor" ) << "opening the box at " << where << " would not show a floor";
	}
	EXPECT_TRUE( IsInHall( LUMRA_UPGRADE_BOX.column, LUMRA_UPGRADE_BOX.row ) );
}

TEST_F( LevelMapTest, TaveshReachesTheBossAndHisUpgradeOverFloorWithEveryDoorShut ) {
	for ( const sCell &start : PLAYER_STARTS ) {
		const cBodyReach reach( *scene, start.column * CELL_SIZE, start.row * CELL_SIZE );
		EXPECT_TRUE( reach.ReachesPosition( BOSS_START.column * CELL_SIZE, BOSS_START.row * CELL_SIZE ) )
			<< "from " << Name( start.column, start.row ) << " no walk over floor leads to the boss at " << Name( BOSS_START.column, BOSS_START.row );
		EXPECT_TRUE( reach.ReachesNextTo( TAVESH_UPGRADE_BOX ) ) << "from " << Name( start.column, start.row )
			<< " nobody gets next to the box at " << Name( TAVESH_UPGRADE_BOX.column, TAVESH_UPGRADE_BOX.row );
	}
}

TEST_F( LevelMapTest, OnlyADoorLeadsIntoTheHallAndLumraFindsHerUpgradeThere ) {
	const cBodyReach shut( *scene, PLAYER_STARTS[0].column * CELL_SIZE, PLAYER_STARTS[0].row * CELL_SIZE );
	const std::unique_ptr<cScene> opened = WithDoorsOpen();
	const cBodyReach open( *opened, PLAYER_STARTS[0].column * CELL_SIZE, PLAYER_STARTS[0].row * CELL_SIZE );
	for ( int row = HALL_FIRST_ROW; row <= HALL_LAST_ROW; row++ ) {
		for ( int column = HALL_FIRST_COLUMN; column <= HALL_LAST_COLUMN; column++ ) {
			EXPECT_FALSE( shut.ReachesCell( column, row ) ) << "with the doors shut a player walks into the hall at " << Name( column, row );
		}
	}
	EXPECT_TRUE( open.ReachesNextTo( LUMRA_UPGRADE_BOX ) )
		<< "even with the doors open nobody gets next to the box at " << Name( LUMRA_UPGRADE_BOX.column, LUMRA_UPGRADE_BOX.row );
	// lumra opens a door from the cell beside it: a door in or at the hall must have such a cell
	// on the right street (columns 47-52) or the lower street (rows 34-42).
	bool doorFromStreet = false;
	for ( int row = HALL_FIRST_ROW - 1; row <= HALL_LAST_ROW + 1; row++ ) {
		for ( int column = HALL_FIRST_COLUMN - 1; column <= HALL_LAST_COLUMN; column++ ) {
			if ( Walk( column, row ) != WALK_DOOR ) {
				continue;
			}
			const sCell beside[4] = { { column + 1, row }, { column - 1, row }, { column, row + 1 }, { column, row - 1 } };
			for ( const sCell &cell : beside ) {
				const bool onStreet = ( cell.column >= 47 && cell.column <= 52 && cell.row <= 33 ) || ( cell.row >= 34 && cell.row <= 42 );
				doorFromStreet = doorFromStreet || ( onStreet && !IsInHall( cell.column, cell.row ) && shut.ReachesCell( cell.column, cell.row ) );
			}
		}
	}
	EXPECT_TRUE( doorFromStreet ) << "no door of the hall can be opened from the right street or the lower street";
}

TEST_F( LevelMapTest, HallRoofCoversExactlyTheIndoorArea ) {
	for ( int row = HALL_FIRST_ROW; row <= HALL_LAST_ROW; row++ ) {
		for ( int column = HALL_FIRST_COLUMN; column <= HALL_LAST_COLUMN; column++ ) {
			EXPECT_EQ( Category( Over( column, row ) ), "roof" ) << "no roof over the hall at " << Name( column, row );
		}
	}
	// A roof touching the area from outside would belong to the hall but stay drawn while a
	// player is inside.
	for ( int row = HALL_FIRST_ROW - 1; row <= HALL_LAST_ROW + 1; row++ ) {
		for ( int column = HALL_FIRST_COLUMN - 1; column <= HALL_LAST_COLUMN + 1; column++ ) {
			if ( IsInGrid( column, row ) && !IsInHall( column, row ) ) {
				EXPECT_NE( Category( Over( column, row ) ), "roof" ) << "the hall's roof reaches out to " << Name( column, row );
			}
		}
	}
}

TEST_F( LevelMapTest, NoFloorWhereTheCameraWouldJump ) {
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			if ( !IsFloor( column, row ) ) {
				continue;
			}
			EXPECT_FALSE( row >= 43 && column > 14 ) << "floor at " << Name( column, row ) << " east of the left street would switch the camera to the lower street";
			EXPECT_FALSE( column >= 15 && row > 42 ) << "floor at " << Name( column, row ) << " below the lower street lies outside its camera";
			EXPECT_FALSE( row >= 15 && row <= 33 && column <= 46 ) << "floor at " << Name( column, row ) << " in the block between the streets would lock the camera early";
			EXPECT_FALSE( row == 14 && column >= 43 && column <= 46 ) << "floor at " << Name( column, row ) << ": the top street meets the right street in rows 1-13";
		}
	}
}

TEST_F( LevelMapTest, FinalAreaEntranceLetsThePlayersBePushedStraightIn ) {
	for ( int row = 1; row <= 14; row++ ) {
		if ( IsFloor( 20, row ) || IsFloor( 21, row ) ) {
			EXPECT_TRUE( IsFloor( 19, row ) ) << "the camera pushes players left into column 19, but " << Name( 19, row ) << " is not floor";
		}
	}
}

TEST_F( LevelMapTest, BossAreaIsRoomyConnectedAndHasCover ) {
	const std::vector<uint8_t> reached = FloorJoinedTo( BOSS_START, false, BOSS_AREA_LAST_COLUMN, BOSS_AREA_LAST_ROW );
	int floor = 0;
	int cover = 0;
	for ( int row = 0; row <= BOSS_AREA_LAST_ROW; row++ ) {
		for ( int column = 0; column <= BOSS_AREA_LAST_COLUMN; column++ ) {
			if ( IsFloor( column, row ) ) {
				floor++;
				EXPECT_TRUE( reached[size_t( CellIndex( column, row ) )] ) << "the boss's floor cell " << Name( column, row ) << " is cut off from the boss";
				continue;
			}
			const int freeSides = IsFloor( column + 1, row ) + IsFloor( column - 1, row ) + IsFloor( column, row + 1 ) + IsFloor( column, row - 1 );
			cover += freeSides >= 3 ? 1 : 0;
		}
	}
	EXPECT_GE( floor, BOSS_AREA_MIN_FLOOR ) << "the boss's area has too few floor cells to wander";
	EXPECT_GE( cover, BOSS_AREA_MIN_COVER ) << "the boss's area has too little free-standing cover";
}

TEST_F( LevelMapTest, DoorGroupsLieInsideTheMapWithFloorOnBothSides ) {
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			const int32_t code = Walk( column, row );
			if ( code != WALK_DOOR && code != WALK_BOX ) {
				continue;
			}
			EXPECT_TRUE( column > 0 && row > 0 && column < MAP_COLUMNS - 1 && row < MAP_ROWS - 1 ) << "door or box on the map's edge at " << Name( column, row );
			EXPECT_EQ( Category( Base( column, row ) ), "floor" ) << "opening " << Name( column, row ) << " would not show a floor";
			if ( code == WALK_BOX ) {
				EXPECT_EQ( Category( Object( column, row ) ), "box" ) << "the box at " << Name( column, row ) << " has no box tile";
				continue;
			}
			EXPECT_EQ( Category( Object( column, row ) ), "door" ) << "the door at " << Name( column, row ) << " has no door tile";
			// A group lies along a row or down a column; players pass across it.
			const bool alongColumn = Walk( column, row - 1 ) == WALK_DOOR || Walk( column, row + 1 ) == WALK_DOOR;
			const bool alongRow = Walk( column - 1, row ) == WALK_DOOR || Walk( column + 1, row ) == WALK_DOOR;
			EXPECT_FALSE( alongColumn && alongRow ) << "the door group at " << Name( column, row ) << " bends";
			const bool acrossRow = IsFloor( column - 1, row ) && IsFloor( column + 1, row );
			const bool acrossColumn = IsFloor( column, row - 1 ) && IsFloor( column, row + 1 );
			EXPECT_TRUE( alongColumn ? acrossRow : alongRow ? acrossColumn : acrossRow || acrossColumn )
				<< "the door at " << Name( column, row ) << " has no floor on both sides";
		}
	}
}

TEST_F( LevelMapTest, EveryEnemyStartJoinsTheRouteForThePathSearch ) {
	const std::vector<uint8_t> reached = FloorJoinedTo( PLAYER_STARTS[0], true, MAP_COLUMNS - 1, MAP_ROWS - 1 );
	for ( const sCell &enemy : ENEMY_STARTS ) {
		EXPECT_TRUE( IsFloor( enemy.column, enemy.row ) && reached[size_t( CellIndex( enemy.column, enemy.row ) )] )
			<< "the enemy starting at " << Name( enemy.column, enemy.row ) << " has no floor path to the streets of the route";
	}
}

// What players see is what they walk on: floor under nothing, and nothing that looks like
// floor where they are stopped. The map's edge is never floor.
TEST_F( LevelMapTest, FloorLooksLikeFloorAndBlockedCellsDoNot ) {
	for ( int row = 0; row < MAP_ROWS; row++ ) {
		for ( int column = 0; column < MAP_COLUMNS; column++ ) {
			if ( row == 0 || column == 0 || row == MAP_ROWS - 1 || column == MAP_COLUMNS - 1 ) {
				EXPECT_TRUE( Walk( column, row ) != WALK_FLOOR && Walk( column, row ) != WALK_ENEMY ) << "floor on the map's edge at " << Name( column, row );
			}
			const std::string ground = Category( Base( column, row ) );
			if ( Walk( column, row ) == WALK_FLOOR ) {
				EXPECT_EQ( Object( column, row ), 0 ) << "something stands on the floor at " << Name( column, row ) << " but does not block";
				EXPECT_EQ( ground, "floor" ) << "players walk at " << Name( column, row ) << " on " << ground;
			} else if ( Walk( column, row ) != WALK_DOOR && Walk( column, row ) != WALK_BOX ) {
				EXPECT_TRUE( Object( column, row ) != 0 || ground != "floor" ) << "an invisible wall stands at " << Name( column, row );
			}
		}
	}
}

}
