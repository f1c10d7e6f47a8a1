// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Game.h"

#include "actors/ActorTypes.h"
#include "actors/Character.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "app/MenuEntries.h"
#include "input/KeyCodes.h"
#include "platform/Clock.h"
#include "sound/SoundIds.h"

namespace {

const int LEFT_BUTTON = 0;
const int32_t SCREEN_RIGHT = 639;
const int32_t SCREEN_BOTTOM = 479;

// The screen each entry leads to; entries not listed do nothing on their screen.
struct cMenuMove {
	int32_t		screen;
	int			entry;
	int32_t		next;
};
const cMenuMove MENU_MOVES[] = {
	{ STATE_MAIN_MENU, 1, STATE_SELECT_ONE }, { STATE_MAIN_MENU, 2, STATE_SELECT_TWO },
	{ STATE_MAIN_MENU, 3, STATE_SETTINGS }, { STATE_MAIN_MENU, 4, STATE_CREDITS },
	{ STATE_SETTINGS, 1, STATE_SOUND }, { STATE_SETTINGS, 3, STATE_DIFFICULTY },
	{ STATE_SETTINGS, 4, STATE_CONTROLS }, { STATE_SETTINGS, 5, STATE_MAIN_MENU }, { STATE_SOUND, 5, STATE_MAIN_MENU },
	{ STATE_DIFFICULTY, 2, STATE_MAIN_MENU }, { STATE_DIFFICULTY, 3, STATE_MAIN_MENU },
	{ STATE_DIFFICULTY, 4, STATE_MAIN_MENU }, { STATE_DIFFICULTY, 5, STATE_MAIN_MENU },
	{ STATE_CONTROLS, 5, STATE_MAIN_MENU }, { STATE_CREDITS, 5, STATE_MAIN_MENU },
	{ STATE_SELECT_ONE, 5, STATE_MAIN_MENU }, { STATE_SELECT_TWO, 5, STATE_MAIN_MENU },
	{ STATE_PAUSE, 4, STATE_PLAYING }, { STATE_PAUSE, 5, STATE_MAIN_MENU },
};

// On the sound screen, entry 1 sets the music's level and entry 2 the effects': a click on the
// entry's left half lowers it by one, on its right half raises it.
const int MUSIC_ENTRY = 1;
const int EFFECTS_ENTRY = 2;
const int START_ENTRY = 2;		// on the settings screen: ask, full screen, window, in turn
const int32_t LEVEL_SPLIT_X = ( MENU_ENTRIES[0].left + MENU_ENTRIES[0].right ) / 2;

int32_t Clamp( int32_t value, int32_t low, int32_t high ) {
	return value < low ? low : ( value > high ? high : value );
}

// The entry under the cursor, 1 to 5, or 0 for none.
int FindEntry( const cMouse &mouse ) {
	for ( int i = 0; i < MENU_ENTRY_COUNT; i++ ) {
		const cRect &entry = MENU_ENTRIES[i];
		if ( mouse.InRect( entry.left, entry.top, entry.right, entry.bottom ) ) {
			return i + 1;
		}
	}
	return 0;
}

}

bool cGame::ProcessMenus( cKeyboard &keyboard, cMouse &mouse ) {
	const bool leftControls = keyboard.KeyDown( KEY_ESCAPE ) || inputLayer.IsPauseRequested();
	if ( leftControls && gameState == STATE_PLAYING ) {
		gameState = STATE_PAUSE;
		return true;
	}
	if ( gameState == STATE_DEFEAT || gameState == STATE_VICTORY ) {
		if ( keyboard.KeyDown( KEY_ESCAPE ) || endTime + END_SCREEN_TIME < GetTickCount() ) {
			LeaveEndScreen();
			return true;
		}
		if ( gameState == STATE_VICTORY && enemies && !enemies->empty() ) {
			ExplodeRemainingEnemies();
		}
	}

	if ( gameState == STATE_CONTROLS && !settingsLocked && controlsPage.ReadKeys( inputLayer, *settings ) ) {
		KeepSettings();
	}

	int32_t x = 0;
	int32_t y = 0;
	mouse.GetPosition( x, y );
	mouse.SetPosition( Clamp( x, 0, SCREEN_RIGHT ), Clamp( y, 0, SCREEN_BOTTOM ) );

	// A click is a press followed by a release, handled in the frame that sees the release.
	if ( !clickLatch ) {
		clickLatch = mouse.ButtonDown( LEFT_BUTTON );
	}
	if ( !mouse.ButtonUp( LEFT_BUTTON ) || !clickLatch ) {
		return true;
	}
	clickLatch = false;
	if ( gameState == STATE_DEFEAT || gameState == STATE_VICTORY ) {
		return true;
	}
	mouse.GetPosition( x, y );
	if ( gameState == STATE_CONTROLS && !settingsLocked && ClickControls( FindEntry( mouse ), x, y ) ) {
		return true;
	}
	if ( !settingsLocked && ClickSetting( FindEntry( mouse ), x ) ) {
		KeepSettings();
		return true;
	}
	return ClickEntry( FindEntry( mouse ) );
}

