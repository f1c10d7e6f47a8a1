// SPDX-License-Identifier: GPL-3.0-or-later
// kmvt_audio: synthesises the game's fifteen sounds into resources/audio.
// Usage: kmvt_audio <repository root>

#include "Effects.h"
#include "Music.h"
#include "WaveFile.h"

#include <cstdio>
#include <string>

int main( int argc, char **argv ) {
	if ( argc != 2 ) {
		std::fprintf( stderr, "usage: %s <repository root>\n", argv[0] );
		return 2;
	}
	struct sSound {
		const char *	file;
		tSamples		( *make )();
	};
	static const sSound sounds[] = {
		{ "menu.wav", MakeMenuMusic },
		{ "streets.wav", MakeStreetsMusic },
		{ "boss.wav", MakeBossMusic },
		{ "explosion.wav", MakeExplosion },
		{ "tavesh_shot.wav", MakeTaveshShot },
		{ "lumra_shot.wav", MakeLumraShot },
		{ "enemy_shot.wav", MakeEnemyShot },
		{ "machinegun.wav", MakeMachineGun },
		{ "skill.wav", MakeSkill },
		{ "item.wav", MakeItemPickup },
		{ "heartbeat.wav", MakeHeartbeat },
		{ "LvlComplete.wav", MakeLevelComplete },
		{ "GameOver.wav", MakeGameOver },
		{ "open_box.wav", MakeOpenBox },
		{ "door_open.wav", MakeDoorOpen },
	};
	const std::string folder = std::string( argv[1] ) + "/resources/audio/";
	bool ok = true;
	for ( const sSound &sound : sounds ) {
		ok &= WriteWaveFile( folder + sound.file, sound.make() );
	}
	return ok ? 0 : 1;
}
