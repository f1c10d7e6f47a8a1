// libFuzzer target: every input is a WAV file, read from memory and from a file.

#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzTarget.h"
#include "fuzz/InputChecks.h"

extern "C" int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size ) {
	AbortOnBrokenRule( "WAV reader", CheckWave( data, size ) );
	return 0;
}
