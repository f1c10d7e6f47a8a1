// SPDX-License-Identifier: GPL-3.0-or-later
// The program: reads its command line, asks about full screen, opens the window, runs the game's
// steps on the pacing clock with a frame after them whenever the picture changed, until the window
// closes or the player quits, then shuts everything down in order. Recording and replaying go
// through the run's session; --replay FILE --verify runs no window at all.

#define SDL_MAIN_HANDLED
#include <SDL.h>
#include <SDL_image.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "app/FrameClient.h"
#include "app/FrameLoop.h"
#include "app/FramePicture.h"
#include "app/Game.h"
#include "graphics/sdl/SdlGraphicsBackend.h"
#include "input/Settings.h"
#include "input/ini/SettingsFile.h"
#include "input/sdl/SdlInputBackend.h"
#include "log/Log.h"
#include "log/Printable.h"
#include "net/Handshake.h"
#include "net/Link.h"
#include "platform/DataPaths.h"
#include "platform/MonotonicClock.h"
#include "platform/Platform.h"
#include "platform/sdl/SdlClock.h"
#include "platform/sdl/SdlWindow.h"
#include "program/CommandLine.h"
#include "program/Session.h"
#include "program/WaitingPicture.h"
#include "replay/Fingerprint.h"
#include "replay/headless/ReplayCheck.h"
#include "sound/sdl/SdlSoundBackend.h"
#include "Version.h"

namespace {

cGame game;

// The command line may have chosen already, or else the settings. False when the window cannot be
// opened, or when a signal came while the question waited: the program then ends as a closed
// window ends it.
bool CreateMainWindow( cCommandLine::eScreen screen, cSettings::eStartScreen start, cSdlWindow &window,
					   bool &fullscreen ) {
	if ( screen == cCommandLine::ASK_SCREEN && start != cSettings::ASK ) {
		screen = start == cSettings::FULL_SCREEN ? cCommandLine::FULL_SCREEN : cCommandLine::WINDOW_SCREEN;
	}
	fullscreen = screen == cCommandLine::FULL_SCREEN;
	if ( screen == cCommandLine::ASK_SCREEN && !cSdlWindow::AskFullscreen( fullscreen ) ) {
		return false;
	}
	if ( !window.Create( fullscreen ) ) {
		std::fprintf( stderr, "%s: cannot open the window: %s\n", cSdlWindow::TITLE, SDL_GetError() );
		return false;
	}
	return true;
}

// The game in its SDL window. A hidden or minimised window is not drawn; a window event that may
// have spoilt or hidden the picture asks for a frame. Alt+Enter switches the window between full
// screen and a window; the input backend keeps the keys and the cursor out of the game's way.
class cWindowFrames : public cFrameClient {
public:
	cWindowFrames( cSdlWindow &window, cSdlInputBackend &input, cSession &session, cWaitingPicture &waiting )
		: window( window ), input( input ), session( session ), waiting( waiting ) {}

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
			if ( cSdlWindow::IsSwitchKey( event ) ) {
				window.SwitchFullscreen();
				NoteStall();
			}
		}
		return true;
	}
	bool Step() override { return session.Step( game ); }
	bool IsFrameWanted() override {
		const Uint32 unseen = SDL_WINDOW_HIDDEN | SDL_WINDOW_MINIMIZED;
		const bool waitingChanged = waiting.Show( session.IsWaitingForPartner() );
		return ( SDL_GetWindowFlags( window.GetWindow() ) & unseen ) == 0 && ( picture.IsChanged( game ) || waitingChanged );
	}
	void DrawFrame() override {
		game.RenderFrame();
		picture.Note( game );
	}

private:
	cSdlWindow &		window;
	cSdlInputBackend &	input;
	cSession &			session;
	cWaitingPicture &	waiting;
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

// The data may lie in the working folder, beside the executable or where it was installed; the
// log goes with it, so this comes before anything is logged. Returns the data's folder.
std::string FindData() {
	char *executableFolder = SDL_GetBasePath();
	cDataPaths dataPaths;
	dataPaths.SetUp( executableFolder != nullptr ? executableFolder : "" );
	SDL_free( executableFolder );
	return dataPaths.GetRoot();
}

