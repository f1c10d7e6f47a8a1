// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// The twelve sound effects: short, a fast attack and a clean tail, each ending in silence.
// The heartbeat is one second long and loops.

#include "Synth.h"

tSamples MakeExplosion();
tSamples MakeTaveshShot();
tSamples MakeLumraShot();
tSamples MakeEnemyShot();
tSamples MakeMachineGun();
tSamples MakeSkill();
tSamples MakeItemPickup();
tSamples MakeHeartbeat();
tSamples MakeLevelComplete();
tSamples MakeGameOver();
tSamples MakeOpenBox();
tSamples MakeDoorOpen();
