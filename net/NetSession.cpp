// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/NetSession.h"

#include <cinttypes>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "actors/Character.h"
#include "app/Game.h"
#include "actors/GameState.h"
#include "app/StateHash.h"
#include "input/KeyCodes.h"
#include "log/Log.h"
#include "log/Printable.h"
#include "net/DelayControl.h"
#include "net/Handshake.h"
#include "net/Lockstep.h"
#include "net/Packet.h"
#include "net/Rollback.h"
#include "platform/PacingClock.h"
#include "replay/Checkpoint.h"
#include "replay/Recorder.h"
#include "replay/ReplaySound.h"

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
	std::fprintf( stderr, "%s\n", MakePrintable( line ).c_str() );
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
}

cNetSession::~cNetSession() = default;

bool cNetSession::IsRollback() const {
	return hello.delay == 0 && partnerHello.delay == 0;
}

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

std::string cNetSession::FindLoss( int64_t now ) const {
	const std::string grace = std::to_string( PARTNER_LOST_TIME / 1000 ) + " seconds";
	switch ( phase ) {
		case HANDSHAKE:
		case PROBING:
			if ( !connected ) {
				return now - started > CONNECT_TIME ? "Partner lost: no answer from the host" : "";
			}
			return now - connectedAt > HANDSHAKE_TIME
					   ? "Partner lost: no handshake within " + std::to_string( HANDSHAKE_TIME / 1000 ) + " seconds"
					   : "";
		case READY:
			return now - lastHeard > PARTNER_LOST_TIME ? "Partner lost: nothing heard from the partner for " + grace : "";
		case ONLINE:
			return now - lastProgress > PARTNER_LOST_TIME ? "Partner lost: no new input from the partner for " + grace : "";
		default:
			return "";
	}
}

int cNetSession::GetConnectionLostSeconds() const {
	const int64_t silent = Now() - lastHeard;
	if ( phase != ONLINE || silent <= CONNECTION_LOST_TIME ) {
		return -1;
	}
	const int64_t left = PARTNER_LOST_TIME - ( Now() - lastProgress );
	return static_cast<int>( std::max<int64_t>( left, 0 ) + 999 ) / 1000;
}

bool cNetSession::Step( cGame &game ) {
	Hear( game );
	const int64_t now = Now();
	const std::string loss = FindLoss( now );
	if ( !loss.empty() ) {
		End( game, loss );
	}
	TryToReconnect( now );
	// Escape while the partner is silent gives up waiting for it; the frozen game reads no keys.
	if ( GetConnectionLostSeconds() >= 0 && input.Sample().IsKeyDown( KEY_ESCAPE ) ) {
		End( game, "Partner lost: this player stopped waiting" );
	}
	if ( phase == PROBING && now - lastSent >= PROBE_TIME ) {
		SendPing();
	} else if ( ( phase == HANDSHAKE || phase == READY ) && connected && now - lastSent >= KEEP_ALIVE_TIME ) {
		SendPing();
	}
	if ( phase == READY && role == HOST && game.GetGameState() == STATE_MAIN_MENU ) {
		cNetMessage start;
		start.kind = NET_START;
		start.start.delay = delay;
		start.start.startTick = clock.GetTickCount();
		start.start.startCalendar = clock.GetCalendarTime();
		start.start.token = std::random_device()() * 0x100000000ull + std::random_device()();
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
			Connect();
		} else if ( event.kind == cLink::RECEIVED && event.newcomer ) {
			TakeNewcomer( event.data );
		} else if ( event.kind == cLink::RECEIVED ) {
			Take( game, event.data );
		} else {
			LoseConnection( game, event );
		}
	}
}

// Only a host that has no partner and a joiner that waits for its host take a connection; a joiner
// that connected again says it is the partner of this game.
void cNetSession::Connect() {
	if ( role == JOIN && phase == ONLINE && reconnecting ) {
		cNetMessage resume;
		resume.kind = NET_RESUME;
		resume.token = token;
		Send( cLink::RELIABLE, resume );
		reconnecting = false;
		return;
	}
	if ( connected || ( role == HOST ? phase != ALONE : phase != HANDSHAKE ) ) {
		return;
	}
	phase = HANDSHAKE;
	connected = true;
	connectedAt = Now();
	lastHeard = connectedAt;
	figures.badPackets = 0;
	cNetMessage message;
	message.kind = NET_HELLO;
	message.hello = hello;
	Send( cLink::RELIABLE, message );
}

