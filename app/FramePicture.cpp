#include "app/FramePicture.h"

#include "actors/GameState.h"
#include "app/Game.h"

bool cFramePicture::IsChanged( const cGame &game ) const {
	if ( !known || ShowsWorld( gameState ) || gameState != state ) {
		return true;
	}
	int32_t x = 0;
	int32_t y = 0;
	game.GetInputLayer().GetMousePosition( x, y );
	return x != mouseX || y != mouseY;
}

void cFramePicture::Note( const cGame &game ) {
	known = true;
	state = gameState;
	game.GetInputLayer().GetMousePosition( mouseX, mouseY );
}
