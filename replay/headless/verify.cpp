// kmvt_verify: checks recordings as `kormaveth2d --replay FILE --verify` does, without SDL, a
// window or sound, so that it builds for any processor and runs where the game cannot.
//   kmvt_verify FILE...      plays each recording, prints its outcome and its final state hash;
//                            exit status 0 when every one matched, 1 otherwise
//   kmvt_verify --version    the game's version and fingerprint
// The data is found as the game finds it: KMVT_DATA, the working folder, beside the executable.

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>

#include "Version.h"
#include "platform/DataPaths.h"
#include "replay/Fingerprint.h"
#include "replay/headless/ReplayCheck.h"

namespace {

const int EXIT_USAGE = 2;

// The running executable's folder: Linux names it in /proc; elsewhere the path it was started by.
std::string FindExecutableFolder( const char *startedAs ) {
	std::error_code error;
	std::filesystem::path executable = std::filesystem::read_symlink( "/proc/self/exe", error );
	if ( error ) {
		executable = std::filesystem::absolute( startedAs, error );
	}
	return error ? std::string() : executable.parent_path().string();
}

}

int main( int argc, char **argv ) {
	if ( argc < 2 || std::strncmp( argv[1], "--", 2 ) == 0 ) {
		if ( argc == 2 && std::strcmp( argv[1], "--version" ) == 0 ) {
			std::printf( "kmvt_verify %s\n%s", KMVT_VERSION, cFingerprint::GetLine().c_str() );
			return 0;
		}
		std::fputs( "usage: kmvt_verify FILE... | --version\n", stderr );
		return EXIT_USAGE;
	}
	cDataPaths dataPaths;
	dataPaths.SetUp( FindExecutableFolder( argv[0] ) );
	int status = 0;
	for ( int i = 1; i < argc; i++ ) {
		status |= cReplayCheck::Verify( argv[i], dataPaths.GetRoot() );
	}
	return status;
}
