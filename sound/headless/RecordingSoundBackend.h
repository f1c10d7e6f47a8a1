// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Sound for tests and headless tools: nothing is heard; every play and stop is recorded in order
// with its id, loop flag and volume, so that a test can check what the game asked for.

#include <string>
#include <vector>

#include "sound/SoundBackend.h"
#include "sound/SoundIds.h"

class cRecordingSoundBackend : public cSoundBackend {
public:
	struct cEvent {
		bool		play;			// false: a stop
		int			id;
		bool		loop;
		int32_t		volume;			// in hundredths of a decibel
	};

	// A device that cannot be opened, a sound the platform refuses, plays and stops that fail.
	void			SetFailOpen( bool fail ) { failOpen = fail; }
	void			SetFailCreate( bool fail ) { failCreate = fail; }
	void			SetFailPlay( bool fail ) { failPlay = fail; }
	void			SetFailStop( bool fail ) { failStop = fail; }

	bool			Open() override;
	void			Close() override { open = false; }
	bool			CreateSound( int id, const cWaveFormat &format, const uint8_t *samples, uint32_t size ) override;
	void			ReleaseSound( int id ) override;
	bool			Play( int id, bool loop, int32_t volume ) override;
	bool			Stop( int id ) override;
	void			SetVolume( int id, int32_t volume ) override { volumes.push_back( cEvent{ true, id, false, volume } ); }
	const char *	GetErrorText() const override { return "the test made the device fail"; }

	const std::vector<cEvent> &GetEvents() const { return events; }
	// The volumes of sounds already playing changed, in order (play and loop mean nothing there).
	const std::vector<cEvent> &GetVolumeChanges() const { return volumes; }
	std::vector<int> GetPlayed() const;		// ids started, in order
	std::vector<int> GetStopped() const;	// ids stopped, in order
	void			Clear() { events.clear(); }
	bool			IsOpen() const { return open; }
	int				GetSoundCount() const;	// sounds created and not yet released
	const cWaveFormat &GetFormat( int id ) const { return formats[id]; }
	uint32_t		GetSampleBytes( int id ) const { return sizes[id]; }	// as handed over at load

private:
	std::vector<cEvent>	events;
	std::vector<cEvent>	volumes;
	cWaveFormat			formats[SOUND_COUNT];
	uint32_t			sizes[SOUND_COUNT] = {};
	bool				created[SOUND_COUNT] = {};
	bool				open = false;
	bool				failOpen = false;
	bool				failCreate = false;
	bool				failPlay = false;
	bool				failStop = false;
};
