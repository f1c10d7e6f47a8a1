// SPDX-License-Identifier: GPL-3.0-or-later
// The online session on the in-memory link and a clock that moves 15 msec a slot, against a partner
// that the test scripts packet by packet: the deadlines of every phase, a partner judged by the
// inputs it brings and not by what it says, late packets that cost nothing, strangers that change
// nothing, the lines that tell the player why the online game ended, the countdown while the
// partner is silent and the token that alone brings it back.

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "LogCapture.h"
#include "MemoryLink.h"
#include "harness/HeadlessGame.h"
#include "net/Lockstep.h"
#include "net/NetSession.h"
#include "net/Packet.h"
#include "platform/PacingClock.h"

namespace {

const int64_t SLOT_MSEC = cGame::FRAME_TIME;
const int GRACE_SLOTS = static_cast<int>( cNetSession::PARTNER_LOST_TIME / SLOT_MSEC );
const uint32_t DELAY = 3;

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

// The other machine, as the test plays it: it answers probes, starts the game when it hosts, and
// sends its inputs every slot while inputsFlow.
struct cPartner {
	cPartner( cMemoryWire &wire ) : link( wire, 1 ) {}

	void Send( const cNetMessage &message, cLink::eChannel channel = cLink::RELIABLE ) {
		link.Send( channel, cPacket::Write( message ) );
	}
	void SendHello( const std::string &version = "1.0.0" ) {
		cNetMessage message;
		message.kind = NET_HELLO;
		message.hello = MakeHello( version );
		Send( message );
	}
	void SendStart() {
		cNetMessage message;
		message.kind = NET_START;
		message.start = { DELAY, 1000, 1700000000 };
		Send( message );
		lockstep = std::make_unique<cLockstep>( DELAY );
	}
	void SendBye( eByeReason reason, uint64_t step, const std::string &part = "" ) {
		cNetMessage message;
		message.kind = NET_BYE;
		message.reason = reason;
		message.lastStep = step;
		message.part = part;
		Send( message );
	}
	void Slot() {
		for ( cLink::cEvent event = link.Poll(); event.kind != cLink::NOTHING; event = link.Poll() ) {
			cNetMessage message;
			std::string why;
			ASSERT_TRUE( cPacket::Read( event.data.data(), event.data.size(), { 0, 1u << 30 }, message, why ) ) << why;
			if ( message.kind == NET_PING ) {
				message.kind = NET_PONG;
				Send( message, cLink::UNRELIABLE );
			} else if ( message.kind == NET_START ) {
				lockstep = std::make_unique<cLockstep>( message.start.delay );
				token = message.start.token;
			} else if ( message.kind == NET_INPUTS && lockstep ) {
				lockstep->TakeInputs( message.inputs );
			}
		}
		if ( lockstep && inputsFlow ) {
			cStepInput own;
			cStepInput partner;
			if ( lockstep->CanStep() ) {
				lockstep->Step( cStepInput(), own, partner );
			}
			Send( lockstep->MakeInputs(), cLink::UNRELIABLE );
		}
	}

