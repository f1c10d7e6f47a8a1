// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A running game on a test map: the headless game (manual clock, fixed calendar second, recorded
// drawing) with a recording sound backend, set up on the given scene with empty lists and in the
// playing state. Characters are added with AddPlayer and AddEnemy; sounds asked for are recorded.

#include <cstdint>
#include <memory>
#include <vector>

#include "harness/HeadlessGame.h"
#include "sound/headless/RecordingSoundBackend.h"

class cScene;
class cPlayer;
class cEnemy;

class cTestGame {
public:
	explicit				cTestGame( std::unique_ptr<cScene> scene );

	cGame &					GetGame() { return headless.GetGame(); }
	cHeadlessGame &			GetHeadless() { return headless; }
	cManualClock &			GetClock() { return headless.GetClock(); }
	cScene &				GetScene();
	cPlayer &				AddPlayer( int32_t kind, int32_t x, int32_t y );
	cEnemy &				AddEnemy( int32_t kind, int32_t x, int32_t y, int32_t direction, int32_t difficulty = 1 );
	void					SetKey( int key, bool down ) { headless.SetKey( key, down ); }
	bool					Frames( int count = 1 ) { return headless.Frames( count ); }

	// Sound ids started (PlaySound or PlayMusic) and stopped since the set-up or the last Forget.
	std::vector<int>		GetPlayedSounds() const;
	std::vector<int>		GetStoppedSounds() const;
	void					ForgetSounds();

private:
	cRecordingSoundBackend	sound;
	cHeadlessGame			headless;
};
