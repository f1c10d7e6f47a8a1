// SPDX-License-Identifier: GPL-3.0-or-later
// kmvt_autoplay: plays the game headless with bots at the keys and prints one line per game.
//   kmvt_autoplay [--players=1|2] [--character=tavesh|lumra] [--difficulty=1|2|3] [--frames=N]
//                 [--games=N] [--vary] [--calendar=SECONDS] [--live-calendar] [--tap=FRAMES]
//                 [--memory-every=N] [--trace=N] [--resources=FOLDER] [--pads] [--record=FOLDER]
//                 [--open-doors] [--reckless]
// --vary plays game n with the n-th of the twelve choices of players, player 1's character and
// difficulty, and with its own calendar second (the drops and the boss's walks differ). The
// calendar second stays as it was at the start of a game unless --live-calendar moves it on with
// the game's clock, as a real run would. --trace=N prints the players and the enemies in view
// every N frames. --pads plays the menus and the game on scripted pads, one for each player. The
// game reads resources/ from the working directory, or from FOLDER.
// --record=FOLDER plays each game in a program of its own, from its start at the main menu, and
// writes its recording there, named after the game: 1p-tavesh-d2-victory.kmr, 2p-lumra-tavesh-...
// --open-doors has lumra open the doors in view, as every bot opens the boxes; --reckless bots do
// not dodge the enemies' shots.
// Online (see harness/OnlineAutoplay.h): --host[=PORT] waits for a partner and plays one
// two-player game as player 1, --join=HOST[:PORT] plays player 2; --delay=STEPS, --wait=SECONDS
// (the host's wait for a partner), --online-record=FILE writes the online game's recording, and
// --version-as=TEXT names another version in the handshake, to see the refusal. --map-port has the
// host ask the home router to open its port, as the game's --host does, with the game's lines.
// The exit status is 0 when every game ran through the menus and ended without a broken frame.

#include <malloc.h>
#include <unistd.h>
#if defined( __SANITIZE_ADDRESS__ )
// The sanitizer runtime's count of the bytes allocated and not yet freed.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#endif

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>

#include "harness/AutoplayGame.h"
#include "harness/RecordedGame.h"
#include "actors/Player.h"
#include "ai/Enemy.h"
#include "actors/GameState.h"
#include "world/Scene.h"
#include "harness/HeadlessGame.h"
#include "Version.h"
#if KMVT_ONLINE
#include "harness/OnlineAutoplay.h"
#include "log/Log.h"
#include "net/Link.h"
#include "net/PortMapper.h"
#include "net/PortMappingThread.h"
#endif

