// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cGame owns everything the program has: the three device layers and the match (app/Match.h), the
// running game as a value with its options, scene and lists. Save and Restore copy the match out and
// back in one call each. Its step (Step) reads the input, processes it and moves every animation
// on; its drawing (RenderFrame) shows the step's result and changes nothing.
// The operations are spread over the files of this folder by subject: Game.cpp (start, step,
// drawing and shut-down), Menus.cpp, NewGame.cpp, InGameUpdate.cpp, PlayerStep.cpp,
// EnemiesUpdate.cpp, BulletPasses.cpp and ItemPasses.cpp.

#include <cstdint>
#include <memory>
#include <string>

#include "actors/ActorLists.h"
#include "app/Config.h"
#include "app/Match.h"
#include "app/ControlsPage.h"
#include "graphics/GraphicsLayer.h"
#include "input/InputLayer.h"
#include "input/Settings.h"
#include "sound/SoundLayer.h"

class cScene;
class cPlayer;
class cSettingsStore;
struct cPlatform;

// One player's keys decoded for a frame.
struct cPlayerCommand {
	int32_t				dx = 0;				// -1, 0 or 1
	int32_t				dy = 0;				// -1, 0 or 1, y downwards
	int32_t				direction = -1;		// direction code, -1 when no movement key is held
	bool				fire = false;		// held
	bool				skill = false;		// went down this frame
	bool				use = false;		// held
};

class cGame {
public:
	static const uint32_t FRAME_TIME = 15;			// in msec, one step of the game
	static const uint32_t END_SCREEN_TIME = 7500;	// in msec

						cGame();
	virtual				~cGame();

	// Start, step, drawing and shut-down.
	bool				Init( const cPlatform &platform, bool fullscreen );
	// One step: ReadInput, Process, AnimateWorld, KeepMusic. False when the player quit.
	bool				Step();
	void				Finalize();
	bool				ReadInput();
	bool				Process();
	// The world's pictures move on by one step while the world is shown (actors/WorldAnimation.h).
	void				AnimateWorld();
	// The menu music in the main menu, the streets' music in play outside the final area.
	bool				KeepMusic();
	bool				RenderFrame() const;
	void				ClearGame();
	// Back to the game as Init left it, reading another input backend: the main menu, the default
	// options, no game, the cursor in the middle, nothing playing. Both machines of an online game
	// begin from here, and so does every recording of one.
	void				Restart( cInputBackend *input );

	// In an online game one machine's mouse drives both machines' menus: the settings screens
	// show each machine's own settings and change none.
	void				LockSettings( bool locked ) { settingsLocked = locked; }

	// Menus and the new game.
	bool				ProcessMenus( cKeyboard &keyboard, cMouse &mouse );
	void				NewGame();
	void				PlaceEnemies();
	// Clears the previous game, then takes the scene and starts with five empty lists; the new
	// game adds its players, item and enemies after it. Tests and tools set up small games with it.
	void				SetUpGame( std::unique_ptr<cScene> newScene );

	// The whole match into saved, with the cursor, the music, the heartbeat and the last step's keys;
	// Restore puts it all back. Saving into the same match again reuses its memory.
	void				Save( cMatch &saved ) const;
	void				Restore( const cMatch &saved );
	const cMatch &		GetMatch() const { return match; }
	// The screen the game is on (actors/GameState.h).
	int32_t				GetGameState() const { return match.gameState; }
	void				SetGameState( int32_t state );

	// One frame of play and its steps.
	void				UpdateInGame();
	void				MarkEnemyCells();
	void				ClearEnemyCells();
	void				AlertEnemiesToShots( bool anyFireHeld );
	void				LoseGame();
	void				UpdatePlayer( cPlayer &player, int32_t dx, int32_t dy, int32_t direction,
										bool fire, bool skill, bool use, int32_t &health );
	void				UpdatePlayerCoop( cPlayer &player, cPlayer *partner, int32_t dx, int32_t dy,
										int32_t direction, bool fire, bool skill, bool use, int32_t &health );
	void				UpdateBullets();
	void				ResolveHits();
	void				UpdateItems();
	void				UpdateExplosions();
	void				UpdateEnemies();

	// For the drawing, the tools and the tests.
	cScene *			GetScene() const { return scene.get(); }
	tCharacterList *	GetPlayers() const { return players.get(); }
	tCharacterList *	GetEnemies() const { return enemies.get(); }
	tBulletList *		GetBullets() const { return bullets.get(); }
	tExplosionList *	GetExplosions() const { return explosions.get(); }
	tItemList *			GetItems() const { return items.get(); }
	cConfig &			GetConfig() { return config; }
	const cConfig &		GetConfig() const { return config; }
	cInputLayer &		GetInputLayer() { return inputLayer; }
	const cInputLayer &	GetInputLayer() const { return inputLayer; }
	cSoundLayer &		GetSoundLayer() { return soundLayer; }
	const cSoundLayer &	GetSoundLayer() const { return soundLayer; }
	cGraphicsLayer &	GetGraphicsLayer() { return graphicsLayer; }
	const cSettings &	GetSettings() const { return *settings; }
	const cControlsPage &GetControlsPage() const { return controlsPage; }
	// What the menu screen shows over its picture, as of the last step.
	const std::vector<cMenuText> &GetMenuTexts() const { return menuTexts; }
	uint32_t			GetEndTime() const { return endTime; }
	bool				IsClickLatched() const { return clickLatch; }

private:
	bool				InitInput( cInputBackend *input );
	void				LeaveEndScreen();
	void				ExplodeRemainingEnemies();
	bool				ClickEntry( int entry );
	void				StartWithCharacter( int entry );
	bool				ClickControls( int entry, int32_t x, int32_t y );
	bool				ClickSetting( int entry, int32_t x );
	// A setting changed: kept at once, and heard at once.
	void				KeepSettings();
	void				UpdateMenuTexts();
	void				StepPlayers( uint32_t count, cPlayer *p1, cPlayer *p2, const cPlayerCommand &command1,
									 const cPlayerCommand &command2, int32_t &lowestHealth, bool &moved1, bool &moved2 );
	bool				IsEveryPlayerDown( uint32_t count, const cPlayer *p1, const cPlayer *p2 ) const;
	void				UpdateHeartbeat( int32_t lowestHealth );
	void				MoveCamera( cPlayer *p1, bool moved1, cPlayer *p2, bool moved2 );

	cGraphicsLayer		graphicsLayer;
	cInputLayer			inputLayer;
	cSoundLayer			soundLayer;
	cMatch				match;
	// The operations name the match's parts as their own.
	int32_t &			gameState = match.gameState;
	uint32_t &			endTime = match.endTime;
	bool &				clickLatch = match.clickLatch;
	cConfig &			config = match.config;
	std::unique_ptr<cScene> &			scene = match.scene;
	std::unique_ptr<tCharacterList> &	players = match.players;
	std::unique_ptr<tCharacterList> &	enemies = match.enemies;
	std::unique_ptr<tBulletList> &		bullets = match.bullets;
	std::unique_ptr<tExplosionList> &	explosions = match.explosions;
	std::unique_ptr<tItemList> &		items = match.items;
	cSettings			ownSettings;			// the defaults, when the platform brings none
	cSettings *			settings = &ownSettings;
	cSettingsStore *	settingsStore = nullptr;	// not owned; null keeps nothing
	bool				settingsLocked = false;
	cControlsPage		controlsPage;
	std::vector<cMenuText>	menuTexts;
	std::string			dataRoot = ".";		// the folder holding resources/, from the platform
};
