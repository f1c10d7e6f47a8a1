// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Runs the real cGame frame by frame without a window, for tests and headless tools: scripted keys
// and mouse, a manual clock that each frame moves on by 15 msec, a fixed calendar time, and
// drawing recorded instead of shown (or handed to a graphics backend of the caller's).

#include <cstdint>
#include <functional>

#include "app/Game.h"
#include "graphics/headless/RecordingGraphicsBackend.h"
#include "input/Settings.h"
#include "input/headless/ScriptedInputBackend.h"
#include "platform/Clock.h"

class cGraphicsBackend;
class cInputBackend;
class cSettingsStore;
class cSoundBackend;

class cHeadlessGame {
public:
	static const std::time_t CALENDAR_TIME = 1700000000;	// in seconds, fixed so that runs repeat

	// sound null runs the game silent; graphics null records the drawing. Neither is owned.
	explicit				cHeadlessGame( cSoundBackend *sound = nullptr, cGraphicsBackend *graphics = nullptr );
							~cHeadlessGame();
							cHeadlessGame( const cHeadlessGame & ) = delete;
	cHeadlessGame &			operator=( const cHeadlessGame & ) = delete;

	// The game reads the scripted input directly, or through wrapper (not owned), which passes
	// it on: a recorder's input, for example.
	bool					Start( bool fullscreen = false, cInputBackend *wrapper = nullptr );
	// One step, then one drawing; false when the game ends.
	bool					Frame();
	// One step, with the clock at its end moved on to a whole step's time; false when the game ends.
	bool					Step();
	// Called after every step (a recorder marking the step's end, for example).
	void					SetStepEnd( std::function<void()> stepEnd ) { onStepEnd = std::move( stepEnd ); }
	// Runs each step instead of the game's own Step (an online session, which waits for the partner).
	void					SetStepRunner( std::function<bool( cGame & )> runner ) { stepRunner = std::move( runner ); }
	bool					Frames( int count );			// stops early when the game ends
	// A click is a press seen in one frame and a release seen in the next, at a 640 x 480 point.
	bool					Click( int32_t x, int32_t y );
	void					SetKey( int key, bool down ) { input.SetKey( key, down ); }

	// The player's settings, which fold the scripted keys; changes go to store (not owned) when set
	// before Start.
	cSettings &				GetSettings() { return settings; }
	void					SetSettingsStore( cSettingsStore *store ) { settingsStore = store; }
	cGame &					GetGame() { return game; }
	cManualClock &			GetClock() { return clock; }
	cScriptedInputBackend &	GetInput() { return input; }
	cRecordingGraphicsBackend &GetGraphics() { return graphics; }

private:
	cManualClock				clock;
	cSettings					settings;
	cSettingsStore *			settingsStore = nullptr;
	cScriptedInputBackend		input;
	cRecordingGraphicsBackend	graphics;
	cSoundBackend *				sound;
	cGraphicsBackend *			screen;			// where the game draws: graphics, or the caller's
	cGame						game;
	bool						started = false;
	std::function<void()>		onStepEnd;
	std::function<bool( cGame & )> stepRunner;
};
