// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cBenchOptions reads the command line the benchmarks that play autoplay games share,
// "--resources=FOLDER --NAME=N", and enters FOLDER, which holds resources/ (by default the working
// directory). A wrong option prints the usage line and makes the program end with status 2.

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

class cBenchOptions {
public:
	// name is the count's option without its dashes ("steps"); count is the smallest allowed.
	cBenchOptions( const char *program, const char *name, int count, int smallest )
		: program( program ), name( name ), count( count ), smallest( smallest ) {}

	// False, after saying why on standard error, when the program is to end with status 2.
	bool Read( int argc, char **argv ) {
		const std::string countOption = std::string( "--" ) + name + "=";
		for ( int i = 1; i < argc; i++ ) {
			if ( std::strncmp( argv[i], RESOURCES, std::strlen( RESOURCES ) ) == 0 ) {
				resources = argv[i] + std::strlen( RESOURCES );
			} else if ( countOption.compare( 0, countOption.size(), argv[i], countOption.size() ) == 0 ) {
				count = std::atoi( argv[i] + countOption.size() );
			} else {
				return Usage();
			}
		}
		if ( count < smallest ) {
			return Usage();
		}
		if ( !resources.empty() && chdir( resources.c_str() ) != 0 ) {
			std::fprintf( stderr, "%s: cannot enter %s\n", program, resources.c_str() );
			return false;
		}
		return true;
	}
	int GetCount() const { return count; }

private:
	static constexpr const char *RESOURCES = "--resources=";

	bool Usage() const {
		std::fprintf( stderr, "usage: %s [--resources=FOLDER] [--%s=N]\n", program, name );
		return false;
	}

	const char *	program;
	const char *	name;
	int				count;
	int				smallest;
	std::string		resources;
};
