// SPDX-License-Identifier: GPL-3.0-or-later
// Two machines play a short two-player game ahead of each other's inputs on an in-memory link
// whose packets come late, out of order, twice or never, each seed its own line, keys and local
// delay. Whatever was guessed and taken back, every step each machine confirms has the inputs its
// players gave, and the state it confirms is the state of the same inputs played straight.

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <vector>

#include "MemoryLink.h"
#include "actors/GameState.h"
#include "app/Config.h"
#include "app/MenuEntries.h"
#include "app/StateHash.h"
#include "harness/HeadlessGame.h"
#include "input/KeyCodes.h"
#include "input/headless/ScriptedInputBackend.h"
#include "net/Lockstep.h"
#include "net/OnlineInput.h"
#include "net/Packet.h"
#include "net/Rollback.h"
#include "platform/Clock.h"

namespace {

// A thousand lines; the sanitizer build, ten times slower, plays the first hundred, enough for a
// fault of memory to show.
#ifndef KMVT_ROLLBACK_SEEDS
#define KMVT_ROLLBACK_SEEDS 1000
#endif
const uint32_t SEEDS = KMVT_ROLLBACK_SEEDS;
const uint64_t STEPS = 36;
const uint64_t HASH_EVERY = 6;			// confirmed steps between comparisons with the straight game
const int MAX_SLOTS = 2000;				// a run that takes longer is stuck

using tKeys = std::vector<cStepInput>;

// One side's keys by step: held for a few steps, then others, so that a guess is sometimes right.
// Before the local delay, no key of either side is given yet.
tKeys MakeKeys( std::minstd_rand &draw, int side, uint32_t delay ) {
	uint32_t playerKeys[cConfig::KEYS_PER_PLAYER] = {};
	cConfig().GetKeys( static_cast<uint32_t>( side + 1 ), playerKeys );
	tKeys keys( STEPS );
	cStepInput held;
	for ( uint64_t step = delay; step < STEPS; step++ ) {
		for ( uint32_t key : playerKeys ) {
			held.SetKey( static_cast<int>( key ), draw() % 4 == 0 ? draw() % 3 == 0 : held.IsKeyDown( static_cast<int>( key ) ) );
		}
		keys[step] = held;
	}
	return keys;
}

// The clock the three games read gives the step's time, as the agreed clock does online.
cManualClock stepClock;

void PlayStep( cHeadlessGame &game, uint64_t step, const cStepInput &host, const cStepInput &partner ) {
	stepClock.SetTickCount( 5000 + static_cast<uint32_t>( step ) * cGame::FRAME_TIME );
	stepClock.SetCalendarTime( 1700000000 + stepClock.GetTickCount() / 1000 );
	const cStepInput both = cStepInput::Combine( host, partner );
	for ( int key = 0; key < cStepInput::KEY_COUNT; key++ ) {
		game.SetKey( key, both.IsKeyDown( key ) );
	}
	game.GetGame().Step();
}

// One machine: hears the partner, corrects, plays the next step when it may, sends its inputs.
struct cMachine {
	cMachine( cMemoryWire &wire, int side, uint32_t delay, cHeadlessGame &game, const tKeys &keys )
		: link( wire, side ), side( side ), lockstep( delay ), keys( keys ),
		  rollback( game.GetGame(), lockstep,
					[this, &game]( uint64_t step, const cStepInput &own, const cStepInput &partner, bool ) {
						this->side == 0 ? PlayStep( game, step, own, partner ) : PlayStep( game, step, partner, own );
						return true;
					},
					[this, &game]( uint64_t step, const cStepInput &own, const cStepInput &partner ) {
						confirmed.push_back( { own, partner } );
						if ( ( step + 1 ) % HASH_EVERY == 0 ) {
							hashes.push_back( cStateHash( game.GetGame() ).GetTotal() );
						}
					} ) {
		rollback.SetLooks( []( uint64_t step ) { return ( step + 1 ) % HASH_EVERY == 0; } );
	}

	void Slot() {
		for ( cLink::cEvent event = link.Poll(); event.kind != cLink::NOTHING; event = link.Poll() ) {
			cNetMessage message;
			std::string why;
			ASSERT_TRUE( cPacket::Read( event.data.data(), event.data.size(), lockstep.GetWindow(), message, why ) ) << why;
			ASSERT_TRUE( lockstep.TakeInputs( message.inputs ) );
		}
		rollback.Correct();
		ASSERT_LE( rollback.GetNewest() - lockstep.GetStep(), cRollback::MAX_GUESS );
		const uint64_t given = rollback.GetNewest() + lockstep.GetDelay();
		if ( rollback.GetNewest() < STEPS && rollback.CanStep() ) {
			rollback.Step( given < STEPS ? keys[given] : cStepInput() );
		}
		link.Send( cLink::UNRELIABLE, cPacket::Write( lockstep.MakeInputs() ) );
	}

	cMemoryWire::cEnd	link;
	int					side;
	cLockstep			lockstep;
	const tKeys &		keys;
	cRollback			rollback;
	std::vector<std::pair<cStepInput, cStepInput>> confirmed;	// own, partner's, by step
	std::vector<uint64_t> hashes;
};

}

