// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The game's window over SDL: asks whether to play full screen, opens the window at the largest
// whole-number scale of 640 x 480 that fits the desktop (or full screen with the 4:3 picture
// centred), switches between the two on Alt+Enter, and maps between window pixels and the game's
// 640 x 480 screen.

#include <SDL.h>

#include <string>

class cSdlWindow {
public:
	static const char *const TITLE;
	static const char *const ICON_PATH;

	// The icon is read from the resource tree under dataRoot.
	explicit		cSdlWindow( const std::string &dataRoot = "." );
					~cSdlWindow();
					cSdlWindow( const cSdlWindow & ) = delete;
	cSdlWindow &	operator=( const cSdlWindow & ) = delete;

	// "Would you like fullscreen mode?"; any answer but Yes, a failure included, means windowed.
	// False when SIGINT or SIGTERM came before the answer: the program is to end.
	static bool		AskFullscreen( bool &fullscreen );
	// After SDL_Init: SDL found a display to show windows on. Without one it falls back to a video
	// driver that draws nowhere, on which the game would run unseen; unless SDL_VIDEODRIVER asked
	// for that driver, the game then stops. False with SDL's error set.
	static bool		HasDisplay();
	// The window is created hidden: it is shown once the renderer is made, so that it appears once.
	bool			Create( bool fullscreen );
	void			Destroy();
	// Alt+Enter (either Enter key, pressed, not repeated) switches between a window and full screen.
	static bool		IsSwitchKey( const SDL_Event &event );
	void			SwitchFullscreen();

	SDL_Window *	GetWindow() const { return window; }
	bool			IsFullscreen() const { return fullscreen; }
	bool			HasInputFocus() const;
	// Where the 640 x 480 picture lies in the window, in window pixels.
	SDL_Rect		GetPictureRect() const;
	// The largest picture of the game's shape that fits an area of this size, centred.
	static SDL_Rect	FitPicture( int width, int height );
	void			WindowToScreen( int windowX, int windowY, int &screenX, int &screenY ) const;
	void			ScreenToWindow( int screenX, int screenY, int &windowX, int &windowY ) const;

	// Whole-number scale of a windowed game on a desktop of the given usable size, at least 1.
	static int		GetWindowScale( int desktopWidth, int desktopHeight );

private:
	void			SetIcon();

	std::string		iconPath;
	SDL_Window *	window = nullptr;
	bool			fullscreen = false;
};
