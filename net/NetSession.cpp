// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/NetSession.h"

#include <cinttypes>
#include <cstdio>

#include "app/Game.h"
#include "actors/GameState.h"
#include "app/StateHash.h"
#include "log/Log.h"
#include "net/Handshake.h"
#include "net/Lockstep.h"
#include "net/Packet.h"
#include "platform/PacingClock.h"
#include "replay/Checkpoint.h"
#include "replay/Recorder.h"

namespace {

const int64_t NSEC_PER_MSEC = 1000000;
const int64_t KEEP_ALIVE_TIME = 250;		// msec between pings while no inputs flow
const int64_t PROBE_TIME = 30;				// msec between round-trip probes
const int HOST_PLAYER = 1;
const int PARTNER_PLAYER = 2;
const char *const OUT_OF_STEP_FILE = "out-of-step.kmr";

// The log and the terminal.
void Say( const std::string &line ) {
	cLog::Write( line.c_str() );
	std::fprintf( stderr, "%s\n", line.c_str() );
}

std::string GetLogFolder() {
	const std::string &log = cLog::GetPath();
	const size_t slash = log.find_last_of( '/' );
	return slash == std::string::npos ? std::string( "." ) : log.substr( 0, slash );
}

}

cNetSession::cNetSession( cLink &link, eRole role, const cHello &hello, const std::string &recordPath,
						  cInputBackend &platformInput, cClock &platformClock, cPacingClock &time )
	: link( link ), role( role ), hello( hello ), recordPath( recordPath ), input( platformInput ),
	  clock( platformClock ), time( time ), phase( role == HOST ? ALONE : HANDSHAKE ), started( Now() ) {
	lastHeard = started;
}

cNetSession::~cNetSession() = default;

int64_t cNetSession::Now() const {
	return time.GetNanoseconds() / NSEC_PER_MSEC;
}

bool cNetSession::IsWaiting() const {
	const int64_t now = Now();
	if ( phase == ONLINE ) {
		return now - lastStep > WAIT_PICTURE_TIME;
	}
	return role == JOIN && phase != ENDED && now - started > WAIT_PICTURE_TIME;
}

bool cNetSession::Step( cGame &game ) {
	Hear( game );
	const int64_t now = Now();
	const bool partnerExpected = phase != ALONE && phase != ENDED && partnerQuitAt == 0;
	if ( partnerExpected && now - lastHeard > PARTNER_LOST_TIME ) {
		End( game, connected ? "Partner lost: nothing heard from the partner for 10 seconds"
							 : "Partner lost: no answer from the host" );
	}
	if ( phase == PROBING && now - lastSent >= PROBE_TIME ) {
		SendPing();
	} else if ( ( phase == HANDSHAKE || phase == READY ) && connected && now - lastSent >= KEEP_ALIVE_TIME ) {
		SendPing();
	}
	if ( phase == READY && role == HOST && gameState == STATE_MAIN_MENU ) {
		cNetMessage start;
		start.kind = NET_START;
		start.start.delay = delay;
		start.start.startTick = clock.GetTickCount();
		start.start.startCalendar = clock.GetCalendarTime();
		Send( cLink::RELIABLE, start );
		Begin( game, start.start );
	}
	if ( phase == ONLINE ) {
		return RunSteps( game );
	}
	if ( role == JOIN && phase != ENDED ) {
		return true;		// the host's game is the one that starts
	}
	return game.Step();
}

void cNetSession::Hear( cGame &game ) {
	for ( cLink::cEvent event = link.Poll(); event.kind != cLink::NOTHING; event = link.Poll() ) {
		if ( event.kind == cLink::CONNECTED ) {
			phase = HANDSHAKE;
			connected = true;
			lastHeard = Now();
			figures.badPackets = 0;
			cNetMessage message;
			message.kind = NET_HELLO;
			message.hello = hello;
			Send( cLink::RELIABLE, message );
		} else if ( event.kind == cLink::RECEIVED ) {
			lastHeard = Now();
			Take( game, event.data );
		} else if ( phase != ALONE && phase != ENDED && !( phase == ONLINE && partnerQuitAt != 0 ) ) {
			End( game, "Partner lost: " + event.why );
		}
	}
}

