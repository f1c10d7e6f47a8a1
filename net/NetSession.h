// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cNetSession is an online game on one machine, from the connection to the farewell. The host
// plays alone as always until a partner connects; the partner's machine waits. Both say who they
// are (refusing each other when they would not play the same game), the host measures the round
// trip and, once its player is at the main menu, starts: both games begin again from the main menu
// and run the same inputs and the same clock at every step, each recorded as a replay would be:
// ahead of the partner's inputs on guesses taken back when wrong (net/Rollback.h), or, when either
// machine fixed the input delay, in lockstep. The partner is judged by what it does, never by what it says: a connection must
// finish the handshake within HANDSHAKE_TIME, and an online partner that brings no new input for
// PARTNER_LOST_TIME is lost, whatever else it sends. Partner lost, games out of step, or the host's
// quit end the online game: the line goes to the log and the terminal, and the player plays on
// alone from the main menu.

#include <cstdint>
#include <memory>
#include <string>

#include "net/AgreedClock.h"
#include "net/Link.h"
#include "net/NetMessage.h"
#include "net/OnlineInput.h"

class cDelayControl;
class cGame;
class cLockstep;
class cPacingClock;
class cRecorder;
class cReplaySound;
class cRollback;

struct cNetFigures {
	uint32_t			delay = 0;			// steps, the latest
	uint32_t			roundTrip = 0;		// msec: the most measured at connect, then the latest longest
	uint64_t			delaySteps = 0;		// the delays of all online steps added up
	uint64_t			steps = 0;			// online steps run
	uint64_t			waitedSlots = 0;	// step times in which no step could run
	uint64_t			badPackets = 0;
	uint64_t			stepsAgain = 0;		// steps played again after corrections
	uint64_t			corrections = 0;
	uint64_t			frames = 0;			// step times played ahead
	uint64_t			mostStepsAgain = 0;	// in one step time
	uint64_t			jumps = 0;			// corrections that moved the partner's figure
	uint64_t			jumpLength = 0;		// the figure's moves added up, the longer axis of each
	uint64_t			longestJump = 0;
	uint64_t			finalHash = 0;		// the state's hash when the online game ended
};

class cNetSession {
public:
	enum eRole { HOST, JOIN };
	enum ePhase { ALONE, HANDSHAKE, PROBING, READY, ONLINE, ENDED };
	static constexpr int64_t PARTNER_LOST_TIME = 30000;	// msec without progress from the partner
	static constexpr int64_t HANDSHAKE_TIME = 5000;		// msec from a connection to the end of its handshake
	static constexpr int64_t CONNECT_TIME = 10000;		// msec a joiner waits for its host to answer
	static constexpr int64_t CONNECTION_LOST_TIME = 1000;	// msec of the partner's silence that show it
	static constexpr int64_t RECONNECT_TIME = 2000;	// msec between a joiner's tries to connect again
	static constexpr int64_t WAIT_PICTURE_TIME = 1000;	// msec of waiting before the picture shows
	static constexpr uint64_t MAX_BAD_PACKETS = 32;		// per partner, before it is left
	static constexpr int	MAX_OWED_STEPS = 4;			// steps run at once after a wait
	static constexpr int	PROBES = 8;					// round trips measured at connect

	// hello: this machine's identity and --delay; recordPath: --record FILE or empty.
						cNetSession( cLink &link, eRole role, const cHello &hello, const std::string &recordPath,
									 cInputBackend &platformInput, cClock &platformClock, cPacingClock &time );
						~cNetSession();
						cNetSession( const cNetSession & ) = delete;
	cNetSession &		operator=( const cNetSession & ) = delete;

	// What the game reads: give them to the game's Init and to SetClock.
	cInputBackend &		GetInput() { return input; }
	cClock &			GetClock() { return clock; }
	// The sound the game plays through (not owned): quiet while steps are played again.
	void				SetSound( cReplaySound *sound ) { this->sound = sound; }

	// One step time of the program: hears the partner, then runs the steps that are due and that
	// both inputs allow (alone: one step, as always; a partner still waiting for the host: none).
	// False when this machine's player quit the program.
	bool				Step( cGame &game );
	// The program ends: the partner is told, the recording written.
	void				Close( const cGame &game );

