// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The world's pictures move on by one step while the world is shown: items in view bob, every
// player and the enemies in view walk (the enemies also stamp their alert and pick their icon),
// and explosions play. Each takes the picture that the step's frame shows before moving on, so
// that the frame shows what it would have shown had it been the one to move them on.

#include <cstdint>

#include "actors/ActorLists.h"

class cScene;

void AnimateWorld( int32_t screen, const cScene &scene, tCharacterList &players, tCharacterList &enemies,
				   tExplosionList &explosions, tItemList &items );
