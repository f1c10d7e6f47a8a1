// SPDX-License-Identifier: GPL-3.0-or-later
// What an enemy does in its alert state: stand, chase and shoot, stand and shoot, walk to the
// last place it saw a player, look around; and the boss's wander with its 8-way bursts.

#include "ai/Enemy.h"

#include "actors/ActorTypes.h"
#include "actors/Bullet.h"
#include "actors/Player.h"
#include "platform/Clock.h"
#include "platform/Random.h"
#include "world/Grid.h"

namespace {

// The burst's shots, in the order they are fired.
const int32_t BURST_VECTORS[8][2] = {
	{ 1, 0 }, { -1, 0 }, { 0, 1 }, { 0, -1 }, { 1, 1 }, { 1, -1 }, { -1, 1 }, { -1, -1 }
};

}

// Once the enemy is after a player it only looks at that one. Otherwise each player in turn,
// until one becomes the target: with two players both steps may run twice in a frame, and the
// boss, which drops its target every wandering frame, then walks twice as far.
void cEnemy::Update( const tPlayerPointers &players, tBulletList &bullets, const int32_t *walkMap, bool &fired ) {
	if ( target != nullptr ) {
		RunSteps( *target, bullets, walkMap, fired );
		return;
	}
	for ( cPlayer *player : players ) {
		RunSteps( *player, bullets, walkMap, fired );
		if ( target != nullptr ) {
			return;
		}
	}
}

void cEnemy::RunSteps( cPlayer &player, tBulletList &bullets, const int32_t *walkMap, bool &fired ) {
	if ( kind == KIND_BOSS ) {
		PerceiveBoss( player, walkMap );
		ActBoss( player, bullets, walkMap, fired );
	} else {
		Perceive( player, walkMap );
		Act( player, bullets, walkMap, fired );
	}
}

void cEnemy::Act( cPlayer &player, tBulletList &bullets, const int32_t *walkMap, bool &fired ) {
	fired = false;
	switch ( aiState ) {
		case AI_UNAWARE:
			StandUnaware();
			break;
		case AI_CHASE: {
			Chase( player, walkMap );
			int32_t px = 0;
			int32_t py = 0;
			player.GetPosition( px, py );
			// Measured again from where the step took the enemy.
			if ( GetDistanceTo( px, py ) < SIGHT_DISTANCE ) {
				Shoot( bullets, px - x, py - y, fired );
			}
			break;
		}
		case AI_ATTACK:
			Attack( player, bullets, fired );
			break;
		case AI_SEARCH:
			Search( walkMap );
			break;
		case AI_LOOK_AROUND:
			LookAround();
			break;
		default:
			break;
	}
}

// An unaware boss stands and keeps its cool-down as it is; a chasing one shoots at any range.
void cEnemy::ActBoss( cPlayer &player, tBulletList &bullets, const int32_t *walkMap, bool &fired ) {
	fired = false;
	switch ( aiState ) {
		case AI_CHASE:
			Chase( player, walkMap );
			Shoot( bullets, lastSeenX - x, lastSeenY - y, fired );
			break;
		case AI_ATTACK:
			Attack( player, bullets, fired );
			break;
		case AI_BOSS_WANDER:
			Wander( bullets, walkMap, fired );
			break;
		default:
			break;
	}
}

// Forgets the chase every frame, so that a newly alerted enemy fires at once.
void cEnemy::StandUnaware() {
	shotCounter = 0;
	target = nullptr;
	lastSeenX = -1;
	lastSeenY = -1;
	lookTimer = 0;
	moving = false;
	path.Stop();
}

void cEnemy::Chase( cPlayer &player, const int32_t *walkMap ) {
	lookTimer = 0;
	SeePlayer( player );
	CountToReplan( walkMap );
	FollowPath();
}

// Stands on its corner facing the cell where the player stands and fires.
void cEnemy::Attack( cPlayer &player, tBulletList &bullets, bool &fired ) {
	lookTimer = 0;
	SeePlayer( player );
	moving = false;
	FaceCell( cellX, cellY, lastSeenX / CELL_SIZE, lastSeenY / CELL_SIZE );
	path.Stop();
	Shoot( bullets, lastSeenX - x, lastSeenY - y, fired );
}

// Walks on to the place where the player was last seen, without shooting.
void cEnemy::Search( const int32_t *walkMap ) {
	CountToReplan( walkMap );
	FollowPath();
}

// Turns about at 0, 20 and 40 frames; at 60 the next perception gives up.
void cEnemy::LookAround() {
	if ( lookTimer % LOOK_TURN_FRAMES == 0 ) {
		TurnTowards( -1, -1 );
	}
	lookTimer++;
}

void cEnemy::SeePlayer( cPlayer &player ) {
	target = &player;
	player.GetPosition( lastSeenX, lastSeenY );
}

// The timer starts at REPLAN_FRAMES, so the first chase plans at once; afterwards the enemy
// asks for a path every REPLAN_FRAMES frames, whatever state it was in between.
void cEnemy::CountToReplan( const int32_t *walkMap ) {
	if ( replanTimer == REPLAN_FRAMES ) {
		RequestPath( walkMap, lastSeenX / CELL_SIZE, lastSeenY / CELL_SIZE );
		replanTimer = 1;
	} else {
		replanTimer++;
	}
}

// Walks to a cell of its area; where it stops it fires a burst and picks the next cell. When
// its area offers no cell to go to it stands, silent, and tries again the next frame.
void cEnemy::Wander( tBulletList &bullets, const int32_t *walkMap, bool &fired ) {
	target = nullptr;
	lastSeenX = -1;
	lastSeenY = -1;
	if ( !wanderPending && !path.IsIdle() ) {
		FollowPath();
	}
	if ( !wanderPending && path.IsIdle() ) {
		FireBurst( bullets );
		fired = true;
		wanderPending = true;
	}
	if ( wanderPending ) {
		wanderPending = !PickWanderCell( walkMap );
		FollowPath();
	}
}

// Draws among the floor cells of the area other than the boss's own, so the choice is uniform
// and always ends; the generator is seeded from the calendar second, as every draw in the game.
bool cEnemy::PickWanderCell( const int32_t *walkMap ) {
	int32_t choices[BOSS_AREA_COLUMNS * BOSS_AREA_ROWS];
	int32_t count = 0;
	for ( int32_t row = 0; row < BOSS_AREA_ROWS; row++ ) {
		for ( int32_t column = 0; column < BOSS_AREA_COLUMNS; column++ ) {
			const bool own = column == cellX && row == cellY;
			if ( walkMap[CellIndex( column, row )] == WALK_FLOOR && !own ) {
				choices[count++] = CellIndex( column, row );
			}
		}
	}
	if ( count == 0 ) {
		return false;
	}
	const int32_t cell = choices[cRandom( GetCalendarTime() ).Next() % count];
	RequestPath( walkMap, cell % MAP_COLUMNS, cell / MAP_COLUMNS );
	return true;
}

void cEnemy::FireBurst( tBulletList &bullets ) {
	for ( const int32_t *vector : BURST_VECTORS ) {
		bullets.emplace_back( x + MUZZLE_OFFSET, y + MUZZLE_OFFSET, vector[0], vector[1], weapon, kind );
	}
}