	ePhase				GetPhase() const { return phase; }
	bool				IsOnline() const { return phase == ONLINE; }
	// The game has waited for the partner longer than WAIT_PICTURE_TIME.
	bool				IsWaiting() const;
	// While the partner is silent in the online game: the whole seconds of grace left, counted
	// up; -1 while it is heard.
	int					GetConnectionLostSeconds() const;
	const std::string &	GetEndLine() const { return endLine; }
	const cNetFigures &	GetFigures() const { return figures; }

private:
	int64_t				Now() const;
	// Neither machine fixed the input delay: the game runs ahead of the partner's inputs.
	bool				IsRollback() const;
	// Why the partner counts as lost now, or empty.
	std::string			FindLoss( int64_t now ) const;
	void				Connect();
	void				Hear( cGame &game );
	void				Take( cGame &game, const std::vector<uint8_t> &bytes );
	// A host whose partner is silent hears a newcomer: the partner back with its token, or no one.
	void				TakeNewcomer( const std::vector<uint8_t> &bytes );
	void				LoseConnection( cGame &game, const cLink::cEvent &event );
	void				TryToReconnect( int64_t now );
	void				Drop( cGame &game, const std::string &why );
	void				Handle( cGame &game, const cNetMessage &message );
	void				TakeHello( cGame &game, const cHello &partner );
	void				TakePong( uint32_t time );
	void				Send( cLink::eChannel channel, const cNetMessage &message );
	void				SendPing();
	void				Begin( cGame &game, const cStart &start );
	// The host agrees a change of the delay when the line asks for one; both switch at its step.
	void				FollowLine();
	void				TakeDelayChange( const cDelayChange &change );
	bool				RunSteps( cGame &game );
	bool				RunAhead( cGame &game );
	// How far a correction moved the partner's figure, for the figures.
	void				MeasureJump( const cGame &game, const int32_t before[2] );
	bool				FindPartnerFigure( const cGame &game, int32_t place[2] ) const;
	bool				RunStep( cGame &game );
	// One step of the game with both inputs, recorded.
	bool				PlayStep( cGame &game, uint64_t step, const cStepInput &own, const cStepInput &partner );
	// A step both machines ran alike: counted, and hashed at the end of a hash period.
	void				Confirmed( cGame &game, uint64_t step );
	void				BeQuiet( bool quiet );
	void				TakeInputs( cGame &game, const cInputRun &run );
	void				Quit( cGame &game );
	void				FindOutOfStep( cGame &game );
	void				GoOutOfStep( cGame &game, uint64_t step, const std::string &part );
	// evidence: where a recording goes besides --record's file, or empty.
	void				End( cGame &game, const std::string &line, const std::string &evidence = std::string() );
	void				SaveRecording( const std::string &path );

	cLink &				link;
	eRole				role;
	cHello				hello;
	std::string			recordPath;
	cOnlineInput		input;
	cAgreedClock		clock;
	cPacingClock &		time;
	ePhase				phase;
	std::unique_ptr<cLockstep>	lockstep;
	std::unique_ptr<cDelayControl>	delayControl;
	std::unique_ptr<cRollback>	rollback;			// none in lockstep
	cReplaySound *		sound = nullptr;
	bool				delayFixed = false;		// --delay on either machine
	cDelayChange		pendingChange;			// step 0: none
	uint64_t			token = 0;				// from the START: the partner's proof when it comes back
	int64_t				lastReconnect = 0;
	bool				reconnecting = false;
	std::unique_ptr<cRecorder>	recorder;
	cHello				partnerHello;
	bool				connected = false;
	int					probes = 0;
	uint32_t			delay = 0;
	int					owed = 0;
	uint64_t			partnerQuitAt = 0;		// the step after which the partner's game quit
	int64_t				started;				// msec: when the session began
	int64_t				connectedAt = 0;
	int64_t				lastHeard = 0;			// a packet read whole; counts only until the game starts
	int64_t				lastProgress = 0;		// a step run or a new input of the partner's
	int64_t				lastSent = 0;
	int64_t				lastStep = 0;
	std::string			endLine;
	cNetFigures			figures;
};
