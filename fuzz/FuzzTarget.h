#pragma once
// What every fuzz target does with a broken rule: say which, then abort, so that libFuzzer keeps
// the input as a finding.

#include <cstdio>
#include <cstdlib>
#include <string>

inline void AbortOnBrokenRule( const char *reader, const std::string &broken ) {
	if ( broken.empty() ) {
		return;
	}
	std::fprintf( stderr, "kmvt fuzz: %s: %s\n", reader, broken.c_str() );
	std::abort();
}
