// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Points the game's log at a file of its own for one test and reads back what was written; the log
// goes back to ./log.txt afterwards.

#include <string>
#include <vector>

#include "TempDir.h"

class cLogCapture {
public:
								cLogCapture();
								~cLogCapture();

	std::string					GetText() const;
	std::vector<std::string>	GetLines() const;
	bool						Contains( const std::string &line ) const;

private:
	cTempDir					folder;
};
