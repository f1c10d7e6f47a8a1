// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A busy frame of play for measuring and looking at the world's drawing: two players with both
// HUDs, 24 enemies in view (those that see tavesh with the exclamation over them), shots in
// flight, explosions and items, over the level's map or over a worst-case map whose three tile
// layers are drawn in every cell.

#include <cstdint>
#include <memory>

#include "actors/ActorLists.h"

class cScene;

class cBusyWorld {
public:
	static const int32_t ENEMY_COUNT = 24;
	static const int32_t BULLET_COUNT = 30;
	static const int32_t EXPLOSION_COUNT = 12;

	// The scene is taken over; the camera is put at (cameraX, cameraY) and every actor around it.
	explicit			cBusyWorld( std::unique_ptr<cScene> scene, int32_t cameraX, int32_t cameraY );
						~cBusyWorld();

	// Explosions run out after a few dozen draws; a measurement starts them again each frame.
	void				RestartExplosions();

	// A scene whose ground, object and over layers all show a tile in every cell.
	static std::unique_ptr<cScene> MakeFullLayersScene( int32_t tileCount );

	cScene &			GetScene() { return *scene; }
	tCharacterList &	GetPlayers() { return players; }
	tCharacterList &	GetEnemies() { return enemies; }
	tBulletList &		GetBullets() { return bullets; }
	tExplosionList &	GetExplosions() { return explosions; }
	tItemList &			GetItems() { return items; }

private:
	void				AddPlayers();
	void				AddEnemies();
	void				AlertEnemies();
	void				AddShotsAndItems();

	std::unique_ptr<cScene>	scene;
	int32_t				cameraX;
	int32_t				cameraY;
	tCharacterList		players;
	tCharacterList		enemies;
	tBulletList			bullets;
	tExplosionList		explosions;
	tItemList			items;
};
