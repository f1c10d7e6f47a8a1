#include "platform/sdl/SdlWindow.h"

#include <SDL_image.h>

#include <algorithm>

#include "platform/ScreenSize.h"

const char *const cSdlWindow::TITLE = "Project Kormaveth 2D";
const char *const cSdlWindow::ICON_PATH = "./resources/icon/kmvt.ico";

namespace {

const double DESKTOP_SHARE = 0.85;		// a windowed game takes at most this much of the desktop

enum { ANSWER_YES = 1, ANSWER_NO = 2 };

}

cSdlWindow::cSdlWindow( const std::string &dataRoot )
	: iconPath( dataRoot + ( ICON_PATH + 1 ) ) {	// the icon's path starts with "."
}

cSdlWindow::~cSdlWindow() {
	Destroy();
}

bool cSdlWindow::AskFullscreen() {
	const SDL_MessageBoxButtonData buttons[] = {
		{ SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, ANSWER_NO, "No" },
		{ SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, ANSWER_YES, "Yes" },
	};
	const SDL_MessageBoxData question = {
		SDL_MESSAGEBOX_INFORMATION, nullptr, TITLE, "Would you like fullscreen mode?",
		SDL_arraysize( buttons ), buttons, nullptr
	};
	int answer = ANSWER_NO;
	if ( SDL_ShowMessageBox( &question, &answer ) != 0 ) {
		return false;
	}
	return answer == ANSWER_YES;
}

int cSdlWindow::GetWindowScale( int desktopWidth, int desktopHeight ) {
	const int byWidth = static_cast<int>( desktopWidth * DESKTOP_SHARE ) / VIEW_WIDTH;
	const int byHeight = static_cast<int>( desktopHeight * DESKTOP_SHARE ) / VIEW_HEIGHT;
	return std::max( 1, std::min( byWidth, byHeight ) );
}

bool cSdlWindow::Create( bool wantFullscreen ) {
	fullscreen = wantFullscreen;
	int width = VIEW_WIDTH;
	int height = VIEW_HEIGHT;
	Uint32 flags = SDL_WINDOW_HIDDEN;		// the graphics backend shows it once its renderer is made
	if ( fullscreen ) {
		flags |= SDL_WINDOW_FULLSCREEN_DESKTOP;
	} else {
		SDL_Rect usable;
		if ( SDL_GetDisplayUsableBounds( 0, &usable ) == 0 ) {
			const int scale = GetWindowScale( usable.w, usable.h );
			width *= scale;
			height *= scale;
		}
	}
	window = SDL_CreateWindow( TITLE, SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED, width, height, flags );
	if ( window == nullptr ) {
		return false;
	}
	SetIcon();
	SDL_ShowCursor( SDL_DISABLE );	// the game draws its own cursor
	return true;
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

// The largest picture of the game's shape that fits, centred; a windowed game fits exactly.
SDL_Rect cSdlWindow::GetPictureRect() const {
	int width = VIEW_WIDTH;
	int height = VIEW_HEIGHT;
	if ( window != nullptr ) {
		SDL_GetWindowSize( window, &width, &height );
	}
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
