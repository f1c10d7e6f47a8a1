// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the game's step (cGame::Step: the input, the menus' rules, UpdateInGame, the world's
// animation and the music) while a game is played, over whole games played by the autoplay bots: the twelve choices of
// players, player 1's character and difficulty, one game each. Prints the median, the 99th
// percentile and the longest step over all steps of play, then one line per game.
//   bench-game [--resources=FOLDER] [--frames=N]
// FOLDER holds resources/ (the working directory by default); N limits each game (30000).

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "bench/BenchOptions.h"
#include "harness/AutoplayGame.h"
#include "harness/HeadlessGame.h"

namespace {

const int CHARACTERS = 2;
const int DIFFICULTIES = 3;

std::vector<cGameSetup> ListGames( int frames ) {
	std::vector<cGameSetup> setups;
	for ( int players = 1; players <= 2; players++ ) {
		for ( int character = 0; character < CHARACTERS; character++ ) {
			for ( int difficulty = 1; difficulty <= DIFFICULTIES; difficulty++ ) {
				cGameSetup setup;
				setup.players = players;
				setup.character = character;
				setup.difficulty = difficulty;
				setup.frameLimit = frames;
				setups.push_back( setup );
			}
		}
	}
	return setups;
}

}

int main( int argc, char **argv ) {
	cBenchOptions options( "bench-game", "frames", 30000, 1 );
	if ( !options.Read( argc, argv ) ) {
		return 2;
	}
	const int frames = options.GetCount();
	cHeadlessGame headless;
	headless.GetGraphics().SetRecording( false );
	if ( !headless.Start() || !headless.Frames( 2 ) ) {
		std::fprintf( stderr, "bench-game: the game did not start\n" );
		return 1;
	}
	cAutoplayGame autoplay( headless );
	std::vector<double> times;
	std::vector<std::string> lines;
	for ( const cGameSetup &setup : ListGames( frames ) ) {
		cGameResult result;
		if ( !autoplay.Play( setup, result ) || result.outcome == OUTCOME_BROKEN ) {
			std::fprintf( stderr, "bench-game: a game did not run through\n" );
			return 1;
		}
		times.insert( times.end(), result.updateTimes.begin(), result.updateTimes.end() );
		lines.push_back( DescribeResult( setup, result ) );
	}
	std::printf( "Step over %zu autoplay games, %zu steps of play: p50 %.2f us, p99 %.2f us, max %.2f us, "
				 "mean %.2f us\n", lines.size(), times.size(), GetPercentile( times, 0.50 ), GetPercentile( times, 0.99 ),
				 GetPercentile( times, 1.0 ), GetMean( times ) );
	for ( const std::string &line : lines ) {
		std::printf( "  %s\n", line.c_str() );
	}
	return 0;
}
