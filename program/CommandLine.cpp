// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/CommandLine.h"

#include "Version.h"
#include "log/Printable.h"
#include "net/Link.h"
#include "net/Packet.h"
#include "replay/Fingerprint.h"
#include "replay/ReplayFile.h"

namespace {

const char *const PROGRAM = "kormaveth2d";

const unsigned long MAX_PORT = 65535;

// A whole decimal number from 1 to most; false when the text is anything else.
bool ReadNumber( const std::string &text, unsigned long most, unsigned long &number ) {
	if ( text.empty() || text.size() > 5 || text.find_first_not_of( "0123456789" ) != std::string::npos ) {
		return false;
	}
	number = std::stoul( text );
	return number >= 1 && number <= most;
}

// HOST, HOST:PORT, [IPV6] or [IPV6]:PORT.
bool ReadPartner( const std::string &text, std::string &host, uint16_t &port ) {
	std::string rest;
	if ( !text.empty() && text[0] == '[' ) {
		const size_t close = text.find( ']' );
		if ( close == std::string::npos ) {
			return false;
		}
		host = text.substr( 1, close - 1 );
		rest = text.substr( close + 1 );
	} else {
		const size_t colon = text.find( ':' );
		host = text.substr( 0, colon );
		rest = colon == std::string::npos ? std::string() : text.substr( colon );
	}
	unsigned long number = cLink::DEFAULT_PORT;
	if ( !rest.empty() && ( rest[0] != ':' || !ReadNumber( rest.substr( 1 ), MAX_PORT, number ) ) ) {
		return false;
	}
	port = static_cast<uint16_t>( number );
	return !host.empty();
}

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
		std::string wrong;
		if ( TakeOnlineOption( argc, argv, i, line, wrong ) ) {
			if ( !wrong.empty() ) {
				return Wrong( wrong );
			}
		} else if ( ( argument == "--help" || argument == "--version" ) && argc == 2 ) {
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
	if ( line.delay > 0 && line.online == ALONE ) {
		return Wrong( "--delay goes with --host or --join" );
	}
	if ( !line.portMapping && line.online != HOST ) {
		return Wrong( "--no-port-mapping goes with --host" );
	}
	if ( line.online != ALONE && ( line.mode == REPLAY || line.mode == VERIFY ) ) {
		return Wrong( "an online game cannot play a recording" );
	}
	return line;
}

bool cCommandLine::TakeOnlineOption( int argc, const char *const *argv, int &i, cCommandLine &line, std::string &error ) {
	const std::string argument = argv[i];
	const std::string value = i + 1 < argc ? argv[i + 1] : "";
	unsigned long number = 0;
	if ( ( argument == "--host" || argument == "--join" ) && line.online != ALONE ) {
		error = "one of --host and --join, once";
	} else if ( argument == "--host" ) {
		line.online = HOST;
		line.port = cLink::DEFAULT_PORT;
		if ( ReadNumber( value, MAX_PORT, number ) ) {
			line.port = static_cast<uint16_t>( number );
			i++;
		} else if ( !value.empty() && value[0] != '-' ) {
			error = "--host takes a port from 1 to 65535";
		}
	} else if ( argument == "--join" ) {
		line.online = JOIN;
		if ( !ReadPartner( value, line.partner, line.port ) ) {
			error = "--join needs HOST or HOST:PORT";
		}
		i++;
	} else if ( argument == "--no-port-mapping" && line.portMapping ) {
		line.portMapping = false;
	} else if ( argument == "--delay" && line.delay == 0 ) {
		if ( !ReadNumber( value, cPacket::MAX_DELAY, number ) ) {
			error = "--delay takes a number of steps from 1 to " + std::to_string( cPacket::MAX_DELAY );
		}
		line.delay = static_cast<uint32_t>( number );
		i++;
	} else {
		return false;
	}
	return true;
}

std::string cCommandLine::GetUsageLine( const std::string &error ) {
	return std::string( PROGRAM ) + ": " + MakePrintable( error ) + "; usage: " + PROGRAM +
		   " [--fullscreen | --window] [--record FILE | --replay FILE [--verify] | --help | --version]"
		   " [--host [PORT] [--no-port-mapping] | --join HOST[:PORT]] [--delay STEPS]\n";
}

std::string cCommandLine::GetHelp() {
	return std::string( "Usage: " ) + PROGRAM + " [OPTION]\n"
		"Project Kormaveth 2D, a top-down action game for one or two players.\n"
		"\n"
		"With no option the game asks whether to play full screen (unless Settings says otherwise),\n"
		"then starts at the main menu.\n"
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
		"  --host [PORT]          wait for a partner on UDP port PORT (" + std::to_string( cLink::DEFAULT_PORT ) + ")\n"
		"                         while playing alone; once it joins, both play from the main\n"
		"                         menu: this machine is player 1 and its mouse drives the menus;\n"
		"                         the home router is asked to open the port, and one line says how\n"
		"                         the partner joins, or what to do instead\n"
		"  --no-port-mapping      with --host: leave the router alone (the port forwarded by hand)\n"
		"  --join HOST[:PORT]     join the game hosted on HOST (a name or an IPv4 address) as\n"
		"                         player 2; both machines need the same version and data\n"
		"  --delay STEPS          the online input delay in 15 ms steps (1 to 40), fixed, not\n"
		"                         following the line\n"
		"  --help                 print this text\n"
		"  --version              print the game's version\n"
		"\n"
		"The log, log.txt, names what went wrong in the last run (a bad recording, a missing\n"
		"picture): it is in the folder the game runs in when the game's data is there, else in\n"
		"$XDG_STATE_HOME/kormaveth2d/ (by default ~/.local/state/kormaveth2d/), else on standard\n"
		"error.\n"
		"The keys, the volumes and the full-screen choice of the Settings screens are kept in\n"
		"$XDG_CONFIG_HOME/kormaveth2d/settings.ini (by default ~/.config/kormaveth2d/settings.ini).\n"
		"A wrong option prints a usage line and exits with status 2.\n";
}

std::string cCommandLine::GetVersion() {
	return std::string( "Project Kormaveth 2D " ) + KMVT_VERSION + "\n"
		"Replay format " + std::to_string( cReplayFile::FORMAT_VERSION ) + "\n" + cFingerprint::GetLine();
}
