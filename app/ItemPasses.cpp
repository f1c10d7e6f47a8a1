// SPDX-License-Identifier: GPL-3.0-or-later
// The pickups of a frame and the end of finished explosions.

#include "app/Game.h"

#include <algorithm>

#include "actors/ActorTypes.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "actors/Player.h"
#include "platform/Clock.h"
#include "platform/Random.h"
#include "sound/SoundIds.h"

namespace {

const int32_t AMMO_BASE = 16;				// machine-gun shots a pickup adds at least
const int32_t AMMO_SPREAD = 20;				// and up to this many fewer than 16 + 20
const int32_t HEALTH_ITEM_AMOUNT = 20;
const int32_t FAST_SPEED = 4;				// in pixels per step

// The generator is seeded at every ammunition pickup: two within one second add the same.
void GiveItem( cPlayer &player, int32_t itemKind ) {
	switch ( itemKind ) {
		case ITEM_AMMO:
			player.SetWeapon( WEAPON_MACHINE_GUN );
			player.SetAmmo( player.GetAmmo() + AMMO_BASE + cRandom( GetCalendarTime() ).Next() % AMMO_SPREAD );
			break;
		case ITEM_HEALTH:
			player.AddHealth( HEALTH_ITEM_AMOUNT );
			break;
		case ITEM_TAVESH_ENERGY:
		case ITEM_LUMRA_ENERGY:
			player.SetMaxEnergy( cPlayer::UPGRADED_ENERGY );
			player.SetEnergy( cPlayer::UPGRADED_ENERGY );
			player.SetEnergyUpgraded( true );
			break;
		case ITEM_SPEED:
			player.SetSpeed( FAST_SPEED );
			break;
		default:
			break;
	}
}

// The first item in the player's cell that it may take; items.end() when none.
tItemList::iterator FindItemFor( const cPlayer &player, tItemList &items ) {
	int32_t cx = 0;
	int32_t cy = 0;
	player.GetCell( cx, cy );
	return std::find_if( items.begin(), items.end(), [&]( const cItem &item ) {
		int32_t ix = 0;
		int32_t iy = 0;
		item.GetCell( ix, iy );
		return ix == cx && iy == cy && player.MayTake( item.GetKind() );
	} );
}

}

void cGame::UpdateExplosions() {
	explosions->erase( std::remove_if( explosions->begin(), explosions->end(),
									   []( const cExplosion &explosion ) { return explosion.IsFinished(); } ),
					   explosions->end() );
}

// Each player, a downed one too, takes at most one item a frame; the list's order decides which.
void cGame::UpdateItems() {
	for ( const std::unique_ptr<cCharacter> &character : *players ) {
		cPlayer *player = dynamic_cast<cPlayer *>( character.get() );
		if ( player == nullptr ) {
			continue;
		}
		const tItemList::iterator item = FindItemFor( *player, *items );
		if ( item == items->end() ) {
			continue;
		}
		const int32_t kind = item->GetKind();
		items->erase( item );
		GiveItem( *player, kind );
		soundLayer.PlaySound( SOUND_ITEM, false );
	}
}
