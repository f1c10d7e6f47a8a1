// SPDX-License-Identifier: GPL-3.0-or-later
// Two games of the level live in one process: one plays a script of both players' keys straight,
// the other every k steps guesses player 2's keys wrongly for a while, goes back to the match it
// saved and plays the same steps again with the right keys. Both must agree at every checkpoint.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "actors/GameState.h"
#include "app/MenuEntries.h"
#include "app/Match.h"
#include "app/StateHash.h"
#include "harness/HeadlessGame.h"
#include "input/KeyCodes.h"
#include "platform/Clock.h"

namespace {

const int STEPS = 900;
const int CHECKPOINT_STEPS = 60;
const int GUESS_STEPS = 8;				// how far a wrong guess runs before it is taken back
const int SEGMENT_STEPS = 12;			// the script changes its keys this often
const uint32_t START_TICK = 5000;
const std::time_t START_CALENDAR = 1700000000;

// One player's keys: up, down, left, right, fire, skill, use.
const int PLAYER_KEYS[2][7] = {
	{ KEY_W, KEY_S, KEY_A, KEY_D, KEY_H, KEY_J, KEY_K },
	{ KEY_UP, KEY_DOWN, KEY_LEFT, KEY_RIGHT, KEY_NUMPAD1, KEY_NUMPAD2, KEY_NUMPAD3 },
};

using tKeys = std::vector<int>;

// Mostly up the map, firing often; the skill and the use key now and then.
std::vector<tKeys> MakeScript( uint32_t seed ) {
	std::minstd_rand draw( seed );
	std::vector<tKeys> script( STEPS );
	for ( int start = 0; start < STEPS; start += SEGMENT_STEPS ) {
		tKeys keys;
		for ( const int *player : PLAYER_KEYS ) {
			const uint32_t choice = draw();
			keys.push_back( player[choice % 3 == 0 ? 1 : 0] );
			if ( choice % 5 < 2 ) {
				keys.push_back( player[2 + choice % 2] );
			}
			for ( int extra = 4; extra < 7; extra++ ) {
				if ( draw() % ( extra == 4 ? 2 : 6 ) == 0 ) {
					keys.push_back( player[extra] );
				}
			}
		}
		for ( int step = start; step < start + SEGMENT_STEPS && step < STEPS; step++ ) {
			script[step] = keys;
		}
	}
	return script;
}

// Player 2 guessed wrong: walking down and left, firing, whatever it really pressed.
tKeys GuessWrongly( const tKeys &keys ) {
	tKeys guessed;
	for ( int key : keys ) {
		if ( key < KEY_NUMPAD1 || key > KEY_NUMPAD3 ) {
			if ( key != KEY_UP && key != KEY_DOWN && key != KEY_LEFT && key != KEY_RIGHT ) {
				guessed.push_back( key );
			}
		}
	}
	guessed.insert( guessed.end(), { KEY_DOWN, KEY_LEFT, KEY_NUMPAD1 } );
	return guessed;
}

class cTwoGames {
public:
	cTwoGames() {
		for ( cHeadlessGame *game : { &straight, &guessing } ) {
			EXPECT_TRUE( game->Start() );
		}
		SetClock( &clock );
		for ( cHeadlessGame *game : { &straight, &guessing } ) {
			StartTwoPlayerGame( *game );
		}
	}
	~cTwoGames() { SetClock( nullptr ); }

	// The clock reads the step's time, as the online game's agreed clock does.
	void RunStep( cHeadlessGame &game, int step, const tKeys &keys ) {
		clock.SetTickCount( START_TICK + static_cast<uint32_t>( step ) * cGame::FRAME_TIME );
		clock.SetCalendarTime( START_CALENDAR + clock.GetTickCount() / 1000 );
		game.GetInput().ReleaseAllKeys();
		for ( int key : keys ) {
			game.SetKey( key, true );
		}
		game.GetGame().Step();
	}

	cHeadlessGame	straight;
	cHeadlessGame	guessing;

private:
	void StartTwoPlayerGame( cHeadlessGame &game ) {
		for ( int entry : { 2, 3 } ) {
			const cRect &rect = MENU_ENTRIES[entry - 1];
			EXPECT_TRUE( game.Click( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 ) );
		}
		EXPECT_EQ( game.GetGame().GetGameState(), STATE_PLAYING );
	}

	cManualClock	clock;
};

}

TEST( MatchTest, GuessesTakenBackEveryFewStepsEndAsTheStraightGame ) {
	const std::vector<tKeys> script = MakeScript( 31 );
	for ( int every : { 1, 5, 13, 40 } ) {
		cTwoGames games;
		ASSERT_EQ( cStateHash( games.straight.GetGame() ).GetTotal(), cStateHash( games.guessing.GetGame() ).GetTotal() );
		cMatch saved;
		for ( int step = 0; step < STEPS; step++ ) {
			if ( step % every == 0 ) {
				games.guessing.GetGame().Save( saved );
				for ( int guess = step; guess < step + GUESS_STEPS && guess < STEPS; guess++ ) {
					games.RunStep( games.guessing, guess, GuessWrongly( script[guess] ) );
				}
				games.guessing.GetGame().Restore( saved );
			}
			games.RunStep( games.straight, step, script[step] );
			games.RunStep( games.guessing, step, script[step] );
			if ( ( step + 1 ) % CHECKPOINT_STEPS == 0 ) {
				const cStateHash expected( games.straight.GetGame() );
				ASSERT_EQ( cStateHash( games.guessing.GetGame() ).FindFirstDifference( expected ), "" )
					<< "guessing wrongly every " << every << " steps, at step " << step + 1;
			}
		}
		EXPECT_EQ( games.straight.GetGame().GetGameState(), STATE_PLAYING ) << "the script should last the game";
	}
}
