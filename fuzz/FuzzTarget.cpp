// SPDX-License-Identifier: GPL-3.0-or-later
// libFuzzer target for one of the game's file readers: every input goes through the reader's check,
// named by KMVT_FUZZ_CHECK. A broken rule is said, then aborts, so that libFuzzer keeps the input
// as a finding.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "fuzz/InputChecks.h"

extern "C" int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size ) {
	const std::string broken = KMVT_FUZZ_CHECK( data, size );
	if ( !broken.empty() ) {
		std::fprintf( stderr, "kmvt fuzz: %s: %s\n", KMVT_FUZZ_READER, broken.c_str() );
		std::abort();
	}
	return 0;
}
