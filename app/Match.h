// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cMatch is the running game as a value: everything its rules read and write, apart from the
// devices. A copy is deep: the scene (but for its drawn layers, which never change and are shared)
// and every list are copied, each enemy points at the copy's player and walk layer, and a path
// takes the way it found without the search's working memory. cGame holds the live one; a saved
// one also holds what the devices keep for the game (the cursor, the music, the heartbeat, the
// keys of the last step of play), so that putting it back puts back everything the state hash
// reads and everything the next step reads. The clocks are not held: the rules read the tick count
// and the calendar second of the step being run, which the clock installed for the game gives
// (online, derived from the step number); the random draws are seeded from that second in the pass
// that makes them.

#include <cstdint>
#include <memory>

#include "actors/ActorLists.h"
#include "actors/GameState.h"
#include "app/Config.h"

class cScene;

class cMatch {
public:
	static const int	KEY_COUNT = 256;

						cMatch();
						cMatch( const cMatch &other );
	cMatch &			operator=( const cMatch &other );
						cMatch( cMatch &&other ) noexcept;
	cMatch &			operator=( cMatch &&other ) noexcept;
						~cMatch();

	// No scene and no lists: the main menu's game.
	void				Clear();
	// The scene and five empty lists.
	void				SetUp( std::unique_ptr<cScene> newScene );
	// Bytes a copy holds, the lists' spare room and the search's working memory not counted.
	size_t				GetSize() const;

	int32_t				gameState = STATE_MAIN_MENU;
	uint32_t			endTime = 0;		// GetTickCount when the victory or defeat began, in msec
	bool				clickLatch = false;
	cConfig				config;
	std::unique_ptr<cScene>			scene;
	std::unique_ptr<tCharacterList>	players;
	std::unique_ptr<tCharacterList>	enemies;
	std::unique_ptr<tBulletList>	bullets;
	std::unique_ptr<tExplosionList>	explosions;
	std::unique_ptr<tItemList>		items;

	// Kept by the devices and the platform while the game runs; filled in by cGame::Save.
	int32_t				cursorX = 0;
	int32_t				cursorY = 0;
	int32_t				music = -1;
	bool				heartbeatPlaying = false;
	uint8_t				keysAtLastStep[KEY_COUNT] = {};	// what a key that goes down is told from

private:
	void				CopyWorld( const cMatch &other );
};
