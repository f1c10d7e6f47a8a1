// SPDX-License-Identifier: GPL-3.0-or-later
#include "replay/ReplaySound.h"

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
	if ( platformOpen && !quiet ) {
		platform->Play( id, loop, volume );
	}
	return true;
}

bool cReplaySound::Stop( int id ) {
	if ( platformOpen && !quiet ) {
		platform->Stop( id );
	}
	return true;
}

void cReplaySound::SetVolume( int id, int32_t volume ) {
	if ( platformOpen ) {
		platform->SetVolume( id, volume );
	}
}
