// libFuzzer target: every input is a map layer file, loaded as the walk layer of a scene.

#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzTarget.h"
#include "fuzz/InputChecks.h"

extern "C" int LLVMFuzzerTestOneInput( const uint8_t *data, size_t size ) {
	AbortOnBrokenRule( "map layer", CheckMapLayer( data, size ) );
	return 0;
}