void cGame::LeaveEndScreen() {
	soundLayer.Stop( SOUND_GAME_OVER );
	soundLayer.Stop( SOUND_LEVEL_COMPLETE );
	soundLayer.Stop( SOUND_EXPLOSION );
	gameState = STATE_MAIN_MENU;
}

// The first frame of the victory screen: the enemies still standing go up in smoke, silently,
// and the shots in flight vanish.
void cGame::ExplodeRemainingEnemies() {
	for ( const std::unique_ptr<cCharacter> &enemy : *enemies ) {
		int32_t x = 0;
		int32_t y = 0;
		enemy->GetPosition( x, y );
		explosions->push_back( cExplosion( x, y, false ) );
	}
	bullets->clear();
	enemies->clear();
}

// What an entry does on the current screen; returns false only to quit the program.
bool cGame::ClickEntry( int entry ) {
	const int32_t screen = gameState;
	if ( screen == STATE_MAIN_MENU && entry == 5 ) {
		return false;
	}
	if ( screen == STATE_MAIN_MENU && ( entry == 1 || entry == 2 ) ) {
		config.SetPlayers( static_cast<uint32_t>( entry ) );
	}
	if ( screen == STATE_DIFFICULTY && entry >= 2 && entry <= 4 ) {
		config.SetDifficulty( static_cast<uint32_t>( entry - 1 ) );
	}
	if ( ( screen == STATE_SELECT_ONE || screen == STATE_SELECT_TWO ) && ( entry == 3 || entry == 4 ) ) {
		StartWithCharacter( entry );
		return true;
	}
	for ( const cMenuMove &move : MENU_MOVES ) {
		if ( move.screen == screen && move.entry == entry ) {
			gameState = move.next;
			break;
		}
	}
	return true;
}

// The keys' cells and the entries that change the keys; false for a click the screen's move takes.
bool cGame::ClickControls( int entry, int32_t x, int32_t y ) {
	if ( controlsPage.Click( x, y ) ) {
		return true;
	}
	if ( controlsPage.ClickEntry( entry, inputLayer, *settings ) ) {
		KeepSettings();
	}
	return false;
}

// The entries that change a setting in place; false for every other click.
bool cGame::ClickSetting( int entry, int32_t x ) {
	if ( gameState == STATE_SETTINGS && entry == START_ENTRY ) {
		settings->startScreen = static_cast<cSettings::eStartScreen>( ( settings->startScreen + 1 ) % 3 );
		return true;
	}
	if ( gameState != STATE_SOUND || ( entry != MUSIC_ENTRY && entry != EFFECTS_ENTRY ) ) {
		return false;
	}
	int &level = entry == MUSIC_ENTRY ? settings->musicVolume : settings->effectsVolume;
	level = Clamp( level + ( x < LEVEL_SPLIT_X ? -1 : 1 ), 0, cSettings::LOUDEST );
	soundLayer.SetLevels( settings->musicVolume, settings->effectsVolume );
	return true;
}

// Entry 3 gives player 1 tavesh, entry 4 lumra; in a two-player game player 2 takes the other.
void cGame::StartWithCharacter( int entry ) {
	const uint32_t first = entry == 3 ? KIND_TAVESH : KIND_LUMRA;
	config.SetCharacter( 1, first );
	if ( gameState == STATE_SELECT_TWO ) {
		config.SetCharacter( 2, first == KIND_TAVESH ? KIND_LUMRA : KIND_TAVESH );
	}
	gameState = STATE_PLAYING;
	NewGame();
}
