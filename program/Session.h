// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cSession is what the command line asked of a run in the window: nothing (the game as always),
// a recording of the run, written when the program ends, or a replay shown in the window. A replay
// plays one recorded step per step of the program, four while the player holds a key other than
// Escape; Escape, the recording's end or a step that went another way return the game to the main
// menu under the player's control. An online game (--host, --join) puts the online session there
// instead: its input, its agreed clock and a sound layer that opens on both machines alike.

#include <memory>
#include <string>

#include "program/CommandLine.h"
#include "replay/Recording.h"

class cClock;
class cGame;
class cLink;
class cNetSession;
class cPacingClock;
struct cHello;
class cInputBackend;
class cRecorder;
class cReplay;
class cReplaySound;
class cSoundBackend;

class cSession {
public:
	static const int	FAST_STEPS = 4;		// recorded steps per step while a key is held

						cSession();
						~cSession();
						cSession( const cSession & ) = delete;
	cSession &			operator=( const cSession & ) = delete;

	// Puts itself between the game and the platform as the command line asks. A recording that
	// cannot be read leaves the game as always, with the line in error (and in the log).
	bool				Open( const cCommandLine &line, cInputBackend &input, cSoundBackend *sound, cClock &clock,
							  std::string &error );
	// After Open, for --host and --join: the partner comes over the link, which the caller opened.
	void				OpenOnline( const cCommandLine &line, cLink &link, const cHello &hello, cPacingClock &time );
	// The online game has waited for the partner for more than a second.
	bool				IsWaitingForPartner() const;
	// The seconds of grace left while the partner is silent; -1 while it is heard.
	int					GetConnectionLostSeconds() const;
	cInputBackend &		GetInput() { return *input; }
	cSoundBackend *		GetSound() { return sound; }
	cClock &			GetClock() { return *clock; }
	void				Watch( const cGame &game );
	bool				IsReplaying() const;

	// One step of the program; false when the player quit.
	bool				Step( cGame &game );
	// Writes the recording, if one is made; false with the line in error when it cannot.
	bool				Close( std::string &error );
	// Writes the recording so far to the file Close would write; false with the line in error when
	// there is none or it cannot be written. The run goes on.
	bool				SaveRecording( std::string &error ) const;

private:
	void				EndReplay( cGame &game );

	cInputBackend *		input = nullptr;
	cSoundBackend *		sound = nullptr;
	cClock *			clock = nullptr;
	std::string			recordPath;
	std::unique_ptr<cRecorder>		recorder;
	cRecording						recording;
	std::unique_ptr<cReplay>		replay;
	std::unique_ptr<cReplaySound>	replaySound;
	std::unique_ptr<cNetSession>	online;
	const cGame *					watched = nullptr;
};
