// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sdl/SdlWindow.h"

#include <SDL_image.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <string>

#include "log/Log.h"
#include "platform/ScreenSize.h"

const char *const cSdlWindow::TITLE = "Project Kormaveth 2D";
const char *const cSdlWindow::ICON_PATH = "./resources/icon/kmvt.ico";

namespace {

const double DESKTOP_SHARE = 0.85;		// a windowed game takes at most this much of the desktop

enum { ANSWER_NONE = 0, ANSWER_YES = 1, ANSWER_NO = 2 };

int ShowQuestion() {
	const SDL_MessageBoxButtonData buttons[] = {
		{ SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, ANSWER_NO, "No" },
		{ SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, ANSWER_YES, "Yes" },
	};
	const SDL_MessageBoxData question = {
		SDL_MESSAGEBOX_INFORMATION, nullptr, cSdlWindow::TITLE, "Would you like fullscreen mode?",
		SDL_arraysize( buttons ), buttons, nullptr
	};
	int answer = ANSWER_NO;
	return SDL_ShowMessageBox( &question, &answer ) == 0 ? answer : ANSWER_NONE;
}

volatile sig_atomic_t questionSignal = 0;		// the signal that came while the question was shown
volatile pid_t questionProcess = 0;			// the process group that shows it

void EndQuestion( int signal ) {
	questionSignal = signal;
	if ( questionProcess > 0 ) {
		kill( -questionProcess, SIGKILL );
	}
}

// SDL's dialog waits for its answer deaf to signals (it runs in a process of its own and waits for
// it). Asked from a child in a process group of its own, the question can be taken down, dialog
// and all, when Ctrl+C or SIGTERM comes. Without a child the question is asked here, deaf as SDL's.
int AskInChild() {
	const pid_t child = fork();
	if ( child < 0 ) {
		return ShowQuestion();
	}
	if ( child == 0 ) {
		setpgid( 0, 0 );
		signal( SIGINT, SIG_DFL );
		signal( SIGTERM, SIG_DFL );
		_exit( ShowQuestion() );
	}
	setpgid( child, child );		// both set it, so that it is set whoever runs first
	questionProcess = child;
	if ( questionSignal != 0 ) {
		kill( -child, SIGKILL );
	}
	int status = 0;
	while ( waitpid( child, &status, 0 ) < 0 && errno == EINTR ) {
	}
	questionProcess = 0;
	return WIFEXITED( status ) ? WEXITSTATUS( status ) : ANSWER_NONE;
}

}

cSdlWindow::cSdlWindow( const std::string &dataRoot )
	: iconPath( dataRoot + ( ICON_PATH + 1 ) ) {	// the icon's path starts with "."
}

cSdlWindow::~cSdlWindow() {
	Destroy();
}

bool cSdlWindow::AskFullscreen( bool &fullscreen ) {
	struct sigaction ending = {};
	ending.sa_handler = EndQuestion;
	sigemptyset( &ending.sa_mask );
	struct sigaction interrupt = {};
	struct sigaction terminate = {};
	questionSignal = 0;
	sigaction( SIGINT, &ending, &interrupt );
	sigaction( SIGTERM, &ending, &terminate );
	fullscreen = AskInChild() == ANSWER_YES;
	sigaction( SIGINT, &interrupt, nullptr );
	sigaction( SIGTERM, &terminate, nullptr );
	return questionSignal == 0;
}

int cSdlWindow::GetWindowScale( int desktopWidth, int desktopHeight ) {
	const int byWidth = static_cast<int>( desktopWidth * DESKTOP_SHARE ) / VIEW_WIDTH;
	const int byHeight = static_cast<int>( desktopHeight * DESKTOP_SHARE ) / VIEW_HEIGHT;
	return std::max( 1, std::min( byWidth, byHeight ) );
}

bool cSdlWindow::HasDisplay() {
	const char *driver = SDL_GetCurrentVideoDriver();
	const char *asked = SDL_getenv( "SDL_VIDEODRIVER" );
	if ( driver == nullptr ) {
		SDL_SetError( "no video driver" );
		return false;
	}
	const bool nowhere = SDL_strcmp( driver, "offscreen" ) == 0 || SDL_strcmp( driver, "dummy" ) == 0;
	if ( nowhere && ( asked == nullptr || SDL_strcasecmp( asked, driver ) != 0 ) ) {
		SDL_SetError( "no display (SDL's video driver fell back to \"%s\")", driver );
		return false;
	}
	return true;
}