TEST( RollbackTest, ConfirmedStepsHoldTheInputsGivenAndTheStraightGamesState ) {
	cHeadlessGame games[3];		// the host's, the partner's, the straight one
	for ( cHeadlessGame &game : games ) {		// two players, from the main menu
		ASSERT_TRUE( game.Start() );
		for ( const cRect &rect : { MENU_ENTRIES[1], MENU_ENTRIES[2] } ) {
			ASSERT_TRUE( game.Click( ( rect.left + rect.right ) / 2, ( rect.top + rect.bottom ) / 2 ) );
		}
		ASSERT_EQ( game.GetGame().GetGameState(), STATE_PLAYING );
	}
	SetClock( &stepClock );
	cMatch start;
	games[0].GetGame().Save( start );
	uint64_t stepsAgain = 0;
	for ( uint32_t seed = 1; seed <= SEEDS; seed++ ) {
		std::minstd_rand draw( seed );
		const uint32_t delay = seed % ( cRollback::MAX_LOCAL_DELAY + 1 );
		const tKeys keys[2] = { MakeKeys( draw, 0, delay ), MakeKeys( draw, 1, delay ) };
		std::vector<uint64_t> expected;
		games[2].GetGame().Restore( start );
		for ( uint64_t step = 0; step < STEPS; step++ ) {
			PlayStep( games[2], step, keys[0][step], keys[1][step] );
			if ( ( step + 1 ) % HASH_EVERY == 0 ) {
				expected.push_back( cStateHash( games[2].GetGame() ).GetTotal() );
			}
		}
		// Every unreliable packet late by 1 to 6 slots, up to 30 % lost, one in 20 twice.
		const uint32_t loss = draw() % 30;
		cMemoryWire wire( [&draw, loss]( int, int ) { return cFate{ draw() % 100 < loss ? 0 : static_cast<int>( 1 + draw() % 6 ), draw() % 20 == 0 }; } );
		games[0].GetGame().Restore( start );
		games[1].GetGame().Restore( start );
		cMachine machines[2] = { { wire, 0, delay, games[0], keys[0] }, { wire, 1, delay, games[1], keys[1] } };
		for ( int slot = 0; slot < MAX_SLOTS && ( machines[0].confirmed.size() < STEPS || machines[1].confirmed.size() < STEPS ); slot++ ) {
			machines[0].Slot();
			machines[1].Slot();
			wire.Tick();
			ASSERT_FALSE( HasFatalFailure() ) << "seed " << seed;
		}
		for ( const cMachine &machine : machines ) {
			for ( uint64_t step = 0; step < STEPS; step++ ) {
				ASSERT_TRUE( step < machine.confirmed.size() && machine.confirmed[step].first == keys[machine.side][step] &&
							 machine.confirmed[step].second == keys[1 - machine.side][step] )
					<< "seed " << seed << ", side " << machine.side << ", step " << step;
			}
			ASSERT_EQ( machine.hashes, expected ) << "seed " << seed << ", side " << machine.side;
			stepsAgain += machine.rollback.GetStepsAgain();
		}
	}
	SetClock( nullptr );
	EXPECT_GT( stepsAgain, uint64_t{ SEEDS } ) << "the lines should prove many guesses wrong";
}

// A step played on a wrong guess rumbled the pad and moved the cursor: nothing reaches the
// devices before the step is confirmed, and then only what the confirmed course asked, once.
TEST( RollbackTest, DevicesHearConfirmedStepsOnly ) {
	cHeadlessGame game;
	ASSERT_TRUE( game.Start() );
	cScriptedInputBackend platform;
	platform.PlugPad( 1, "pad" );
	cOnlineInput online( platform );
	online.SetPlayer( 1 );
	cLockstep lockstep( 0 );
	cLockstep partner( 0 );
	// The partner's key stands for a hit on this machine's player at the step's column.
	const int hit = KEY_K;
	cRollback rollback(
		game.GetGame(), lockstep,
		[&online]( uint64_t step, const cStepInput &, const cStepInput &partnerInput, bool ) {
			if ( partnerInput.IsKeyDown( hit ) ) {
				online.Rumble( 1 );
				online.WarpMouse( static_cast<int32_t>( step ), 0 );
			}
			return true;
		},
		[]( uint64_t, const cStepInput &, const cStepInput & ) {} );
	rollback.SetInput( &online );
	const bool held[] = { true, true, false, false };		// the partner's key by step
	const struct {
		uint64_t	partnerSteps;	// the partner's inputs here before the step is played
		int			rumbles;
		int32_t		cursorX;
	} table[] = { { 1, 1, 0 }, { 1, 1, 0 }, { 1, 1, 0 }, { 1, 1, 0 }, { 4, 2, 1 } };
	for ( uint64_t step = 0; step < std::size( table ); step++ ) {
		while ( partner.GetOwnEnd() < table[step].partnerSteps ) {
			cStepInput input;
			input.SetKey( hit, held[partner.GetOwnEnd()] );
			partner.Give( partner.GetOwnEnd(), input );
			ASSERT_TRUE( lockstep.TakeInputs( partner.MakeInputs().inputs ) );
		}
		rollback.Correct();
		if ( step < std::size( held ) ) {
			ASSERT_TRUE( rollback.CanStep() );
			rollback.Step( cStepInput() );
		}
		cMouseReading cursor;
		ASSERT_TRUE( platform.ReadMouse( cursor ) );
		EXPECT_EQ( platform.GetRumbleCount( 1 ), table[step].rumbles ) << "after step " << step;
		EXPECT_EQ( platform.GetWarpCount(), table[step].rumbles ) << "after step " << step;
		EXPECT_EQ( cursor.x, table[step].cursorX ) << "after step " << step;
	}
}
