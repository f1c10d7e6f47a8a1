// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Random.h"

cRandom::cRandom( std::time_t second ) : engine( static_cast<uint32_t>( second ) ) {
}

int32_t cRandom::Next() {
	return static_cast<int32_t>( engine() );
}
