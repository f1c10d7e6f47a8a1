// SPDX-License-Identifier: GPL-3.0-or-later
#include "harness/RecordedGame.h"

#include <cstdio>
#include <filesystem>

#include "harness/AutoplayGame.h"

namespace {

const char *const CHARACTER_NAMES[2] = { "tavesh", "lumra" };
const char *const OUTCOME_NAMES[] = { "unfinished", "victory", "defeat", "broken" };

std::string NameGame( const cGameSetup &setup, const cGameResult &result ) {
	std::string name = std::to_string( setup.players ) + "p-" + CHARACTER_NAMES[setup.character];
	if ( setup.players == 2 ) {
		name += std::string( "-" ) + CHARACTER_NAMES[1 - setup.character];
	}
	return name + "-d" + std::to_string( setup.difficulty ) + "-" + OUTCOME_NAMES[result.outcome];
}

}

cRecordedGame::cRecordedGame( const std::string &recordFolder ) : folder( recordFolder ) {
	headless.GetGraphics().SetRecording( false );
	if ( !folder.empty() ) {
		recorder = std::make_unique<cRecorder>( headless.GetInput(), headless.GetClock() );
		SetClock( &recorder->GetClock() );
		headless.SetStepEnd( [this]() { recorder->EndStep(); } );
	}
}

// The game lets go of the recorder's input before the recorder goes.
cRecordedGame::~cRecordedGame() {
	headless.GetGame().Finalize();
	SetClock( &headless.GetClock() );
}

bool cRecordedGame::Start() {
	if ( recorder ) {
		recorder->Watch( headless.GetGame() );
	}
	if ( !headless.Start( false, recorder ? &recorder->GetInput() : nullptr ) || !headless.Frames( 2 ) ) {
		std::fprintf( stderr, "kmvt_autoplay: the game did not start\n" );
		return false;
	}
	return true;
}

bool cRecordedGame::Save( const cGameSetup &setup, const cGameResult &result ) const {
	if ( !recorder ) {
		return true;
	}
	const std::string base = folder + "/" + NameGame( setup, result );
	std::string path = base + ".kmr";
	for ( int n = 2; std::filesystem::exists( path ); n++ ) {
		path = base + "-" + std::to_string( n ) + ".kmr";
	}
	std::string error;
	if ( !recorder->Save( path, error ) ) {
		std::fprintf( stderr, "kmvt_autoplay: %s\n", error.c_str() );
		return false;
	}
	std::printf( "recorded %s\n", path.c_str() );
	return true;
}
