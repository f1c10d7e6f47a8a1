// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/AutoplayGame.h"

#include <algorithm>
#include <cstdlib>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <memory>
#include <numeric>

#include "actors/GameState.h"
#include "actors/Player.h"
#include "app/Game.h"
#include "app/MenuEntries.h"
#include "input/KeyCodes.h"
#include "input/PadState.h"
#include "harness/HeadlessGame.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

using tClock = std::chrono::steady_clock;

// The menu entries' actions used here, by their place on the screens.
const int ENTRY_ONE_PLAYER = 1;
const int ENTRY_TWO_PLAYERS = 2;
const int ENTRY_SETTINGS = 3;
const int ENTRY_DIFFICULTY = 3;
const int ENTRY_FIRST_CHARACTER = 3;		// tavesh for player 1; entry 4 is lumra
const int ENTRY_BACK = 5;					// also the pause screen's way to the main menu
const int MENU_FRAMES = 4;					// frames a menu gets to settle before the next click
const char *const CHARACTER_NAMES[2] = { "tavesh", "lumra" };
const int16_t FULL_TILT = 32767;
const int16_t SLIGHT_TILT = 8192;			// just past the dead zone: the cursor moves 1 pixel a frame
const int CURSOR_STEP = 6;					// pixels a frame at full tilt
const int STEER_FRAMES = 400;				// more than the way across the screen takes

// Pad 1 is player 1's, pad 2 player 2's: plugged in before the game starts, in that order.
int GetPadId( int player ) {
	return player + 1;
}

enum { KEY_UP_INDEX, KEY_DOWN_INDEX, KEY_RIGHT_INDEX, KEY_LEFT_INDEX, KEY_FIRE_INDEX, KEY_SKILL_INDEX, KEY_USE_INDEX };

int CountCells( const cScene &scene, int32_t code ) {
	const int32_t *walkMap = scene.GetWalkMap();
	return static_cast<int>( std::count( walkMap, walkMap + MAP_CELLS, code ) );
}

double GetMicroseconds( tClock::time_point from, tClock::time_point to ) {
	return std::chrono::duration<double, std::micro>( to - from ).count();
}

const char *DescribeOutcome( eOutcome outcome ) {
	switch ( outcome ) {
		case OUTCOME_VICTORY:		return "victory";
		case OUTCOME_DEFEAT:		return "defeat";
		case OUTCOME_UNFINISHED:	return "unfinished";
		default:					return "broken";
	}
}

}

bool cAutoplayGame::Play( const cGameSetup &setup, cGameResult &result ) {
	result = cGameResult();
	settleFrames = MENU_FRAMES + setup.inputDelay;
	headless.GetInput().ReleaseAllKeys();
	PlugPads( setup );
	bool played = headless.GetGame().GetGameState() == STATE_MAIN_MENU && ChooseDifficulty( setup.difficulty );
	if ( played ) {
		headless.GetClock().SetCalendarTime( setup.calendar );
		played = StartGame( setup );
	}
	if ( played ) {
		RunPlay( setup, result );
		played = ReturnToMenu();
	}
	UnplugPads();
	return played;
}

bool cAutoplayGame::ClickEntry( int entry ) {
	const cRect &rect = MENU_ENTRIES[entry - 1];
	return ClickAt( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 ) && headless.Frames( settleFrames );
}

bool cAutoplayGame::ClickAt( int32_t x, int32_t y ) {
	if ( !onPads ) {
		return headless.Click( x, y );
	}
	if ( !SteerCursor( x, y ) ) {
		return false;
	}
	cScriptedInputBackend &input = headless.GetInput();
	cPadState south;
	south.buttons[PAD_BUTTON_SOUTH] = true;
	input.SetPad( GetPadId( 0 ), south );
	const bool pressed = headless.Frame();
	input.SetPad( GetPadId( 0 ), cPadState() );
	return pressed && headless.Frame();
}

