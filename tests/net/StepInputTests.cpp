// SPDX-License-Identifier: GPL-3.0-or-later
// What each machine sends of its player and what both games read: either key set folds into the
// machine's player's keys, the host's mouse drives both; the agreed clock reads by the step.

#include <gtest/gtest.h>

#include "net/AgreedClock.h"
#include "net/StepInput.h"

namespace {

TEST( StepInputTests, EitherKeySetDrivesTheMachinesOwnPlayer ) {
	struct cCase {
		int				player;
		int				pressed;
		int				read;		// the key the game reads; 0 for none
	};
	const cCase cases[] = {
		{ 1, 17, 17 },	{ 1, 200, 17 },	{ 1, 81, 37 },	{ 1, 1, 1 },	{ 1, 57, 0 },
		{ 2, 17, 200 }, { 2, 200, 200 }, { 2, 37, 81 },	{ 2, 1, 1 },	{ 2, 203, 203 },
	};
	for ( const cCase &test : cases ) {
		uint8_t state[cStepInput::KEY_COUNT] = {};
		state[test.pressed] = 0x80;
		const cStepInput input = cStepInput::FromPoll( test.player, state, cMouseReading() );
		EXPECT_EQ( input.CountKeys(), test.read != 0 ? 1 : 0 ) << "player " << test.player << " pressed " << test.pressed;
		EXPECT_TRUE( test.read == 0 || input.IsKeyDown( test.read ) ) << "player " << test.player << " pressed " << test.pressed;
	}
	uint8_t state[cStepInput::KEY_COUNT] = {};
	state[30] = 0x80;
	cMouseReading hostMouse;
	hostMouse.x = 70;
	cMouseReading partnerMouse;
	partnerMouse.x = 600;
	const cStepInput both = cStepInput::Combine( cStepInput::FromPoll( 1, state, hostMouse ),
												 cStepInput::FromPoll( 2, state, partnerMouse ) );
	uint8_t read[cStepInput::KEY_COUNT] = {};
	both.ToKeyboard( read );
	EXPECT_EQ( read[30], 0x80 ) << "the host's A is player 1's left";
	EXPECT_EQ( read[203], 0x80 ) << "the partner's A is player 2's left";
	EXPECT_EQ( both.mouse.x, 70 ) << "the host's mouse drives the menus";
}

TEST( StepInputTests, TheAgreedClockReadsTheStepsTimeAndGoesOnFromItAfterwards ) {
	cManualClock platform( 5000, 1700000000 );
	cAgreedClock clock( platform );
	clock.Agree( 90000, 1800000000 );
	struct cCase {
		uint64_t		step;
		uint32_t		tick;
		std::time_t		calendar;
	};
	const cCase cases[] = { { 0, 90000, 1800000000 }, { 66, 90990, 1800000000 }, { 67, 91005, 1800000001 },
							{ 4000, 150000, 1800000060 } };
	for ( const cCase &test : cases ) {
		clock.SetStep( test.step );
		EXPECT_EQ( clock.GetTickCount(), test.tick ) << "step " << test.step;
		EXPECT_EQ( clock.GetCalendarTime(), test.calendar ) << "step " << test.step;
	}
	clock.Release();
	platform.Advance( 40 );
	EXPECT_EQ( clock.GetTickCount(), 150040u ) << "alone again, the tick count goes on from the agreed one";
	EXPECT_EQ( clock.GetCalendarTime(), 1700000000 );
}

}
