// SPDX-License-Identifier: GPL-3.0-or-later
// The fingerprint: the same number on every call, whatever the game around it is doing, and one
// that moves with the random draws of its built-in game.

#include <gtest/gtest.h>

#include <cinttypes>
#include <cstdio>

#include "actors/GameState.h"
#include "platform/Clock.h"
#include "program/CommandLine.h"
#include "replay/Fingerprint.h"

TEST( Fingerprint, RepeatsAndLeavesTheRunningClockAsItWas ) {
	cManualClock running( 4321, 1234567 );
	SetClock( &running );
	const uint64_t first = cFingerprint::Compute();
	EXPECT_EQ( &GetClock(), &running ) << "the clock after the fingerprint";
	EXPECT_EQ( running.GetTickCount(), 4321u ) << "the running game's clock moved";
	EXPECT_EQ( cFingerprint::Compute(), first ) << "a second call";
	SetClock( nullptr );
}

// Each second seeds other draws: other drops, another ammunition count, other wander cells.
TEST( Fingerprint, OtherDrawsGiveAnotherFingerprint ) {
	const uint64_t fingerprint = cFingerprint::Compute();
	for ( std::time_t later = 1; later <= 3; later++ ) {
		EXPECT_NE( cFingerprint::ComputeAt( cFingerprint::CALENDAR_SECOND + later ), fingerprint )
			<< "the calendar " << later << " s later";
	}
}

TEST( Fingerprint, VersionPrintsIt ) {
	char line[40];
	std::snprintf( line, sizeof( line ), "Game fingerprint %016" PRIx64 "\n", cFingerprint::Compute() );
	EXPECT_NE( cCommandLine::GetVersion().find( line ), std::string::npos ) << cCommandLine::GetVersion();
}
