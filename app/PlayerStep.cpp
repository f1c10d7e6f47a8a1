// The player step: movement over the walk layer, firing, the skill, the use key and revival.

#include "app/Game.h"

#include <algorithm>
#include <cstdlib>

#include "actors/ActorTypes.h"
#include "actors/Player.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

const int32_t LUMRA_FIRE_DRAIN = 50;		// in msec of energy per step with fire held and the skill on
const int32_t REVIVE_HEALTH = 26;

// The cells next to a cell, in the order the use key looks at them: right, left, below, above.
const int32_t NEIGHBOURS[4][2] = { { 1, 0 }, { -1, 0 }, { 0, 1 }, { 0, -1 } };

// Each axis is tried alone from where the player stands, so a slanted push into a wall slides
// along it with the pressed facing kept; the diagonal target itself is never tested.
void MovePlayer( cPlayer &player, const cScene &scene, int32_t dx, int32_t dy, int32_t direction ) {
	int32_t x = 0;
	int32_t y = 0;
	player.GetPosition( x, y );
	const int32_t speed = player.GetSpeed();
	if ( dx != 0 && !scene.IsFree( x + dx * speed, y, false ) ) {
		dx = 0;
	}
	if ( dy != 0 && !scene.IsFree( x, y + dy * speed, false ) ) {
		dy = 0;
	}
	const bool moving = dx != 0 || dy != 0;
	player.SetMoving( moving );
	if ( moving ) {
		player.Move( direction, dx, dy );
	}
}

// A shot's sound goes by the weapon it was fired with; the machine gun also pays for it.
void PlayShotSound( cPlayer &player, cSoundLayer &soundLayer ) {
	switch ( player.GetWeapon() ) {
		case WEAPON_TAVESH:
			soundLayer.PlaySound( SOUND_TAVESH_SHOT, false );
			break;
		case WEAPON_LUMRA:
			soundLayer.PlaySound( SOUND_LUMRA_SHOT, false );
			break;
		case WEAPON_MACHINE_GUN:
			player.UseAmmo();
			soundLayer.PlaySound( SOUND_MACHINE_GUN, false );
			break;
		default:
			break;
	}
}

// lumra holding fire with the skill on drains her energy on every step, cooling down or not.
void FirePlayer( cPlayer &player, bool fire, tBulletList &bullets, cSoundLayer &soundLayer ) {
	const int32_t kind = player.GetKind();
	if ( !fire ) {
		player.ReleaseTrigger();
		return;
	}
	bool shot = false;
	player.Shoot( bullets, shot );
	if ( shot ) {
		PlayShotSound( player, soundLayer );
	}
	if ( kind == KIND_LUMRA && player.IsSkillActive() ) {
		player.SetEnergy( std::max( player.GetEnergy() - LUMRA_FIRE_DRAIN, 0 ) );
	}
}

// A partner who is down comes back when the player stands on its cell or one edge-adjacent to it.
void RevivePartner( const cPlayer &player, cPlayer &partner ) {
	int32_t cx = 0;
	int32_t cy = 0;
	int32_t ox = 0;
	int32_t oy = 0;
	player.GetCell( cx, cy );
	partner.GetCell( ox, oy );
	const int32_t distance = std::abs( cx - ox ) + std::abs( cy - oy );
	if ( distance <= 1 ) {
		partner.SetDead( false );
		partner.AddHealth( REVIVE_HEALTH );
	}
}

// The first neighbour of the cell holding the walk code; false when none does. Neighbours
// outside the grid are neither doors nor boxes.
bool FindNeighbour( const cScene &scene, int32_t cx, int32_t cy, int32_t code, int32_t &column, int32_t &row ) {
	for ( const int32_t *step : NEIGHBOURS ) {
		if ( IsInGrid( cx + step[0], cy + step[1] ) && scene.GetWalkCode( cx + step[0], cy + step[1] ) == code ) {
			column = cx + step[0];
			row = cy + step[1];
			return true;
		}
	}
	return false;
}

void UsePlayer( cPlayer &player, cPlayer *partner, cScene &scene, tItemList &items, cSoundLayer &soundLayer ) {
	if ( partner != nullptr && partner->IsDead() ) {
		RevivePartner( player, *partner );
	}
	int32_t cx = 0;
	int32_t cy = 0;
	player.GetCell( cx, cy );
	int32_t column = 0;
	int32_t row = 0;
	if ( player.GetKind() == KIND_LUMRA && FindNeighbour( scene, cx, cy, WALK_DOOR, column, row ) ) {
		scene.OpenDoor( column, row );
		soundLayer.PlaySound( SOUND_DOOR_OPEN, false );
	}
	if ( FindNeighbour( scene, cx, cy, WALK_BOX, column, row ) ) {
		scene.OpenBox( column, row, items );
		soundLayer.PlaySound( SOUND_OPEN_BOX, false );
	}
}

}

void cGame::UpdatePlayer( cPlayer &player, int32_t dx, int32_t dy, int32_t direction, bool fire, bool skill,
						bool use, int32_t &health ) {
	UpdatePlayerCoop( player, nullptr, dx, dy, direction, fire, skill, use, health );
}

// With no partner this is the one-player step: the same, without revival.
void cGame::UpdatePlayerCoop( cPlayer &player, cPlayer *partner, int32_t dx, int32_t dy, int32_t direction,
							bool fire, bool skill, bool use, int32_t &health ) {
	MovePlayer( player, *scene, dx, dy, direction );
	FirePlayer( player, fire, *bullets, soundLayer );
	if ( skill ) {
		player.ToggleSkill();
		soundLayer.PlaySound( SOUND_SKILL, false );
	}
	player.UpdateSkill();
	if ( use ) {
		UsePlayer( player, partner, *scene, *items, soundLayer );
	}
	health = player.GetHealth();
}
