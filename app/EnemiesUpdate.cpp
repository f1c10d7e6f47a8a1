// The game's pass over its enemies, once per frame of play.

#include "app/Game.h"

#include "actors/Player.h"
#include "ai/Enemy.h"
#include "sound/SoundIds.h"
#include "world/Scene.h"

namespace {

// The sound of an enemy's shot; the gun and the machine gun are the only enemy weapons.
int GetEnemyShotSound( int32_t weapon ) {
	return weapon == WEAPON_MACHINE_GUN ? SOUND_MACHINE_GUN : SOUND_ENEMY_SHOT;
}

}

// Every enemy, in list order, perceives the players and acts on the walk layer as it stands,
// with the cells of all enemies marked; an enemy that fired this frame is heard.
void cGame::UpdateEnemies() {
	tPlayerPointers playerPointers;
	for ( const std::unique_ptr<cCharacter> &character : *players ) {
		cPlayer *player = dynamic_cast<cPlayer *>( character.get() );
		if ( player != nullptr ) {
			playerPointers.push_back( player );
		}
	}
	const int32_t *walkMap = scene->GetWalkMap();
	for ( const std::unique_ptr<cCharacter> &character : *enemies ) {
		cEnemy *enemy = dynamic_cast<cEnemy *>( character.get() );
		if ( enemy == nullptr ) {
			continue;
		}
		bool fired = false;
		enemy->Update( playerPointers, *bullets, walkMap, fired );
		if ( fired ) {
			soundLayer.PlaySound( GetEnemyShotSound( enemy->GetWeapon() ), false );
		}
	}
}
