// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Sound over SDL2_mixer: the default output at 44,100 Hz, 16-bit stereo, one mixer channel per
// sound id so that a sound restarts instead of doubling, every sound converted once at load.

#include <SDL_mixer.h>

#include <memory>
#include <string>
#include <vector>

#include "sound/SoundBackend.h"
#include "sound/SoundIds.h"

class cSdlSoundBackend : public cSoundBackend {
public:
					cSdlSoundBackend() = default;
					~cSdlSoundBackend() override;

	bool			Open() override;
	void			Close() override;
	bool			CreateSound( int id, const cWaveFormat &format, const uint8_t *samples, uint32_t size ) override;
	void			ReleaseSound( int id ) override;
	bool			Play( int id, bool loop, int32_t volume ) override;
	bool			Stop( int id ) override;
	void			SetVolume( int id, int32_t volume ) override;
	const char *	GetErrorText() const override { return errorText.c_str(); }

	// Bytes of a sound in the output's format; 0 when it was not made.
	uint32_t		GetSampleBytes( int id ) const;

	// Mixer volume (0-128) of an attenuation in hundredths of a decibel.
	static int		ToMixerVolume( int32_t volume );

private:
	bool			Fail( const char *call );

	struct cSound {
		std::vector<uint8_t>	samples;	// in the output's format; the chunk points into it
		Mix_Chunk *				chunk = nullptr;
	};

	bool			audioStarted = false;
	bool			mixerOpen = false;
	cSound			sounds[SOUND_COUNT];
	std::string		errorText;
};
