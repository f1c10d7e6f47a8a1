// SPDX-License-Identifier: GPL-3.0-or-later
// The online session on the in-memory link and a clock that moves 15 msec a slot, against a partner
// that the test scripts event by event: the deadlines of every phase, a partner judged by the
// inputs it brings and not by what it says, late packets that cost nothing, strangers that change
// nothing, the lines that tell why the online game ended, the countdown while the partner is silent
// and the token that alone brings it back.

#include <gtest/gtest.h>

#include "LogCapture.h"
#include "MemoryLink.h"
#include "harness/HeadlessGame.h"
#include "input/KeyCodes.h"
#include "net/Lockstep.h"
#include "net/NetSession.h"
#include "platform/PacingClock.h"

namespace {

const int64_t SLOT_MSEC = cGame::FRAME_TIME;
const int GRACE = static_cast<int>( cNetSession::PARTNER_LOST_TIME / SLOT_MSEC );
const int HANDSHAKE = static_cast<int>( cNetSession::HANDSHAKE_TIME / SLOT_MSEC );

class cSlotClock : public cPacingClock {
public:
	int64_t				GetNanoseconds() override { return now; }
	void				SleepUntil( int64_t moment ) override { now = std::max( now, moment ); }
	int64_t				now = 0;
};

cHello MakeHello( const std::string &version = "1.0.0" ) {
	cHello hello;
	hello.protocol = 1;
	hello.version = version;
	return hello;
}

// What the partner or the link does in a slot. The partner answers probes, starts the game when it
// hosts, and sends its inputs every slot from START to STOP.
enum eDo { CONNECT, HELLO, ODD_HELLO, START, STOP, PING, FAR_BYE, OUT_OF_STEP, REFUSED, LATE, BROKEN, RESUME, WRONG_RESUME, ESCAPE };

struct cEvent {
	int					slot;
	eDo					what;
};

struct cSessionCase {
	const char *		name;
	cNetSession::eRole	role;
	std::vector<cEvent>	events;
	const char *		endLine;		// empty: the online game goes on
	int					endSlot;		// the first slot that may show it, and up to 10 later
	cNetSession::ePhase	phase;			// at the end, 60 slots after the last event or the end line
	int					lostSeconds;	// the countdown then
};

struct cSessionRun {
	explicit cSessionRun( cNetSession::eRole role )
		: wire( []( int, int ) { return cFate(); } ), end( wire, 0 ), partner( wire, 1 ),
		  session( end, role, MakeHello(), "", headless.GetInput(), headless.GetClock(), time ) {
		SetClock( &session.GetClock() );
		started = headless.Start( false, &session.GetInput() );
	}
	~cSessionRun() {
		headless.GetGame().Finalize();
		SetClock( nullptr );
	}
	void Send( cNetMessage message, eNetMessage kind, cLink::eChannel channel = cLink::RELIABLE ) {
		message.kind = kind;
		partner.Send( channel, cPacket::Write( message ) );
	}
	void Do( eDo what ) {
		cNetMessage message;
		cLink::cEvent event;
		switch ( what ) {
			case CONNECT: event.kind = cLink::CONNECTED; wire.Inject( 0, event ); break;
			case HELLO: message.hello = MakeHello(); Send( message, NET_HELLO ); break;
			case ODD_HELLO: message.hello = MakeHello( "1.0\x1b[2J" ); Send( message, NET_HELLO ); break;
			case START: message.kind = NET_START; message.start = { 3, 1000, 1700000000, 77 }; Send( message, NET_START ); Take( message ); break;
			case STOP: lockstep.reset(); break;
			case PING: Send( message, NET_PING, cLink::UNRELIABLE ); break;
			case FAR_BYE: message.reason = BYE_QUIT; message.lastStep = session.GetFigures().steps + 120; Send( message, NET_BYE ); break;
			case OUT_OF_STEP: message.reason = BYE_OUT_OF_STEP; message.lastStep = 120; message.part = "enemy 3"; Send( message, NET_BYE ); break;
			case REFUSED: event = { cLink::DISCONNECTED, {}, "the host already has a partner", true }; wire.Inject( 0, event ); break;
			case LATE:
				message.inputs.inputs.assign( cPacket::MAX_INPUTS, cStepInput() );
				for ( uint64_t i = 0; i < cNetSession::MAX_BAD_PACKETS; i++ ) {
					Send( message, NET_INPUTS, cLink::UNRELIABLE );
				}
				break;
			case BROKEN: for ( uint64_t i = 0; i < cNetSession::MAX_BAD_PACKETS; i++ ) partner.Send( cLink::UNRELIABLE, { NET_MESSAGE_END } ); break;
			case RESUME:
			case WRONG_RESUME:
				message.kind = NET_RESUME;
				message.token = token + ( what == RESUME ? 0 : 1 );
				event = { cLink::RECEIVED, cPacket::Write( message ), "", false, true };
				wire.Inject( 0, event );
				break;
			case ESCAPE: headless.SetKey( KEY_ESCAPE, true ); break;
		}
	}
	void Take( const cNetMessage &message ) {
		if ( message.kind == NET_PING ) {
			Send( message, NET_PONG, cLink::UNRELIABLE );
		} else if ( message.kind == NET_START ) {
			lockstep = std::make_unique<cLockstep>( message.start.delay );
			token = message.start.token;
		} else if ( message.kind == NET_INPUTS && lockstep ) {
			lockstep->TakeInputs( message.inputs );
		}
	}
	void Slot() {
		for ( cLink::cEvent event = partner.Poll(); event.kind != cLink::NOTHING; event = partner.Poll() ) {
			cNetMessage message;
			std::string why;
			ASSERT_TRUE( cPacket::Read( event.data.data(), event.data.size(), { 0, 1u << 30 }, message, why ) ) << why;
			Take( message );
		}
		if ( lockstep ) {
			cStepInput own;
			cStepInput other;
			if ( lockstep->CanStep() ) {
				lockstep->Step( cStepInput(), own, other );
			}
			partner.Send( cLink::UNRELIABLE, cPacket::Write( lockstep->MakeInputs() ) );
		}
		session.Step( headless.GetGame() );
		time.now += SLOT_MSEC * 1000000;
		headless.GetClock().Advance( static_cast<uint32_t>( SLOT_MSEC ) );
		wire.Tick();
	}