namespace {

const int CHOICES = 12;		// players (2) x player 1's character (2) x difficulty (3)

struct cRunOptions {
	cGameSetup			setup;
	int					games = 1;
	bool				vary = false;
	int					memoryEvery = 0;
	std::string			resources;
	std::string			recordFolder;
	int					traceEvery = 0;
#if KMVT_ONLINE
	bool				online = false;
	bool				mapPort = false;
	cOnlineOptions		onlineOptions;
#endif
};

// Every so many frames: where the players stand, their health, and the enemies in view.
void Trace( const cGame &game, int frame, int every ) {
	if ( every <= 0 || frame % every != 0 ) {
		return;
	}
	const cScene &scene = *game.GetScene();
	std::printf( "  frame %d camera %d,%d", frame, scene.GetCameraX(), scene.GetCameraY() );
	for ( const std::unique_ptr<cCharacter> &character : *game.GetPlayers() ) {
		int32_t x = 0, y = 0;
		character->GetPosition( x, y );
		const cPlayer &player = static_cast<const cPlayer &>( *character );
		std::printf( "  player %d,%d health %d%s", x, y, player.GetHealth(), player.IsDead() ? " down" : "" );
	}
	for ( const std::unique_ptr<cCharacter> &character : *game.GetEnemies() ) {
		int32_t x = 0, y = 0;
		character->GetPosition( x, y );
		if ( character->IsInView( scene.GetCameraX(), scene.GetCameraY() ) ) {
			std::printf( "  [%d %d,%d s%d h%d]", character->GetKind(), x, y,
						 static_cast<const cEnemy &>( *character ).GetAiState(), character->GetHealth() );
		}
	}
	std::printf( "  enemies %zu\n", game.GetEnemies()->size() );
}

bool ReadValue( const char *argument, const char *name, std::string &value ) {
	const size_t length = std::strlen( name );
	if ( std::strncmp( argument, name, length ) != 0 ) {
		return false;
	}
	value = argument + length;
	return true;
}

#if KMVT_ONLINE
bool ParseOnlineOption( const char *argument, cRunOptions &options ) {
	cOnlineOptions &online = options.onlineOptions;
	std::string value;
	if ( std::strcmp( argument, "--host" ) == 0 || ReadValue( argument, "--host=", value ) ) {
		options.online = true;
		online.host = true;
		online.port = value.empty() ? cLink::DEFAULT_PORT : static_cast<uint16_t>( std::atoi( value.c_str() ) );
	} else if ( ReadValue( argument, "--join=", value ) ) {
		const size_t colon = value.rfind( ':' );
		options.online = true;
		online.host = false;
		online.partner = value.substr( 0, colon );
		online.port = colon == std::string::npos ? cLink::DEFAULT_PORT : static_cast<uint16_t>( std::atoi( value.c_str() + colon + 1 ) );
	} else if ( ReadValue( argument, "--delay=", value ) ) {
		online.delay = static_cast<uint32_t>( std::atoi( value.c_str() ) );
	} else if ( ReadValue( argument, "--wait=", value ) ) {
		online.waitSeconds = std::atoi( value.c_str() );
	} else if ( ReadValue( argument, "--online-record=", value ) ) {
		online.recordPath = value;
	} else if ( ReadValue( argument, "--version-as=", value ) ) {
		online.version = value;
	} else if ( std::strcmp( argument, "--map-port" ) == 0 ) {
		options.mapPort = true;
	} else {
		return false;
	}
	return true;
}
#else
bool ParseOnlineOption( const char *, cRunOptions & ) {
	return false;
}
#endif

bool ParseOption( const char *argument, cRunOptions &options ) {
	std::string value;
	if ( ReadValue( argument, "--players=", value ) ) {
		options.setup.players = std::atoi( value.c_str() ) == 2 ? 2 : 1;
	} else if ( ReadValue( argument, "--character=", value ) ) {
		options.setup.character = value == "lumra" ? 1 : 0;
	} else if ( ReadValue( argument, "--difficulty=", value ) ) {
		options.setup.difficulty = std::atoi( value.c_str() );
	} else if ( ReadValue( argument, "--frames=", value ) ) {
		options.setup.frameLimit = std::atoi( value.c_str() );
	} else if ( ReadValue( argument, "--games=", value ) ) {
		options.games = std::atoi( value.c_str() );
	} else if ( ReadValue( argument, "--calendar=", value ) ) {
		options.setup.calendar = static_cast<std::time_t>( std::atoll( value.c_str() ) );
	} else if ( ReadValue( argument, "--tap=", value ) ) {
		options.setup.bot.tapFrames = std::atoi( value.c_str() );
	} else if ( ReadValue( argument, "--memory-every=", value ) ) {
		options.memoryEvery = std::atoi( value.c_str() );
	} else if ( ReadValue( argument, "--resources=", value ) ) {
		options.resources = value;
	} else if ( ReadValue( argument, "--record=", value ) ) {
		options.recordFolder = value;
	} else if ( ReadValue( argument, "--trace=", value ) ) {
		options.traceEvery = std::atoi( value.c_str() );
	} else if ( std::strcmp( argument, "--reckless" ) == 0 ) {
		options.setup.bot.reckless = true;
	} else if ( std::strcmp( argument, "--open-doors" ) == 0 ) {
		options.setup.bot.openDoors = true;
	} else if ( std::strcmp( argument, "--live-calendar" ) == 0 ) {
		options.setup.liveCalendar = true;
	} else if ( std::strcmp( argument, "--pads" ) == 0 ) {
		options.setup.pads = true;
	} else if ( std::strcmp( argument, "--vary" ) == 0 ) {
		options.vary = true;
	} else if ( ParseOnlineOption( argument, options ) ) {
		return true;
	} else {
		return false;
	}
	return true;
}

bool IsValid( const cRunOptions &options ) {
	const cGameSetup &setup = options.setup;
	return setup.difficulty >= 1 && setup.difficulty <= 3 && setup.frameLimit > 0 && options.games > 0
		&& setup.bot.tapFrames >= 2 && options.memoryEvery >= 0;
}

// Game n of a varied run: every choice in turn, each with a calendar second of its own.
cGameSetup VarySetup( const cGameSetup &base, int game ) {
	cGameSetup setup = base;
	const int choice = game % CHOICES;
	setup.difficulty = 1 + choice % 3;
	setup.character = ( choice / 3 ) % 2;
	setup.players = 1 + choice / 6;
	setup.calendar = base.calendar + game;
	return setup;
}

// The resident memory of this process, in kB, from /proc; -1 when it cannot be read.
long ReadResidentMemory() {
	std::ifstream status( "/proc/self/status" );
	std::string line;
	while ( std::getline( status, line ) ) {
		if ( line.compare( 0, 6, "VmRSS:" ) == 0 ) {
			return std::atol( line.c_str() + 6 );
		}
	}
	return -1;
}

// The bytes held on the heap now, in kB: the sanitizer's own count in a sanitizer build, whose
// allocator the C library's figures do not see; the C library's otherwise. Unlike the resident
// memory it does not move with freed memory waiting in the sanitizer's quarantine.
long ReadHeapInUse() {
#if defined( __SANITIZE_ADDRESS__ )
	return static_cast<long>( __sanitizer_get_current_allocated_bytes() / 1024 );
#else
	return static_cast<long>( mallinfo2().uordblks / 1024 );
#endif
}

}

