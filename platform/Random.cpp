#include "platform/Random.h"

#include <random>

namespace {

std::minstd_rand engine;

}

void cRandom::Seed( std::time_t second ) {
	engine.seed( static_cast<uint32_t>( second ) );
}

int32_t cRandom::Next() {
	return static_cast<int32_t>( engine() );
}
