// SPDX-License-Identifier: GPL-3.0-or-later
#include "graphics/GraphicsLayer.h"

#include <algorithm>
#include <cmath>

#include "actors/ActorTypes.h"
#include "actors/Player.h"
#include "world/Grid.h"

// The head-up display: for each player a portrait and bars of health, skill energy and, while
// the machine gun is carried, ammunition. Player 1's stands at the top left, player 2's at the
// top right, its bars to the left of its portrait.

namespace {

const int32_t PORTRAIT_Y = 32;				// in pixels
const int32_t LEFT_PORTRAIT_X = 32;
const int32_t LEFT_BARS_X = 72;
const int32_t RIGHT_PORTRAIT_X = 576;
const int32_t RIGHT_BARS_X = 468;

const int32_t HEALTH_BAR_Y = 32;			// in pixels
const int32_t ENERGY_BAR_Y = 42;
const int32_t AMMO_BAR_Y = 52;
const int32_t BAR_HEIGHT = 8;				// in pixels; a bar is drawn one pixel column at a time
const int32_t LOW_HEALTH = 25;				// at this health or less the bar changes colour
const float ENERGY_BAR_LENGTH = 50.0f;		// in pixels, one less than a full bar's columns
const float UPGRADED_ENERGY_BAR_LENGTH = 100.0f;
// No bar runs past the screen's width, whatever the counters hold.
const int32_t LONGEST_BAR = VIEW_WIDTH;		// in pixels

// The portrait is the standing frame facing down, from the skill rows while the skill is on.
const int32_t CHARACTER_BAND_WIDTH = 96;	// in pixels: three walk frames per character kind
const int32_t SKILL_ROWS_TOP = 128;			// in pixels

// Full energy gives 50 (or 100 with the upgrade); the product is rounded down as a float. Energy
// above the capacity, which the skill's own update never leaves, shows as a full bar.
int32_t GetEnergyBarLength( const cPlayer &player ) {
	if ( player.GetMaxEnergy() <= 0 ) {
		return -1;
	}
	const float full = player.IsEnergyUpgraded() ? UPGRADED_ENERGY_BAR_LENGTH : ENERGY_BAR_LENGTH;
	const float ratio = static_cast<float>( player.GetEnergy() ) / static_cast<float>( player.GetMaxEnergy() );
	const float length = std::floor( ratio * full );
	return static_cast<int32_t>( std::max( -1.0f, std::min( length, full ) ) );
}

}

void cGraphicsLayer::DrawHud( const tCharacterList &players ) const {
	bool first = true;
	for ( const std::unique_ptr<cCharacter> &character : players ) {
		const cPlayer *player = dynamic_cast<const cPlayer *>( character.get() );
		if ( player != nullptr ) {
			DrawPlayerHud( *player, first ? LEFT_PORTRAIT_X : RIGHT_PORTRAIT_X, first ? LEFT_BARS_X : RIGHT_BARS_X );
		}
		first = false;
	}
}

void cGraphicsLayer::DrawPlayerHud( const cPlayer &player, int32_t portraitX, int32_t barX ) const {
	const int32_t left = player.GetKind() * CHARACTER_BAND_WIDTH + BODY_SIZE;
	const int32_t top = player.IsSkillActive() ? SKILL_ROWS_TOP : 0;
	const cRect portrait = { left, top, left + BODY_SIZE, top + BODY_SIZE };
	Draw( TEX_CHARACTERS, &portrait, static_cast<float>( portraitX ), static_cast<float>( PORTRAIT_Y ) );

	const int32_t health = player.GetHealth();
	DrawBar( health > LOW_HEALTH ? TEX_HEALTH : TEX_LOW_HEALTH, health, barX, HEALTH_BAR_Y );
	DrawBar( TEX_ENERGY, GetEnergyBarLength( player ), barX, ENERGY_BAR_Y );
	if ( player.GetWeapon() == WEAPON_MACHINE_GUN ) {
		DrawBar( TEX_AMMO, player.GetAmmo(), barX, AMMO_BAR_Y );
	}
}

void cGraphicsLayer::DrawBar( eTexture which, int32_t length, int32_t barX, int32_t barY ) const {
	const cRect column = { 0, 0, 1, BAR_HEIGHT };
	const int32_t last = length < LONGEST_BAR ? length : LONGEST_BAR;
	for ( int32_t i = 0; i <= last; i++ ) {
		Draw( which, &column, static_cast<float>( barX + i ), static_cast<float>( barY ) );
	}
}
