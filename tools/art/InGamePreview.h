// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A mock frame of play for the contact sheets: the start of the level with the map's own tiles,
// the characters, items, shots, an explosion, alert icons and the HUD drawn where the game draws
// them, so the sprites can be judged against the ground they walk on.

#include <string>

// Writes docs/images/sheet-in-game.png; does nothing (and succeeds) while the map is not there.
bool WriteInGamePreview( const std::string &root );
