// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cSoundLayer plays the game's music and effects: fifteen sounds loaded at start, named by id,
// one looping music at a time. A layer whose device could not be opened does nothing, silently.

#include <cstdint>
#include <string>

#include "sound/SoundIds.h"

class cSoundBackend;

class cSoundLayer {
public:
	static constexpr int32_t VOLUME_MUSIC = -1000;		// in hundredths of a decibel
	static constexpr int32_t VOLUME_EFFECT = -500;
	static constexpr int32_t VOLUME_FULL = 0;
	static const int	LOUDEST = 10;				// the player's levels run from 0, silent, to this
	static constexpr const char *SOUND_FOLDER = "./resources/audio/";

						cSoundLayer() = default;
	virtual				~cSoundLayer() = default;

	bool				Init( cSoundBackend *backend );
	// From the game's audio folder, or from another folder holding the same fifteen files.
	bool				LoadSounds( const char *folder = SOUND_FOLDER );
	// The audio folder of the resource tree under root, with its trailing slash.
	static std::string	GetSoundFolder( const std::string &root );
	bool				LoadWave( const char *path, int slot );
	bool				PlayMusic( int id );
	bool				PlaySound( int id, bool loop );
	bool				PlayBuffer( int id, bool loop, int32_t volume );
	bool				Stop( int id );
	// The player's levels of the music and of the effects, 0 to LOUDEST: LOUDEST plays the volumes
	// above, each step below is softer. The music playing and the heartbeat change at once.
	void				SetLevels( int music, int effects );
	// A volume made softer by a level.
	static int32_t		Soften( int32_t volume, int level );
	// Every sound stopped and no music current, as after Init.
	void				StopAll();
	void				Release();

	bool				IsEnabled() const { return enabled; }
	bool				IsLoaded( int id ) const { return IsValidId( id ) && loaded[id]; }
	int32_t				GetCurrentMusic() const { return currentMusic; }

	bool				heartbeatPlaying = false;	// the game's: the looping heartbeat was started

private:
	static bool			IsValidId( int id ) { return id >= 0 && id < SOUND_COUNT; }
	void				ReleaseSound( int id );

	bool				enabled = false;
	cSoundBackend *		backend = nullptr;			// not owned
	bool				loaded[SOUND_COUNT] = {};
	int32_t				currentMusic = -1;
	int					musicLevel = LOUDEST;
	int					effectsLevel = LOUDEST;
};
