// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cCommandLine is what the program was asked to do: play as usual (no argument), record the run,
// play a recording in the window or check it without one, or print its help or version; and
// whether the window is full screen, or the player is asked.

#include <string>

struct cCommandLine {
	enum eMode { PLAY, RECORD, REPLAY, VERIFY, HELP, VERSION, WRONG };
	enum eScreen { ASK_SCREEN, WINDOW_SCREEN, FULL_SCREEN };

	eMode				mode = PLAY;
	std::string			file;			// RECORD, REPLAY and VERIFY
	std::string			error;			// WRONG: what was wrong, for the usage line
	eScreen				screen = ASK_SCREEN;	// --window, --fullscreen or neither

	static cCommandLine	Parse( int argc, const char *const *argv );
	static std::string	GetUsageLine( const std::string &error );	// one line, ends with a newline
	static std::string	GetHelp();
	static std::string	GetVersion();
};
