// SPDX-License-Identifier: GPL-3.0-or-later
// The settings file: what is written reads back the same; every kind of bad file leaves one line
// per bad line in the log, that setting at its default, and the file as it was; the file's place
// follows XDG_CONFIG_HOME; a file that cannot be written costs one log line.

#include <gtest/gtest.h>

#include <sys/stat.h>

#include "input/KeyCodes.h"
#include "input/ini/SettingsFile.h"
#include "support/LogCapture.h"
#include "support/TempDir.h"

using namespace std::string_literals;

namespace {

const int KEY_L = 0x26;
const int KEY_SPACE = 0x39;
const int KEY_RIGHT_CTRL = 0x9D;

cSettings Changed() {
	cSettings settings;
	settings.keys.SetKey( 2, cKeyBindings::FIRE, KEY_L );
	settings.keys.SetKey( 1, cKeyBindings::UP, KEY_SPACE );
	settings.keys.SetKey( 1, cKeyBindings::FIRE, KEY_J );	// a swap: each on the other's default
	settings.keys.SetKey( 1, cKeyBindings::SKILL, KEY_H );
	settings.musicVolume = 3;
	settings.effectsVolume = 0;
	settings.startScreen = cSettings::WINDOW;
	return settings;
}

}

TEST( SettingsFileTest, WhatIsWrittenReadsBackTheSameAndNothingIsLeftBeside ) {
	cTempDir dir;
	cLogCapture log;
	cSettingsFile file( dir.GetFile( "deep/er/settings.ini" ) );
	ASSERT_TRUE( file.Save( Changed() ) ) << "the missing folders are made";
	cSettings read;
	file.Load( read );
	EXPECT_TRUE( read == Changed() );
	EXPECT_EQ( ReadWholeFile( file.GetPath() + ".new" ), "" );
	EXPECT_EQ( log.GetText(), "" );
	EXPECT_NE( ReadWholeFile( file.GetPath() ).find( "player2.fire = L\n" ), std::string::npos );
	for ( const cSettings::eStartScreen start : { cSettings::ASK, cSettings::FULL_SCREEN } ) {
		cSettings again = Changed();
		again.startScreen = start;
		ASSERT_TRUE( file.Save( again ) );
		file.Load( read );
		EXPECT_EQ( read.startScreen, start );
	}
}

// Each file holds one bad line among good ones: the good ones count, the bad one keeps its
// default and has its line in the log.
TEST( SettingsFileTest, EachBadLineIsLoggedWithItsNumberAndKeepsItsDefault ) {
	const struct {
		std::string	text;
		std::string	line;		// the log's line, after the file's name
	} cases[] = {
		{ "[keys]\nplayer2.fire = L\nplayer1.fire = Nope\n", "line 3: unknown key name \"Nope\"" },
		{ "[keys]\nplayer2.fire = L\nthis is no setting\n", "line 3: not a setting (name = value)" },
		{ "[keys]\nplayer2.fire = L\nplayer1.fire = K\n", "line 3: K is player 1's use" },
		{ "[keys]\nplayer2.fire = L\nplayer1.skill = L\n", "line 3: L is player 2's fire" },
		{ "[keys]\nplayer2.fire = L\nplayer1.fire = Escape\n", "line 3: Escape is the game's own key" },
		{ "[keys]\nplayer2.fire = L\nplayer3.fire = H\n", "line 3: no action \"player3.fire\"" },
		{ "[keys]\nplayer2.fire = L\n\x01\x02\xff\x00junk\n"s, "line 3: not text" },
		{ "[keys]\nplayer2.fire = L\n" + std::string( 1 << 20, 'x' ) + "\n", "line 3: longer than 198 bytes" },
		{ "[keys]\nplayer2.fire = L\n[sound]\nmusic = 11\n", "line 4: a volume is a whole number from 0 to 10" },
		{ "[keys]\nplayer2.fire = L\n[sound]\neffects = -1\n", "line 4: a volume is a whole number from 0 to 10" },
		{ "[keys]\nplayer2.fire = L\n[screen]\nstart = maybe\n", "line 4: start is ask, fullscreen or window" },
		{ "[keys]\nplayer2.fire = L\n[colours]\nsky = blue\n", "line 4: no setting \"sky\" in [colours]" },
	};
	for ( const auto &c : cases ) {
		cTempDir dir;
		cLogCapture log;
		dir.WriteFile( "settings.ini", c.text );
		cSettingsFile file( dir.GetFile( "settings.ini" ) );
		cSettings read;
		file.Load( read );
		EXPECT_EQ( log.GetLines(), std::vector<std::string>{ "Settings file " + file.GetPath() + ", " + c.line +
															 "; that setting keeps its default" } );
		cSettings expected;
		expected.keys.SetKey( 2, cKeyBindings::FIRE, KEY_L );
		EXPECT_TRUE( read == expected ) << c.line;
		EXPECT_EQ( ReadWholeFile( file.GetPath() ), c.text ) << "the file is left as it was";
	}
}

