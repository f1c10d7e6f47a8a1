// SPDX-License-Identifier: GPL-3.0-or-later
#include "TestGame.h"

#include <gtest/gtest.h>

#include "actors/GameState.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "world/Scene.h"

cTestGame::cTestGame( std::unique_ptr<cScene> scene )
	: headless( &sound ) {
	EXPECT_TRUE( headless.Start() ) << "the headless game did not start";
	headless.GetGame().SetUpGame( std::move( scene ) );
	headless.GetGame().SetGameState( STATE_PLAYING );
	ForgetSounds();
}

cScene &cTestGame::GetScene() {
	return *headless.GetGame().GetScene();
}

cPlayer &cTestGame::AddPlayer( int32_t kind, int32_t x, int32_t y ) {
	std::unique_ptr<cPlayer> player = std::make_unique<cPlayer>( kind, x, y );
	cPlayer &added = *player;
	headless.GetGame().GetPlayers()->push_back( std::move( player ) );
	return added;
}

cEnemy &cTestGame::AddEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction, int32_t difficulty ) {
	std::unique_ptr<cEnemy> enemy = std::make_unique<cEnemy>( kind, x, y, direction, difficulty );
	cEnemy &added = *enemy;
	headless.GetGame().GetEnemies()->push_back( std::move( enemy ) );
	return added;
}

std::vector<int> cTestGame::GetPlayedSounds() const {
	return sound.GetPlayed();
}

std::vector<int> cTestGame::GetStoppedSounds() const {
	return sound.GetStopped();
}

void cTestGame::ForgetSounds() {
	sound.Clear();
}
