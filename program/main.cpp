// SPDX-License-Identifier: GPL-3.0-or-later
// The program: reads its command line, asks about full screen, opens the window, runs the game's
// steps on the pacing clock with a frame after them whenever the picture changed, until the window
// closes or the player quits, then shuts everything down in order. Recording and replaying go
// through the run's session; --replay FILE --verify runs no window at all. In a browser the page
// gives the command line, the browser calls the frame loop's passes once a frame, and the log goes
// to the browser's console.

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
#include "actors/GameState.h"
#include "app/Game.h"
#include "graphics/sdl/SdlGraphicsBackend.h"
#include "input/Settings.h"
#ifndef __EMSCRIPTEN__
#include "input/ini/SettingsFile.h"
#endif
#include "input/sdl/SdlInputBackend.h"
#include "log/Log.h"
#include "log/Printable.h"
#include "net/Handshake.h"
#include "net/Link.h"
#include "net/PortMapper.h"
#include "net/PortMappingThread.h"
#include "platform/DataPaths.h"
#include "platform/MonotonicClock.h"
#include "platform/Platform.h"
#include "platform/sdl/SdlClock.h"
#include "platform/sdl/SdlWindow.h"
#include "program/CommandLine.h"
#include "program/NoticePicture.h"
#include "program/Session.h"
#include "program/WaitingPicture.h"
#include "replay/Fingerprint.h"
#include "replay/headless/ReplayCheck.h"
#include "sound/sdl/SdlSoundBackend.h"
#include "Version.h"
#ifdef __EMSCRIPTEN__
#include "platform/ScreenSize.h"
#include "platform/web/WebPage.h"
#endif

namespace {

cGame game;
cSession *runningSession = nullptr;		// for the page's download of the recording so far

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
	cWindowFrames( cSdlWindow &window, cSdlInputBackend &input, cSession &session, cWaitingPicture &waiting,
				   cNoticePicture &notice, const cPortMappingThread *portMapping )
		: window( window ), input( input ), session( session ), waiting( waiting ), notice( notice ), portMapping( portMapping ) {}

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
		const bool waitingChanged = waiting.Show( session.IsWaitingForPartner(), session.GetConnectionLostSeconds() );
		// The host's line stands at the foot of the main menu only, where it covers nothing.
		const bool inMenu = game.GetGameState() == STATE_MAIN_MENU;
		const bool noticeChanged = portMapping != nullptr && notice.Show( inMenu ? portMapping->GetLine() : "" );
		return ( SDL_GetWindowFlags( window.GetWindow() ) & unseen ) == 0 &&
			   ( picture.IsChanged( game ) || waitingChanged || noticeChanged );
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
	cNoticePicture &	notice;
	const cPortMappingThread *portMapping;
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
#ifdef __EMSCRIPTEN__
	// A page cannot send UDP.
	std::unique_ptr<cLink> link;
	why = "online play is in the desktop game";
#else
	std::unique_ptr<cLink> link = cLink::OpenOnNetwork( line.online == cCommandLine::HOST, line.partner, line.port, why );
#endif
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

// --host: the router is asked to open the port in the background; its line goes to the terminal
// and the log as it comes.
std::unique_ptr<cPortMappingThread> MapPort( const cCommandLine &line ) {
	if ( line.online != cCommandLine::HOST || !line.portMapping ) {
		return nullptr;
	}
#ifdef __EMSCRIPTEN__
	return nullptr;		// a page hosts no online game
#else
	return std::make_unique<cPortMappingThread>( cPortMapper::OpenOnNetwork(), line.port, []( const std::string &text ) {
		cLog::Write( text.c_str() );
		std::fprintf( stderr, "%s\n", MakePrintable( text ).c_str() );
	} );
#endif
}

// The version's fingerprint plays a short game, which must leave the last real run's log alone.
int PrintVersion() {
	cLog::Restart( "" );
	std::fputs( cCommandLine::GetVersion().c_str(), stdout );
	return 0;
}

void RunGame( const cCommandLine &line, cClock &clock ) {
	const std::string dataRoot = FindData();
#ifdef __EMSCRIPTEN__
	cLog::Restart( "" );		// to the console
#endif
	cSettings settings;
#ifndef __EMSCRIPTEN__
	cSettingsFile settingsFile( cSettingsFile::ChoosePath( std::getenv( "XDG_CONFIG_HOME" ), std::getenv( "HOME" ) ) );
	settingsFile.Load( settings );
#endif
	cSdlWindow window( dataRoot );
	bool fullscreen = false;
	if ( !CreateMainWindow( line.screen, settings.startScreen, window, fullscreen ) ) {
		game.Finalize();
		return;
	}
#ifdef __EMSCRIPTEN__
	// The canvas holds the picture at its own size; the page scales it to fit.
	SDL_SetWindowSize( window.GetWindow(), VIEW_WIDTH, VIEW_HEIGHT );
#endif
	cSdlGraphicsBackend graphics( window );
	cNoticePicture notice( graphics, dataRoot );
	cWaitingPicture waiting( notice, dataRoot );
	cSdlInputBackend input( window );
	input.SetKeyBindings( &settings.keys );
	cSdlSoundBackend sound;
	cMonotonicClock pacing;
	std::unique_ptr<cLink> link;
	std::unique_ptr<cPortMappingThread> portMapping;
	cSession session;
	std::string error;
	if ( !session.Open( line, input, &sound, clock, error ) ) {
		std::fprintf( stderr, "%s\n", MakePrintable( error ).c_str() );
	}
	if ( line.online != cCommandLine::ALONE ) {
		link = OpenOnline( line, session, dataRoot, pacing );
		portMapping = link ? MapPort( line ) : nullptr;
	}
	SetClock( &session.GetClock() );
	cPlatform platform;
	platform.graphics = &waiting;
	platform.input = &session.GetInput();
	platform.sound = session.GetSound();
	platform.dataRoot = dataRoot;
	platform.settings = &settings;
	// A replay's clicks on the settings screens are the recorded player's, not this one's.
#ifndef __EMSCRIPTEN__
	platform.settingsStore = line.mode == cCommandLine::REPLAY ? nullptr : &settingsFile;
#endif
	session.Watch( game );
	runningSession = &session;
	const auto end = [&]() {
		runningSession = nullptr;
		if ( !session.Close( error ) ) {
			std::fprintf( stderr, "%s\n", MakePrintable( error ).c_str() );
		}
		game.Finalize();
		SetClock( &clock );
	};
	if ( !game.Init( platform, fullscreen ) ) {
		end();
		return;
	}
	StartPads();
	cFrameLoop loop( pacing );
	cWindowFrames frames( window, input, session, waiting, notice, portMapping.get() );
#ifdef __EMSCRIPTEN__
	loop.ResetDeadline();
	cWebPage::RunFrames( [&]() { return loop.RunPass( frames ); }, end );
#else
	loop.Run( frames );
	end();
#endif
}

}

