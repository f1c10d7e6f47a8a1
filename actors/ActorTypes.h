// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Codes shared by characters, bullets and the drawing: facings, character kinds, weapons.

#include <cstdint>

enum eDirection : int32_t {
	DIR_NONE				= -1,	// a player command with no movement key
	DIR_IDLE				= 0,	// a path that is not moving
	DIR_UP					= 1,
	DIR_DOWN				= 2,
	DIR_RIGHT				= 3,
	DIR_LEFT				= 4,
	DIR_UP_RIGHT			= 5,
	DIR_UP_LEFT				= 6,
	DIR_DOWN_RIGHT			= 7,
	DIR_DOWN_LEFT			= 8
};

enum eCharacterKind : int32_t {
	KIND_TAVESH				= 0,
	KIND_LUMRA				= 1,
	KIND_SOLDIER			= 2,
	KIND_MACHINE_GUNNER		= 3,
	KIND_BOSS				= 4
};

enum eWeapon : int32_t {
	WEAPON_TAVESH			= 0,
	WEAPON_LUMRA			= 1,
	WEAPON_ENEMY_GUN		= 2,
	WEAPON_MACHINE_GUN		= 3
};

inline bool IsPlayerKind( int32_t kind ) {
	return kind == KIND_TAVESH || kind == KIND_LUMRA;
}

inline bool IsEnemyKind( int32_t kind ) {
	return kind == KIND_SOLDIER || kind == KIND_MACHINE_GUNNER || kind == KIND_BOSS;
}

// Travel vector of a facing, x to the right and y downwards; (0, 0) for anything else.
inline void GetDirectionVector( int32_t direction, int32_t &dx, int32_t &dy ) {
	static const int32_t vectors[9][2] = {
		{ 0, 0 }, { 0, -1 }, { 0, 1 }, { 1, 0 }, { -1, 0 }, { 1, -1 }, { -1, -1 }, { 1, 1 }, { -1, 1 }
	};
	const bool valid = direction >= DIR_UP && direction <= DIR_DOWN_LEFT;
	dx = valid ? vectors[direction][0] : 0;
	dy = valid ? vectors[direction][1] : 0;
}
