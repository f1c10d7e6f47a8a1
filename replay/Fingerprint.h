#pragma once
// cFingerprint tells in one number whether two builds compute the same game. It plays a short game
// built into the program, on a small walled yard made in code, in which both characters, the
// enemies and the boss fire every weapon, enemies die and drop what their draws say, tavesh picks
// up ammunition and the boss wanders; then a fan of shots at every slope crosses an open field.
// The state hashes of both, every 50 steps, make the fingerprint: two builds that disagree on a
// float, a random draw or a rule show two. It needs no data files; online play compares it at
// connect.

#include <cstdint>
#include <ctime>
#include <string>

class cFingerprint {
public:
	// The calendar the built-in game starts at, moving on with its clock: the kills of its first
	// seconds drop two health and two ammunition items, and both players stand to the end.
	static const std::time_t CALENDAR_SECOND = 1700000075;

	// Runs the built-in game and gives its fingerprint, in a few milliseconds. The game's globals
	// (the state, the clock) are as they were afterwards, so it may be called while a game runs;
	// the generator is seeded before every draw anyway.
	static uint64_t		Compute();
	// The same game with the calendar at another second: other draws, so another fingerprint.
	static uint64_t		ComputeAt( std::time_t calendarSecond );
	// "Game fingerprint 0123456789abcdef" and a newline: what --version and kmvt_verify print.
	static std::string	GetLine();
};
