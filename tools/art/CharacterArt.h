// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The character sheet: five bands of 96 pixels (tavesh, lumra, soldier, machine-gunner, boss),
// three walk columns, the rows facing down, left, right and up, the two heroes' skill rows and
// the row of a hero who is down.

#include "Canvas.h"

constexpr int CHARACTER_SHEET_WIDTH = 480;
constexpr int CHARACTER_SHEET_HEIGHT = 288;
constexpr int CHARACTER_KINDS = 5;

cCanvas MakeCharacterSheet();
// One standing frame facing down, for the menus' portraits.
cCanvas MakeCharacterPortrait( int kind );
