// SPDX-License-Identifier: GPL-3.0-or-later
// The lockstep on an in-memory link: inputs late, lost, duplicated and reordered, and a delay that
// changes, still give both machines the same inputs at every step, each where it belongs; the
// window of steps a packet may name; the hash exchange catching a planted difference at its step.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "MemoryLink.h"
#include "net/Handshake.h"
#include "net/Lockstep.h"
#include "net/Packet.h"

namespace {

const int SLOTS = 400;

// The input side 0 or 1 samples for a step: a key and a mouse position of its own.
cStepInput Truth( int side, uint64_t step ) {
	cStepInput input;
	input.SetKey( static_cast<int>( 2 + ( step * 7 + side * 3 ) % 250 ), true );
	input.mouse.hasPosition = side == 0;
	( side == 0 ? input.mouse.x : input.mouse.dx ) = static_cast<int32_t>( step );
	return input;
}

using tDelayChanges = std::vector<std::array<int, 3>>;	// side, step, the delay from that step on

// One machine: polls, changes its delay when told, runs the step when it may, sends its inputs,
// once a slot.
struct cPeer {
	cPeer( cMemoryWire &wire, int side, uint32_t delay ) : link( wire, side ), side( side ), lockstep( delay ) {}

	void Slot( const tDelayChanges &changes ) {
		for ( const std::array<int, 3> &change : changes ) {
			if ( change[0] == side && static_cast<uint64_t>( change[1] ) == lockstep.GetStep() ) {
				lockstep.SetDelay( static_cast<uint32_t>( change[2] ) );
			}
		}
		for ( cLink::cEvent event = link.Poll(); event.kind != cLink::NOTHING; event = link.Poll() ) {
			cNetMessage message;
			std::string why;
			const bool read = cPacket::Read( event.data.data(), event.data.size(), lockstep.GetWindow(), message, why );
			broken += read && lockstep.TakeInputs( message.inputs ) ? 0 : 1;
		}
		if ( lockstep.CanStep() ) {
			cStepInput own;
			cStepInput partner;
			lockstep.Step( Truth( side, lockstep.GetStep() + lockstep.GetDelay() ), own, partner );
			seen.push_back( { own, partner } );
			waitsAt.push_back( waiting );
			waiting = 0;
		} else {
			waiting++;
			waits++;
		}
		link.Send( cLink::UNRELIABLE, cPacket::Write( lockstep.MakeInputs() ) );
	}

