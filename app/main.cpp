// The program: asks about full screen, opens the window, runs the game's steps on the pacing clock
// with a frame after them whenever the picture changed, until the window closes or the player
// quits, then shuts everything down in order.

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <SDL_image.h>

#include <cstdio>
#include <string>

#include "app/FrameClient.h"
#include "app/FrameLoop.h"
#include "app/FramePicture.h"
#include "app/Game.h"
#include "graphics/sdl/SdlGraphicsBackend.h"
#include "input/sdl/SdlInputBackend.h"
#include "log/Log.h"
#include "platform/DataPaths.h"
#include "platform/MonotonicClock.h"
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

// The game in its SDL window. A hidden or minimised window is not drawn; a window event that may
// have spoilt or hidden the picture asks for a frame.
class cWindowFrames : public cFrameClient {
public:
	cWindowFrames( const cSdlWindow &window, cSdlInputBackend &input ) : window( window ), input( input ) {}

	bool HandleEvents() override {
		SDL_Event event;
		while ( SDL_PollEvent( &event ) ) {
			if ( event.type == SDL_QUIT ) {	// the window closed, or SIGINT / SIGTERM
				return false;
			}
			if ( event.type == SDL_WINDOWEVENT ) {
				picture.Forget();
			}
			input.HandleEvent( event );
		}
		return true;
	}
	bool Step() override { return game.Step(); }
	bool IsFrameWanted() override {
		const Uint32 unseen = SDL_WINDOW_HIDDEN | SDL_WINDOW_MINIMIZED;
		return ( SDL_GetWindowFlags( window.GetWindow() ) & unseen ) == 0 && picture.IsChanged( game );
	}
	void DrawFrame() override {
		game.RenderFrame();
		picture.Note( game );
	}

private:
	const cSdlWindow &	window;
	cSdlInputBackend &	input;
	cFramePicture		picture;
};

// Pads are welcome but not needed: without them the game plays on the keyboard and the mouse.
void StartPads() {
	if ( SDL_InitSubSystem( SDL_INIT_GAMECONTROLLER ) != 0 ) {
		std::string line = "Gamepads unavailable: ";
		line += SDL_GetError();
		cLog::Write( line.c_str() );
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
		StartPads();
		cMonotonicClock pacing;
		cFrameLoop loop( pacing );
		cWindowFrames frames( window, input );
		loop.Run( frames );
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
