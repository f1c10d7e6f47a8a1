#include "actors/GameState.h"

int32_t gameState = STATE_MAIN_MENU;
