// SPDX-License-Identifier: GPL-3.0-or-later
#include "sound/sdl/SdlSoundBackend.h"

#include <SDL.h>

#include <cmath>
#include <cstring>

namespace {

const int OUTPUT_RATE = 44100;			// in Hz
const Uint16 OUTPUT_FORMAT = AUDIO_S16SYS;
const int OUTPUT_CHANNELS = 2;
const int MIXER_BUFFER = 1024;			// in sample frames

bool IsValidId( int id ) {
	return id >= 0 && id < SOUND_COUNT;
}

}

cSdlSoundBackend::~cSdlSoundBackend() {
	Close();
}

bool cSdlSoundBackend::Fail( const char *call ) {
	errorText = std::string( call ) + ": " + SDL_GetError();
	return false;
}

bool cSdlSoundBackend::Open() {
	if ( SDL_InitSubSystem( SDL_INIT_AUDIO ) != 0 ) {
		return Fail( "SDL_InitSubSystem(SDL_INIT_AUDIO)" );
	}
	audioStarted = true;
	// No format changes allowed: SDL converts to the card's own format if it differs, so every
	// sound converted at load time stays right.
	if ( Mix_OpenAudioDevice( OUTPUT_RATE, OUTPUT_FORMAT, OUTPUT_CHANNELS, MIXER_BUFFER, nullptr, 0 ) != 0 ) {
		return Fail( "Mix_OpenAudioDevice()" );
	}
	mixerOpen = true;
	if ( Mix_AllocateChannels( SOUND_COUNT ) != SOUND_COUNT ) {
		return Fail( "Mix_AllocateChannels()" );
	}
	return true;
}

void cSdlSoundBackend::Close() {
	for ( int id = 0; id < SOUND_COUNT; id++ ) {
		ReleaseSound( id );
	}
	if ( mixerOpen ) {
		Mix_CloseAudio();
		mixerOpen = false;
	}
	if ( audioStarted ) {
		SDL_QuitSubSystem( SDL_INIT_AUDIO );
		audioStarted = false;
	}
}

// Converted once to the output's format, so that playing allocates nothing.
bool cSdlSoundBackend::CreateSound( int id, const cWaveFormat &format, const uint8_t *samples, uint32_t size ) {
	if ( !mixerOpen || !IsValidId( id ) || samples == nullptr || size == 0 ) {
		errorText = "CreateSound(): no output open, no such sound id or no samples";
		return false;
	}
	ReleaseSound( id );
	SDL_AudioCVT convert;
	const SDL_AudioFormat sourceFormat = format.bitsPerSample == 8 ? AUDIO_U8 : AUDIO_S16LSB;
	if ( SDL_BuildAudioCVT( &convert, sourceFormat, static_cast<Uint8>( format.channels ),
							static_cast<int>( format.samplesPerSecond ), OUTPUT_FORMAT, OUTPUT_CHANNELS, OUTPUT_RATE ) < 0 ) {
		return Fail( "SDL_BuildAudioCVT()" );
	}
	cSound &sound = sounds[id];
	sound.samples.assign( static_cast<size_t>( size ) * convert.len_mult, 0 );
	if ( size > 0 ) {
		std::memcpy( sound.samples.data(), samples, size );
	}
	convert.buf = sound.samples.data();
	convert.len = static_cast<int>( size );
	if ( convert.needed && SDL_ConvertAudio( &convert ) != 0 ) {
		return Fail( "SDL_ConvertAudio()" );
	}
	const Uint32 converted = convert.needed ? static_cast<Uint32>( convert.len_cvt ) : size;
	sound.samples.resize( converted );
	sound.chunk = Mix_QuickLoad_RAW( sound.samples.data(), converted );
	if ( sound.chunk == nullptr ) {
		return Fail( "Mix_QuickLoad_RAW()" );
	}
	return true;
}

void cSdlSoundBackend::ReleaseSound( int id ) {
	if ( !IsValidId( id ) || sounds[id].chunk == nullptr ) {
		return;
	}
	Mix_HaltChannel( id );
	Mix_FreeChunk( sounds[id].chunk );
	sounds[id].chunk = nullptr;
	sounds[id].samples.clear();
}

int cSdlSoundBackend::ToMixerVolume( int32_t volume ) {
	const double gain = std::pow( 10.0, volume / 2000.0 );	// hundredths of a decibel
	const int mixerVolume = static_cast<int>( std::lround( gain * MIX_MAX_VOLUME ) );
	return mixerVolume < 0 ? 0 : ( mixerVolume > MIX_MAX_VOLUME ? MIX_MAX_VOLUME : mixerVolume );
}

bool cSdlSoundBackend::Play( int id, bool loop, int32_t volume ) {
	if ( !IsValidId( id ) || sounds[id].chunk == nullptr ) {
		return true;
	}
	Mix_HaltChannel( id );
	Mix_Volume( id, ToMixerVolume( volume ) );
	if ( Mix_PlayChannel( id, sounds[id].chunk, loop ? -1 : 0 ) == -1 ) {
		return Fail( "Mix_PlayChannel()" );
	}
	return true;
}

bool cSdlSoundBackend::Stop( int id ) {
	if ( IsValidId( id ) && sounds[id].chunk != nullptr ) {
		Mix_HaltChannel( id );
	}
	return true;
}

void cSdlSoundBackend::SetVolume( int id, int32_t volume ) {
	if ( IsValidId( id ) && sounds[id].chunk != nullptr ) {
		Mix_Volume( id, ToMixerVolume( volume ) );
	}
}

uint32_t cSdlSoundBackend::GetSampleBytes( int id ) const {
	return IsValidId( id ) && sounds[id].chunk != nullptr ? sounds[id].chunk->alen : 0;
}
