// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/CommandLine.h"

#include "Version.h"
#include "log/Printable.h"
#include "replay/Fingerprint.h"
#include "replay/ReplayFile.h"

namespace {

const char *const PROGRAM = "kormaveth2d";

cCommandLine Wrong( const std::string &error ) {
	cCommandLine line;
	line.mode = cCommandLine::WRONG;
	line.error = error;
	return line;
}

cCommandLine::eScreen ScreenAskedBy( const std::string &argument ) {
	if ( argument == "--fullscreen" ) {
		return cCommandLine::FULL_SCREEN;
	}
	return argument == "--window" ? cCommandLine::WINDOW_SCREEN : cCommandLine::ASK_SCREEN;
}

}

// --help and --version stand alone; --verify goes with --replay, in either order; --fullscreen or
// --window goes with anything that opens the window.
cCommandLine cCommandLine::Parse( int argc, const char *const *argv ) {
	cCommandLine line;
	bool verify = false;
	for ( int i = 1; i < argc; i++ ) {
		const std::string argument = argv[i];
		if ( ( argument == "--help" || argument == "--version" ) && argc == 2 ) {
			line.mode = argument == "--help" ? HELP : VERSION;
		} else if ( ( argument == "--record" || argument == "--replay" ) && line.file.empty() ) {
			if ( i + 1 >= argc || argv[i + 1][0] == '\0' ) {
				return Wrong( argument + " needs a file" );
			}
			line.mode = argument == "--record" ? RECORD : REPLAY;
			line.file = argv[++i];
		} else if ( argument == "--verify" && !verify ) {
			verify = true;
		} else if ( ScreenAskedBy( argument ) != ASK_SCREEN ) {
			if ( line.screen != ASK_SCREEN ) {
				return Wrong( "--fullscreen or --window, one of them once" );
			}
			line.screen = ScreenAskedBy( argument );
		} else {
			return Wrong( "unexpected argument '" + argument + "'" );
		}
	}
	if ( verify ) {
		if ( line.mode != REPLAY ) {
			return Wrong( "--verify goes with --replay FILE" );
		}
		if ( line.screen != ASK_SCREEN ) {
			return Wrong( "--verify opens no window for --fullscreen or --window" );
		}
		line.mode = VERIFY;
	}
	return line;
}

std::string cCommandLine::GetUsageLine( const std::string &error ) {
	return std::string( PROGRAM ) + ": " + MakePrintable( error ) + "; usage: " + PROGRAM +
		   " [--fullscreen | --window] [--record FILE | --replay FILE [--verify] | --help | --version]\n";
}

std::string cCommandLine::GetHelp() {
	return std::string( "Usage: " ) + PROGRAM + " [OPTION]\n"
		"Project Kormaveth 2D, a top-down action game for one or two players.\n"
		"\n"
		"With no option the game asks whether to play full screen, then starts at the main menu.\n"
		"Alt+Enter switches between the window and full screen at any time.\n"
		"\n"
		"  --fullscreen           play full screen without asking\n"
		"  --window               play in a window without asking\n"
		"  --record FILE          play as usual and write a recording of the whole run to FILE\n"
		"                         when the program ends (quit entry, window closed or SIGTERM)\n"
		"  --replay FILE          show the recording FILE in the window: Escape leaves it, any\n"
		"                         other key held plays it four times as fast; at its end the game\n"
		"                         is yours from the main menu\n"
		"  --replay FILE --verify play the recording without a window or sound, as fast as it\n"
		"                         goes, and print the final state's hash; exit status 0 when every\n"
		"                         checkpoint matched, 1 when the game went another way or the\n"
		"                         file could not be read\n"
		"  --help                 print this text\n"
		"  --version              print the game's version\n"
		"\n"
		"The log, log.txt, names what went wrong in the last run (a bad recording, a missing\n"
		"picture): it is in the folder the game runs in when the game's data is there, else in\n"
		"$XDG_STATE_HOME/kormaveth2d/ (by default ~/.local/state/kormaveth2d/), else on standard\n"
		"error.\n"
		"A wrong option prints a usage line and exits with status 2.\n";
}

std::string cCommandLine::GetVersion() {
	return std::string( "Project Kormaveth 2D " ) + KMVT_VERSION + "\n"
		"Replay format " + std::to_string( cReplayFile::FORMAT_VERSION ) + "\n" + cFingerprint::GetLine();
}
