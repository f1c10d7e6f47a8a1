// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The platform the game runs on, as the three layers see it: one backend per layer, made over the
// game's window by the entry point (SDL), or headless ones made by tests and tools; the folder
// that holds the resource tree; the player's settings.

#include <string>

class cGraphicsBackend;
class cInputBackend;
class cSettings;
class cSettingsStore;
class cSoundBackend;

struct cPlatform {
	cGraphicsBackend *	graphics = nullptr;	// not owned
	cInputBackend *		input = nullptr;	// not owned
	cSoundBackend *		sound = nullptr;	// not owned; null runs the game silent
	std::string			dataRoot = ".";		// the working folder unless the data lies elsewhere
	// The player's settings, kept by the caller (whose input backend folds the keys with them),
	// and where a change goes; null for the defaults, kept nowhere.
	cSettings *			settings = nullptr;	// not owned
	cSettingsStore *	settingsStore = nullptr;	// not owned
};
