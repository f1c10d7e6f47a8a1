// SPDX-License-Identifier: GPL-3.0-or-later
#include "actors/WorldAnimation.h"

#include "actors/Character.h"
#include "actors/Explosion.h"
#include "actors/Item.h"
#include "world/Scene.h"

// In the order the frame draws them. Out of view, items keep their phase and enemies neither walk
// nor notice anything for the exclamation.
void AnimateWorld( int32_t screen, const cScene &scene, tCharacterList &players, tCharacterList &enemies,
				   tExplosionList &explosions, tItemList &items ) {
	const int32_t cameraX = scene.GetCameraX();
	const int32_t cameraY = scene.GetCameraY();
	for ( cItem &item : items ) {
		if ( item.IsInView( cameraX, cameraY ) ) {
			item.Bob();
		}
	}
	for ( const std::unique_ptr<cCharacter> &player : players ) {
		player->Animate( screen );
	}
	for ( const std::unique_ptr<cCharacter> &enemy : enemies ) {
		if ( enemy->IsInView( cameraX, cameraY ) ) {
			enemy->Animate( screen );
		}
	}
	for ( cExplosion &explosion : explosions ) {
		explosion.Animate();
	}
}