// The stick along one axis and then the other, slowing down for the last pixels; false when the
// cursor never got there or the game ended.
bool cAutoplayGame::SteerCursor( int32_t x, int32_t y ) {
	cScriptedInputBackend &input = headless.GetInput();
	const int32_t target[2] = { x, y };
	for ( int axis = 0; axis < 2; axis++ ) {
		for ( int frame = 0; frame < STEER_FRAMES; frame++ ) {
			int32_t cursor[2] = {};
			headless.GetGame().GetInputLayer().GetMousePosition( cursor[0], cursor[1] );
			const int32_t distance = target[axis] - cursor[axis];
			if ( distance == 0 ) {
				break;
			}
			const int16_t speed = std::abs( distance ) >= CURSOR_STEP ? FULL_TILT : SLIGHT_TILT;
			cPadState pad;
			pad.axes[axis == 0 ? PAD_AXIS_LEFT_X : PAD_AXIS_LEFT_Y] = static_cast<int16_t>( distance > 0 ? speed : -speed );
			input.SetPad( GetPadId( 0 ), pad );
			if ( !headless.Frame() ) {
				return false;
			}
		}
	}
	input.SetPad( GetPadId( 0 ), cPadState() );
	int32_t cursorX = 0;
	int32_t cursorY = 0;
	headless.GetGame().GetInputLayer().GetMousePosition( cursorX, cursorY );
	return cursorX == x && cursorY == y;
}

void cAutoplayGame::PlugPads( const cGameSetup &setup ) {
	onPads = setup.pads;
	for ( int player = 0; onPads && player < setup.players; player++ ) {
		headless.GetInput().PlugPad( GetPadId( player ), "autoplay pad " + std::to_string( player + 1 ) );
	}
}

void cAutoplayGame::UnplugPads() {
	for ( int player = 0; onPads && player < 2; player++ ) {
		headless.GetInput().UnplugPad( GetPadId( player ) );
	}
	onPads = false;
}

// Main menu, settings, difficulty, and back on the main menu.
bool cAutoplayGame::ChooseDifficulty( int difficulty ) {
	return ClickEntry( ENTRY_SETTINGS ) && headless.GetGame().GetGameState() == STATE_SETTINGS && ClickEntry( ENTRY_DIFFICULTY )
		&& headless.GetGame().GetGameState() == STATE_DIFFICULTY && ClickEntry( difficulty + 1 ) && headless.GetGame().GetGameState() == STATE_MAIN_MENU;
}

// The character screen starts the game in the frame of the click, which also runs its first step.
bool cAutoplayGame::StartGame( const cGameSetup &setup ) {
	if ( !ClickEntry( setup.players == 2 ? ENTRY_TWO_PLAYERS : ENTRY_ONE_PLAYER ) ) {
		return false;
	}
	const cRect &rect = MENU_ENTRIES[ENTRY_FIRST_CHARACTER + setup.character - 1];
	if ( !ClickAt( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 ) || !headless.Frames( setup.inputDelay ) ) {
		return false;
	}
	const cScene *scene = headless.GetGame().GetScene();
	return headless.GetGame().GetGameState() == STATE_PLAYING && scene != nullptr && scene->IsUsable();
}