void cNetSession::Take( cGame &game, const std::vector<uint8_t> &bytes ) {
	const cStepWindow window = lockstep ? lockstep->GetWindow() : cStepWindow { 0, cLockstep::WINDOW };
	cNetMessage message;
	std::string why;
	if ( cPacket::Read( bytes.data(), bytes.size(), window, message, why ) ) {
		Handle( game, message );
	} else {
		Drop( game, why );
	}
}

// A partner that keeps sending broken packets is left.
void cNetSession::Drop( cGame &game, const std::string &why ) {
	figures.badPackets++;
	cLog::Write( ( "Dropped a packet from the partner: " + why ).c_str() );
	if ( figures.badPackets >= MAX_BAD_PACKETS && phase != ALONE && phase != ENDED ) {
		End( game, "Partner lost: it kept sending broken packets" );
	}
}

void cNetSession::Handle( cGame &game, const cNetMessage &message ) {
	switch ( message.kind ) {
		case NET_HELLO:
			if ( phase == HANDSHAKE ) {
				TakeHello( game, message.hello );
			}
			break;
		case NET_PING: {
			cNetMessage pong = message;
			pong.kind = NET_PONG;
			Send( cLink::UNRELIABLE, pong );
			break;
		}
		case NET_PONG:
			if ( phase == PROBING ) {
				TakePong( message.time );
			}
			break;
		case NET_START:
			if ( role == JOIN && phase == READY ) {
				Begin( game, message.start );
			}
			break;
		case NET_INPUTS:
			if ( phase == ONLINE && !lockstep->TakeInputs( message.inputs ) ) {
				Drop( game, "an acknowledgement of steps never sent" );
			}
			break;
		case NET_HASH:
			if ( phase == ONLINE && !lockstep->TakePartnerHash( message.hash ) ) {
				Drop( game, "a hash whose parts have no names" );
			} else if ( phase == ONLINE && lockstep->IsOutOfStep() ) {
				GoOutOfStep( game );
			}
			break;
		case NET_BYE:
			if ( phase == ONLINE && message.reason == BYE_QUIT ) {
				partnerQuitAt = message.lastStep;
			} else if ( phase != ALONE && phase != ENDED && message.reason != BYE_REFUSED ) {
				End( game, "Partner lost: the partner closed the game" );
			}
			break;
		default:
			break;
	}
}

void cNetSession::TakeHello( cGame &game, const cHello &partner ) {
	const std::string refusal = cHandshake::Compare( hello, partner );
	if ( !refusal.empty() ) {
		cNetMessage bye;
		bye.kind = NET_BYE;
		bye.reason = BYE_REFUSED;
		Send( cLink::RELIABLE, bye );
		End( game, refusal );
		return;
	}
	partnerHello = partner;
	if ( role == HOST ) {
		phase = PROBING;
		probes = 0;
		figures.roundTrip = 0;
		SendPing();
	} else {
		phase = READY;
	}
}

void cNetSession::TakePong( uint32_t sent ) {
	const uint32_t roundTrip = static_cast<uint32_t>( Now() ) - sent;
	figures.roundTrip = std::max( figures.roundTrip, roundTrip );
	if ( ++probes >= PROBES ) {
		delay = cHandshake::ChooseDelay( hello.delay, partnerHello.delay, figures.roundTrip );
		phase = READY;
		cLog::Write( "Partner joined: the online game starts at the main menu" );
	}
}

void cNetSession::Send( cLink::eChannel channel, const cNetMessage &message ) {
	link.Send( channel, cPacket::Write( message ) );
	lastSent = Now();
}

void cNetSession::SendPing() {
	cNetMessage ping;
	ping.kind = NET_PING;
	ping.time = static_cast<uint32_t>( Now() );
	Send( cLink::UNRELIABLE, ping );
}

// Both games begin again from the main menu, on the agreed clock and the shared input, recorded.
void cNetSession::Begin( cGame &game, const cStart &start ) {
	delay = start.delay;
	figures.delay = delay;
	figures.steps = 0;
	figures.waitedSlots = 0;
	lockstep = std::make_unique<cLockstep>( delay );
	clock.Agree( start.startTick, start.startCalendar );
	input.SetPlayer( role == HOST ? HOST_PLAYER : PARTNER_PLAYER );
	recorder = std::make_unique<cRecorder>( input, clock );
	recorder->Watch( game );
	SetClock( &recorder->GetClock() );
	game.Restart( &recorder->GetInput() );
	game.LockSettings( true );
	phase = ONLINE;
	owed = 0;
	partnerQuitAt = 0;
	lastStep = Now();
	std::printf( "Online game with the partner: input delay %u steps, round trip %u ms\n", delay, figures.roundTrip );
	std::fflush( stdout );
}

