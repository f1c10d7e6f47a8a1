// SPDX-License-Identifier: GPL-3.0-or-later
#include "actors/GameState.h"

int32_t gameState = STATE_MAIN_MENU;
