// The player step: movement over the walk layer, firing, the skill, the use key and revival.

#include "app/Game.h"

#include "actors/ActorTypes.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "sound/SoundIds.h"
#include "world/Grid.h"
#include "world/Scene.h"

namespace {

// The cells next to a cell, in the order the use key looks at them: right, left, below, above.
const int32_t NEIGHBOURS[4][2] = { { 1, 0 }, { -1, 0 }, { 0, 1 }, { 0, -1 } };

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

void FirePlayer( cPlayer &player, bool fire, tBulletList &bullets, cSoundLayer &soundLayer ) {
	if ( !fire ) {
		player.ReleaseTrigger();
		return;
	}
	bool shot = false;
	player.Shoot( bullets, shot );
	if ( shot ) {
		PlayShotSound( player, soundLayer );
	}
	player.PayForFiringHidden();
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
		player.RevivePartner( *partner );
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
		scene.OpenBox( column, row );
		cItem::AddBoxContent( column, row, items );
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
	player.Walk( *scene, dx, dy, direction );
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