void cAutoplayGame::RunPlay( const cGameSetup &setup, cGameResult &result ) {
	std::vector<std::unique_ptr<cBot>> bots;
	for ( int player = 0; player < setup.players; player++ ) {
		bots.push_back( std::make_unique<cBot>( player, setup.bot ) );
	}
	result.outcome = OUTCOME_UNFINISHED;
	result.doorsAtStart = CountCells( *headless.GetGame().GetScene(), WALK_DOOR );
	result.boxesAtStart = CountCells( *headless.GetGame().GetScene(), WALK_BOX );
	result.updateTimes.reserve( setup.frameLimit );
	result.frameTimes.reserve( setup.frameLimit );
	int32_t lastHealth[2] = { cCharacter::MAX_HEALTH, cCharacter::MAX_HEALTH };
	bool wasDown[2] = { false, false };
	const uint32_t startTick = headless.GetClock().GetTickCount();
	while ( headless.GetGame().GetGameState() == STATE_PLAYING && result.frames < setup.frameLimit ) {
		const std::clock_t thinking = std::clock();
		for ( size_t player = 0; player < bots.size(); player++ ) {
			if ( setup.localPlayer >= 0 && static_cast<int>( player ) != setup.localPlayer ) {
				continue;
			}
			const cBotKeys keys = bots[player]->Think( headless.GetGame() );
			if ( onPads ) {
				PressBotPad( headless, static_cast<int>( player ), keys );
			} else {
				PressBotKeys( headless, static_cast<int>( player ), keys );
			}
		}
		result.thinkTime += 1000.0 * static_cast<double>( std::clock() - thinking ) / CLOCKS_PER_SEC;
		if ( !RunFrame( setup, startTick, result ) ) {
			result.outcome = OUTCOME_BROKEN;
			break;
		}
		result.frames++;
		CountHits( result, lastHealth, wasDown );
		if ( watcher ) {
			watcher( headless.GetGame(), result.frames );
		}
	}
	const cGame &game = headless.GetGame();
	if ( game.GetScene() == nullptr ) {
		return;		// an online game that ended under the bots left nothing to count
	}
	result.enemiesLeft = static_cast<int>( game.GetEnemies()->size() );
	result.doorsClosed = CountCells( *game.GetScene(), WALK_DOOR );
	result.boxesClosed = CountCells( *game.GetScene(), WALK_BOX );
	for ( size_t i = 0; i < game.GetPlayers()->size() && i < 2; i++ ) {
		const cPlayer &player = static_cast<const cPlayer &>( *( *game.GetPlayers() )[i] );
		result.health[i] = player.IsDead() ? 0 : player.GetHealth();
	}
	for ( const std::unique_ptr<cBot> &bot : bots ) {
		result.shots += bot->GetShotsFired();
		result.skills += bot->GetSkillPresses();
	}
	if ( headless.GetGame().GetGameState() == STATE_VICTORY || headless.GetGame().GetGameState() == STATE_DEFEAT ) {
		result.outcome = headless.GetGame().GetGameState() == STATE_VICTORY ? OUTCOME_VICTORY : OUTCOME_DEFEAT;
	}
}

void cAutoplayGame::CountHits( cGameResult &result, int32_t lastHealth[2], bool wasDown[2] ) const {
	const tCharacterList &players = *headless.GetGame().GetPlayers();
	for ( size_t i = 0; i < players.size() && i < 2; i++ ) {
		const bool down = static_cast<const cPlayer &>( *players[i] ).IsDead();
		result.revivals += wasDown[i] && !down ? 1 : 0;
		wasDown[i] = down;
		const int32_t health = players[i]->GetHealth();
		result.hitsTaken += health < lastHealth[i] ? 1 : 0;
		result.lowestHealth = std::min( result.lowestHealth, static_cast<int>( health ) );
		lastHealth[i] = health;
	}
}

// The game's step, timed on its own, then its drawing; the manual clock then moves to the step's
// end as the game's pacing would move it. With a live calendar the second
// that seeds the random draws moves on with that clock.
bool cAutoplayGame::RunFrame( const cGameSetup &setup, uint32_t startTick, cGameResult &result ) {
	cGame &game = headless.GetGame();
	cManualClock &clock = headless.GetClock();
	const uint32_t frameStart = clock.GetTickCount();
	if ( setup.liveCalendar ) {
		clock.SetCalendarTime( setup.calendar + ( frameStart - startTick ) / 1000 );
	}
	const tClock::time_point start = tClock::now();
	const bool going = headless.Step();
	const tClock::time_point stepEnd = tClock::now();
	game.RenderFrame();
	const tClock::time_point end = tClock::now();
	clock.SetTickCount( frameStart + cGame::FRAME_TIME );
	result.updateTimes.push_back( GetMicroseconds( start, stepEnd ) );
	result.frameTimes.push_back( GetMicroseconds( start, end ) );
	return going;
}

void PressBotKeys( cHeadlessGame &headless, int player, const cBotKeys &keys ) {
	uint32_t codes[cConfig::KEYS_PER_PLAYER] = {};
	headless.GetGame().GetConfig().GetKeys( player + 1, codes );
	cScriptedInputBackend &input = headless.GetInput();
	input.SetKey( codes[KEY_UP_INDEX], keys.dy < 0 );
	input.SetKey( codes[KEY_DOWN_INDEX], keys.dy > 0 );
	input.SetKey( codes[KEY_RIGHT_INDEX], keys.dx > 0 );
	input.SetKey( codes[KEY_LEFT_INDEX], keys.dx < 0 );
	input.SetKey( codes[KEY_FIRE_INDEX], keys.fire );
	input.SetKey( codes[KEY_SKILL_INDEX], keys.skill );
	input.SetKey( codes[KEY_USE_INDEX], keys.use );
}

