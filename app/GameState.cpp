#include "app/GameState.h"

int32_t gameState = STATE_MAIN_MENU;
