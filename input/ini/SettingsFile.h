// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cSettingsFile keeps the player's settings between runs in settings.ini, in the user's
// configuration folder. It reads the file at start: a line it cannot use leaves one line in the
// log and that setting at its default, and the file stays as it is until the player changes a
// setting. It writes the whole file or nothing: a new file beside it, then renamed over it.

#include <string>

#include "input/Settings.h"
#include "input/SettingsStore.h"

class cSettingsFile : public cSettingsStore {
public:
	static constexpr const char *SUBFOLDER = "kormaveth2d";
	static constexpr const char *NAME = "settings.ini";
	static const int	MAX_LINE = 200;		// in bytes, the line's end included
	static const int	MAX_LINES = 1000;	// the rest of a longer file is not read

	// SUBFOLDER/NAME in $XDG_CONFIG_HOME when it is absolute, else in ~/.config; empty when
	// neither is known, and then nothing is read or written.
	static std::string	ChoosePath( const char *configHome, const char *home );

	explicit			cSettingsFile( const std::string &path ) : path( path ) {}

	// Sets what the file holds over settings; a missing file is no fault and changes nothing.
	void				Load( cSettings &settings ) const;
	bool				Save( const cSettings &settings ) override;
	static std::string	Format( const cSettings &settings );
	const std::string &	GetPath() const { return path; }

private:
	std::string			path;
};
