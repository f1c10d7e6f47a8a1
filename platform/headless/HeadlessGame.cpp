#include "platform/headless/HeadlessGame.h"

#include "app/GameState.h"
#include "platform/Platform.h"

cHeadlessGame::cHeadlessGame( cSoundBackend *soundBackend )
	: clock( 0, CALENDAR_TIME ), sound( soundBackend ) {
	SetClock( &clock );
	gameState = STATE_MAIN_MENU;
}

cHeadlessGame::~cHeadlessGame() {
	game.Finalize();
	gameState = STATE_MAIN_MENU;
	SetClock( nullptr );
}

bool cHeadlessGame::Start( bool fullscreen, cInputBackend *wrapper ) {
	cPlatform platform;
	platform.graphics = &graphics;
	platform.input = wrapper != nullptr ? wrapper : &input;
	platform.sound = sound;
	started = game.Init( platform, fullscreen );
	return started;
}

bool cHeadlessGame::Frame() {
	return game.Loop();
}

bool cHeadlessGame::Frames( int count ) {
	for ( int i = 0; i < count; i++ ) {
		if ( !Frame() ) {
			return false;
		}
	}
	return true;
}

bool cHeadlessGame::Click( int32_t x, int32_t y ) {
	input.SetMousePosition( x, y );
	input.SetButton( 0, true );
	if ( !Frame() ) {
		return false;
	}
	input.SetButton( 0, false );
	return Frame();
}
