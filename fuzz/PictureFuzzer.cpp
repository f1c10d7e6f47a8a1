// libFuzzer target: every input is a picture, loaded with and without the cursor's colour key.

#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzTarget.h"
#include "fuzz/InputChecks.h"

extern "C" int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size ) {
	AbortOnBrokenRule( "picture loader", CheckPicture( data, size ) );
	return 0;
}
