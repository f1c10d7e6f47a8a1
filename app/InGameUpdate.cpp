#include "app/Game.h"

#include <algorithm>
#include <cmath>

#include "actors/Bullet.h"
#include "actors/Explosion.h"
#include "actors/GameState.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "platform/Clock.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t HEARTBEAT_HEALTH = 25;	// at or below it, and above 0, the heart beats
const int32_t FULL_HEALTH = 100;
const int32_t SHOT_HEARING = 300;		// in pixels: enemies nearer than this hear a shot
const int32_t BOSS_TURN_HEALTH = 50;	// the boss only turns to shots and hits at or below it

enum { KEY_UP_INDEX, KEY_DOWN_INDEX, KEY_RIGHT_INDEX, KEY_LEFT_INDEX, KEY_FIRE_INDEX, KEY_SKILL_INDEX, KEY_USE_INDEX };

// Movement keys held, in the order they are tested: the first match wins.
struct cMoveRule {
	bool		down, up, right, left;
	int32_t		dx, dy, direction;
};
const cMoveRule MOVE_RULES[] = {
	{ true, false, true, false, 1, 1, DIR_DOWN_RIGHT },
	{ true, false, false, true, -1, 1, DIR_DOWN_LEFT },
	{ false, true, true, false, 1, -1, DIR_UP_RIGHT },
	{ false, true, false, true, -1, -1, DIR_UP_LEFT },
	{ true, false, false, false, 0, 1, DIR_DOWN },
	{ false, true, false, false, 0, -1, DIR_UP },
	{ false, false, true, false, 1, 0, DIR_RIGHT },
	{ false, false, false, true, -1, 0, DIR_LEFT },
};

// A rule matches when each key it asks for is held; keys it does not ask for do not matter.
bool Matches( const cMoveRule &rule, bool down, bool up, bool right, bool left ) {
	return ( !rule.down || down ) && ( !rule.up || up ) && ( !rule.right || right ) && ( !rule.left || left );
}

cPlayerCommand DecodeCommand( const cKeyboard &keyboard, const uint32_t keys[cConfig::KEYS_PER_PLAYER] ) {
	cPlayerCommand command;
	const bool up = keyboard.KeyDown( keys[KEY_UP_INDEX] );
	const bool down = keyboard.KeyDown( keys[KEY_DOWN_INDEX] );
	const bool right = keyboard.KeyDown( keys[KEY_RIGHT_INDEX] );
	const bool left = keyboard.KeyDown( keys[KEY_LEFT_INDEX] );
	for ( const cMoveRule &rule : MOVE_RULES ) {
		if ( Matches( rule, down, up, right, left ) ) {
			command.dx = rule.dx;
			command.dy = rule.dy;
			command.direction = rule.direction;
			break;
		}
	}
	const int skillKey = static_cast<int>( keys[KEY_SKILL_INDEX] );
	command.fire = keyboard.KeyDown( keys[KEY_FIRE_INDEX] );
	command.skill = keyboard.KeyDown( skillKey ) && keyboard.KeyChanged( skillKey );
	command.use = keyboard.KeyDown( keys[KEY_USE_INDEX] );
	return command;
}

// Truncated distance between two top-left corners, in pixels.
int32_t Distance( int32_t ax, int32_t ay, int32_t bx, int32_t by ) {
	const double dx = static_cast<double>( bx ) - ax;
	const double dy = static_cast<double>( by ) - ay;
	return static_cast<int32_t>( std::sqrt( dx * dx + dy * dy ) );
}

}

void cGame::UpdateInGame() {
	cKeyboard *keyboard = inputLayer.GetKeyboard();
	if ( !scene || keyboard == nullptr ) {
		return;
	}
	MarkEnemyCells();
	uint32_t keys1[cConfig::KEYS_PER_PLAYER] = {};
	uint32_t keys2[cConfig::KEYS_PER_PLAYER] = {};
	config.GetKeys( 1, keys1 );
	config.GetKeys( 2, keys2 );
	const cPlayerCommand command1 = DecodeCommand( *keyboard, keys1 );
	const cPlayerCommand command2 = DecodeCommand( *keyboard, keys2 );

	// The first player of the list is player 1; any later one is player 2.
	cPlayer *p1 = nullptr;
	cPlayer *p2 = nullptr;
	for ( const std::unique_ptr<cCharacter> &character : *players ) {
		( p1 == nullptr ? p1 : p2 ) = dynamic_cast<cPlayer *>( character.get() );
	}
	uint32_t count = 0;
	config.GetPlayers( count );

	int32_t lowestHealth = FULL_HEALTH;
	bool moved1 = false;
	bool moved2 = false;
	StepPlayers( count, p1, p2, command1, command2, lowestHealth, moved1, moved2 );
	if ( IsEveryPlayerDown( count, p1, p2 ) ) {
		gameState = STATE_DEFEAT;
		LoseGame();
		return;
	}
	UpdateHeartbeat( lowestHealth );
	MoveCamera( p1, moved1, p2, moved2 );
	if ( scene->IsFinalAreaLocked() ) {
		soundLayer.PlayMusic( SOUND_BOSS_MUSIC );
	}
	AlertEnemiesToShots( command1.fire || command2.fire );
	UpdateEnemies();
	UpdateBullets();
	ResolveHits();
	UpdateExplosions();
	UpdateItems();
	ClearEnemyCells();
	keyboard->SaveState();
}

// A lone player is lost when down even though it keeps stepping; two are lost when both are down.
bool cGame::IsEveryPlayerDown( uint32_t count, const cPlayer *p1, const cPlayer *p2 ) const {
	if ( p1 == nullptr && p2 == nullptr ) {
		return false;
	}
	if ( count == 1 ) {
		return p1 != nullptr && p1->IsDead();
	}
	return ( p1 == nullptr || p1->IsDead() ) && ( p2 == nullptr || p2->IsDead() );
}

