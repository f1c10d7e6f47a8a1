// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/SoundLayer.h"

#include <cassert>
#include <string>

#include "log/Log.h"
#include "sound/SoundBackend.h"
#include "sound/WaveReader.h"

namespace {

// In id order: a sound's id is its place in this table.
const char *const SOUND_FILES[SOUND_COUNT] = {
	"menu.wav", "streets.wav", "boss.wav", "explosion.wav", "tavesh_shot.wav", "lumra_shot.wav",
	"enemy_shot.wav", "machinegun.wav", "skill.wav", "item.wav", "heartbeat.wav", "LvlComplete.wav",
	"GameOver.wav", "open_box.wav", "door_open.wav",
};

}

std::string cSoundLayer::GetSoundFolder( const std::string &root ) {
	return root + ( SOUND_FOLDER + 1 );	// the folder's path starts with "."
}

bool cSoundLayer::Init( cSoundBackend *soundBackend ) {
	enabled = true;
	heartbeatPlaying = false;
	cLog::Instance();
	backend = soundBackend;
	if ( backend == nullptr || !backend->Open() ) {
		cLog::Write( "Error creating DirectSound object" );
		enabled = false;
		return false;
	}
	return true;
}

// Stops at the first sound that fails: it and every sound after it stay silent.
bool cSoundLayer::LoadSounds( const char *folder ) {
	if ( !enabled ) {
		return true;
	}
	cLog::Instance();
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		const std::string path = std::string( folder ) + SOUND_FILES[id];
		if ( !LoadWave( path.c_str(), id ) ) {
			cLog::Write( ( std::string( "Error loading " ) + SOUND_FILES[id] ).c_str() );
			return false;
		}
	}
	return true;
}

bool cSoundLayer::LoadWave( const char *path, int slot ) {
	if ( !enabled ) {
		return true;
	}
	cLog::Instance();
	assert( IsValidId( slot ) );
	if ( !IsValidId( slot ) ) {
		return false;
	}
	ReleaseSound( slot );
	cWave wave;
	std::string error;
	if ( !ReadWaveFile( path, wave, error ) ) {
		cLog::Write( error.c_str() );
		return false;
	}
	if ( !backend->CreateSound( slot, wave.format, wave.samples.data(), static_cast<uint32_t>( wave.samples.size() ) ) ) {
		cLog::Write( "Error creating DirectSound temporary buffer" );
		return false;
	}
	loaded[slot] = true;
	return true;
}

// Asking for the music already playing leaves it undisturbed; it does not start again.
bool cSoundLayer::PlayMusic( int id ) {
	if ( !enabled ) {
		return true;
	}
	cLog::Instance();
	if ( currentMusic == id ) {
		return true;
	}
	if ( currentMusic != -1 ) {
		Stop( currentMusic );
	}
	if ( !PlayBuffer( id, true, Soften( VOLUME_MUSIC, musicLevel ) ) ) {
		cLog::Write( "Error playing music" );
		return false;
	}
	currentMusic = id;
	return true;
}

bool cSoundLayer::PlaySound( int id, bool loop ) {
	if ( !enabled ) {
		return true;
	}
	cLog::Instance();
	if ( !PlayBuffer( id, loop, Soften( id == SOUND_HEARTBEAT ? VOLUME_FULL : VOLUME_EFFECT, effectsLevel ) ) ) {
		cLog::Write( "Error playing sound" );
		return false;
	}
	return true;
}

// From the beginning, even when the sound is still playing: one id never sounds twice at once.
// A sound that never loaded plays as silence; the game asked for it, nothing is wrong with the game.
bool cSoundLayer::PlayBuffer( int id, bool loop, int32_t volume ) {
	if ( !enabled ) {
		return true;
	}
	cLog::Instance();
	assert( IsValidId( id ) );
	if ( !IsLoaded( id ) ) {
		return true;
	}
	if ( !backend->Play( id, loop, volume ) ) {
		cLog::Write( "Error playing DirectSound secondary buffer" );
		return false;
	}
	return true;
}

// The current music stays current when it is stopped.
bool cSoundLayer::Stop( int id ) {
	if ( !enabled ) {
		return true;
	}
	cLog::Instance();
	assert( IsValidId( id ) );
	if ( !IsLoaded( id ) ) {
		return true;
	}
	if ( !backend->Stop( id ) ) {
		cLog::Write( "Error stopping DirectSound secondary buffer" );
		return false;
	}
	return true;
}

// Each level's step is the same loudness ratio (20 log10 of level / LOUDEST, in hundredths of a
// decibel); level 0 is as silent as a volume goes.
int32_t cSoundLayer::Soften( int32_t volume, int level ) {
	static const int32_t STEPS[LOUDEST + 1] = { -10000, -2000, -1398, -1046, -796, -602, -444, -310, -194, -92, 0 };
	const int clamped = level < 0 ? 0 : ( level > LOUDEST ? LOUDEST : level );
	return clamped == 0 ? STEPS[0] : volume + STEPS[clamped];
}

void cSoundLayer::SetLevels( int music, int effects ) {
	musicLevel = music;
	effectsLevel = effects;
	if ( !enabled ) {
		return;
	}
	if ( IsValidId( currentMusic ) && IsLoaded( currentMusic ) ) {
		backend->SetVolume( currentMusic, Soften( VOLUME_MUSIC, musicLevel ) );
	}
	if ( heartbeatPlaying && IsLoaded( SOUND_HEARTBEAT ) ) {
		backend->SetVolume( SOUND_HEARTBEAT, Soften( VOLUME_FULL, effectsLevel ) );
	}
}

void cSoundLayer::StopAll() {
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		Stop( id );
	}
	currentMusic = -1;
	heartbeatPlaying = false;
}

// Gives back whatever was made, also after a failed Init or a failed load.
void cSoundLayer::Release() {
	if ( backend != nullptr ) {
		for ( int id = 0; id < SOUND_COUNT; id++ ) {
			ReleaseSound( id );
		}
		backend->Close();
		backend = nullptr;
	}
	enabled = false;
}

void cSoundLayer::ReleaseSound( int id ) {
	if ( loaded[id] ) {
		backend->ReleaseSound( id );
		loaded[id] = false;
	}
}