	cMemoryWire::cEnd	link;
	std::unique_ptr<cLockstep> lockstep;
	bool				inputsFlow = true;
	uint64_t			token = 0;
};

cLink::cEvent MakeEvent( cLink::eEventKind kind, const std::string &why = "", bool refused = false ) {
	cLink::cEvent event;
	event.kind = kind;
	event.why = why;
	event.refused = refused;
	return event;
}

// A session against the scripted partner, a slot at a time: the script, the partner's slot, the
// session's step, and the clocks and the wire moved on.
struct cSessionRun {
	explicit cSessionRun( cNetSession::eRole role )
		: wire( []( int, int ) { return cFate(); } ), end( wire, 0 ),
		  session( end, role, MakeHello(), "", headless.GetInput(), headless.GetClock(), time ), partner( wire ) {
		SetClock( &session.GetClock() );
		started = headless.Start( false, &session.GetInput() );
	}
	~cSessionRun() {
		headless.GetGame().Finalize();
		SetClock( nullptr );
	}
	void Slot( const std::function<void()> &script ) {
		script();
		partner.Slot();
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
	cNetSession			session;
	cPartner			partner;
	bool				started = false;
};

struct cSessionCase {
	const char *		name;
	cNetSession::eRole	role;
	int					slots;
	// What the partner and the link do in a slot, before the partner's own slot.
	std::function<void( int slot, cPartner &partner, cMemoryWire &wire, cNetSession &session )> script;
	const char *		endLine;		// empty: the online game goes on
	int					endSlot;		// the first slot that may show it
	int					lateSlots;		// how many slots after it it may still come
	cNetSession::ePhase	phase;			// at the end
};

// The joiner's start: the host connects, says hello and starts the online game at once.
void StartAsHost( int slot, cPartner &partner, cMemoryWire &wire ) {
	if ( slot == 0 ) {
		wire.Inject( 0, MakeEvent( cLink::CONNECTED ) );
		partner.SendHello();
	} else if ( slot == 2 ) {
		partner.SendStart();
	}
}

const int STOP = 100;			// the slot at which the scripted partner's inputs stop
const int STOPPED_LOSS = STOP + GRACE_SLOTS;

TEST( SessionTests, EachPhaseHasItsDeadlineAndOnlyProgressKeepsAPartner ) {
	const cSessionCase cases[] = {
		{ "no host answers", cNetSession::JOIN, 800, []( int, cPartner &, cMemoryWire &, cNetSession & ) {},
		  "Partner lost: no answer from the host", static_cast<int>( cNetSession::CONNECT_TIME / SLOT_MSEC ), 2,
		  cNetSession::ENDED },
		{ "a connection that never says hello", cNetSession::JOIN, 500,
		  []( int slot, cPartner &, cMemoryWire &wire, cNetSession & ) {
			  if ( slot == 0 ) {
				  wire.Inject( 0, MakeEvent( cLink::CONNECTED ) );
			  }
		  },
		  "Partner lost: no handshake within 5 seconds", static_cast<int>( cNetSession::HANDSHAKE_TIME / SLOT_MSEC ), 2,
		  cNetSession::ENDED },
		{ "inputs stop", cNetSession::JOIN, STOPPED_LOSS + 50,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  StartAsHost( slot, partner, wire );
			  partner.inputsFlow = slot < STOP;
		  },
		  "Partner lost: no new input from the partner for 30 seconds", STOPPED_LOSS, 10, cNetSession::ENDED },
		{ "inputs stop, pings go on", cNetSession::JOIN, STOPPED_LOSS + 50,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  StartAsHost( slot, partner, wire );
			  partner.inputsFlow = slot < STOP;
			  cNetMessage ping;
			  ping.kind = NET_PING;
			  partner.Send( ping, cLink::UNRELIABLE );
		  },
		  "Partner lost: no new input from the partner for 30 seconds", STOPPED_LOSS, 10, cNetSession::ENDED },
		{ "a farewell that names a step far ahead", cNetSession::JOIN, STOPPED_LOSS + 50,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  StartAsHost( slot, partner, wire );
			  partner.inputsFlow = slot < STOP;
			  if ( slot == STOP ) {
				  partner.SendBye( BYE_QUIT, STOP + 120 );
			  }
		  },
		  "Partner lost: no new input from the partner for 30 seconds", STOPPED_LOSS, 10, cNetSession::ENDED },
		{ "refused by the host", cNetSession::JOIN, 100,
		  []( int slot, cPartner &, cMemoryWire &wire, cNetSession & ) {
			  if ( slot == 5 ) {
				  wire.Inject( 0, MakeEvent( cLink::DISCONNECTED, "the host already has a partner", true ) );
			  }
		  },
		  "Refused by the host: the host already has a partner", 5, 0, cNetSession::ENDED },
		{ "late packets", cNetSession::JOIN, 600,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  StartAsHost( slot, partner, wire );
			  if ( slot >= 400 && slot < 400 + static_cast<int>( cNetSession::MAX_BAD_PACKETS ) ) {
				  cNetMessage late;
				  late.kind = NET_INPUTS;
				  late.inputs.inputs.assign( cPacket::MAX_INPUTS, cStepInput() );
				  partner.Send( late, cLink::UNRELIABLE );
			  }
		  },
		  "", 0, 0, cNetSession::ONLINE },
		{ "broken packets", cNetSession::JOIN, 600,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  StartAsHost( slot, partner, wire );
			  if ( slot == 200 ) {
				  for ( uint64_t i = 0; i < cNetSession::MAX_BAD_PACKETS; i++ ) {
					  partner.link.Send( cLink::UNRELIABLE, { NET_MESSAGE_END } );
				  }
			  }
		  },
		  "Partner lost: it kept sending broken packets", 201, 1, cNetSession::ENDED },
		{ "another connection in the middle of the game", cNetSession::JOIN, 600,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  StartAsHost( slot, partner, wire );
			  if ( slot == 300 ) {
				  wire.Inject( 0, MakeEvent( cLink::CONNECTED ) );
				  partner.SendHello();
			  }
		  },
		  "", 0, 0, cNetSession::ONLINE },
		{ "the partner found the games out of step", cNetSession::JOIN, 300,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  StartAsHost( slot, partner, wire );
			  if ( slot == 150 ) {
				  partner.SendBye( BYE_OUT_OF_STEP, 120, "enemy 3" );
			  }
		  },
		  "Game went out of step with the partner at step 120 (part enemy 3)", 151, 0, cNetSession::ENDED },
		{ "a version that would drive the terminal", cNetSession::JOIN, 100,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  if ( slot == 0 ) {
				  wire.Inject( 0, MakeEvent( cLink::CONNECTED ) );
				  partner.SendHello( "1.0\x1b[2J" );
			  }
		  },
		  "Partner runs version 1.0\\x1B[2J, this is 1.0.0: both need the same version", 1, 0, cNetSession::ENDED },
		{ "a silent connection at the host, then the partner", cNetSession::HOST, 700,
		  []( int slot, cPartner &partner, cMemoryWire &wire, cNetSession & ) {
			  if ( slot == 0 || slot == 400 ) {
				  wire.Inject( 0, MakeEvent( cLink::CONNECTED ) );
			  }
			  if ( slot == 400 ) {
				  partner.SendHello();
			  }
		  },
		  "Partner lost: no handshake within 5 seconds", static_cast<int>( cNetSession::HANDSHAKE_TIME / SLOT_MSEC ), 2,
		  cNetSession::ONLINE },
	};
	for ( const cSessionCase &test : cases ) {
		cSessionRun run( test.role );
		ASSERT_TRUE( run.started );
		cNetSession &session = run.session;
		int endedAt = -1;
		for ( int slot = 0; slot < test.slots; slot++ ) {
			run.Slot( [&]() { test.script( slot, run.partner, run.wire, session ); } );
			endedAt = endedAt < 0 && !session.GetEndLine().empty() ? slot : endedAt;
		}
		EXPECT_EQ( session.GetEndLine(), test.endLine ) << test.name;
		if ( *test.endLine != '\0' ) {
			EXPECT_GE( endedAt, test.endSlot ) << test.name << ": lost too early";
			EXPECT_LE( endedAt, test.endSlot + test.lateSlots ) << test.name << ": lost too late";
		}
		EXPECT_EQ( session.GetPhase(), test.phase ) << test.name;
		const bool broken = std::string( test.endLine ).find( "broken" ) != std::string::npos;
		EXPECT_EQ( session.GetFigures().badPackets, broken ? cNetSession::MAX_BAD_PACKETS : 0 ) << test.name;
	}
}

