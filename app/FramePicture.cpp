// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/FramePicture.h"

#include "actors/GameState.h"
#include "app/Game.h"

bool cFramePicture::IsChanged( const cGame &game ) const {
	if ( framesOwed > 0 || ShowsWorld( game.GetGameState() ) || game.GetGameState() != state || game.GetMenuTexts() != texts ) {
		return true;
	}
	int32_t x = 0;
	int32_t y = 0;
	game.GetInputLayer().GetMousePosition( x, y );
	return x != mouseX || y != mouseY;
}

void cFramePicture::Note( const cGame &game ) {
	framesOwed = framesOwed > 0 ? framesOwed - 1 : 0;
	state = game.GetGameState();
	texts = game.GetMenuTexts();
	game.GetInputLayer().GetMousePosition( mouseX, mouseY );
}
