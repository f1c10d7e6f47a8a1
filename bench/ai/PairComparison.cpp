// SPDX-License-Identifier: GPL-3.0-or-later
#include "PairComparison.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

const int PASSES = 9;				// each pair's time is its median over the passes

using tClock = std::chrono::steady_clock;

template <typename tSearch>
double TimeOnce( tSearch search ) {
	const tClock::time_point start = tClock::now();
	search();
	return std::chrono::duration<double, std::micro>( tClock::now() - start ).count();
}

double GetMedian( std::vector<double> values ) {
	std::sort( values.begin(), values.end() );
	const size_t middle = values.size() / 2;
	return values.size() % 2 == 1 ? values[middle] : ( values[middle - 1] + values[middle] ) / 2.0;
}

double GetMean( const std::vector<double> &values ) {
	double sum = 0.0;
	for ( double value : values ) {
		sum += value;
	}
	return values.empty() ? 0.0 : sum / static_cast<double>( values.size() );
}

// Each pair's median time over several passes through the whole set. A pass runs one search
// after the other as the game does, so a search never finds the cells of its own last run warm.
void TimePairs( const int32_t *walkMap, const std::vector<cSearchPair> &pairs, cTcodSearch &tcod,
				std::vector<double> &gameTimes, std::vector<double> &tcodTimes ) {
	std::vector<std::vector<double>> game( pairs.size() );
	std::vector<std::vector<double>> peer( pairs.size() );
	for ( int pass = 0; pass < PASSES; pass++ ) {
		for ( size_t i = 0; i < pairs.size(); i++ ) {
			game[i].push_back( TimeOnce( [&]() { SearchLikeTheGame( walkMap, pairs[i], nullptr ); } ) );
		}
		for ( size_t i = 0; i < pairs.size(); i++ ) {
			peer[i].push_back( TimeOnce( [&]() { tcod.Compute( pairs[i] ); } ) );
		}
	}
	for ( size_t i = 0; i < pairs.size(); i++ ) {
		gameTimes.push_back( GetMedian( game[i] ) );
		tcodTimes.push_back( GetMedian( peer[i] ) );
	}
}
}

bool ComparePairs( const int32_t *walkMap, const std::vector<cSearchPair> &pairs ) {
	cTcodSearch tcod( walkMap );
	std::vector<double> longer;			// per pair, in percent of libtcod's path cost
	double gameCost = 0.0;
	double tcodCost = 0.0;
	int disagreements = 0;
	for ( const cSearchPair &pair : pairs ) {
		tPathCells cells;
		const bool gameFound = SearchLikeTheGame( walkMap, pair, &cells );
		const bool tcodFound = tcod.Compute( pair );
		if ( gameFound != tcodFound ) {
			std::printf( "disagreement at (%d,%d) to (%d,%d): game %d, libtcod %d\n", pair.startX, pair.startY,
						 pair.goalX, pair.goalY, gameFound, tcodFound );
			disagreements++;
			continue;
		}
		const double game = GetPathCost( pair.startX, pair.startY, cells );
		const double peer = GetPathCost( pair.startX, pair.startY, tcod.GetCells() );
		gameCost += game;
		tcodCost += peer;
		longer.push_back( peer > 0.0 ? ( game / peer - 1.0 ) * 100.0 : 0.0 );
	}
	std::vector<double> gameTimes;
	std::vector<double> tcodTimes;
	TimePairs( walkMap, pairs, tcod, gameTimes, tcodTimes );
	const double gameMedian = GetMedian( gameTimes );
	const double tcodMedian = GetMedian( tcodTimes );
	std::printf( "\nPer pair, median of %d passes through the set, over %zu pairs:\n", PASSES, pairs.size() );
	std::printf( "  game A*    median %8.2f us   mean %8.2f us\n", gameMedian, GetMean( gameTimes ) );
	std::printf( "  libtcod A* median %8.2f us   mean %8.2f us\n", tcodMedian, GetMean( tcodTimes ) );
	std::printf( "  libtcod / game at the median: %.2f\n", tcodMedian / gameMedian );
	std::printf( "  game paths longer than libtcod's: %.2f %% on average per pair, %.2f %% in total"
				 " (costs 1 and 1.4 per step)\n", GetMean( longer ), ( gameCost / tcodCost - 1.0 ) * 100.0 );
	std::printf( "  pairs where the two disagree on finding a path: %d\n", disagreements );
	return disagreements == 0;
}
