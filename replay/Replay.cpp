#include "replay/Replay.h"

#include <cstring>

#include "app/Game.h"
#include "app/StateHash.h"
#include "log/Log.h"
#include "replay/ReplayClock.h"
#include "replay/ReplayInput.h"
#include "replay/ReplaySound.h"

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

bool cReplayInput::IsPassingThrough() const {
	return !replay.IsPlaying();
}

bool cReplayInput::TakePauseRequest() {
	const bool platformPause = platform != nullptr && platform->TakePauseRequest();
	if ( IsPassingThrough() ) {
		return platformPause;
	}
	return replay.BeginStep();
}

bool cReplayInput::ReadKeyboard( uint8_t state[256] ) {
	if ( IsPassingThrough() ) {
		return platform == nullptr || platform->ReadKeyboard( state );
	}
	uint8_t player[256] = {};
	if ( platform != nullptr && platform->ReadKeyboard( player ) ) {
		replay.NotePlayerKeys( player );
	}
	const cTapeStep::cRead *read = replay.TakeRead( cTapeStep::KEYBOARD, cTapeStep::KEYBOARD_FAILED );
	if ( read == nullptr ) {
		std::memset( state, 0, 256 );
		return true;
	}
	if ( read->kind == cTapeStep::KEYBOARD_FAILED ) {
		return false;
	}
	std::memcpy( state, read->keys.data(), 256 );
	return true;
}

bool cReplayInput::ReadMouse( cMouseReading &reading ) {
	if ( IsPassingThrough() ) {
		return platform == nullptr || platform->ReadMouse( reading );
	}
	cMouseReading player;
	if ( platform != nullptr ) {
		platform->ReadMouse( player );
	}
	const cTapeStep::cRead *read = replay.TakeRead( cTapeStep::MOUSE, cTapeStep::MOUSE_FAILED );
	if ( read == nullptr ) {
		reading = cMouseReading();
		return true;
	}
	if ( read->kind == cTapeStep::MOUSE_FAILED ) {
		return false;
	}
	reading = read->mouse;
	return true;
}

// The recorded game moved its own pointer; the player's stays where the player left it.
void cReplayInput::WarpMouse( int32_t x, int32_t y ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->WarpMouse( x, y );
	}
}

void cReplayInput::SetPlayerCount( int count ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->SetPlayerCount( count );
	}
}

void cReplayInput::Rumble( int player ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->Rumble( player );
	}
}

void cReplayInput::SetPlaying( bool playing ) {
	if ( IsPassingThrough() && platform != nullptr ) {
		platform->SetPlaying( playing );
	}
}

bool cReplayInput::AcquireKeyboard() {
	const bool acquired = platform == nullptr || platform->AcquireKeyboard();
	return acquired || !IsPassingThrough();
}

bool cReplayInput::UnacquireKeyboard() {
	const bool released = platform == nullptr || platform->UnacquireKeyboard();
	return released || !IsPassingThrough();
}

bool cReplayInput::AcquireMouse( bool exclusive ) {
	const bool acquired = platform == nullptr || platform->AcquireMouse( exclusive );
	return acquired || !IsPassingThrough();
}

bool cReplayInput::UnacquireMouse() {
	const bool released = platform == nullptr || platform->UnacquireMouse();
	return released || !IsPassingThrough();
}

const char *cReplayInput::GetErrorCode() const {
	return platform != nullptr ? platform->GetErrorCode() : "replay";
}

const char *cReplayInput::GetErrorText() const {
	return platform != nullptr ? platform->GetErrorText() : "no input device during a replay";
}

uint32_t cReplayClock::GetTickCount() {
	if ( !replay.IsPlaying() ) {
		return platform.GetTickCount() + shift;
	}
	const cTapeStep::cRead *read = replay.TakeRead( cTapeStep::TICK, cTapeStep::TICK );
	if ( read != nullptr ) {
		lastTick = static_cast<uint32_t>( read->time );
	}
	return lastTick;
}

std::time_t cReplayClock::GetCalendarTime() {
	if ( !replay.IsPlaying() ) {
		return platform.GetCalendarTime();
	}
	const cTapeStep::cRead *read = replay.TakeRead( cTapeStep::CALENDAR, cTapeStep::CALENDAR );
	if ( read != nullptr ) {
		lastCalendar = static_cast<std::time_t>( read->time );
	}
	return lastCalendar;
}

void cReplayClock::Hold() {
	shift = lastTick - platform.GetTickCount();
}

bool cReplaySound::Open() {
	platformOpen = recordedOpen && platform != nullptr && platform->Open();
	return recordedOpen;
}

void cReplaySound::Close() {
	if ( platformOpen ) {
		platform->Close();
	}
	platformOpen = false;
}

bool cReplaySound::CreateSound( int id, const cWaveFormat &format, const uint8_t *samples, uint32_t size ) {
	if ( platformOpen ) {
		platform->CreateSound( id, format, samples, size );
	}
	return true;
}

void cReplaySound::ReleaseSound( int id ) {
	if ( platformOpen ) {
		platform->ReleaseSound( id );
	}
}

bool cReplaySound::Play( int id, bool loop, int32_t volume ) {
	if ( platformOpen ) {
		platform->Play( id, loop, volume );
	}
	return true;
}

bool cReplaySound::Stop( int id ) {
	if ( platformOpen ) {
		platform->Stop( id );
	}
	return true;
}
