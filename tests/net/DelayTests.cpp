// SPDX-License-Identifier: GPL-3.0-or-later
// The input delay during the game: the lockstep keeps every step's inputs whole and alike on both
// machines when the delay changes, and the delay follows the line as its rules say, slot by slot on
// a made-up round trip and made-up waits.

#include <gtest/gtest.h>

#include "MemoryLink.h"
#include "net/DelayControl.h"
#include "net/Lockstep.h"
#include "net/Packet.h"

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
	struct cChange {
		int				side;
		uint64_t		step;
		uint32_t		delay;
	};
	struct cCase {
		const char *		name;
		std::vector<cChange> changes;
		int					held[2];	// steps whose own input repeats the one before, per side
	};
	const cCase cases[] = {
		{ "both rise at one step", { { 0, 100, 7 }, { 1, 100, 7 } }, { 4, 4 } },
		{ "both fall at one step", { { 0, 100, 1 }, { 1, 100, 1 } }, { 0, 0 } },
		{ "one side switches late", { { 0, 100, 9 }, { 1, 130, 9 }, { 0, 250, 2 }, { 1, 251, 2 } }, { 6, 6 } },
		{ "up and down by steps", { { 0, 80, 4 }, { 1, 80, 4 }, { 0, 90, 5 }, { 1, 90, 5 }, { 0, 200, 3 }, { 1, 200, 3 } },
		  { 2, 2 } },
	};
	for ( const cCase &test : cases ) {
		cMemoryWire wire( []( int, int n ) { return cFate { n % 5 == 0 ? 0 : 2, false }; } );
		cMemoryWire::cEnd links[2] = { { wire, 0 }, { wire, 1 } };
		cLockstep locksteps[2] = { cLockstep( 3 ), cLockstep( 3 ) };
		std::vector<std::pair<cStepInput, cStepInput>> seen[2];
		for ( int slot = 0; slot < 500; slot++, wire.Tick() ) {
			for ( int side = 0; side < 2; side++ ) {
				cLockstep &lockstep = locksteps[side];
				for ( cLink::cEvent event = links[side].Poll(); event.kind != cLink::NOTHING; event = links[side].Poll() ) {
					cNetMessage message;
					std::string why;
					ASSERT_TRUE( cPacket::Read( event.data.data(), event.data.size(), { 0, 100000 }, message, why ) ) << why;
					ASSERT_TRUE( lockstep.TakeInputs( message.inputs ) ) << test.name;
				}
				for ( const cChange &change : test.changes ) {
					if ( change.side == side && change.step == lockstep.GetStep() ) {
						lockstep.SetDelay( change.delay );
					}
				}
				if ( lockstep.CanStep() ) {
					cStepInput own;
					cStepInput partner;
					lockstep.Step( Sampled( side, lockstep.GetStep() + lockstep.GetDelay() ), own, partner );
					seen[side].push_back( { own, partner } );
				}
				links[side].Send( cLink::UNRELIABLE, cPacket::Write( lockstep.MakeInputs() ) );
			}
		}
		ASSERT_GT( std::min( seen[0].size(), seen[1].size() ), 200u ) << test.name << ": the game hardly ran";
		for ( int side = 0; side < 2; side++ ) {
			int held = 0;
			for ( uint64_t step = 3; step < std::min( seen[0].size(), seen[1].size() ); step++ ) {
				ASSERT_TRUE( seen[side][step].first == seen[1 - side][step].second )
					<< test.name << ": the machines disagree on side " << side << "'s input of step " << step;
				const cStepInput &own = seen[side][step].first;
				if ( !( own == Sampled( side, step ) ) ) {
					held++;
					EXPECT_EQ( own.mouse.dx, 0 ) << test.name << ": a held input moves the mouse again";
					EXPECT_EQ( own.mouse.x, seen[side][step - 1].first.mouse.x ) << test.name << ": not the input before";
				}
			}
			EXPECT_EQ( held, test.held[side] ) << test.name << ": side " << side;
		}
	}
}

TEST( DelayTests, TheDelayFollowsTheLine ) {
	struct cCheck {
		int				slot;
		uint32_t		delay;
	};
	struct cCase {
		const char *		name;
		uint32_t			delay;
		int64_t				roundTrip;		// msec
		int					waitEvery;		// slots, 0: never; the first wait comes at waitEvery - 1
		int					waitUntil;		// slot
		std::vector<cCheck>	checks;
	};
	const int64_t slotMsec = 15;
	const int calmSlots = static_cast<int>( cDelayControl::CALM_TIME / slotMsec );
	const int fallSlots = static_cast<int>( cDelayControl::FALL_TIME / slotMsec ) + 1;
	const cCase cases[] = {
		{ "a calm line keeps its delay", 4, 30, 0, 0, { { 1000, 4 } } },
		{ "waits on a slow line rise at once to what it asks", 4, 240, 10, 40, { { 18, 4 }, { 19, 18 }, { 1500, 18 } } },
		{ "waits on a fast line add a step each time", 4, 30, 10, 200, { { 18, 4 }, { 19, 5 }, { 198, 13 }, { 199, 14 } } },
		{ "one wait alone changes nothing", 6, 60, 50, 51, { { 400, 6 } } },
		{ "a calm line falls a step at a time, down to its round trip's",
		  20, 30, 0, 0, { { calmSlots - 2, 20 }, { calmSlots + 1, 19 }, { calmSlots + 1 + fallSlots, 18 }, { 2000, 4 } } },
		{ "no higher than the most", 30, 1000, 5, 100, { { 100, 40 } } },
	};
	for ( const cCase &test : cases ) {
		cDelayControl control( test.delay, 40 );
		const int late = static_cast<int>( test.roundTrip / slotMsec );
		size_t next = 0;
		for ( int slot = 0; next < test.checks.size(); slot++ ) {
			const int64_t now = slot * slotMsec;
			const uint64_t step = static_cast<uint64_t>( slot ) + test.delay;
			control.Sent( step, now );
			if ( slot >= late ) {
				control.Acknowledged( step - static_cast<uint64_t>( late ) + 1, now );
			}
			control.Slot( test.waitEvery > 0 && slot < test.waitUntil && slot % test.waitEvery == test.waitEvery - 1, now );
			const uint32_t wanted = control.Choose( now );
			if ( wanted != control.GetDelay() ) {
				control.Switched( wanted, now );
			}
			if ( slot == test.checks[next].slot ) {
				EXPECT_EQ( control.GetDelay(), test.checks[next].delay ) << test.name << ", at slot " << slot;
				next++;
			}
		}
	}
}

}
