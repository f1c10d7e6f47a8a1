// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/Game.h"

#include "actors/Bullet.h"
#include "actors/Character.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/WorldAnimation.h"
#include "app/MenuEntries.h"
#include "input/SettingsStore.h"
#include "log/Log.h"
#include "platform/Platform.h"
#include "sound/SoundIds.h"
#include "world/Scene.h"

namespace {

const int32_t MOUSE_START_X = 320;			// the centre of the 640 x 480 screen
const int32_t MOUSE_START_Y = 240;

}

cGame::cGame() = default;

cGame::~cGame() = default;

// A failing graphics or input layer ends the program; a failing sound layer only silences it.
bool cGame::Init( const cPlatform &platform, bool fullscreen ) {
	cLog::Instance();
	dataRoot = platform.dataRoot;
	settings = platform.settings != nullptr ? platform.settings : &ownSettings;
	settingsStore = platform.settingsStore;
	if ( !graphicsLayer.Init( platform.graphics, fullscreen ) ) {
		cLog::Write( "Error initializing Graphics!" );
		return false;
	}
	if ( !InitInput( platform.input ) ) {
		cLog::Write( "Error initializing Input!" );
		return false;
	}
	if ( !soundLayer.Init( platform.sound ) ) {
		cLog::Write( "Error initializing Sound!" );
	}
	graphicsLayer.LoadTextures( dataRoot );
	soundLayer.SetLevels( settings->musicVolume, settings->effectsVolume );
	soundLayer.LoadSounds( cSoundLayer::GetSoundFolder( dataRoot ).c_str() );
	return true;
}

bool cGame::InitInput( cInputBackend *input ) {
	if ( !inputLayer.Init( input, true, cInputLayer::DEVICE_KEYBOARD | cInputLayer::DEVICE_MOUSE ) ) {
		return false;
	}
	inputLayer.SetMousePosition( MOUSE_START_X, MOUSE_START_Y );
	return true;
}

void cGame::Restart( cInputBackend *input ) {
	ClearGame();
	gameState = STATE_MAIN_MENU;
	endTime = 0;
	clickLatch = false;
	config = cConfig();
	controlsPage.Close();
	soundLayer.StopAll();
	inputLayer.Release();
	InitInput( input );
}

void cGame::SetGameState( int32_t state ) {
	gameState = state;
}

void cGame::Save( cMatch &saved ) const {
	saved = match;
	inputLayer.GetMousePosition( saved.cursorX, saved.cursorY );
	saved.music = soundLayer.GetCurrentMusic();
	saved.heartbeatPlaying = soundLayer.heartbeatPlaying;
	if ( inputLayer.GetKeyboard() != nullptr ) {
		inputLayer.GetKeyboard()->GetSavedState( saved.keysAtLastStep );
	}
}

// The music and the heartbeat are put back as sounds: what plays is what the saved step heard.
void cGame::Restore( const cMatch &saved ) {
	match = saved;
	inputLayer.SetMousePosition( saved.cursorX, saved.cursorY );
	if ( saved.music != soundLayer.GetCurrentMusic() ) {
		if ( saved.music < 0 ) {
			soundLayer.Stop( soundLayer.GetCurrentMusic() );
		} else {
			soundLayer.PlayMusic( saved.music );
		}
	}
	if ( saved.heartbeatPlaying != soundLayer.heartbeatPlaying ) {
		if ( saved.heartbeatPlaying ) {
			soundLayer.PlaySound( SOUND_HEARTBEAT, true );
		} else {
			soundLayer.Stop( SOUND_HEARTBEAT );
		}
		soundLayer.heartbeatPlaying = saved.heartbeatPlaying;
	}
	if ( inputLayer.GetKeyboard() != nullptr ) {
		inputLayer.GetKeyboard()->SetSavedState( saved.keysAtLastStep );
	}
}

bool cGame::Step() {
	ReadInput();
	if ( !Process() ) {
		return false;
	}
	AnimateWorld();
	KeepMusic();
	return true;
}

void cGame::Finalize() {
	ClearGame();
	graphicsLayer.ReleaseTextures();
	graphicsLayer.Release();
	inputLayer.Unacquire();
	inputLayer.Release();
	soundLayer.Release();
}

bool cGame::ReadInput() {
	cLog::Instance();
	if ( !inputLayer.Read() ) {
		cLog::Write( "Error reading Input!" );
		return false;
	}
	return true;
}

bool cGame::Process() {
	cKeyboard *keyboard = inputLayer.GetKeyboard();
	cMouse *mouse = inputLayer.GetMouse();
	if ( keyboard == nullptr || mouse == nullptr ) {
		return true;
	}
	if ( !ProcessMenus( *keyboard, *mouse ) ) {
		return false;
	}
	inputLayer.SetRawKeys( gameState == STATE_CONTROLS && controlsPage.IsWaiting() );
	UpdateMenuTexts();
	if ( gameState == STATE_PLAYING ) {
		UpdateInGame();
	} else if ( soundLayer.heartbeatPlaying ) {
		soundLayer.Stop( SOUND_HEARTBEAT );
		soundLayer.heartbeatPlaying = false;
	}
	return true;
}

void cGame::AnimateWorld() {
	if ( ShowsWorld( gameState ) && scene && players && enemies && explosions && items ) {
		::AnimateWorld( gameState, *scene, *players, *enemies, *explosions, *items );
	}
}

// PlayMusic does nothing while its sound already plays, so asking every step starts it once.
bool cGame::KeepMusic() {
	if ( gameState == STATE_MAIN_MENU ) {
		return soundLayer.PlayMusic( SOUND_MENU_MUSIC );
	}
	if ( gameState == STATE_PLAYING && scene && !scene->IsFinalAreaLocked() ) {
		return soundLayer.PlayMusic( SOUND_STREETS_MUSIC );
	}
	return true;
}

bool cGame::RenderFrame() const {
	int32_t mouseX = 0;
	int32_t mouseY = 0;
	inputLayer.GetMousePosition( mouseX, mouseY );
	return graphicsLayer.Render( gameState, mouseX, mouseY, scene.get(), players.get(), enemies.get(), bullets.get(),
								explosions.get(), items.get(), &menuTexts );
}

void cGame::KeepSettings() {
	if ( settingsStore != nullptr ) {
		settingsStore->Save( *settings );
	}
}

// The values drawn in the entries that change them, after the labels the pictures carry.
void cGame::UpdateMenuTexts() {
	static const char *const STARTS[] = { "ask", "full screen", "window" };
	menuTexts.clear();
	if ( gameState == STATE_CONTROLS ) {
		controlsPage.GetTexts( inputLayer, *settings, menuTexts );
	} else if ( gameState == STATE_SETTINGS ) {
		menuTexts.push_back( cMenuText{ MENU_VALUE_X, MENU_ENTRIES[1].top + MENU_VALUE_DOWN, STARTS[settings->startScreen] } );
	} else if ( gameState == STATE_SOUND ) {
		for ( int i = 0; i < 2; i++ ) {
			const int level = i == 0 ? settings->musicVolume : settings->effectsVolume;
			menuTexts.push_back( cMenuText{ MENU_LEVEL_X, MENU_ENTRIES[i].top + MENU_VALUE_DOWN, std::to_string( level ) } );
		}
	}
}

void cGame::ClearGame() {
	match.Clear();
}

void cGame::SetUpGame( std::unique_ptr<cScene> newScene ) {
	match.SetUp( std::move( newScene ) );
}
