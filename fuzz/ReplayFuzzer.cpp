// libFuzzer target: every input is a replay file.

#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzTarget.h"
#include "fuzz/InputChecks.h"

extern "C" int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size ) {
	AbortOnBrokenRule( "replay reader", CheckReplayFile( data, size ) );
	return 0;
}
