// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Where things go on the menu pictures. The game clicks on five fixed entry rectangles stacked in
// one column; a label may only be drawn inside the entry it names, the rest of the column shows
// the shared background, and all other writing stays in the title area or the side panel.

#include "app/MenuEntries.h"

using sMenuRect = cRect;	// right and bottom exclusive

constexpr sMenuRect MENU_TITLE_AREA = { 0, 0, 640, 232 };
constexpr sMenuRect MENU_PANEL_AREA = { 272, 232, 640, 480 };

// One screen: its file, its heading and the label of each entry (null where the entry does nothing).
struct sMenuScreen {
	const char *	file;
	const char *	heading;
	const char *	labels[MENU_ENTRY_COUNT];
};

constexpr int MENU_SCREEN_COUNT = 8;
constexpr sMenuScreen MENU_SCREENS[MENU_SCREEN_COUNT] = {
	{ "main.png",			nullptr,				{ "One player", "Two players", "Settings", "Credits", "Quit" } },
	{ "settings.png",		"Settings",				{ "Sound", "Start", "Difficulty", "Controls", "Back" } },
	{ "sound.png",			"Sound",				{ "Music", "Effects", nullptr, nullptr, "Back" } },
	{ "difficulty.png",		"Difficulty",			{ nullptr, "Easy", "Normal", "Hard", "Back" } },
	{ "controls.png",		"Controls",				{ nullptr, nullptr, "Defaults", "No keypad", "Back" } },
	{ "credits.png",		"Credits",				{ nullptr, nullptr, nullptr, nullptr, "Back" } },
	{ "charselection.png",	"Choose your fighter",	{ nullptr, nullptr, "Tavesh", "Lumra", "Back" } },
	{ "pause.png",			"Paused",				{ nullptr, nullptr, nullptr, "Resume", "Main menu" } },
};