void PressBotPad( cHeadlessGame &headless, int player, const cBotKeys &keys ) {
	cPadState pad;
	pad.axes[PAD_AXIS_LEFT_X] = static_cast<int16_t>( keys.dx * FULL_TILT );
	pad.axes[PAD_AXIS_LEFT_Y] = static_cast<int16_t>( keys.dy * FULL_TILT );
	pad.buttons[PAD_BUTTON_SOUTH] = keys.fire;
	pad.buttons[PAD_BUTTON_WEST] = keys.skill;
	pad.buttons[PAD_BUTTON_EAST] = keys.use;
	headless.GetInput().SetPad( GetPadId( player ), pad );
}

// An end screen leaves with Escape (Start on a pad); a game still running is paused and left from
// the pause screen.
bool cAutoplayGame::ReturnToMenu() {
	cScriptedInputBackend &input = headless.GetInput();
	input.ReleaseAllKeys();
	cPadState start;
	start.buttons[PAD_BUTTON_START] = true;
	for ( int player = 0; player < 2; player++ ) {
		input.SetPad( GetPadId( player ), cPadState() );
	}
	const bool playing = headless.GetGame().GetGameState() == STATE_PLAYING;
	input.SetKey( KEY_ESCAPE, !onPads );
	input.SetPad( GetPadId( 0 ), onPads ? start : cPadState() );
	const bool going = headless.Frame();
	input.SetKey( KEY_ESCAPE, false );
	input.SetPad( GetPadId( 0 ), cPadState() );
	if ( !going || !headless.Frames( settleFrames ) ) {
		return false;
	}
	if ( playing && ( headless.GetGame().GetGameState() != STATE_PAUSE || !ClickEntry( ENTRY_BACK ) ) ) {
		return false;
	}
	return headless.GetGame().GetGameState() == STATE_MAIN_MENU;
}

std::string DescribeResult( const cGameSetup &setup, const cGameResult &result ) {
	char players[48];
	if ( setup.players == 2 ) {
		std::snprintf( players, sizeof( players ), "%s + %s", CHARACTER_NAMES[setup.character],
					   CHARACTER_NAMES[1 - setup.character] );
	} else {
		std::snprintf( players, sizeof( players ), "%s", CHARACTER_NAMES[setup.character] );
	}
	char health[32];
	if ( setup.players == 2 ) {
		std::snprintf( health, sizeof( health ), "%d/%d", result.health[0], result.health[1] );
	} else {
		std::snprintf( health, sizeof( health ), "%d", result.health[0] );
	}
	char line[400];
	std::snprintf( line, sizeof( line ),
				   "%dP %-14s difficulty %d: %-10s frames %5d (%5.1f s)  enemies left %2d  health %-7s lowest %3d  hits taken %2d  revivals %d  doors closed %d/%d  boxes closed %d/%d  shots %4d  skill %2d  "
				   "step mean %.1f us p99 %.1f us  frame mean %.1f us p99 %.1f us",
				   setup.players, players, setup.difficulty, DescribeOutcome( result.outcome ), result.frames,
				   result.frames * static_cast<double>( cGame::FRAME_TIME ) / 1000.0, result.enemiesLeft, health,
				   result.lowestHealth, result.hitsTaken, result.revivals, result.doorsClosed, result.doorsAtStart, result.boxesClosed, result.boxesAtStart, result.shots, result.skills, GetMean( result.updateTimes ), GetPercentile( result.updateTimes, 0.99 ),
				   GetMean( result.frameTimes ), GetPercentile( result.frameTimes, 0.99 ) );
	return line;
}

double GetPercentile( std::vector<double> values, double fraction ) {
	if ( values.empty() ) {
		return 0.0;
	}
	std::sort( values.begin(), values.end() );
	const size_t index = std::min( values.size() - 1, static_cast<size_t>( fraction * static_cast<double>( values.size() ) ) );
	return values[index];
}

double GetMean( const std::vector<double> &values ) {
	return values.empty() ? 0.0 : std::accumulate( values.begin(), values.end(), 0.0 ) / static_cast<double>( values.size() );
}