void cNetSession::TakeNewcomer( const std::vector<uint8_t> &bytes ) {
	cNetMessage message;
	std::string why;
	if ( phase == ONLINE && role == HOST && cPacket::Read( bytes.data(), bytes.size(), { 0, 0 }, message, why ) &&
		 message.kind == NET_RESUME && message.token == token ) {
		link.TakeNewcomer();
		cLog::Write( "The partner connected again" );
	}
}

// Online, a connection that breaks is the line's trouble, not the end: the joiner connects again
// (turned away while the host still hears its old connection, it tries again), and the grace
// decides. Before, it ends the partner.
void cNetSession::LoseConnection( cGame &game, const cLink::cEvent &event ) {
	if ( event.refused && phase != ENDED && phase != ONLINE ) {
		End( game, "Refused by the host: " + event.why );
	} else if ( phase == ONLINE && partnerQuitAt == 0 ) {
		cLog::Write( ( "Connection to the partner lost: " + event.why ).c_str() );
		lastReconnect = 0;
	} else if ( phase != ALONE && phase != ENDED && phase != ONLINE ) {
		End( game, "Partner lost: " + event.why );
	}
}

void cNetSession::TryToReconnect( int64_t now ) {
	if ( role != JOIN || phase != ONLINE || partnerQuitAt != 0 || now - lastHeard <= RECONNECT_TIME ||
		 now - lastReconnect <= RECONNECT_TIME ) {
		return;
	}
	lastReconnect = now;
	reconnecting = true;
	link.Reconnect();
}

