// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cReplayFile writes a recording to a file and reads it back. Reading refuses anything that is not
// a whole recording of this format, with the reason, before a single step is played: every count
// is checked against the bytes left before anything is allocated for it.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "replay/Recording.h"

class cReplayFile {
public:
	static const uint32_t		FORMAT_VERSION = 1;
	static const size_t			MAX_NAME_LENGTH = 64;		// a part's name or the game's version

	static std::vector<uint8_t>	Encode( const cRecording &recording );
	static bool					Decode( const uint8_t *data, size_t size, cRecording &recording, std::string &why );

	// Each logs one line when it fails, "Error writing replay <file>: <why>" or "Error reading
	// replay <file>: <why>", and gives it in error.
	static bool					Save( const std::string &path, const cRecording &recording, std::string &error );
	static bool					Load( const std::string &path, cRecording &recording, std::string &error );
};