int main( int argc, char **argv ) {
	cRunOptions options;
	for ( int i = 1; i < argc; i++ ) {
		if ( !ParseOption( argv[i], options ) ) {
			std::fprintf( stderr, "kmvt_autoplay: unknown option %s\n", argv[i] );
			return 2;
		}
	}
	if ( !IsValid( options ) ) {
		std::fprintf( stderr, "kmvt_autoplay: difficulty 1 to 3, frames and games above 0, tap 2 or more\n" );
		return 2;
	}
	if ( !options.resources.empty() && chdir( options.resources.c_str() ) != 0 ) {
		std::fprintf( stderr, "kmvt_autoplay: cannot enter %s\n", options.resources.c_str() );
		return 2;
	}
#if KMVT_ONLINE
	if ( options.online ) {
		options.onlineOptions.setup = options.setup;
		if ( options.onlineOptions.version.empty() ) {
			options.onlineOptions.version = KMVT_VERSION;
		}
		std::unique_ptr<cPortMappingThread> mapping;
		if ( options.mapPort && options.onlineOptions.host ) {
			mapping = std::make_unique<cPortMappingThread>( cPortMapper::OpenOnNetwork(), options.onlineOptions.port,
															[]( const std::string &line ) {
																cLog::Write( line.c_str() );
																std::fprintf( stderr, "%s\n", line.c_str() );
															} );
		}
		return PlayOnline( options.onlineOptions );
	}
#endif
	std::unique_ptr<cRecordedGame> shared;
	if ( options.recordFolder.empty() ) {
		shared = std::make_unique<cRecordedGame>( "" );
		if ( !shared->Start() ) {
			return 1;
		}
	}
	const int traceEvery = options.traceEvery;
	bool clean = true;
	for ( int game = 1; game <= options.games; game++ ) {
		const cGameSetup setup = options.vary ? VarySetup( options.setup, game - 1 ) : options.setup;
		std::unique_ptr<cRecordedGame> own;
		if ( !shared ) {
			own = std::make_unique<cRecordedGame>( options.recordFolder );
			if ( !own->Start() ) {
				return 1;
			}
		}
		cRecordedGame &run = shared ? *shared : *own;
		cAutoplayGame autoplay( run.GetHeadless() );
		autoplay.SetWatcher( [traceEvery]( const cGame &game, int frame ) { Trace( game, frame, traceEvery ); } );
		cGameResult result;
		const bool played = autoplay.Play( setup, result ) && run.Save( setup, result );
		std::printf( "game %3d: %s\n", game, DescribeResult( setup, result ).c_str() );
		if ( options.memoryEvery > 0 && ( game % options.memoryEvery == 0 || game == 1 ) ) {
			std::printf( "memory after game %d: VmRSS %ld kB heap %ld kB\n", game, ReadResidentMemory(), ReadHeapInUse() );
		}
		std::fflush( stdout );
		if ( !played || result.outcome == OUTCOME_BROKEN ) {
			std::fprintf( stderr, "kmvt_autoplay: game %d did not run through (state %d)\n", game, run.GetHeadless().GetGame().GetGameState() );
			clean = false;
			break;
		}
	}
	return clean ? 0 : 1;
}
