// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cDataPaths finds the folder that holds the game's resource tree, wherever the game was started
// from, and puts the log where a player will look for it: beside the data when the game runs in
// its own folder, in the user's state folder otherwise.

#include <string>
#include <vector>

class cDataPaths {
public:
	static constexpr const char *WORKING_FOLDER = ".";
	static constexpr const char *PROBE_FILE = "resources/map/walkmap.txt";	// a folder holding it is a root
	static constexpr const char *DATA_VARIABLE = "KMVT_DATA";
	static constexpr const char *BESIDE_EXECUTABLE = "../share/kormaveth2d";	// a relocatable install
	static constexpr const char *STATE_SUBFOLDER = "kormaveth2d";
	static constexpr const char *LOG_NAME = "log.txt";

	// The folders to look in, best first, each once: dataVariable when set and not empty, the
	// working folder, the executable's folder and BESIDE_EXECUTABLE from it (when the folder is
	// known), then the folder the build installs the data into (when there is one).
	static std::vector<std::string> ListCandidates( const char *dataVariable, const std::string &executableFolder,
										const std::string &installedFolder );

	// Takes the first candidate that holds PROBE_FILE as the root. Without one the root stays the
	// working folder, so that every loader names the file it misses as it always did.
	bool				Find( const std::vector<std::string> &candidates );

	// The log's file: LOG_NAME in the working folder when the data was found there; otherwise in
	// STATE_SUBFOLDER of the state home ($XDG_STATE_HOME when absolute, else ~/.local/state),
	// created when missing. Empty when no folder can be had: the log then goes to standard error.
	std::string			ChooseLogPath( const char *stateHome, const char *home ) const;

	// The program's start, before anything is logged: finds the data from the environment and the
	// executable's folder, starts the log in its place and says once where it looked in vain.
	void				SetUp( const std::string &executableFolder );

	const std::string &	GetRoot() const { return root; }
	bool				IsFound() const { return found; }
	// The same folder, whatever path names it (KMVT_DATA may name the working folder absolutely).
	bool				IsInWorkingFolder() const;
	// "No game data found; looked in: a, b, c".
	std::string			DescribeSearch() const;

private:
	std::string			root = WORKING_FOLDER;
	bool				found = false;
	std::vector<std::string> searched;
};
