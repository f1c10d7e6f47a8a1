// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The fifteen sounds, numbered in their loading order.

enum eSoundId {
	SOUND_MENU_MUSIC		= 0,
	SOUND_STREETS_MUSIC		= 1,
	SOUND_BOSS_MUSIC		= 2,
	SOUND_EXPLOSION			= 3,
	SOUND_TAVESH_SHOT		= 4,
	SOUND_LUMRA_SHOT		= 5,
	SOUND_ENEMY_SHOT		= 6,
	SOUND_MACHINE_GUN		= 7,
	SOUND_SKILL				= 8,
	SOUND_ITEM				= 9,
	SOUND_HEARTBEAT			= 10,
	SOUND_LEVEL_COMPLETE	= 11,
	SOUND_GAME_OVER			= 12,
	SOUND_OPEN_BOX			= 13,
	SOUND_DOOR_OPEN			= 14,
	SOUND_COUNT				= 15
};
