// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The platform the game runs on, as the three layers see it: one backend per layer, made over the
// game's window by the entry point (SDL), or headless ones made by tests and tools; and the folder
// that holds the resource tree.

#include <string>

class cGraphicsBackend;
class cInputBackend;
class cSoundBackend;

struct cPlatform {
	cGraphicsBackend *	graphics = nullptr;	// not owned
	cInputBackend *		input = nullptr;	// not owned
	cSoundBackend *		sound = nullptr;	// not owned; null runs the game silent
	std::string			dataRoot = ".";		// the working folder unless the data lies elsewhere
};
