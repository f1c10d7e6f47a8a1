// SPDX-License-Identifier: GPL-3.0-or-later
#include "EnemyFrame.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <vector>

#include "TownMap.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "harness/HeadlessGame.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t ROUND_LEFT = 3 * CELL_SIZE;		// in pixels: the ends of the players' walk
const int32_t ROUND_RIGHT = 50 * CELL_SIZE;
const int32_t ROUND_ROWS[2] = { 5, 8 };			// the row each player walks along
const int32_t PLAYER_STEP = 2;					// in pixels per frame
const int32_t LATTICE_COLUMNS = 8;				// enemies set out 8 to a row, every 6 columns
const int32_t LATTICE_FIRST_COLUMN = 4;
const int32_t LATTICE_COLUMN_STEP = 6;
const int32_t LATTICE_FIRST_ROW = 3;
const int32_t LATTICE_ROW_STEP = 3;
const int32_t DIFFICULTY = 2;

using tClock = std::chrono::steady_clock;

// Walks back and forth between the ends of the round; the second player starts at the other end.
int32_t GetRoundX( int frame, bool fromTheRight ) {
	const int32_t span = ROUND_RIGHT - ROUND_LEFT;
	const int32_t travelled = ( frame * PLAYER_STEP ) % ( 2 * span );
	const int32_t offset = travelled < span ? travelled : 2 * span - travelled;
	return fromTheRight ? ROUND_RIGHT - offset : ROUND_LEFT + offset;
}

// The first floor cell at or to the right of the cell, on its row.
int32_t FindFloorColumn( const cScene &scene, int32_t column, int32_t row ) {
	while ( column < MAP_COLUMNS - 1 && scene.GetWalkCode( column, row ) != WALK_FLOOR ) {
		column++;
	}
	return column;
}

// The level's enemies, of the kinds the new game gives them, on a lattice of the top street,
// facing the players' rows; the boss keeps its own place.
void PlaceEnemiesOnTheTopStreet( cGame &game ) {
	game.PlaceEnemies();
	tCharacterList &enemies = *game.GetEnemies();
	std::vector<int32_t> kinds;
	for ( const std::unique_ptr<cCharacter> &enemy : enemies ) {
		kinds.push_back( enemy->GetKind() );
	}
	tCharacterList placed;
	int32_t slot = 0;
	for ( size_t i = 0; i < kinds.size(); i++ ) {
		int32_t x = 0;
		int32_t y = 0;
		enemies[i]->GetPosition( x, y );
		int32_t facing = enemies[i]->GetDirection();
		if ( kinds[i] != KIND_BOSS ) {
			const int32_t row = LATTICE_FIRST_ROW + ( slot / LATTICE_COLUMNS ) * LATTICE_ROW_STEP;
			const int32_t column = LATTICE_FIRST_COLUMN + ( slot % LATTICE_COLUMNS ) * LATTICE_COLUMN_STEP;
			x = FindFloorColumn( *game.GetScene(), column, row ) * CELL_SIZE;
			y = row * CELL_SIZE;
			facing = row < ROUND_ROWS[1] ? DIR_DOWN : DIR_UP;		// towards the players' rows
			slot++;
		}
		placed.push_back( std::make_unique<cEnemy>( kinds[i], x, y, facing, DIFFICULTY ) );
	}
	enemies.swap( placed );
}

void MovePlayers( cGame &game, int frame ) {
	tCharacterList &players = *game.GetPlayers();
	for ( size_t i = 0; i < players.size(); i++ ) {
		players[i]->SetPosition( GetRoundX( frame, i == 1 ), ROUND_ROWS[i] * CELL_SIZE );
	}
}

// The frame as the in-game update frames it: cells marked before, cleared after, shots dropped.
double RunFrame( cGame &game, int frame ) {
	MovePlayers( game, frame );
	game.MarkEnemyCells();
	const tClock::time_point start = tClock::now();
	game.UpdateEnemies();
	const double elapsed = std::chrono::duration<double>( tClock::now() - start ).count();
	game.ClearEnemyCells();
	game.GetBullets()->clear();
	return elapsed;
}

int CountHunters( cGame &game ) {
	int hunters = 0;
	for ( const std::unique_ptr<cCharacter> &character : *game.GetEnemies() ) {
		const int32_t state = static_cast<const cEnemy &>( *character ).GetAiState();
		hunters += state == AI_CHASE || state == AI_ATTACK || state == AI_BOSS_WANDER ? 1 : 0;
	}
	return hunters;
}

double GetPercentile( std::vector<double> values, double fraction ) {
	std::sort( values.begin(), values.end() );
	const size_t index = std::min( values.size() - 1, static_cast<size_t>( fraction * static_cast<double>( values.size() ) ) );
	return values[index];
}

void MeasureFrames( benchmark::State &state, const std::string &root ) {
	cHeadlessGame headless;
	headless.Start();
	cGame &game = headless.GetGame();
	std::string description;
	game.SetUpGame( LoadTownScene( root, description ) );
	game.GetPlayers()->push_back( std::make_unique<cPlayer>( KIND_TAVESH, ROUND_LEFT, ROUND_ROWS[0] * CELL_SIZE ) );
	game.GetPlayers()->push_back( std::make_unique<cPlayer>( KIND_LUMRA, ROUND_RIGHT, ROUND_ROWS[1] * CELL_SIZE ) );
	PlaceEnemiesOnTheTopStreet( game );
	int frame = 0;
	for ( ; frame < cEnemyFrameBench::WARM_UP_FRAMES; frame++ ) {
		RunFrame( game, frame );
	}
	std::vector<double> times;
	double hunters = 0.0;
	for ( auto _ : state ) {
		const double elapsed = RunFrame( game, frame++ );
		state.SetIterationTime( elapsed );
		times.push_back( elapsed * 1e6 );
		hunters += CountHunters( game );
	}
	state.counters["p50_us"] = GetPercentile( times, 0.50 );
	state.counters["p99_us"] = GetPercentile( times, 0.99 );
	state.counters["max_us"] = GetPercentile( times, 1.0 );
	state.counters["enemies"] = static_cast<double>( game.GetEnemies()->size() );
	state.counters["hunting"] = hunters / static_cast<double>( times.size() );
}

}

void cEnemyFrameBench::Register() const {
	const std::string resourceRoot = root;
	benchmark::RegisterBenchmark( "Enemies/update-frame", [resourceRoot]( benchmark::State &state ) {
		MeasureFrames( state, resourceRoot );
	} )->Unit( benchmark::kMicrosecond )->UseManualTime()->Iterations( FRAMES );
}
