// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/Replay.h"

#include <cstring>

#include "app/Game.h"
#include "app/StateHash.h"
#include "log/Log.h"
#include "replay/ReplayClock.h"
#include "replay/ReplayInput.h"

namespace {

const char *const READ_NAMES[] = { "the tick count", "the calendar second", "the keyboard", "the mouse",
								   "a failed keyboard poll", "a failed mouse poll" };

}

cReplay::cReplay( const cRecording &played, cInputBackend *platformInput, cClock &platformClock )
	: recording( played ), reader( played.tape.data(), played.tape.size() ),
	  input( std::make_unique<cReplayInput>( platformInput, *this ) ),
	  clock( std::make_unique<cReplayClock>( platformClock, *this ) ) {
	if ( !reader.ReadPreamble( current ) ) {
		Diverge( 0, "the tape cannot be read" );
	}
}

cReplay::~cReplay() = default;

cInputBackend &cReplay::GetInput() {
	return *input;
}

cClock &cReplay::GetClock() {
	return *clock;
}

void cReplay::Diverge( uint64_t atStep, const std::string &why ) {
	if ( stopped ) {
		return;
	}
	divergedAt = atStep > 0 ? atStep : 1;
	difference = why;
	cLog::Write( ( "Replay went another way at step " + std::to_string( divergedAt ) ).c_str() );
	cLog::Write( ( "  " + why ).c_str() );
	Stop();
}

void cReplay::Stop() {
	if ( !stopped ) {
		clock->Hold();
		stopped = true;
	}
}

bool cReplay::BeginStep() {
	if ( stopped ) {
		return false;
	}
	if ( nextRead < current.reads.size() ) {
		Diverge( step, "the game read less than the recording holds" );
		return false;
	}
	if ( step == recording.steps || !reader.ReadStep( current ) ) {
		Diverge( step + 1, "the game went on past the end of the recording" );
		return false;
	}
	step++;
	nextRead = 0;
	betweenSteps = false;
	return current.pause;
}

const cTapeStep::cRead *cReplay::TakeRead( cTapeStep::eKind kind, cTapeStep::eKind orFailed ) {
	if ( stopped || betweenSteps ) {
		return nullptr;
	}
	if ( nextRead == current.reads.size() ) {
		Diverge( step, std::string( "the game read " ) + READ_NAMES[kind] + " more often than the recording holds" );
		return nullptr;
	}
	const cTapeStep::cRead &read = current.reads[nextRead];
	if ( read.kind != kind && read.kind != orFailed ) {
		Diverge( step, std::string( "the game read " ) + READ_NAMES[kind] + " where the recording holds " + READ_NAMES[read.kind] );
		return nullptr;
	}
	nextRead++;
	return &read;
}

bool cReplay::CheckStep( const cGame &game ) {
	if ( stopped ) {
		return !HasDiverged();
	}
	betweenSteps = true;
	if ( nextRead < current.reads.size() ) {
		Diverge( step, "the game read less than the recording holds" );
		return false;
	}
	if ( step % cRecording::CHECKPOINT_EVERY != 0 && step != recording.steps ) {
		return true;
	}
	const cCheckpoint &due = recording.checkpoints[static_cast<size_t>( ( step - 1 ) / cRecording::CHECKPOINT_EVERY )];
	const std::string part = cCheckpoint::Take( step, cStateHash( game ) ).FindDifference( due );
	if ( !part.empty() ) {
		Diverge( step, "the state differs from the recording's in part \"" + part + "\"" );
		return false;
	}
	return true;
}

void cReplay::NotePlayerKeys( const uint8_t state[256] ) {
	std::memcpy( playerKeys, state, sizeof( playerKeys ) );
}

bool cReplay::IsPlayerKeyDown( int key ) const {
	return key >= 0 && key < 256 && ( playerKeys[key] & 0x80 ) != 0;
}

bool cReplay::IsAnyPlayerKeyDown() const {
	for ( uint8_t key : playerKeys ) {
		if ( key & 0x80 ) {
			return true;
		}
	}
	return false;
}
