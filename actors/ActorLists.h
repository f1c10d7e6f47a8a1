// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The running game's five lists. Each owns what it holds, keeps insertion order and allows
// removal in the middle of a pass.

#include <memory>
#include <vector>

class cCharacter;
class cBullet;
class cItem;
class cExplosion;

using tCharacterList	= std::vector<std::unique_ptr<cCharacter>>;
using tBulletList		= std::vector<cBullet>;
using tItemList			= std::vector<cItem>;
using tExplosionList	= std::vector<cExplosion>;