TEST( SessionTests, ASilentPartnerIsCountedDownAndOnlyItsTokenBringsItBack ) {
	struct cCase {
		const char *	name;
		bool			rightToken;
		int				taken;			// newcomers the host took
		int				secondsAt300;	// the countdown 4.5 s into the silence: -1 when heard
	};
	const cCase cases[] = {
		{ "the partner back with its token", true, 1, -1 },
		{ "a stranger with another token", false, 0, 26 },
	};
	const int silentFrom = 100;
	for ( const cCase &test : cases ) {
		cSessionRun run( cNetSession::HOST );
		ASSERT_TRUE( run.started );
		run.wire.Inject( 0, MakeEvent( cLink::CONNECTED ) );
		run.partner.SendHello();
		for ( int slot = 0; slot < 400; slot++ ) {
			run.Slot( [&]() {
				run.partner.inputsFlow = slot < silentFrom || ( test.rightToken && slot > 300 );
				if ( slot == silentFrom + 60 ) {
					EXPECT_EQ( run.session.GetConnectionLostSeconds(), -1 ) << test.name << ": shown before a second";
				} else if ( slot == silentFrom + 80 ) {
					EXPECT_EQ( run.session.GetConnectionLostSeconds(), 29 ) << test.name;
				} else if ( slot == 300 ) {
					cNetMessage resume;
					resume.kind = NET_RESUME;
					resume.token = run.partner.token + ( test.rightToken ? 0 : 1 );
					cLink::cEvent event = MakeEvent( cLink::RECEIVED );
					event.data = cPacket::Write( resume );
					event.newcomer = true;
					run.wire.Inject( 0, event );
				} else if ( slot == 390 ) {
					EXPECT_EQ( run.session.GetConnectionLostSeconds(), test.secondsAt300 ) << test.name;
				}
			} );
		}
		ASSERT_NE( run.partner.token, 0u ) << "the START carries a token";
		EXPECT_EQ( run.wire.newcomersTaken[0], test.taken ) << test.name;
		EXPECT_EQ( run.session.GetPhase(), cNetSession::ONLINE ) << test.name << ": the grace is not over";
	}
}

}
