// SPDX-License-Identifier: GPL-3.0-or-later
#include "input/ini/SettingsFile.h"

#include <ini.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "input/KeyNames.h"
#include "log/Log.h"

namespace {

const char *const SCREEN_NAMES[] = { "ask", "fullscreen", "window" };

// What the file said of one action's key, and where.
struct cKeyLine {
	int		key = 0;
	int		line = 0;		// 0: the file did not say
};

// The file as inih reads it, line by line, with each line's number and whether it was used.
struct cReading {
	FILE *				file = nullptr;
	std::string			path;
	cSettings *			settings = nullptr;
	cKeyLine			keys[cKeyBindings::PLAYERS][cKeyBindings::ACTIONS];
	int					line = 0;
	std::string			text;		// the line being read, as inih got it
	bool				used = false;
	bool				over = false;

	void Complain( int number, const std::string &why ) const {
		const std::string entry = "Settings file " + path + ", line " + std::to_string( number ) + ": " + why +
								  "; that setting keeps its default";
		cLog::Write( entry.c_str() );
	}
};

bool IsBlankOrHeading( const std::string &text ) {
	const size_t first = text.find_first_not_of( " \t\r\n" );
	if ( first == std::string::npos || text[first] == ';' || text[first] == '#' ) {
		return true;
	}
	return text[first] == '[' && text.find( ']', first ) != std::string::npos;
}

// The line inih did not take, and that is not a comment or a heading, is not a setting at all.
void CheckLastLine( cReading &reading ) {
	if ( reading.line > 0 && !reading.used && !IsBlankOrHeading( reading.text ) ) {
		reading.Complain( reading.line, "not a setting (name = value)" );
	}
}

// inih's fgets: a line too long or not text reaches inih as a blank line, after its complaint.
char *ReadLine( char *buffer, int size, void *stream ) {
	cReading &reading = *static_cast<cReading *>( stream );
	CheckLastLine( reading );
	if ( reading.line >= cSettingsFile::MAX_LINES ) {
		reading.over = !feof( reading.file ) && getc( reading.file ) != EOF;
		return nullptr;
	}
	std::string text;
	bool binary = false;
	int c = getc( reading.file );
	if ( c == EOF ) {
		return nullptr;
	}
	for ( ; c != EOF && c != '\n'; c = getc( reading.file ) ) {
		binary = binary || ( c < 0x20 && c != '\t' && c != '\r' ) || c == 0x7F;
		if ( text.size() < static_cast<size_t>( size ) ) {
			text += static_cast<char>( c );
		}
	}
	reading.line++;
	reading.used = false;
	reading.text = text;
	if ( text.size() + 2 > static_cast<size_t>( size ) || binary ) {
		reading.Complain( reading.line, binary ? "not text" : "longer than " + std::to_string( size - 2 ) + " bytes" );
		reading.text.clear();
		text.clear();
	}
	std::snprintf( buffer, static_cast<size_t>( size ), "%s\n", text.c_str() );
	return buffer;
}

// "0" to "10" exactly.
bool ParseVolume( const std::string &value, int &volume ) {
	if ( value.empty() || value.size() > 2 || value.find_first_not_of( "0123456789" ) != std::string::npos ) {
		return false;
	}
	const int read = std::atoi( value.c_str() );
	if ( read > cSettings::LOUDEST ) {
		return false;
	}
	volume = read;
	return true;
}

// "player1.fire": the player and the action.
bool ParseAction( const std::string &name, int &player, int &action ) {
	for ( player = 1; player <= cKeyBindings::PLAYERS; player++ ) {
		for ( action = 0; action < cKeyBindings::ACTIONS; action++ ) {
			if ( name == "player" + std::to_string( player ) + "." + cKeyBindings::GetActionName( action ) ) {
				return true;
			}
		}
	}
	return false;
}

bool TakeKey( cReading &reading, const std::string &name, const std::string &value, std::string &why ) {
	int player = 0;
	int action = 0;
	if ( !ParseAction( name, player, action ) ) {
		why = "no action \"" + name + "\"";
		return false;
	}
	const int key = cKeyNames::FindPlace( value );
	if ( key == 0 ) {
		why = "unknown key name \"" + value + "\"";
		return false;
	}
	if ( !cKeyBindings::IsBindable( key ) ) {
		why = value + " is the game's own key";
		return false;
	}
	reading.keys[player - 1][action] = cKeyLine{ key, reading.line };
	return true;
}

bool TakeSetting( cReading &reading, const std::string &section, const std::string &name, const std::string &value,
				  std::string &why ) {
	cSettings &settings = *reading.settings;
	if ( section == "keys" ) {
		return TakeKey( reading, name, value, why );
	}
	if ( section == "sound" && ( name == "music" || name == "effects" ) ) {
		int &volume = name == "music" ? settings.musicVolume : settings.effectsVolume;
		why = "a volume is a whole number from 0 to " + std::to_string( cSettings::LOUDEST );
		return ParseVolume( value, volume );
	}
	if ( section == "screen" && name == "start" ) {
		for ( int i = 0; i < 3; i++ ) {
			if ( value == SCREEN_NAMES[i] ) {
				settings.startScreen = static_cast<cSettings::eStartScreen>( i );
				return true;
			}
		}
		why = "start is ask, fullscreen or window";
		return false;
	}
	why = "no setting \"" + name + "\" in [" + section + "]";
	return false;
}

int TakeLine( void *user, const char *section, const char *name, const char *value ) {
	cReading &reading = *static_cast<cReading *>( user );
	reading.used = true;
	std::string why;
	if ( !TakeSetting( reading, section, name, value, why ) ) {
		reading.Complain( reading.line, why );
	}
	return 1;
}

// Two actions on one key: the later line gives way, one at a time, since an action back on its
// default may meet another.
void SettleKeys( cReading &reading ) {
	cKeyBindings &keys = reading.settings->keys;
	for ( ;; ) {
		keys.SetDefaults();
		for ( int p = 1; p <= cKeyBindings::PLAYERS; p++ ) {
			for ( int a = 0; a < cKeyBindings::ACTIONS; a++ ) {
				if ( reading.keys[p - 1][a].line > 0 ) {
					keys.SetKey( p, a, reading.keys[p - 1][a].key );
				}
			}
		}
		cKeyLine *latest = nullptr;
		std::string why;
		for ( int p = 1; p <= cKeyBindings::PLAYERS; p++ ) {
			for ( int a = 0; a < cKeyBindings::ACTIONS; a++ ) {
				cKeyLine &line = reading.keys[p - 1][a];
				int holder = 0;
				int holderAction = 0;
				if ( line.line > 0 && ( latest == nullptr || line.line > latest->line ) &&
					 keys.FindHolder( line.key, p, a, holder, holderAction ) ) {
					latest = &line;
					why = std::string( cKeyNames::GetPlaceName( line.key ) ) + " is player " + std::to_string( holder ) +
						  "'s " + cKeyBindings::GetActionName( holderAction );
				}
			}
		}
		if ( latest == nullptr ) {
			return;
		}
		reading.Complain( latest->line, why );
		latest->line = 0;
	}
}

bool MakeFolders( const std::string &file ) {
	for ( size_t slash = file.find( '/', 1 ); slash != std::string::npos; slash = file.find( '/', slash + 1 ) ) {
		if ( mkdir( file.substr( 0, slash ).c_str(), 0700 ) != 0 && errno != EEXIST ) {
			return false;
		}
	}
	return true;
}

}

