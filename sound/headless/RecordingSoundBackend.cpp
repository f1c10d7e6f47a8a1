// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/headless/RecordingSoundBackend.h"

bool cRecordingSoundBackend::Open() {
	open = !failOpen;
	return open;
}

bool cRecordingSoundBackend::CreateSound( int id, const cWaveFormat &format, const uint8_t *, uint32_t size ) {
	if ( failCreate || !open || id < 0 || id >= SOUND_COUNT ) {
		return false;
	}
	formats[id] = format;
	sizes[id] = size;
	created[id] = true;
	return true;
}

void cRecordingSoundBackend::ReleaseSound( int id ) {
	if ( id >= 0 && id < SOUND_COUNT ) {
		created[id] = false;
		sizes[id] = 0;
	}
}

bool cRecordingSoundBackend::Play( int id, bool loop, int32_t volume ) {
	if ( failPlay ) {
		return false;
	}
	events.push_back( cEvent { true, id, loop, volume } );
	return true;
}

bool cRecordingSoundBackend::Stop( int id ) {
	if ( failStop ) {
		return false;
	}
	events.push_back( cEvent { false, id, false, 0 } );
	return true;
}

std::vector<int> cRecordingSoundBackend::GetPlayed() const {
	std::vector<int> ids;
	for ( const cEvent &event : events ) {
		if ( event.play ) {
			ids.push_back( event.id );
		}
	}
	return ids;
}

std::vector<int> cRecordingSoundBackend::GetStopped() const {
	std::vector<int> ids;
	for ( const cEvent &event : events ) {
		if ( !event.play ) {
			ids.push_back( event.id );
		}
	}
	return ids;
}

int cRecordingSoundBackend::GetSoundCount() const {
	int count = 0;
	for ( bool made : created ) {
		count += made ? 1 : 0;
	}
	return count;
}
