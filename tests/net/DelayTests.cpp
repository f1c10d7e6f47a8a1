// SPDX-License-Identifier: GPL-3.0-or-later
// The input delay during the game: the lockstep keeps every step's inputs whole and alike on both
// machines when the delay changes, and the delay follows the line as its rules say, slot by slot on
// a made-up round trip and made-up waits.

#include <gtest/gtest.h>

#include <array>

#include "MemoryLink.h"
#include "net/DelayControl.h"
#include "net/Lockstep.h"
#include "net/Packet.h"
#include "app/Game.h"

namespace {

cStepInput Sampled( int side, uint64_t step ) {
	cStepInput input;
	input.SetKey( static_cast<int>( 2 + ( step * 5 + side ) % 200 ), true );
	input.mouse.hasPosition = true;
	input.mouse.x = static_cast<int32_t>( step );
	input.mouse.dx = side;
	return input;
}

TEST( DelayTests, ADelayThatChangesKeepsEveryStepsInputsAlikeOnBothMachines ) {
	struct cCase {
		const char *		name;
		std::vector<std::array<int, 3>> changes;	// side, step, delay
		int					held;		// steps of each side whose own input repeats the one before
	};
	const cCase cases[] = {
		{ "both rise at one step", { { 0, 100, 7 }, { 1, 100, 7 } }, 4 },
		{ "both fall at one step", { { 0, 100, 1 }, { 1, 100, 1 } }, 0 },
		{ "one side switches late", { { 0, 100, 9 }, { 1, 130, 9 }, { 0, 250, 2 }, { 1, 251, 2 } }, 6 },
	};
	for ( const cCase &test : cases ) {
		cMemoryWire wire( []( int, int n ) { return cFate { n % 5 == 0 ? 0 : 2, false }; } );
		cMemoryWire::cEnd links[2] = { { wire, 0 }, { wire, 1 } };
		cLockstep locksteps[2] = { cLockstep( 3 ), cLockstep( 3 ) };
		std::vector<cStepInput> seen[2][2];		// by side: own inputs, partner's inputs
		for ( int slot = 0; slot < 500; slot++, wire.Tick() ) {
			for ( int side = 0; side < 2; side++ ) {
				cLockstep &lockstep = locksteps[side];
				for ( cLink::cEvent event = links[side].Poll(); event.kind != cLink::NOTHING; event = links[side].Poll() ) {
					cNetMessage message;
					std::string why;
					ASSERT_TRUE( cPacket::Read( event.data.data(), event.data.size(), { 0, 100000 }, message, why ) ) << why;
					ASSERT_TRUE( lockstep.TakeInputs( message.inputs ) ) << test.name;
				}
				for ( const std::array<int, 3> &change : test.changes ) {
					if ( change[0] == side && static_cast<uint64_t>( change[1] ) == lockstep.GetStep() ) {
						lockstep.SetDelay( static_cast<uint32_t>( change[2] ) );
					}
				}
				if ( lockstep.CanStep() ) {
					seen[side][0].emplace_back();
					seen[side][1].emplace_back();
					lockstep.Step( Sampled( side, lockstep.GetStep() + lockstep.GetDelay() ), seen[side][0].back(), seen[side][1].back() );
				}
				links[side].Send( cLink::UNRELIABLE, cPacket::Write( lockstep.MakeInputs() ) );
			}
		}
		const size_t steps = std::min( seen[0][0].size(), seen[1][0].size() );
		ASSERT_GT( steps, 200u ) << test.name << ": the game hardly ran";
		for ( int side = 0; side < 2; side++ ) {
			int held = 0;
			for ( size_t step = 3; step < steps; step++ ) {
				const cStepInput &own = seen[side][0][step];
				ASSERT_TRUE( own == seen[1 - side][1][step] ) << test.name << ": the machines disagree on step " << step;
				held += own == Sampled( side, step ) ? 0 : 1;
				EXPECT_TRUE( own == Sampled( side, step ) || ( own.mouse.dx == 0 && own.mouse.x == seen[side][0][step - 1].mouse.x ) )
					<< test.name << ": step " << step << " holds neither its own input nor the one before";
			}
			EXPECT_EQ( held, test.held ) << test.name << ": side " << side;
		}
	}
}

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
