// SPDX-License-Identifier: GPL-3.0-or-later
// Two machines play a short two-player game ahead of each other's inputs on an in-memory link
// whose packets come late, out of order, twice or never, each seed its own line, keys and local
// delay. Whatever was guessed and taken back, every step each machine confirms has the inputs its
// players gave, and the state it confirms is the state of the same inputs played straight.

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "MemoryLink.h"
#include "actors/GameState.h"
#include "app/Config.h"
#include "app/MenuEntries.h"
#include "app/StateHash.h"
#include "harness/HeadlessGame.h"
#include "net/Lockstep.h"
#include "net/Packet.h"
#include "net/Rollback.h"
#include "platform/Clock.h"

namespace {

const int SEEDS = 1000;
const uint64_t STEPS = 36;
const uint64_t HASH_EVERY = 6;			// confirmed steps between comparisons with the straight game
const int MAX_SLOTS = 2000;				// a run that takes longer is stuck
const uint32_t START_TICK = 5000;
const std::time_t START_CALENDAR = 1700000000;

// Each side's keys by step: held for a few steps, then others, so that a guess is sometimes right.
std::vector<cStepInput> MakeKeys( std::minstd_rand &draw, int side, uint64_t steps ) {
	std::vector<cStepInput> keys( steps );
	uint32_t playerKeys[cConfig::KEYS_PER_PLAYER] = {};
	cConfig().GetKeys( static_cast<uint32_t>( side + 1 ), playerKeys );
	cStepInput held;
	for ( cStepInput &input : keys ) {
		if ( draw() % 4 == 0 ) {
			held = cStepInput();
			for ( uint32_t key : playerKeys ) {
				held.SetKey( static_cast<int>( key ), draw() % 3 == 0 );
			}
		}
		input = held;
	}
	return keys;
}

// The clock all three games read: the step's time, as the online game's agreed clock gives it.
cManualClock clock;

void SetStepTime( uint64_t step ) {
	clock.SetTickCount( START_TICK + static_cast<uint32_t>( step ) * cGame::FRAME_TIME );
	clock.SetCalendarTime( START_CALENDAR + clock.GetTickCount() / 1000 );
}

void PlayStep( cHeadlessGame &game, const cStepInput &host, const cStepInput &partner ) {
	const cStepInput both = cStepInput::Combine( host, partner );
	for ( int key = 0; key < cStepInput::KEY_COUNT; key++ ) {
		game.SetKey( key, both.IsKeyDown( key ) );
	}
	game.GetGame().Step();
}

// The two players' game, from the main menu.
void StartTwoPlayerGame( cHeadlessGame &game ) {
	ASSERT_TRUE( game.Start() );
	for ( int entry : { 2, 3 } ) {
		const cRect &rect = MENU_ENTRIES[entry - 1];
		ASSERT_TRUE( game.Click( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 ) );
	}
	ASSERT_EQ( game.GetGame().GetGameState(), STATE_PLAYING );
}

// The line of one seed: every unreliable packet late by 1 to 6 slots, some lost, some twice.
cMemoryWire::tRule MakeLine( uint32_t seed ) {
	auto draw = std::make_shared<std::minstd_rand>( seed * 7919 + 1 );
	const uint32_t loss = ( *draw )() % 30;		// in hundredths
	return [draw, loss]( int, int ) {
		cFate fate;
		fate.delay = ( *draw )() % 100 < loss ? 0 : static_cast<int>( 1 + ( *draw )() % 6 );
		fate.twice = ( *draw )() % 20 == 0;
		return fate;
	};
}

// One machine: hears the partner, corrects, plays the next step when it may, sends its inputs.
struct cMachine {
	cMachine( cMemoryWire &wire, int side, uint32_t delay, cHeadlessGame &game,
			  const std::vector<cStepInput> ( &keys )[2] )
		: link( wire, side ), side( side ), lockstep( delay ), game( game ), keys( keys ),
		  rollback( game.GetGame(), lockstep,
					[this]( uint64_t step, const cStepInput &own, const cStepInput &partner, bool ) {
						SetStepTime( step );
						this->side == 0 ? PlayStep( this->game, own, partner ) : PlayStep( this->game, partner, own );
						return true;
					},
					[this]( uint64_t step, const cStepInput &own, const cStepInput &partner ) {
						confirmed.push_back( { own, partner } );
						if ( ( step + 1 ) % HASH_EVERY == 0 ) {
							hashes.push_back( cStateHash( this->game.GetGame() ).GetTotal() );
						}
					} ) {}

