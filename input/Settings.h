// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cSettings is what a player chooses once and keeps between runs: the keys, the loudness of the
// music and of the effects, and whether the game starts full screen. Without a settings file
// every run starts from these defaults, which play as the game always did.

#include "input/KeyBindings.h"

class cSettings {
public:
	enum eStartScreen { ASK, FULL_SCREEN, WINDOW };
	static const int	LOUDEST = 10;	// volumes go from 0, silent, to this, the game's own levels

	cKeyBindings		keys;
	int					musicVolume = LOUDEST;
	int					effectsVolume = LOUDEST;
	eStartScreen		startScreen = ASK;

	bool				operator==( const cSettings &other ) const {
		return keys == other.keys && musicVolume == other.musicVolume && effectsVolume == other.effectsVolume &&
			   startScreen == other.startScreen;
	}
};
