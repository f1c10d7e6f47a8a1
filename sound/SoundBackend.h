// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// What the sound layer needs from the platform: the default output opened for 16-bit stereo PCM at
// 44,100 Hz, one playable sound per id made once from PCM samples, and play, stop and release.

#include <cstdint>

struct cWaveFormat {
	uint16_t		channels = 0;			// 1 or 2
	uint32_t		samplesPerSecond = 0;
	uint16_t		bitsPerSample = 0;		// 8 or 16
};

class cSoundBackend {
public:
	virtual			~cSoundBackend() = default;

	virtual bool	Open() = 0;
	virtual void	Close() = 0;
	// The samples are converted to the output's format here, once; the backend keeps its own copy.
	virtual bool	CreateSound( int id, const cWaveFormat &format, const uint8_t *samples, uint32_t size ) = 0;
	virtual void	ReleaseSound( int id ) = 0;
	// From the beginning, at an attenuation in hundredths of a decibel (0 full volume, -500, -1000).
	virtual bool	Play( int id, bool loop, int32_t volume ) = 0;
	virtual bool	Stop( int id ) = 0;
	// A sound that plays now goes on louder or softer; a sound not playing keeps it for nothing.
	virtual void	SetVolume( int, int32_t ) {}

	virtual const char *GetErrorText() const = 0;
};