std::string cSettingsFile::ChoosePath( const char *configHome, const char *home ) {
	std::string folder;
	if ( configHome != nullptr && configHome[0] == '/' ) {
		folder = configHome;
	} else if ( home != nullptr && home[0] == '/' ) {
		folder = std::string( home ) + "/.config";
	} else {
		return std::string();
	}
	return folder + "/" + SUBFOLDER + "/" + NAME;
}

void cSettingsFile::Load( cSettings &settings ) const {
	if ( path.empty() ) {
		return;
	}
	struct stat status;
	if ( stat( path.c_str(), &status ) != 0 ) {
		if ( errno != ENOENT ) {
			cLog::Write( ( "Settings file " + path + " cannot be read: " + std::strerror( errno ) ).c_str() );
		}
		return;
	}
	if ( !S_ISREG( status.st_mode ) ) {
		cLog::Write( ( "Settings file " + path + " is not a file; every setting keeps its default" ).c_str() );
		return;
	}
	cReading reading;
	reading.file = std::fopen( path.c_str(), "rb" );
	if ( reading.file == nullptr ) {
		cLog::Write( ( "Settings file " + path + " cannot be read: " + std::strerror( errno ) ).c_str() );
		return;
	}
	reading.path = path;
	reading.settings = &settings;
	ini_parse_stream( ReadLine, &reading, TakeLine, &reading );
	std::fclose( reading.file );
	if ( reading.over ) {
		cLog::Write( ( "Settings file " + path + " has more than " + std::to_string( MAX_LINES ) +
					   " lines; the rest is not read" ).c_str() );
	}
	SettleKeys( reading );
}

bool cSettingsFile::Save( const cSettings &settings ) {
	if ( path.empty() ) {
		return false;
	}
	const std::string text = Format( settings );
	const std::string fresh = path + ".new";
	bool written = MakeFolders( path );
	FILE *file = written ? std::fopen( fresh.c_str(), "wb" ) : nullptr;
	written = file != nullptr && std::fwrite( text.data(), 1, text.size(), file ) == text.size();
	written = file != nullptr && std::fclose( file ) == 0 && written;
	written = written && std::rename( fresh.c_str(), path.c_str() ) == 0;
	if ( !written ) {
		cLog::Write( ( "Settings file " + path + " not written: " + std::strerror( errno ) ).c_str() );
		std::remove( fresh.c_str() );
	}
	return written;
}

std::string cSettingsFile::Format( const cSettings &settings ) {
	std::string text = "# Kormaveth 2D's settings, written by the game whenever one changes.\n"
					   "# Keys are named by their place on a US keyboard, whatever the layout prints on them.\n"
					   "[keys]\n";
	for ( int p = 1; p <= cKeyBindings::PLAYERS; p++ ) {
		for ( int a = 0; a < cKeyBindings::ACTIONS; a++ ) {
			text += "player" + std::to_string( p ) + "." + cKeyBindings::GetActionName( a ) + " = " +
					cKeyNames::GetPlaceName( settings.keys.GetKey( p, a ) ) + "\n";
		}
	}
	text += "\n[sound]\n; from 0, silent, to " + std::to_string( cSettings::LOUDEST ) + "\n";
	text += "music = " + std::to_string( settings.musicVolume ) + "\n";
	text += "effects = " + std::to_string( settings.effectsVolume ) + "\n";
	text += "\n[screen]\n; ask, fullscreen or window\nstart = " + std::string( SCREEN_NAMES[settings.startScreen] ) + "\n";
	return text;
}
