// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The headless game an autoplay run plays in, and, when asked, a recorder around its input and
// clock from its start, whose recording is written to a folder after the game.

#include <memory>
#include <string>

#include "harness/HeadlessGame.h"
#include "replay/Recorder.h"

struct cGameSetup;
struct cGameResult;

class cRecordedGame {
public:
	// An empty folder records nothing.
	explicit				cRecordedGame( const std::string &folder );
							~cRecordedGame();

	bool					Start();
	cHeadlessGame &			GetHeadless() { return headless; }
	// Writes the recording as FOLDER/<players>p-<characters>-d<difficulty>-<outcome>.kmr, or with
	// -2, -3 ... before the .kmr when that name is taken; true when nothing is recorded.
	bool					Save( const cGameSetup &setup, const cGameResult &result ) const;

private:
	std::string				folder;
	cHeadlessGame			headless;
	std::unique_ptr<cRecorder> recorder;
};
