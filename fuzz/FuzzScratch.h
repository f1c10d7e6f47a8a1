// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cFuzzScratch is the private folder of one fuzzing process under the temporary folder: the game's
// log goes there, and so do the inputs that a reader can only take as a file. The folder is
// removed when the process ends normally.

#include <cstddef>
#include <cstdint>
#include <string>

class cFuzzScratch {
public:
	static cFuzzScratch &	Instance();

							cFuzzScratch( const cFuzzScratch & ) = delete;
	cFuzzScratch &			operator=( const cFuzzScratch & ) = delete;

	const std::string &		GetPath() const { return path; }
	// Writes size bytes as the file name in the folder; its path, or empty when it cannot be written.
	std::string				WriteInput( const char *name, const uint8_t *data, size_t size ) const;
	// Points the game's log at the folder and empties it, so it holds only the current input's lines.
	void					RestartLog() const;
	std::string				ReadLog() const;

private:
							cFuzzScratch();
							~cFuzzScratch();

	std::string				path;
};

// Open file descriptors of this process; a reader that returns leaves this number as it found it.
int CountOpenFiles();