// The steps due since the last call, each as soon as both inputs are there.
bool cNetSession::RunSteps( cGame &game ) {
	owed = std::min( owed + 1, MAX_OWED_STEPS );
	bool going = true;
	while ( going && owed > 0 && phase == ONLINE && lockstep->CanStep() ) {
		owed--;
		going = RunStep( game );
	}
	if ( phase != ONLINE ) {
		return going;
	}
	figures.waitedSlots += owed > 0 ? 1 : 0;
	Send( cLink::UNRELIABLE, lockstep->MakeInputs() );
	if ( partnerQuitAt != 0 && lockstep->GetStep() >= partnerQuitAt ) {
		End( game, "Partner lost: the partner's game quit at step " + std::to_string( partnerQuitAt ) +
					   ", this one did not" );
	}
	return going;
}

bool cNetSession::RunStep( cGame &game ) {
	const uint64_t step = lockstep->GetStep();
	cStepInput own;
	cStepInput partner;
	lockstep->Step( input.Sample(), own, partner );
	input.SetStepInput( role == HOST ? cStepInput::Combine( own, partner ) : cStepInput::Combine( partner, own ) );
	clock.SetStep( step );
	const bool going = game.Step();
	recorder->EndStep();
	lastStep = Now();
	figures.steps++;
	if ( !going ) {
		Quit( game );
		return role != HOST;
	}
	if ( cLockstep::IsHashStep( step + 1 ) ) {
		Send( cLink::RELIABLE, lockstep->TakeOwnHash( cCheckpoint::Take( step + 1, cStateHash( game ) ) ) );
		if ( lockstep->IsOutOfStep() ) {
			GoOutOfStep( game );
		}
	}
	return true;
}

// The host's click on quit ends both games at the same step; the partner still needs this side's
// inputs up to it, so they go on the reliable channel before the farewell.
void cNetSession::Quit( cGame &game ) {
	Send( cLink::RELIABLE, lockstep->MakeInputs() );
	cNetMessage bye;
	bye.kind = NET_BYE;
	bye.reason = BYE_QUIT;
	bye.lastStep = lockstep->GetStep();
	Send( cLink::RELIABLE, bye );
	End( game, role == HOST ? "The online game ended: this player quit" : "The host quit the game" );
}

void cNetSession::GoOutOfStep( cGame &game ) {
	const std::string line = "Game went out of step with the partner at step " +
							 std::to_string( lockstep->GetOutOfStepStep() ) + " (part " + lockstep->GetOutOfStepPart() + ")";
	End( game, line, GetLogFolder() + "/" + OUT_OF_STEP_FILE );
}

// The online game's recording is written, and the player goes on alone from the main menu.
void cNetSession::End( cGame &game, const std::string &line, const std::string &evidence ) {
	endLine = line;
	Say( line );
	if ( phase == ONLINE ) {
		figures.finalHash = cStateHash( game ).GetTotal();
		SaveRecording( recordPath );
		SaveRecording( evidence );
	}
	link.Disconnect();
	if ( phase == ONLINE ) {
		input.SetPlayer( 0 );
		clock.Release();
		SetClock( &clock );
		game.Restart( &input );
		game.LockSettings( false );
		recorder.reset();
		lockstep.reset();
	}
	phase = role == HOST ? ALONE : ENDED;
	connected = false;
	partnerQuitAt = 0;
}

void cNetSession::SaveRecording( const std::string &path ) {
	if ( !recorder || path.empty() ) {
		return;
	}
	std::string error;
	if ( !recorder->Save( path, error ) ) {
		Say( error );
		return;
	}
	std::printf( "Recorded %" PRIu64 " steps to %s; final state hash: %016" PRIx64 "\n", figures.steps, path.c_str(),
				 figures.finalHash );
	std::fflush( stdout );
}

void cNetSession::Close( const cGame &game ) {
	if ( phase == ALONE || phase == ENDED ) {
		return;
	}
	cNetMessage bye;
	bye.kind = NET_BYE;
	bye.reason = BYE_CLOSED;
	Send( cLink::RELIABLE, bye );
	if ( phase == ONLINE ) {
		figures.finalHash = cStateHash( game ).GetTotal();
		SaveRecording( recordPath );
	}
	link.Disconnect();
	phase = ENDED;
}
