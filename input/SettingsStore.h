// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Where the game keeps its settings when a player changes one: the settings file
// (input/ini/SettingsFile.h), or nowhere in tests and replays.

class cSettings;

class cSettingsStore {
public:
	virtual			~cSettingsStore() = default;
	// False, after a line in the log, when they could not be kept; the game goes on either way.
	virtual bool	Save( const cSettings &settings ) = 0;
};