	cMemoryWire::cEnd	link;
	int					side;
	cLockstep			lockstep;
	std::vector<std::pair<cStepInput, cStepInput>> seen;	// own, partner's, by step
	std::vector<int>	waitsAt;		// slots waited before each step
	int					waiting = 0;
	int					waits = 0;
	int					broken = 0;
};

struct cLinkCase {
	const char *		name;
	uint32_t			delay;
	cMemoryWire::tRule	rule;
	int					waits;			// slots waited on each side, -1: some
	int					firstWaitStep;	// -1: none
	int					firstWait;		// slots of that wait
	tDelayChanges		changes = {};
	int					held = 0;		// steps on each side whose own input holds the one before
};

TEST( LockstepTests, BothMachinesGetEveryInputAtItsStepWhateverTheLinkDoes ) {
	const cLinkCase cases[] = {
		{ "on time", 3, []( int, int ) { return cFate { 1, false }; }, 0, -1, 0 },
		{ "one in three lost", 3, []( int, int n ) { return cFate { n % 3 == 1 ? 0 : 1, false }; }, 0, -1, 0 },
		{ "every packet twice", 3, []( int, int ) { return cFate { 1, true }; }, 0, -1, 0 },
		{ "reordered", 4, []( int, int n ) { return cFate { n % 2 == 0 ? 3 : 1, false }; }, 0, -1, 0 },
		{ "four lost in a row", 3, []( int, int n ) { return cFate { n % 20 >= 5 && n % 20 <= 8 ? 0 : 1, false }; }, -1, 8, 2 },
		{ "late by three slots", 5, []( int, int ) { return cFate { 8, false }; }, -1, 5, 3 },
		{ "the delay rises on both at one step", 3, []( int, int n ) { return cFate { n % 5 == 0 ? 0 : 2, false }; }, 0, -1, 0,
		  { { 0, 100, 7 }, { 1, 100, 7 } }, 4 },
		{ "the delay falls on both at one step", 3, []( int, int ) { return cFate { 1, false }; }, 0, -1, 0,
		  { { 0, 100, 1 }, { 1, 100, 1 } }, 0 },
		{ "one side switches later", 3, []( int, int n ) { return cFate { n % 5 == 0 ? 0 : 2, false }; }, -1, -1, 0,
		  { { 0, 100, 9 }, { 1, 130, 9 }, { 0, 250, 2 }, { 1, 251, 2 } }, 6 },
	};
	for ( const cLinkCase &test : cases ) {
		cMemoryWire wire( test.rule );
		cPeer peers[2] = { { wire, 0, test.delay }, { wire, 1, test.delay } };
		for ( int slot = 0; slot < SLOTS; slot++, wire.Tick() ) {
			peers[0].Slot( test.changes );
			peers[1].Slot( test.changes );
		}
		for ( const cPeer &peer : peers ) {
			const cPeer &other = peers[1 - peer.side];
			ASSERT_GT( peer.seen.size(), 50u ) << test.name << ": side " << peer.side << " hardly ran";
			EXPECT_EQ( peer.broken, 0 ) << test.name;
			int held = 0;
			for ( uint64_t step = 0; step < std::min( peer.seen.size(), other.seen.size() ); step++ ) {
				const cStepInput &own = peer.seen[step].first;
				ASSERT_TRUE( own == other.seen[step].second ) << test.name << ": the machines disagree on step " << step;
				if ( step < test.delay || own == Truth( peer.side, step ) ) {
					ASSERT_TRUE( step >= test.delay || own == cStepInput() ) << test.name << ": an input before the first";
					continue;
				}
				cStepInput before = peer.seen[step - 1].first;
				before.mouse.dx = 0;
				ASSERT_TRUE( own == before ) << test.name << ": side " << peer.side << " ran step " << step << " with another own input";
				held++;
			}
			EXPECT_EQ( held, test.held ) << test.name << ": side " << peer.side;
			if ( test.waits >= 0 ) {
				EXPECT_EQ( peer.waits, test.waits ) << test.name << ": side " << peer.side;
			} else {
				EXPECT_GT( peer.waits, 0 ) << test.name << ": side " << peer.side << " never waited";
			}
			if ( test.firstWaitStep >= 0 ) {
				const auto first = std::find_if( peer.waitsAt.begin(), peer.waitsAt.end(), []( int w ) { return w > 0; } );
				ASSERT_NE( first, peer.waitsAt.end() ) << test.name;
				EXPECT_EQ( first - peer.waitsAt.begin(), test.firstWaitStep ) << test.name << ": the first wait's step";
				EXPECT_EQ( *first, test.firstWait ) << test.name << ": the first wait's length";
			}
		}
	}
}

TEST( LockstepTests, APacketMayNameOnlyTheStepsOfTheWindow ) {
	struct cCase {
		uint64_t		first;
		size_t			count;
		uint64_t		acknowledged;
		bool			read;
	};
	const cStepWindow window = { 72, 328 };		// the lockstep's at step 200
	const cCase cases[] = {
		{ 72, 1, 0, true },  { 71, 1, 0, false },  { 327, 1, 0, true },  { 328, 0, 0, false },
		{ 326, 2, 0, true }, { 326, 3, 0, false }, { 100, 40, 0, true }, { 100, 41, 0, false },
		{ 100, 1, 328, true }, { 100, 1, 329, false },
	};
	for ( const cCase &test : cases ) {
		cNetMessage message;
		message.kind = NET_INPUTS;
		message.inputs.first = test.first;
		message.inputs.acknowledged = test.acknowledged;
		message.inputs.inputs.assign( test.count, Truth( 0, 1 ) );
		const std::vector<uint8_t> bytes = cPacket::Write( message );
		cNetMessage read;
		std::string why;
		EXPECT_EQ( cPacket::Read( bytes.data(), bytes.size(), window, read, why ), test.read )
			<< "first " << test.first << ", " << test.count << " inputs, acknowledged " << test.acknowledged << ": " << why;
		EXPECT_EQ( why.empty(), test.read ) << "a refusal says why, an acceptance says nothing";
	}
	cNetMessage fullest;
	fullest.kind = NET_INPUTS;
	for ( size_t i = 0; i < cPacket::MAX_INPUTS; i++ ) {
		cStepInput input;
		for ( int key : { 1, 17, 31, 30, 32, 35, 36, 37 } ) {
			input.SetKey( key, true );
		}
		input.mouse = { -640 - static_cast<int32_t>( i ), 480, -3, true, 639, 479, { 0x80, 0x80, 0x80, 0x80 } };
		fullest.inputs.inputs.push_back( input );
	}
	EXPECT_LE( cPacket::Write( fullest ).size(), cPacket::MAX_SIZE ) << "the fullest inputs a machine sends fit in a packet";
	cLockstep lockstep( 3 );
	const cInputRun beyond = { 4, 3, {} };
	EXPECT_FALSE( lockstep.TakeInputs( beyond ) ) << "acknowledged steps this side never sent";
	EXPECT_EQ( lockstep.GetWindow().high, cLockstep::WINDOW );
}

cCheckpoint MakeCheckpoint( uint64_t step, int plantedPart ) {
	cCheckpoint checkpoint;
	checkpoint.step = step;
	checkpoint.names = { "game", "scene", "player 1", "enemy 1", "enemy 2" };
	checkpoint.parts = { 11, 22, 33, 44, 55 };
	if ( plantedPart >= 0 ) {
		checkpoint.parts[plantedPart]++;
	}
	for ( uint32_t part : checkpoint.parts ) {
		checkpoint.total = checkpoint.total * 31 + part;
	}
	return checkpoint;
}

TEST( LockstepTests, TheHashExchangeNamesTheStepAndThePartThatDiffer ) {
	struct cCase {
		const char *	name;
		uint64_t		plantedAt;		// 0: nothing planted
		int				part;
		bool			partnerFirst;	// the partner's hash arrives before this side's is taken
	};
	const cCase cases[] = {
		{ "the same states", 0, -1, false },
		{ "an enemy differs at step 180", 180, 3, false },
		{ "the scene differs at step 60, the partner's hash first", 60, 1, true },
		{ "the last part differs at step 240", 240, 4, true },
	};
	for ( const cCase &test : cases ) {
		cLockstep own( 3 );
		cLockstep partner( 3 );
		for ( uint64_t step = cLockstep::HASH_EVERY; step <= 300; step += cLockstep::HASH_EVERY ) {
			const cNetMessage sent = partner.TakeOwnHash( MakeCheckpoint( step, step == test.plantedAt ? test.part : -1 ) );
			EXPECT_EQ( sent.hash.hasNames, step == cLockstep::HASH_EVERY ) << "names go only when they change";
			const std::vector<uint8_t> bytes = cPacket::Write( sent );
			cNetMessage read;
			std::string why;
			ASSERT_TRUE( cPacket::Read( bytes.data(), bytes.size(), { 0, 1000 }, read, why ) ) << why;
			if ( !test.partnerFirst ) {
				own.TakeOwnHash( MakeCheckpoint( step, -1 ) );
			}
			ASSERT_TRUE( own.TakePartnerHash( read.hash ) );
			if ( test.partnerFirst ) {
				own.TakeOwnHash( MakeCheckpoint( step, -1 ) );
			}
			if ( own.IsOutOfStep() ) {
				break;
			}
		}
		EXPECT_EQ( own.GetOutOfStepStep(), test.plantedAt ) << test.name;
		const std::string part = test.part >= 0 ? MakeCheckpoint( 0, -1 ).names[test.part] : "";
		EXPECT_EQ( own.GetOutOfStepPart(), part ) << test.name;
		EXPECT_EQ( own.CanStep(), test.plantedAt == 0 ) << test.name << ": a lockstep out of step runs no more steps";
	}
}

TEST( LockstepTests, TheRefusalSaysWhatDiffersAndTheDelayOutlastsTheRoundTrip ) {
	const cHello own = { cHandshake::PROTOCOL, "1.0.0", 0xAB, 0xCD, 0 };
	struct cCase {
		cHello			partner;
		const char *	line;
	};
	const cCase cases[] = {
		{ own, "" },
		{ { cHandshake::PROTOCOL, "1.0.1", 0xAB, 0xCD, 3 }, "Partner runs version 1.0.1, this is 1.0.0: both need the same version" },
		{ { cHandshake::PROTOCOL, "1.0.0", 0xAC, 0xCD, 0 },
		  "Partner has other game data (hash 00000000000000ac, this is 00000000000000ab): both need the same resources folder" },
		{ { cHandshake::PROTOCOL, "1.0.0", 0xAB, 0xCE, 0 },
		  "Partner's build plays differently (fingerprint 00000000000000ce, this is 00000000000000cd): both need the same build of the game" },
	};
	for ( const cCase &test : cases ) {
		EXPECT_EQ( cHandshake::Compare( own, test.partner ), test.line );
	}
	struct cDelay {
		uint32_t		host, partner, roundTrip, delay;
	};
	const cDelay delays[] = { { 0, 0, 0, 2 }, { 0, 0, 9, 2 }, { 0, 0, 10, 3 }, { 0, 0, 100, 9 },
							  { 0, 0, 10000, cPacket::MAX_DELAY }, { 6, 3, 100, 6 }, { 0, 3, 100, 3 } };
	for ( const cDelay &test : delays ) {
		EXPECT_EQ( cHandshake::ChooseDelay( test.host, test.partner, test.roundTrip ), test.delay )
			<< "asked " << test.host << " and " << test.partner << ", round trip " << test.roundTrip << " ms";
	}
}

}