// A packet that names steps already run is late, not broken: the lockstep has no use for it.
void cNetSession::Take( cGame &game, const std::vector<uint8_t> &bytes ) {
	const cStepWindow window = { 0, lockstep ? lockstep->GetWindow().high : cLockstep::WINDOW };
	cNetMessage message;
	std::string why;
	if ( phase == ALONE || phase == ENDED ) {
		return;
	}
	if ( cPacket::Read( bytes.data(), bytes.size(), window, message, why ) ) {
		lastHeard = Now();
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
		case NET_DELAY:
			if ( role == JOIN && phase == ONLINE ) {
				TakeDelayChange( message.delayChange );
			}
			break;
		case NET_INPUTS:
			if ( phase == ONLINE ) {
				TakeInputs( game, message.inputs );
			}
			break;
		case NET_HASH:
			if ( phase == ONLINE && !lockstep->TakePartnerHash( message.hash ) ) {
				Drop( game, "a hash whose parts have no names" );
			} else if ( phase == ONLINE && lockstep->IsOutOfStep() ) {
				FindOutOfStep( game );
			}
			break;
		case NET_BYE:
			if ( phase == ONLINE && message.reason == BYE_OUT_OF_STEP ) {
				GoOutOfStep( game, message.lastStep, MakePrintable( message.part ) );
			} else if ( phase == ONLINE && message.reason == BYE_QUIT ) {
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
		delay = IsRollback() ? cRollback::ChooseLocalDelay( figures.roundTrip )
							 : cHandshake::ChooseDelay( hello.delay, partnerHello.delay, figures.roundTrip );
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
	token = start.token;
	reconnecting = false;
	lastReconnect = 0;
	figures.delay = delay;
	figures.steps = 0;
	figures.waitedSlots = 0;
	lockstep = std::make_unique<cLockstep>( delay );
	delayControl = std::make_unique<cDelayControl>( std::max<uint32_t>( delay, 1 ), cPacket::MAX_DELAY );
	delayFixed = role == JOIN || hello.delay > 0 || partnerHello.delay > 0 || IsRollback();
	pendingChange = cDelayChange();
	figures.delaySteps = 0;
	clock.Agree( start.startTick, start.startCalendar );
	input.SetPlayer( role == HOST ? HOST_PLAYER : PARTNER_PLAYER );
	recorder = std::make_unique<cRecorder>( input, clock );
	recorder->Watch( game );
	SetClock( &recorder->GetClock() );
	game.Restart( &recorder->GetInput() );
	game.LockSettings( true );
	rollback.reset();
	if ( IsRollback() ) {
		rollback = std::make_unique<cRollback>(
			game, *lockstep,
			[this, &game]( uint64_t step, const cStepInput &own, const cStepInput &partner, bool ) {
				return PlayStep( game, step, own, partner );
			},
			[this, &game]( uint64_t step, const cStepInput &, const cStepInput & ) { Confirmed( game, step ); } );
		rollback->SetRecorder( recorder.get() );
		rollback->SetInput( &input );
		rollback->SetQuiet( [this]( bool quiet ) { BeQuiet( quiet ); } );
		rollback->SetLooks( []( uint64_t step ) { return cLockstep::IsHashStep( step + 1 ); } );
	}
	phase = ONLINE;
	owed = 0;
	partnerQuitAt = 0;
	lastStep = Now();
	lastProgress = lastStep;
	lastHeard = lastStep;
	std::printf( "Online game with the partner: input delay %u steps, round trip %u ms", delay, figures.roundTrip );
	if ( rollback ) {
		std::printf( ", guessing the partner's keys up to %u steps ahead", static_cast<unsigned>( cRollback::MAX_GUESS ) );
	}
	std::printf( "\n" );
	std::fflush( stdout );
}

// The steps due since the last call, each as soon as both inputs are there.
bool cNetSession::RunSteps( cGame &game ) {
	owed = std::min( owed + 1, MAX_OWED_STEPS );
	bool going = true;
	if ( rollback ) {
		going = RunAhead( game );
	} else {
		while ( going && owed > 0 && phase == ONLINE && lockstep->CanStep() ) {
			owed--;
			if ( pendingChange.step != 0 && lockstep->GetStep() >= pendingChange.step ) {
				lockstep->SetDelay( pendingChange.delay );
				delayControl->Switched( pendingChange.delay, Now() );
				figures.delay = pendingChange.delay;
				pendingChange = cDelayChange();
			}
			going = RunStep( game );
		}
	}
	if ( phase != ONLINE ) {
		return going;
	}
	figures.waitedSlots += owed > 0 ? 1 : 0;
	Send( cLink::UNRELIABLE, lockstep->MakeInputs() );
	delayControl->Sent( lockstep->GetOwnEnd() - 1, Now() );
	delayControl->Slot( owed > 0, Now() );
	FollowLine();
	if ( partnerQuitAt != 0 && lockstep->GetStep() >= partnerQuitAt ) {
		End( game, "Partner lost: the partner's game quit at step " + std::to_string( partnerQuitAt ) +
					   ", this one did not" );
	}
	return going;
}

// Played ahead: the partner's inputs that came correct the guesses, then the due steps are played.
bool cNetSession::RunAhead( cGame &game ) {
	const uint64_t confirmed = lockstep->GetStep();
	const uint64_t again = rollback->GetStepsAgain();
	int32_t partnerPlace[2] = {};
	const bool partnerSeen = FindPartnerFigure( game, partnerPlace );
	bool going = rollback->Correct();
	figures.frames++;
	figures.mostStepsAgain = std::max( figures.mostStepsAgain, rollback->GetStepsAgain() - again );
	if ( partnerSeen && rollback->GetStepsAgain() > again ) {
		MeasureJump( game, partnerPlace );
	}
	while ( going && owed > 0 && rollback->CanStep() ) {
		owed--;
		going = rollback->Step( input.Sample() );
	}
	// A machine that may guess no further gives the step up instead of owing it: it falls back
	// behind the partner by a step, so that the partner's inputs come within its reach again.
	figures.waitedSlots += owed > 0 ? 1 : 0;
	owed = 0;
	figures.stepsAgain = rollback->GetStepsAgain();
	figures.corrections = rollback->GetCorrections();
	if ( lockstep->GetStep() > confirmed ) {
		lastProgress = Now();
	}
	if ( !going ) {
		Quit( game );
		return role != HOST;
	}
	if ( lockstep->IsOutOfStep() && phase == ONLINE ) {
		FindOutOfStep( game );
	}
	return true;
}

bool cNetSession::FindPartnerFigure( const cGame &game, int32_t place[2] ) const {
	const tCharacterList *players = game.GetPlayers();
	const size_t partner = role == HOST ? 1 : 0;
	if ( players == nullptr || players->size() <= partner ) {
		return false;
	}
	( *players )[partner]->GetPosition( place[0], place[1] );
	return true;
}

void cNetSession::MeasureJump( const cGame &game, const int32_t before[2] ) {
	int32_t after[2] = {};
	if ( !FindPartnerFigure( game, after ) ) {
		return;
	}
	const uint64_t jump = static_cast<uint64_t>( std::max( std::abs( after[0] - before[0] ), std::abs( after[1] - before[1] ) ) );
	figures.jumps += jump > 0 ? 1 : 0;
	figures.jumpLength += jump;
	figures.longestJump = std::max( figures.longestJump, jump );
}

bool cNetSession::RunStep( cGame &game ) {
	const uint64_t step = lockstep->GetStep();
	cStepInput own;
	cStepInput partner;
	lockstep->Step( input.Sample(), own, partner );
	const bool going = PlayStep( game, step, own, partner );
	Confirmed( game, step );
	if ( !going ) {
		Quit( game );
		return role != HOST;
	}
	if ( lockstep->IsOutOfStep() ) {
		FindOutOfStep( game );
	}
	return true;
}

bool cNetSession::PlayStep( cGame &game, uint64_t step, const cStepInput &own, const cStepInput &partner ) {
	input.SetStepInput( role == HOST ? cStepInput::Combine( own, partner ) : cStepInput::Combine( partner, own ) );
	clock.SetStep( step );
	const bool going = game.Step();
	recorder->EndStep();
	lastStep = Now();
	return going;
}

void cNetSession::Confirmed( cGame &game, uint64_t step ) {
	lastProgress = Now();
	figures.steps++;
	figures.delaySteps += lockstep->GetDelay();
	if ( cLockstep::IsHashStep( step + 1 ) ) {
		Send( cLink::RELIABLE, lockstep->TakeOwnHash( cCheckpoint::Take( step + 1, cStateHash( game ) ) ) );
	}
}

void cNetSession::BeQuiet( bool quiet ) {
	if ( sound != nullptr ) {
		sound->SetQuiet( quiet );
	}
}

void cNetSession::FollowLine() {
	const int64_t roundTrip = delayControl->GetRoundTrip();
	figures.roundTrip = roundTrip > 0 ? static_cast<uint32_t>( roundTrip ) : figures.roundTrip;
	if ( delayFixed || pendingChange.step != 0 ) {
		return;
	}
	const uint32_t wanted = delayControl->Choose( Now() );
	if ( wanted == lockstep->GetDelay() ) {
		return;
	}
	cNetMessage message;
	message.kind = NET_DELAY;
	message.delayChange = { lockstep->GetStep() + lockstep->GetDelay() + cDelayControl::LEAD, wanted };
	Send( cLink::RELIABLE, message );
	TakeDelayChange( message.delayChange );
}

// A change that comes after its step is made at once: the steps' inputs stay whole either way.
void cNetSession::TakeDelayChange( const cDelayChange &change ) {
	pendingChange = change;
	pendingChange.step = std::max<uint64_t>( change.step, 1 );
	cLog::Write( ( "The input delay becomes " + std::to_string( change.delay ) + " steps at step " +
				   std::to_string( change.step ) ).c_str() );
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

void cNetSession::TakeInputs( cGame &game, const cInputRun &run ) {
	const uint64_t held = lockstep->GetPartnerInputs();
	if ( !lockstep->TakeInputs( run ) ) {
		Drop( game, "an acknowledgement of steps never sent" );
		return;
	}
	delayControl->Acknowledged( lockstep->GetAcknowledged(), Now() );
	if ( lockstep->GetPartnerInputs() > held ) {
		lastProgress = Now();
	}
}

// The partner learns it before this machine leaves, so that both tell the same.
void cNetSession::FindOutOfStep( cGame &game ) {
	cNetMessage bye;
	bye.kind = NET_BYE;
	bye.reason = BYE_OUT_OF_STEP;
	bye.lastStep = lockstep->GetOutOfStepStep();
	bye.part = lockstep->GetOutOfStepPart();
	Send( cLink::RELIABLE, bye );
	GoOutOfStep( game, bye.lastStep, bye.part );
}

void cNetSession::GoOutOfStep( cGame &game, uint64_t step, const std::string &part ) {
	const std::string line = "Game went out of step with the partner at step " + std::to_string( step ) + " (part " + part + ")";
	End( game, line, GetLogFolder() + "/" + OUT_OF_STEP_FILE );
}

// The online game's recording is written, and the player goes on alone from the main menu.
void cNetSession::End( cGame &game, const std::string &line, const std::string &evidence ) {
	endLine = line;
	Say( line );
	if ( rollback ) {
		rollback->GoBackToConfirmed();
	}
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
		rollback.reset();
		recorder.reset();
		lockstep.reset();
		delayControl.reset();
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
	if ( rollback ) {
		rollback->GoBackToConfirmed();
	}
	if ( phase == ONLINE ) {
		figures.finalHash = cStateHash( game ).GetTotal();
		SaveRecording( recordPath );
	}
	link.Disconnect();
	phase = ENDED;
}
