// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cControlsPage changes the keys on the controls screen: a click on an action's key, then a key
// pressed, binds it; Escape cancels; a key another action holds is refused with a line naming
// that action. The screen's entries restore the default keys or move player 2's keypad keys to
// keys every laptop has.

#include <cstdint>
#include <string>
#include <vector>

#include "actors/Rect.h"
#include "graphics/MenuText.h"

class cInputLayer;
class cSettings;

class cControlsPage {
public:
	static const int	DEFAULTS_ENTRY = 3;
	static const int	NO_KEYPAD_ENTRY = 4;
	// The picture's table in the side panel: a row per action, a column of keys per player, then
	// a line of help the picture carries and the page's own line under it.
	static constexpr int32_t FIRST_ROW = 274;
	static constexpr int32_t ROW_HEIGHT = 22;
	static constexpr int32_t CELL_HEIGHT = 20;
	static constexpr int32_t CELL_WIDTH = 106;
	static constexpr int32_t CELL_LEFT[2] = { 392, 508 };
	static constexpr int32_t LABEL_X = 296;
	static constexpr int32_t HELP_Y = FIRST_ROW + ROW_HEIGHT * 7;
	static constexpr int32_t LINE_Y = HELP_Y + 16;
	static constexpr int32_t TEXT_INSET_X = 6;
	static constexpr int32_t TEXT_INSET_Y = 2;

	// Where the key of a player's (1 or 2) action shows, and is clicked.
	static constexpr cRect GetKeyCell( int player, int action ) {
		return cRect{ CELL_LEFT[player - 1], FIRST_ROW + ROW_HEIGHT * action, CELL_LEFT[player - 1] + CELL_WIDTH,
					  FIRST_ROW + ROW_HEIGHT * action + CELL_HEIGHT };
	}

	// A click at (x, y): a key cell starts waiting for its key (true); anywhere else only ends
	// the waiting (false), and the screen's entry there does what it does.
	bool				Click( int32_t x, int32_t y );
	// Entries 3 and 4; true when the keys changed.
	bool				ClickEntry( int entry, const cInputLayer &input, cSettings &settings );
	// Once a step on the screen: a key newly pressed while waiting is bound, refused or cancels.
	// True when the keys changed.
	bool				ReadKeys( const cInputLayer &input, cSettings &settings );
	void				Close();
	bool				IsWaiting() const { return waitingPlayer != 0; }
	const std::string &	GetLine() const { return line; }
	// The keys' names in the player's layout and the page's line, as the screen shows them.
	void				GetTexts( const cInputLayer &input, const cSettings &settings, std::vector<cMenuText> &texts ) const;

private:
	void				Bind( int key, const cInputLayer &input, cSettings &settings, bool &changed );
	void				Refuse( int key, int holder, int holderAction, const cInputLayer &input );

	int					waitingPlayer = 0;		// 0 when no action waits for its key
	int					waitingAction = 0;
	bool				held[256] = {};			// the keys down in the last step: a key held when the waiting began is no press
	std::string			line;
};