// One player answers to player 1's keys even when down; two players step only while standing.
void cGame::StepPlayers( uint32_t count, cPlayer *p1, cPlayer *p2, const cPlayerCommand &command1,
						 const cPlayerCommand &command2, int32_t &lowestHealth, bool &moved1, bool &moved2 ) {
	int32_t health = FULL_HEALTH;
	if ( count == 1 ) {
		if ( p1 != nullptr ) {
			UpdatePlayer( *p1, command1.dx, command1.dy, command1.direction, command1.fire, command1.skill,
						  command1.use, health );
			lowestHealth = health;
			moved1 = true;
		}
		return;
	}
	if ( p1 != nullptr && !p1->IsDead() ) {
		UpdatePlayerCoop( *p1, p2, command1.dx, command1.dy, command1.direction, command1.fire, command1.skill,
						  command1.use, health );
		lowestHealth = health;
		moved1 = true;
	}
	if ( p2 != nullptr && !p2->IsDead() ) {
		UpdatePlayerCoop( *p2, p1, command2.dx, command2.dy, command2.direction, command2.fire, command2.skill,
						  command2.use, health );
		lowestHealth = std::min( lowestHealth, health );
		moved2 = true;
	}
}

void cGame::UpdateHeartbeat( int32_t lowestHealth ) {
	if ( lowestHealth > 0 && lowestHealth <= HEARTBEAT_HEALTH && gameState == STATE_PLAYING ) {
		if ( !soundLayer.heartbeatPlaying ) {
			soundLayer.PlaySound( SOUND_HEARTBEAT, true );
			soundLayer.heartbeatPlaying = true;
		}
	} else if ( soundLayer.heartbeatPlaying ) {
		soundLayer.Stop( SOUND_HEARTBEAT );
		soundLayer.heartbeatPlaying = false;
	}
}

// The camera keeps both stepped players inside the view; it hands back their corrected positions.
void cGame::MoveCamera( cPlayer *p1, bool moved1, cPlayer *p2, bool moved2 ) {
	int32_t x1 = 0, y1 = 0, x2 = 0, y2 = 0;
	if ( p1 != nullptr ) {
		p1->GetPosition( x1, y1 );
	}
	if ( p2 != nullptr ) {
		p2->GetPosition( x2, y2 );
	}
	scene->UpdateCamera( moved1, x1, y1, moved2, x2, y2 );
	if ( moved1 ) {
		p1->SetPosition( x1, y1 );
	}
	if ( moved2 ) {
		p2->SetPosition( x2, y2 );
	}
}

void cGame::MarkEnemyCells() {
	int32_t *walkMap = scene->GetWalkMap();
	for ( const std::unique_ptr<cCharacter> &enemy : *enemies ) {
		int32_t x = 0;
		int32_t y = 0;
		enemy->GetPosition( x, y );
		for ( int32_t oy = 0; oy < BODY_SIZE; oy += BODY_SIZE - 1 ) {
			for ( int32_t ox = 0; ox < BODY_SIZE; ox += BODY_SIZE - 1 ) {
				const int32_t column = ( x + ox ) / CELL_SIZE;
				const int32_t row = ( y + oy ) / CELL_SIZE;
				if ( IsInGrid( column, row ) ) {
					walkMap[CellIndex( column, row )] = WALK_ENEMY;
				}
			}
		}
	}
}

void cGame::ClearEnemyCells() {
	int32_t *walkMap = scene->GetWalkMap();
	for ( int i = 0; i < MAP_CELLS; i++ ) {
		if ( walkMap[i] == WALK_ENEMY ) {
			walkMap[i] = WALK_FLOOR;
		}
	}
}

// Enemies hear a shot fired this frame within SHOT_HEARING pixels and turn to the shooter,
// unless they are already after someone.
void cGame::AlertEnemiesToShots( bool anyFireHeld ) {
	if ( !anyFireHeld ) {
		return;
	}
	for ( const std::unique_ptr<cCharacter> &character : *enemies ) {
		cEnemy *enemy = dynamic_cast<cEnemy *>( character.get() );
		if ( enemy == nullptr ) {
			continue;
		}
		int32_t ex = 0, ey = 0;
		enemy->GetPosition( ex, ey );
		for ( const std::unique_ptr<cCharacter> &player : *players ) {
			int32_t px = 0, py = 0;
			player->GetPosition( px, py );
			if ( !player->HasJustShot() || Distance( ex, ey, px, py ) >= SHOT_HEARING ) {
				continue;
			}
			const bool steadyBoss = enemy->GetKind() == KIND_BOSS && enemy->GetHealth() > BOSS_TURN_HEALTH;
			if ( !enemy->HasTarget() && !steadyBoss ) {
				enemy->TurnTowards( px - ex, py - ey );
			}
			break;
		}
	}
}

void cGame::LoseGame() {
	for ( const std::unique_ptr<cCharacter> &player : *players ) {
		int32_t x = 0;
		int32_t y = 0;
		player->GetPosition( x, y );
		explosions->push_back( cExplosion( x, y, false ) );
		soundLayer.PlaySound( SOUND_EXPLOSION, false );
	}
	players->clear();
	endTime = GetTickCount();
	soundLayer.PlaySound( SOUND_GAME_OVER, false );
	soundLayer.Stop( SOUND_HEARTBEAT );
	soundLayer.Stop( SOUND_STREETS_MUSIC );
	soundLayer.Stop( SOUND_BOSS_MUSIC );
}