	cLogCapture			log;
	cMemoryWire			wire;
	cSlotClock			time;
	cHeadlessGame		headless;
	cMemoryWire::cEnd	end;
	cMemoryWire::cEnd	partner;
	cNetSession			session;
	std::unique_ptr<cLockstep> lockstep;
	uint64_t			token = 0;
	bool				started = false;
};

TEST( SessionTests, EachPhaseHasItsDeadlineAndOnlyProgressKeepsThePartner ) {
	using S = cNetSession;
	const std::vector<cEvent> joined = { { 0, CONNECT }, { 0, HELLO }, { 2, START } };
	const auto then = [&]( std::vector<cEvent> more ) {
		more.insert( more.begin(), joined.begin(), joined.end() );
		return more;
	};
	const char *const noInput = "Partner lost: no new input from the partner for 30 seconds";
	const cSessionCase cases[] = {
		{ "no host answers", S::JOIN, {}, "Partner lost: no answer from the host", static_cast<int>( S::CONNECT_TIME / SLOT_MSEC ), S::ENDED, -1 },
		{ "a connection that never says hello", S::JOIN, { { 0, CONNECT } }, "Partner lost: no handshake within 5 seconds", HANDSHAKE, S::ENDED, -1 },
		{ "inputs stop", S::JOIN, then( { { 100, STOP } } ), noInput, 100 + GRACE, S::ENDED, -1 },
		{ "inputs stop, pings go on", S::JOIN, then( { { 100, STOP }, { 1000, PING }, { 2000, PING }, { 2090, PING } } ), noInput, 100 + GRACE, S::ENDED, -1 },
		{ "a farewell that names a step far ahead", S::JOIN, then( { { 100, FAR_BYE }, { 100, STOP } } ), noInput, 100 + GRACE, S::ENDED, -1 },
		{ "refused by the host", S::JOIN, { { 5, REFUSED } }, "Refused by the host: the host already has a partner", 5, S::ENDED, -1 },
		{ "late packets", S::JOIN, then( { { 400, LATE } } ), "", 0, S::ONLINE, -1 },
		{ "broken packets", S::JOIN, then( { { 200, BROKEN } } ), "Partner lost: it kept sending broken packets", 201, S::ENDED, -1 },
		{ "another connection in the middle of the game", S::JOIN, then( { { 300, CONNECT }, { 300, HELLO } } ), "", 0, S::ONLINE, -1 },
		{ "the partner found the games out of step", S::JOIN, then( { { 150, OUT_OF_STEP } } ),
		  "Game went out of step with the partner at step 120 (part enemy 3)", 151, S::ENDED, -1 },
		{ "a version that would drive the terminal", S::JOIN, { { 0, CONNECT }, { 0, ODD_HELLO } },
		  "Partner runs version 1.0\\x1B[2J, this is 1.0.0: both need the same version", 1, S::ENDED, -1 },
		{ "a silent connection at the host, then the partner", S::HOST, { { 0, CONNECT }, { 400, CONNECT }, { 400, HELLO } },
		  "Partner lost: no handshake within 5 seconds", HANDSHAKE, S::ONLINE, -1 },
		{ "silent for a second: the countdown", S::HOST, { { 0, CONNECT }, { 0, HELLO }, { 100, STOP }, { 250, STOP } }, "", 0, S::ONLINE, 27 },
		{ "the partner back with its token", S::HOST, { { 0, CONNECT }, { 0, HELLO }, { 100, STOP }, { 400, RESUME } }, "", 0, S::ONLINE, 25 },
		{ "Escape while the partner is silent", S::HOST, { { 0, CONNECT }, { 0, HELLO }, { 100, STOP }, { 200, ESCAPE } },
		  "Partner lost: this player stopped waiting", 200, S::ALONE, -1 },
		{ "a stranger with another token", S::HOST, { { 0, CONNECT }, { 0, HELLO }, { 100, STOP }, { 400, WRONG_RESUME } }, "", 0, S::ONLINE, 25 },
	};
	for ( const cSessionCase &test : cases ) {
		cSessionRun run( test.role );
		ASSERT_TRUE( run.started );
		int endedAt = -1;
		const int last = std::max( *test.endLine != '\0' ? test.endSlot : 0, test.events.empty() ? 0 : test.events.back().slot );
		for ( int slot = 0; slot <= last + 60; slot++ ) {
			for ( const cEvent &event : test.events ) {
				if ( event.slot == slot ) {
					run.Do( event.what );
				}
			}
			run.Slot();
			endedAt = endedAt < 0 && !run.session.GetEndLine().empty() ? slot : endedAt;
		}
		EXPECT_EQ( run.session.GetEndLine(), test.endLine ) << test.name;
		if ( *test.endLine != '\0' ) {
			EXPECT_GE( endedAt, test.endSlot ) << test.name << ": lost too early";
			EXPECT_LE( endedAt, test.endSlot + 10 ) << test.name << ": lost too late";
		}
		EXPECT_EQ( run.session.GetPhase(), test.phase ) << test.name;
		EXPECT_EQ( run.session.GetConnectionLostSeconds(), test.lostSeconds ) << test.name;
		const bool broken = std::string( test.endLine ).find( "broken" ) != std::string::npos;
		EXPECT_EQ( run.session.GetFigures().badPackets, broken ? S::MAX_BAD_PACKETS : 0 ) << test.name;
		EXPECT_EQ( run.wire.newcomersTaken[0], std::string( test.name ).find( "its token" ) != std::string::npos ? 1 : 0 ) << test.name;
	}
}

}