// --host and --join: the link to the partner, and who this machine is. A link that cannot open
// leaves the game alone, with the line on the terminal and in the log.
std::unique_ptr<cLink> OpenOnline( const cCommandLine &line, cSession &session, const std::string &dataRoot,
									cPacingClock &time ) {
	std::string why;
	std::unique_ptr<cLink> link = cLink::OpenOnNetwork( line.online == cCommandLine::HOST, line.partner, line.port, why );
	if ( !link ) {
		const std::string text = "No online game: " + why;
		cLog::Write( text.c_str() );
		std::fprintf( stderr, "%s\n", MakePrintable( text ).c_str() );
		return nullptr;
	}
	const cHello hello = cHandshake::MakeHello( KMVT_VERSION, dataRoot, cFingerprint::Compute(), line.delay );
	session.OpenOnline( line, *link, hello, time );
	return link;
}

// The version's fingerprint plays a short game, which must leave the last real run's log alone.
int PrintVersion() {
	cLog::Restart( "" );
	std::fputs( cCommandLine::GetVersion().c_str(), stdout );
	return 0;
}

void RunGame( const cCommandLine &line, cClock &clock ) {
	const std::string dataRoot = FindData();
	cSettings settings;
	cSettingsFile settingsFile( cSettingsFile::ChoosePath( std::getenv( "XDG_CONFIG_HOME" ), std::getenv( "HOME" ) ) );
	settingsFile.Load( settings );
	cSdlWindow window( dataRoot );
	bool fullscreen = false;
	if ( !CreateMainWindow( line.screen, settings.startScreen, window, fullscreen ) ) {
		game.Finalize();
		return;
	}
	cSdlGraphicsBackend graphics( window );
	cWaitingPicture waiting( graphics, dataRoot );
	cSdlInputBackend input( window );
	input.SetKeyBindings( &settings.keys );
	cSdlSoundBackend sound;
	cMonotonicClock pacing;
	std::unique_ptr<cLink> link;
	cSession session;
	std::string error;
	if ( !session.Open( line, input, &sound, clock, error ) ) {
		std::fprintf( stderr, "%s\n", MakePrintable( error ).c_str() );
	}
	if ( line.online != cCommandLine::ALONE ) {
		link = OpenOnline( line, session, dataRoot, pacing );
	}
	SetClock( &session.GetClock() );
	cPlatform platform;
	platform.graphics = &waiting;
	platform.input = &session.GetInput();
	platform.sound = session.GetSound();
	platform.dataRoot = dataRoot;
	platform.settings = &settings;
	// A replay's clicks on the settings screens are the recorded player's, not this one's.
	platform.settingsStore = line.mode == cCommandLine::REPLAY ? nullptr : &settingsFile;
	session.Watch( game );
	if ( game.Init( platform, fullscreen ) ) {
		StartPads();
		cFrameLoop loop( pacing );
		cWindowFrames frames( window, input, session, waiting );
		loop.Run( frames );
	}
	if ( !session.Close( error ) ) {
		std::fprintf( stderr, "%s\n", MakePrintable( error ).c_str() );
	}
	game.Finalize();
	SetClock( &clock );
}

}

int main( int argc, char **argv ) {
	const cCommandLine line = cCommandLine::Parse( argc, argv );
	switch ( line.mode ) {
		case cCommandLine::HELP:	std::fputs( cCommandLine::GetHelp().c_str(), stdout ); return 0;
		case cCommandLine::VERSION:	return PrintVersion();
		case cCommandLine::WRONG:	std::fputs( cCommandLine::GetUsageLine( line.error ).c_str(), stderr ); return 2;
		case cCommandLine::VERIFY:	return cReplayCheck::Verify( line.file, FindData() );
		default:					break;
	}
	SDL_SetMainReady();
	if ( SDL_Init( SDL_INIT_VIDEO | SDL_INIT_EVENTS ) != 0 ) {
		std::fprintf( stderr, "%s: cannot start SDL: %s\n", cSdlWindow::TITLE, SDL_GetError() );
		game.Finalize();
		return 0;
	}
	IMG_Init( IMG_INIT_PNG );
	cSdlClock clock;
	SetClock( &clock );
	RunGame( line, clock );
	SetClock( nullptr );
	IMG_Quit();
	SDL_Quit();
	return 0;
}
