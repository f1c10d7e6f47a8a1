// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/HeadlessGame.h"

#include "actors/GameState.h"
#include "platform/Platform.h"

cHeadlessGame::cHeadlessGame( cSoundBackend *soundBackend, cGraphicsBackend *graphicsBackend )
	: clock( 0, CALENDAR_TIME ), sound( soundBackend ), screen( graphicsBackend != nullptr ? graphicsBackend : &graphics ) {
	SetClock( &clock );
	input.SetKeyBindings( &settings.keys );
}

cHeadlessGame::~cHeadlessGame() {
	game.Finalize();
	SetClock( nullptr );
}

bool cHeadlessGame::Start( bool fullscreen, cInputBackend *wrapper ) {
	cPlatform platform;
	platform.graphics = screen;
	platform.input = wrapper != nullptr ? wrapper : &input;
	platform.sound = sound;
	platform.settings = &settings;
	platform.settingsStore = settingsStore;
	started = game.Init( platform, fullscreen );
	return started;
}

bool cHeadlessGame::Frame() {
	if ( !Step() ) {
		return false;
	}
	game.RenderFrame();
	return true;
}

// The clock reads as the real one would: a step that took the manual clock past its 15 msec (a
// test moving it on) is followed at once by the next.
bool cHeadlessGame::Step() {
	const uint32_t start = clock.GetTickCount();
	const bool going = stepRunner ? stepRunner( game ) : game.Step();
	if ( onStepEnd ) {
		onStepEnd();
	}
	if ( clock.GetTickCount() - start < cGame::FRAME_TIME ) {
		clock.SetTickCount( start + cGame::FRAME_TIME );
	}
	return going;
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
