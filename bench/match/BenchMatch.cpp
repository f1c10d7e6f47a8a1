// SPDX-License-Identifier: GPL-3.0-or-later
// Measures what going back costs: saving the whole match (cGame::Save into a match saved before,
// as a ring of saved steps does) and putting it back (cGame::Restore), and one step of play for
// scale, on the states of a two-player game of the level that the bots play, taken every
// SNAPSHOT_STEPS steps. Prints the bytes a saved match holds (the largest and the mean).
//   bench-match [--resources=FOLDER] [benchmark options]
// FOLDER holds resources/ (the working directory by default).

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

#include "actors/GameState.h"
#include "app/Match.h"
#include "app/MenuEntries.h"
#include "harness/AutoplayGame.h"
#include "harness/Bot.h"
#include "harness/HeadlessGame.h"

namespace {

const int PLAY_STEPS = 3000;
const int SNAPSHOT_STEPS = 250;

struct cPlayedGame {
	cHeadlessGame		headless;
	std::vector<cMatch>	snapshots;		// as saved by the game along the way
};

bool ClickEntry( cHeadlessGame &headless, int entry ) {
	const cRect &rect = MENU_ENTRIES[entry - 1];
	return headless.Click( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 );
}

// Two bots, two players, tavesh and lumra, the middle difficulty.
bool PlayGame( cPlayedGame &game ) {
	cHeadlessGame &headless = game.headless;
	if ( !headless.Start() || !ClickEntry( headless, 2 ) || !ClickEntry( headless, 3 ) ) {
		return false;
	}
	cBot bots[2] = { cBot( 0, cBotOptions() ), cBot( 1, cBotOptions() ) };
	for ( int step = 1; step <= PLAY_STEPS && headless.GetGame().GetGameState() == STATE_PLAYING; step++ ) {
		for ( int player = 0; player < 2; player++ ) {
			PressBotKeys( headless, player, bots[player].Think( headless.GetGame() ) );
		}
		headless.Step();
		if ( step % SNAPSHOT_STEPS == 0 ) {
			game.snapshots.emplace_back();
			headless.GetGame().Save( game.snapshots.back() );
		}
	}
	return !game.snapshots.empty();
}

cPlayedGame *played = nullptr;

void SaveMatch( benchmark::State &state ) {
	cMatch saved;
	size_t i = 0;
	for ( auto _ : state ) {
		state.PauseTiming();
		played->headless.GetGame().Restore( played->snapshots[i++ % played->snapshots.size()] );
		state.ResumeTiming();
		played->headless.GetGame().Save( saved );
		benchmark::ClobberMemory();
	}
}

void RestoreMatch( benchmark::State &state ) {
	size_t i = 0;
	for ( auto _ : state ) {
		played->headless.GetGame().Restore( played->snapshots[i++ % played->snapshots.size()] );
		benchmark::ClobberMemory();
	}
}

// The bots keep still: one step of the game as it runs again after going back.
void StepMatch( benchmark::State &state ) {
	size_t i = 0;
	for ( auto _ : state ) {
		state.PauseTiming();
		played->headless.GetGame().Restore( played->snapshots[i++ % played->snapshots.size()] );
		state.ResumeTiming();
		played->headless.GetGame().Step();
	}
}

}

BENCHMARK( SaveMatch )->Name( "Match/save" );
BENCHMARK( RestoreMatch )->Name( "Match/restore" );
BENCHMARK( StepMatch )->Name( "Match/step" );

int main( int argc, char **argv ) {
	const char *resources = nullptr;
	std::vector<char *> rest;
	for ( int i = 0; i < argc; i++ ) {
		if ( std::strncmp( argv[i], "--resources=", 12 ) == 0 ) {
			resources = argv[i] + 12;
		} else {
			rest.push_back( argv[i] );
		}
	}
	if ( resources != nullptr && chdir( resources ) != 0 ) {
		std::fprintf( stderr, "bench-match: cannot enter %s\n", resources );
		return 2;
	}
	cPlayedGame game;
	if ( !PlayGame( game ) ) {
		std::fprintf( stderr, "bench-match: the game did not start\n" );
		return 1;
	}
	played = &game;
	size_t largest = 0;
	size_t total = 0;
	for ( const cMatch &match : game.snapshots ) {
		largest = std::max( largest, match.GetSize() );
		total += match.GetSize();
	}
	std::printf( "Saved match: %zu states, %zu bytes at most, %zu on average\n", game.snapshots.size(), largest,
				 total / game.snapshots.size() );
	int count = static_cast<int>( rest.size() );
	benchmark::Initialize( &count, rest.data() );
	benchmark::RunSpecifiedBenchmarks();
	benchmark::Shutdown();
	return 0;
}
