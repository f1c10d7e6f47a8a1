// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the bot reads of the running game before it chooses one player's keys for a frame: the
// map and the view, the player and its partner, the enemies with the way each is walking, the
// items on the ground. Read only; the bot acts through the keyboard alone.

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

class cGame;
class cScene;
class cPlayer;
class cEnemy;

struct cEnemySighting {
	const cEnemy *		enemy;
	int32_t				x, y;				// top-left corner, in world pixels
	int32_t				vx, vy;				// in pixels per frame, as it walked in the last frame
	int32_t				kind;
	int32_t				aiState;
	bool				inView;				// inside the view, where shots can reach it
	bool				alerted;			// after a player: chasing, attacking, searching or the boss's wander
};

struct cItemSighting {
	int32_t				kind;
	int32_t				x, y;
	int32_t				cellX, cellY;		// the cell under its centre
};

struct cSituation {
	const cScene *		scene = nullptr;
	int32_t				cameraX = 0;
	int32_t				cameraY = 0;
	const cPlayer *		me = nullptr;
	const cPlayer *		partner = nullptr;	// null in a one-player game
	int32_t				x = 0, y = 0;		// the player's position
	std::vector<cEnemySighting>	enemies;
	std::vector<cItemSighting>	items;

	// Reads the game for the player at the index of the players list (0 or 1); false when that
	// player is not in the game.
	bool				Read( const cGame &game, int playerIndex );
	bool				IsInView( int32_t px, int32_t py ) const;

private:
	void				SeeEnemy( const cEnemy &enemy );

	// Where each enemy stood when the game was last read: the boss walks twice in a frame when
	// there are two players, so its pace is measured rather than taken from its speed.
	std::map<const cEnemy *, std::pair<int32_t, int32_t>>	lastPositions;
};

// The cell under the centre of a 32-pixel body at (x, y), as the game finds pickups and revivals.
void GetBodyCell( int32_t x, int32_t y, int32_t &cellX, int32_t &cellY );
// Whether sight passes between two body positions over floor, sampled every 16 pixels as the
// enemies look; facing is not considered (an enemy after a player turns towards it).
bool HasClearSight( const cScene &scene, int32_t fromX, int32_t fromY, int32_t toX, int32_t toY );
