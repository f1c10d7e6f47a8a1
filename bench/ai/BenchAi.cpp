// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the enemies' path finding and their frame:
//   PathSearch/game-astar      the game's A* over a fixed set of 1000 start and goal cells, each
//                              search with a fresh search object as the game makes it
//   PathSearch/libtcod-astar   libtcod's A* over the same cells, one path object for all
//   Enemies/update-frame       one UpdateEnemies with the 24 enemies of the level chasing two
//                              players who walk a fixed round; p50 and p99 of the frame
// After the benchmarks it times every pair on its own and prints both medians, their ratio and
// how much longer the game's paths are.
//   bench-ai [--resources=FOLDER] [--skip-comparison] [benchmark options]
// FOLDER holds resources/ (the working directory by default); without the level's map a town
// drawn by the benchmark is searched instead.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "EnemyFrame.h"
#include "PairComparison.h"
#include "SearchPeers.h"
#include "TownMap.h"
#include "world/Scene.h"

namespace {

const int PAIR_COUNT = 1000;
const int REPETITIONS = 10;

void SearchAllPairsLikeTheGame( benchmark::State &state, const int32_t *walkMap, const std::vector<cSearchPair> &pairs ) {
	for ( auto _ : state ) {
		for ( const cSearchPair &pair : pairs ) {
			benchmark::DoNotOptimize( SearchLikeTheGame( walkMap, pair, nullptr ) );
		}
	}
	state.counters["per_search"] = benchmark::Counter( static_cast<double>( state.iterations() * pairs.size() ),
													   benchmark::Counter::kIsRate | benchmark::Counter::kInvert );
}

void SearchAllPairsWithTcod( benchmark::State &state, const int32_t *walkMap, const std::vector<cSearchPair> &pairs ) {
	cTcodSearch tcod( walkMap );
	for ( auto _ : state ) {
		for ( const cSearchPair &pair : pairs ) {
			benchmark::DoNotOptimize( tcod.Compute( pair ) );
		}
	}
	state.counters["per_search"] = benchmark::Counter( static_cast<double>( state.iterations() * pairs.size() ),
													   benchmark::Counter::kIsRate | benchmark::Counter::kInvert );
}

// Takes the benchmark's own flags out of the arguments before the benchmark library reads them.
void TakeOwnFlags( int &argc, char **argv, std::string &root, bool &compare ) {
	const char *const resources = "--resources=";
	int kept = 0;
	for ( int i = 0; i < argc; i++ ) {
		if ( std::strncmp( argv[i], resources, std::strlen( resources ) ) == 0 ) {
			root = argv[i] + std::strlen( resources );
		} else if ( std::strcmp( argv[i], "--skip-comparison" ) == 0 ) {
			compare = false;
		} else {
			argv[kept++] = argv[i];
		}
	}
	argc = kept;
}

void RegisterSearches( const int32_t *walkMap, const std::vector<cSearchPair> &pairs ) {
	benchmark::RegisterBenchmark( "PathSearch/game-astar", [walkMap, &pairs]( benchmark::State &state ) {
		SearchAllPairsLikeTheGame( state, walkMap, pairs );
	} )->Unit( benchmark::kMillisecond )->Repetitions( REPETITIONS )->ReportAggregatesOnly( true );
	benchmark::RegisterBenchmark( "PathSearch/libtcod-astar", [walkMap, &pairs]( benchmark::State &state ) {
		SearchAllPairsWithTcod( state, walkMap, pairs );
	} )->Unit( benchmark::kMillisecond )->Repetitions( REPETITIONS )->ReportAggregatesOnly( true );
}

}

int main( int argc, char **argv ) {
	std::string root = ".";
	bool compare = true;
	TakeOwnFlags( argc, argv, root, compare );
	benchmark::Initialize( &argc, argv );
	std::string description;
	std::unique_ptr<cScene> town = LoadTownScene( root, description );
	const int32_t *walkMap = town->GetWalkMap();
	const std::vector<cSearchPair> pairs = MakeSearchPairs( walkMap, PAIR_COUNT );
	std::printf( "Searching %s: %zu start and goal pairs\n", description.c_str(), pairs.size() );
	if ( static_cast<int>( pairs.size() ) < PAIR_COUNT ) {
		std::fprintf( stderr, "bench-ai: the map does not connect %d pairs of cells\n", PAIR_COUNT );
		return 1;
	}
	RegisterSearches( walkMap, pairs );
	cEnemyFrameBench enemyFrame( root );
	enemyFrame.Register();
	benchmark::RunSpecifiedBenchmarks();
	benchmark::Shutdown();
	if ( compare && !ComparePairs( walkMap, pairs ) ) {
		return 1;
	}
	return 0;
}
