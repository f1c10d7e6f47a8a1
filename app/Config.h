// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cConfig holds the options chosen in the menus for the rest of the run: players, difficulty,
// each player's character and keys. Nothing is saved; every run starts from the defaults.

#include <cstdint>

class cConfig {
public:
	static const int KEYS_PER_PLAYER = 7;	// up, down, right, left, fire, skill, use

						cConfig();
	virtual				~cConfig() = default;

	void				SetPlayers( uint32_t count ) { players = count; }
	void				GetPlayers( uint32_t &count ) const { count = players; }
	void				SetDifficulty( uint32_t level ) { difficulty = level; }
	void				GetDifficulty( uint32_t &level ) const { level = difficulty; }
	// Player numbers other than 1 and 2 change nothing and read nothing.
	void				SetCharacter( uint32_t player, uint32_t character );
	void				GetCharacter( uint32_t player, uint32_t &character ) const;
	void				GetKeys( uint32_t player, uint32_t keys[KEYS_PER_PLAYER] ) const;

private:
	uint32_t			players;
	uint32_t			difficulty;
	uint32_t			character1;
	uint32_t			character2;
	uint32_t			keys1[KEYS_PER_PLAYER];
	uint32_t			keys2[KEYS_PER_PLAYER];
};
