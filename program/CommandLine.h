// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cCommandLine is what the program was asked to do: play as usual (no argument), record the run,
// play a recording in the window or check it without one, or print its help or version; and
// whether the window is full screen, or the player is asked; whether it hosts an online game or joins one.

#include <cstdint>
#include <string>

struct cCommandLine {
	enum eMode { PLAY, RECORD, REPLAY, VERIFY, HELP, VERSION, WRONG };
	enum eScreen { ASK_SCREEN, WINDOW_SCREEN, FULL_SCREEN };

	eMode				mode = PLAY;
	std::string			file;			// RECORD, REPLAY and VERIFY
	std::string			error;			// WRONG: what was wrong, for the usage line
	eScreen				screen = ASK_SCREEN;	// --window, --fullscreen or neither

	enum eOnline { ALONE, HOST, JOIN };
	eOnline				online = ALONE;
	std::string			partner;		// JOIN: the host's name or address
	uint16_t			port = 0;		// HOST and JOIN: the host's UDP port
	uint32_t			delay = 0;		// --delay STEPS; 0 lets the host measure it
	bool				portMapping = true;	// HOST: asks the home router to open the port

	static cCommandLine	Parse( int argc, const char *const *argv );
	// --host [PORT], --join HOST[:PORT], --delay STEPS and --no-port-mapping at argv[i]: false when argv[i] is none of
	// them; i moves past what it took, error says what is wrong with it.
	static bool			TakeOnlineOption( int argc, const char *const *argv, int &i, cCommandLine &line,
										  std::string &error );
	static std::string	GetUsageLine( const std::string &error );	// one line, ends with a newline
	static std::string	GetHelp();
	static std::string	GetVersion();
};
