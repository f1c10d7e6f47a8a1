// SPDX-License-Identifier: GPL-3.0-or-later
// The input delay follows the line as its rules say, slot by slot on a made-up round trip and
// made-up waits.

#include <gtest/gtest.h>

#include "app/Game.h"
#include "net/DelayControl.h"
#include "net/Packet.h"

namespace {

TEST( DelayTests, TheDelayFollowsTheLine ) {
	struct cCase {
		const char *		name;
		uint32_t			delay;
		int64_t				roundTrip;		// msec
		int					waitEvery;		// slots, 0: never; the first wait comes at waitEvery - 1
		int					waitUntil;		// slot
		std::vector<std::pair<int, uint32_t>> checks;	// the delay at a slot
	};
	const int calm = static_cast<int>( cDelayControl::CALM_TIME / cGame::FRAME_TIME );
	const int fall = static_cast<int>( cDelayControl::FALL_TIME / cGame::FRAME_TIME ) + 1;
	const cCase cases[] = {
		{ "waits on a slow line rise at once to what it asks", 4, 240, 10, 40, { { 18, 4 }, { 19, 18 }, { 1500, 18 } } },
		{ "waits on a fast line add a step each time", 4, 30, 10, 200, { { 18, 4 }, { 19, 5 }, { 198, 13 }, { 199, 14 } } },
		{ "one wait alone changes nothing", 6, 60, 50, 51, { { 400, 6 } } },
		{ "a calm line falls a step at a time, down to its round trip's", 20, 30, 0, 0,
		  { { calm - 2, 20 }, { calm + 1, 19 }, { calm + 1 + fall, 18 }, { 2000, 4 } } },
	};
	for ( const cCase &test : cases ) {
		cDelayControl control( test.delay, cPacket::MAX_DELAY );
		const int late = static_cast<int>( test.roundTrip / cGame::FRAME_TIME );
		for ( int slot = 0, next = 0; next < static_cast<int>( test.checks.size() ); slot++ ) {
			const int64_t now = slot * static_cast<int64_t>( cGame::FRAME_TIME );
			const uint64_t step = static_cast<uint64_t>( slot ) + test.delay;
			control.Sent( step, now );
			control.Acknowledged( slot >= late ? step - static_cast<uint64_t>( late ) + 1 : 0, now );
			control.Slot( test.waitEvery > 0 && slot < test.waitUntil && slot % test.waitEvery == test.waitEvery - 1, now );
			if ( control.Choose( now ) != control.GetDelay() ) {
				control.Switched( control.Choose( now ), now );
			}
			if ( slot == test.checks[next].first ) {
				EXPECT_EQ( control.GetDelay(), test.checks[next++].second ) << test.name << ", at slot " << slot;
			}
		}
	}
}

}