bool cSdlWindow::Create( bool wantFullscreen ) {
	fullscreen = wantFullscreen;
	int width = VIEW_WIDTH;
	int height = VIEW_HEIGHT;
	Uint32 flags = SDL_WINDOW_HIDDEN;		// the graphics backend shows it once its renderer is made
	if ( fullscreen ) {
		flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
	}
	SDL_Rect usable;		// a game that starts full screen gets this size when it leaves full screen
	if ( SDL_GetDisplayUsableBounds( 0, &usable ) == 0 ) {
		const int scale = GetWindowScale( usable.w, usable.h );
		width *= scale;
		height *= scale;
	}
	window = SDL_CreateWindow( TITLE, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height, flags );
	if ( window == nullptr ) {
		return false;
	}
	SetIcon();
	SDL_ShowCursor( SDL_DISABLE );	// the game draws its own cursor
	return true;
}

bool cSdlWindow::IsSwitchKey( const SDL_Event &event ) {
	if ( event.type != SDL_KEYDOWN || event.key.repeat != 0 || ( event.key.keysym.mod & KMOD_ALT ) == 0 ) {
		return false;
	}
	return event.key.keysym.scancode == SDL_SCANCODE_RETURN || event.key.keysym.scancode == SDL_SCANCODE_KP_ENTER;
}

// The renderer stays: its logical size keeps the picture 4:3 with black bars in either shape.
void cSdlWindow::SwitchFullscreen() {
	if ( window == nullptr ) {
		return;
	}
	if ( SDL_SetWindowFullscreen( window, fullscreen ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP ) != 0 ) {
		cLog::Write( ( std::string( "Error switching between full screen and a window: " ) + SDL_GetError() ).c_str() );
		return;
	}
	fullscreen = !fullscreen;
}

// A missing icon is no error: the desktop's default icon stays.
void cSdlWindow::SetIcon() {
	SDL_Surface *icon = IMG_Load( iconPath.c_str() );
	if ( icon != nullptr ) {
		SDL_SetWindowIcon( window, icon );
		SDL_FreeSurface( icon );
	}
}

void cSdlWindow::Destroy() {
	if ( window != nullptr ) {
		SDL_DestroyWindow( window );
		window = nullptr;
	}
}

bool cSdlWindow::HasInputFocus() const {
	return window != nullptr && ( SDL_GetWindowFlags( window ) & SDL_WINDOW_INPUT_FOCUS ) != 0;
}

// A windowed game fits exactly.
SDL_Rect cSdlWindow::GetPictureRect() const {
	int width = VIEW_WIDTH;
	int height = VIEW_HEIGHT;
	if ( window != nullptr ) {
		SDL_GetWindowSize( window, &width, &height );
	}
	return FitPicture( width, height );
}

SDL_Rect cSdlWindow::FitPicture( int width, int height ) {
	const double scale = std::min( static_cast<double>( width ) / VIEW_WIDTH, static_cast<double>( height ) / VIEW_HEIGHT );
	SDL_Rect picture;
	picture.w = static_cast<int>( VIEW_WIDTH * scale );
	picture.h = static_cast<int>( VIEW_HEIGHT * scale );
	picture.x = ( width - picture.w ) / 2;
	picture.y = ( height - picture.h ) / 2;
	return picture;
}

void cSdlWindow::WindowToScreen( int windowX, int windowY, int &screenX, int &screenY ) const {
	const SDL_Rect picture = GetPictureRect();
	screenX = picture.w > 0 ? ( windowX - picture.x ) * VIEW_WIDTH / picture.w : windowX;
	screenY = picture.h > 0 ? ( windowY - picture.y ) * VIEW_HEIGHT / picture.h : windowY;
}

void cSdlWindow::ScreenToWindow( int screenX, int screenY, int &windowX, int &windowY ) const {
	const SDL_Rect picture = GetPictureRect();
	windowX = picture.x + screenX * picture.w / VIEW_WIDTH + picture.w / ( 2 * VIEW_WIDTH );
	windowY = picture.y + screenY * picture.h / VIEW_HEIGHT + picture.h / ( 2 * VIEW_HEIGHT );
}