// Neither a folder in the file's place nor a file that cannot be opened stops anything.
TEST( SettingsFileTest, AFileThatCannotBeReadLeavesTheDefaultsWithOneLine ) {
	cTempDir dir;
	dir.WriteFile( "plain", "not a folder" );
	ASSERT_EQ( mkdir( dir.GetFile( "settings.ini" ).c_str(), 0700 ), 0 );
	const struct {
		std::string	path;
		std::string	line;
	} cases[] = {
		{ dir.GetFile( "settings.ini" ), " is not a file; every setting keeps its default" },
		{ dir.GetFile( "plain/settings.ini" ), " cannot be read: Not a directory" },
		{ dir.GetFile( "missing.ini" ), "" },
	};
	for ( const auto &c : cases ) {
		cLogCapture log;
		cSettings read = Changed();
		cSettingsFile( c.path ).Load( read );
		EXPECT_TRUE( read == Changed() ) << "nothing read, nothing changed";
		EXPECT_EQ( log.GetText(), c.line.empty() ? "" : "Settings file " + c.path + c.line + "\n" );
	}
}

TEST( SettingsFileTest, AFileThatCannotBeWrittenCostsOneLogLine ) {
	cTempDir dir;
	dir.WriteFile( "plain", "not a folder" );
	cLogCapture log;
	cSettingsFile file( dir.GetFile( "plain/kormaveth2d/settings.ini" ) );
	EXPECT_FALSE( file.Save( Changed() ) );
	EXPECT_EQ( log.GetLines(), std::vector<std::string>{ "Settings file " + file.GetPath() + " not written: Not a directory" } );
	EXPECT_FALSE( cSettingsFile( "" ).Save( Changed() ) ) << "no home at all: nowhere to keep them";
}

TEST( SettingsFileTest, TheFileLivesInTheConfigurationFolder ) {
	const struct {
		const char *	configHome;
		const char *	home;
		std::string		path;
	} cases[] = {
		{ "/cfg", "/home/ann", "/cfg/kormaveth2d/settings.ini" },
		{ nullptr, "/home/ann", "/home/ann/.config/kormaveth2d/settings.ini" },
		{ "", "/home/ann", "/home/ann/.config/kormaveth2d/settings.ini" },
		{ "relative", "/home/ann", "/home/ann/.config/kormaveth2d/settings.ini" },
		{ nullptr, nullptr, "" },
	};
	for ( const auto &c : cases ) {
		EXPECT_EQ( cSettingsFile::ChoosePath( c.configHome, c.home ), c.path );
	}
}

// The names go by the key's place and are read in any case; the keys file lines may come in any order.
TEST( SettingsFileTest, KeyNamesAreReadInAnyCase ) {
	cTempDir dir;
	cLogCapture log;
	dir.WriteFile( "settings.ini", "[keys]\nplayer2.use = keypad enter\nplayer2.fire = RIGHT CTRL\n" );
	cSettings read;
	cSettingsFile( dir.GetFile( "settings.ini" ) ).Load( read );
	EXPECT_EQ( read.keys.GetKey( 2, cKeyBindings::FIRE ), KEY_RIGHT_CTRL );
	EXPECT_EQ( read.keys.GetKey( 2, cKeyBindings::USE ), 0x9C );
	EXPECT_EQ( log.GetText(), "" );
}
