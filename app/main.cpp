// The program: asks about full screen, opens the window, runs the game's frames between window
// events until the window closes or the player quits, then shuts everything down in order.

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <SDL_image.h>

#include <cstdio>

#include "app/Game.h"
#include "graphics/sdl/SdlGraphicsBackend.h"
#include "input/sdl/SdlInputBackend.h"
#include "platform/DataPaths.h"
#include "platform/Platform.h"
#include "platform/sdl/SdlClock.h"
#include "platform/sdl/SdlWindow.h"
#include "sound/sdl/SdlSoundBackend.h"

namespace {

cGame game;

bool CreateMainWindow( cSdlWindow &window, bool &fullscreen ) {
	fullscreen = cSdlWindow::AskFullscreen();
	if ( !window.Create( fullscreen ) ) {
		std::fprintf( stderr, "%s: cannot open the window: %s\n", cSdlWindow::TITLE, SDL_GetError() );
		return false;
	}
	return true;
}

// Each pass handles one pending window event, or runs one frame when none is pending.
void RunFrames( cSdlInputBackend &input ) {
	for ( ;; ) {
		SDL_Event event;
		if ( SDL_PollEvent( &event ) ) {
			if ( event.type == SDL_QUIT ) {	// the window closed, or SIGINT / SIGTERM
				return;
			}
			input.HandleEvent( event );
		} else if ( !game.Loop() ) {
			return;
		}
	}
}

void RunGame() {
	// The data may lie in the working folder, beside the executable or where it was installed;
	// the log goes with it, so this comes before anything is logged.
	char *executableFolder = SDL_GetBasePath();
	cDataPaths dataPaths;
	dataPaths.SetUp( executableFolder != nullptr ? executableFolder : "" );
	SDL_free( executableFolder );
	cSdlWindow window( dataPaths.GetRoot() );
	bool fullscreen = false;
	if ( !CreateMainWindow( window, fullscreen ) ) {
		game.Finalize();
		return;
	}
	cSdlGraphicsBackend graphics( window );
	cSdlInputBackend input( window );
	cSdlSoundBackend sound;
	cPlatform platform;
	platform.graphics = &graphics;
	platform.input = &input;
	platform.sound = &sound;
	platform.dataRoot = dataPaths.GetRoot();
	if ( game.Init( platform, fullscreen ) ) {
		RunFrames( input );
	}
	game.Finalize();
}

}

int main( int, char ** ) {
	SDL_SetMainReady();
	if ( SDL_Init( SDL_INIT_VIDEO | SDL_INIT_EVENTS ) != 0 ) {
		std::fprintf( stderr, "%s: cannot start SDL: %s\n", cSdlWindow::TITLE, SDL_GetError() );
		game.Finalize();
		return 0;
	}
	IMG_Init( IMG_INIT_PNG );
	cSdlClock clock;
	SetClock( &clock );
	RunGame();
	SetClock( nullptr );
	IMG_Quit();
	SDL_Quit();
	return 0;
}
