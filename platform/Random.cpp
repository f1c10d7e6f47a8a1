// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Random.h"

namespace {

std::minstd_rand engine;

}

void cRandom::Seed( std::time_t second ) {
	engine.seed( static_cast<uint32_t>( second ) );
}

int32_t cRandom::Next() {
	return static_cast<int32_t>( engine() );
}

std::minstd_rand cRandom::GetEngine() {
	return engine;
}

void cRandom::SetEngine( const std::minstd_rand &saved ) {
	engine = saved;
}