#ifdef __EMSCRIPTEN__
// The page's link to the recording so far: written to the file the command line named, which the
// page then offers for download. 0 when there is nothing to write, or it could not be written.
extern "C" int kmvt_SaveRecording() {
	std::string error = "the game has ended";
	if ( runningSession == nullptr || !runningSession->SaveRecording( error ) ) {
		cLog::Write( ( "Recording not saved: " + error ).c_str() );
		return 0;
	}
	return 1;
}
#endif

int main( int argc, char **argv ) {
	const cCommandLine line = cCommandLine::Parse( argc, argv );
	switch ( line.mode ) {
		case cCommandLine::HELP:	std::fputs( cCommandLine::GetHelp().c_str(), stdout ); return 0;
		case cCommandLine::VERSION:	return PrintVersion();
		case cCommandLine::WRONG:	std::fputs( cCommandLine::GetUsageLine( line.error ).c_str(), stderr ); return 2;
		case cCommandLine::VERIFY:	return cReplayCheck::Verify( line.file, FindData() );
		default:					break;
	}
#ifdef __EMSCRIPTEN__
	PrintVersion();		// the console's first line, as --version prints it
#endif
	SDL_SetMainReady();
	if ( SDL_Init( SDL_INIT_VIDEO | SDL_INIT_EVENTS ) != 0 ) {
		std::fprintf( stderr, "%s: cannot start SDL: %s\n", cSdlWindow::TITLE, SDL_GetError() );
		game.Finalize();
		return 0;
	}
	if ( !cSdlWindow::HasDisplay() ) {
		std::fprintf( stderr, "%s: cannot open the window: %s\n", cSdlWindow::TITLE, SDL_GetError() );
		SDL_Quit();
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