	void Slot() {
		for ( cLink::cEvent event = link.Poll(); event.kind != cLink::NOTHING; event = link.Poll() ) {
			cNetMessage message;
			std::string why;
			ASSERT_TRUE( cPacket::Read( event.data.data(), event.data.size(), lockstep.GetWindow(), message, why ) ) << why;
			ASSERT_TRUE( lockstep.TakeInputs( message.inputs ) );
		}
		rollback.Correct();
		ASSERT_LE( rollback.GetNewest() - lockstep.GetStep(), cRollback::MAX_GUESS );
		const uint64_t step = rollback.GetNewest();
		if ( step < STEPS && rollback.CanStep() ) {
			const uint64_t given = step + lockstep.GetDelay();
			rollback.Step( given < STEPS ? keys[side][given] : cStepInput() );
		}
		link.Send( cLink::UNRELIABLE, cPacket::Write( lockstep.MakeInputs() ) );
	}

	cMemoryWire::cEnd	link;
	int					side;
	cLockstep			lockstep;
	cHeadlessGame &		game;
	const std::vector<cStepInput> ( &keys )[2];
	cRollback			rollback;
	std::vector<std::pair<cStepInput, cStepInput>> confirmed;	// own, partner's, by step
	std::vector<uint64_t> hashes;
};

class RollbackTest : public ::testing::Test {
protected:
	static void SetUpTestSuite() {
		games = new cHeadlessGame[3];
		for ( int i = 0; i < 3; i++ ) {
			StartTwoPlayerGame( games[i] );
		}
		SetClock( &clock );
		start = new cMatch();
		games[0].GetGame().Save( *start );
	}
	static void TearDownTestSuite() {
		SetClock( nullptr );
		delete[] games;
		delete start;
	}

	static cHeadlessGame *games;		// the host's, the partner's, the straight one
	static cMatch *		start;
};

cHeadlessGame *RollbackTest::games = nullptr;
cMatch *RollbackTest::start = nullptr;

}

TEST_F( RollbackTest, ConfirmedStepsHoldTheInputsGivenAndTheStraightGamesState ) {
	uint64_t stepsAgain = 0;
	for ( uint32_t seed = 1; seed <= SEEDS; seed++ ) {
		std::minstd_rand draw( seed );
		const std::vector<cStepInput> keys[2] = { MakeKeys( draw, 0, STEPS ), MakeKeys( draw, 1, STEPS ) };
		const uint32_t delay = seed % 3;
		// Before a machine's local delay, its own keys are not given yet: nothing is pressed.
		auto truth = [&]( int side, uint64_t step ) { return step < delay ? cStepInput() : keys[side][step]; };
		std::vector<uint64_t> expected;
		cHeadlessGame &straight = games[2];
		straight.GetGame().Restore( *start );
		for ( uint64_t step = 0; step < STEPS; step++ ) {
			SetStepTime( step );
			PlayStep( straight, truth( 0, step ), truth( 1, step ) );
			if ( ( step + 1 ) % HASH_EVERY == 0 ) {
				expected.push_back( cStateHash( straight.GetGame() ).GetTotal() );
			}
		}

		cMemoryWire wire( MakeLine( seed ) );
		games[0].GetGame().Restore( *start );
		games[1].GetGame().Restore( *start );
		cMachine host( wire, 0, delay, games[0], keys );
		cMachine partner( wire, 1, delay, games[1], keys );
		for ( int slot = 0; slot < MAX_SLOTS && ( host.confirmed.size() < STEPS || partner.confirmed.size() < STEPS ); slot++ ) {
			host.Slot();
			partner.Slot();
			wire.Tick();
			ASSERT_FALSE( HasFatalFailure() ) << "seed " << seed;
		}
		for ( const cMachine *machine : { &host, &partner } ) {
			ASSERT_EQ( machine->confirmed.size(), STEPS ) << "seed " << seed << ", side " << machine->side;
			for ( uint64_t step = 0; step < STEPS; step++ ) {
				ASSERT_TRUE( machine->confirmed[step].first == truth( machine->side, step ) &&
							 machine->confirmed[step].second == truth( 1 - machine->side, step ) )
					<< "seed " << seed << ", side " << machine->side << ", step " << step;
			}
			ASSERT_EQ( machine->hashes, expected ) << "seed " << seed << ", side " << machine->side;
			stepsAgain += machine->rollback.GetStepsAgain();
		}
	}
	EXPECT_GT( stepsAgain, static_cast<uint64_t>( SEEDS ) ) << "the lines should prove many guesses wrong";
}
