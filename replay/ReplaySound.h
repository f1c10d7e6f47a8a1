// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cReplaySound stands between the sound layer and the platform's sound (or none) during a replay:
// the device opens, or not, as it did in the recorded run, since the game's state remembers which;
// when the real device cannot follow, the replay plays silent and the game sees no difference.
// An online game that plays steps again after a correction keeps it quiet meanwhile, so that no
// sound starts or stops twice.

#include "sound/SoundBackend.h"

class cReplaySound : public cSoundBackend {
public:
					cReplaySound( cSoundBackend *platform, bool recordedOpen ) : platform( platform ), recordedOpen( recordedOpen ) {}

	bool			Open() override;
	void			Close() override;
	bool			CreateSound( int id, const cWaveFormat &format, const uint8_t *samples, uint32_t size ) override;
	void			ReleaseSound( int id ) override;
	bool			Play( int id, bool loop, int32_t volume ) override;
	bool			Stop( int id ) override;
	void			SetVolume( int id, int32_t volume ) override;
	const char *	GetErrorText() const override { return "the recorded run had no sound device"; }
	// While quiet, sounds are neither started nor stopped.
	void			SetQuiet( bool quiet ) { this->quiet = quiet; }

private:
	cSoundBackend *	platform;		// not owned; may be null
	bool			recordedOpen;
	bool			platformOpen = false;
	bool			quiet = false;
};
