// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Plays whole games of the real game without a window: through the menus (difficulty, number of
// players, characters) to a new game, then a bot at each player's keys, or at a pad of its own,
// until the victory, the defeat or the frame limit, and back to the main menu. Each frame of play is timed: the game's
// processing of the frame (the in-game update) and the whole frame.

#include <cstdint>
#include <ctime>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "harness/Bot.h"

class cGame;
class cHeadlessGame;

struct cGameSetup {
	int					players = 1;		// 1 or 2
	int					character = 0;		// player 1's: 0 tavesh, 1 lumra; player 2 gets the other
	int					difficulty = 1;		// 1 to 3
	int					frameLimit = 30000;	// frames of play before the game is abandoned
	std::time_t			calendar = 1700000000;	// in seconds: seeds the drops and the boss's walks
	bool				liveCalendar = false;	// the second moves on with the game's clock, as in a real run
	bool				pads = false;		// every player on a scripted pad of its own, the menus too
	int					localPlayer = -1;	// online: the one player (0 or 1) whose bot plays here; -1 both
	int					inputDelay = 0;		// online: steps before a key pressed here reaches the game
	cBotOptions			bot;
};

enum eOutcome {
	OUTCOME_UNFINISHED,						// the frame limit came first
	OUTCOME_VICTORY,
	OUTCOME_DEFEAT,
	OUTCOME_BROKEN							// the menus or the level did not do what they should
};

struct cGameResult {
	eOutcome			outcome = OUTCOME_BROKEN;
	int					frames = 0;			// frames of play
	int					enemiesLeft = 0;
	int					health[2] = { 0, 0 };	// at the end; 0 for a player who is down or gone
	int					shots = 0;			// presses of the fire keys
	int					skills = 0;			// presses of the skill keys
	int					hitsTaken = 0;		// frames in which a player lost health
	int					revivals = 0;		// players brought back by their partner
	int					lowestHealth = 100;	// of any player during the game
	int					doorsAtStart = 0;	// door cells of the level
	int					doorsClosed = 0;	// door cells still closed at the end
	int					boxesAtStart = 0;	// box cells of the level
	int					boxesClosed = 0;	// box cells still closed at the end
	std::vector<double>	updateTimes;		// in usec: the processing of each frame of play
	std::vector<double>	frameTimes;			// in usec: each whole frame of play
	double				thinkTime = 0;		// in msec of processor time: the bots' thinking
};

class cAutoplayGame {
public:
	explicit			cAutoplayGame( cHeadlessGame &headless ) : headless( headless ) {}

	// From the main menu to the main menu again.
	bool				Play( const cGameSetup &setup, cGameResult &result );
	// While the game is played: called after every frame of play with the frame number.
	void				SetWatcher( std::function<void( const cGame &, int )> watch ) { watcher = std::move( watch ); }

private:
	bool				ClickEntry( int entry );
	// A click at a 640 x 480 point: with the mouse, or the pad's stick and south button.
	bool				ClickAt( int32_t x, int32_t y );
	bool				SteerCursor( int32_t x, int32_t y );
	void				PlugPads( const cGameSetup &setup );
	void				UnplugPads();
	bool				ChooseDifficulty( int difficulty );
	bool				StartGame( const cGameSetup &setup );
	void				RunPlay( const cGameSetup &setup, cGameResult &result );
	bool				RunFrame( const cGameSetup &setup, uint32_t startTick, cGameResult &result );
	void				CountHits( cGameResult &result, int32_t lastHealth[2], bool wasDown[2] ) const;
	bool				ReturnToMenu();

	cHeadlessGame &		headless;
	bool				onPads = false;
	int					settleFrames = 0;	// frames a menu gets after a click: more online, by the input delay
	std::function<void( const cGame &, int )>	watcher;
};

// Sets the keys of a player (0 or 1) in the scripted input, by the player's bindings in the options.
void					PressBotKeys( cHeadlessGame &headless, int player, const cBotKeys &keys );
// Holds the same on the player's scripted pad: the stick at full tilt, south, west and east.
void					PressBotPad( cHeadlessGame &headless, int player, const cBotKeys &keys );
// One line for a game: characters, difficulty, outcome, frames, enemies left and the frame times.
std::string				DescribeResult( const cGameSetup &setup, const cGameResult &result );
// The value at a fraction (0.5 the median, 0.99 the 99th percentile) of the times.
double					GetPercentile( std::vector<double> values, double fraction );
double					GetMean( const std::vector<double> &values );
