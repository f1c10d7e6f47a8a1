// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/InputChecks.h"

#include "replay/ReplayFile.h"
#include "replay/TapeReader.h"

namespace {

bool IsSameRecording( const cRecording &a, const cRecording &b ) {
	if ( a.gameVersion != b.gameVersion || a.soundOpened != b.soundOpened || a.steps != b.steps || a.tape != b.tape ||
		 a.checkpoints.size() != b.checkpoints.size() ) {
		return false;
	}
	for ( size_t i = 0; i < a.checkpoints.size(); i++ ) {
		const cCheckpoint &x = a.checkpoints[i];
		const cCheckpoint &y = b.checkpoints[i];
		if ( x.step != y.step || x.total != y.total || x.names != y.names || x.parts != y.parts ) {
			return false;
		}
	}
	return true;
}

// An accepted tape plays exactly its steps, then ends.
std::string FindBrokenTapeRule( const cRecording &recording ) {
	cTapeReader reader( recording.tape.data(), recording.tape.size() );
	cTapeStep step;
	if ( !reader.ReadPreamble( step ) ) {
		return "an accepted tape's preamble cannot be read";
	}
	for ( uint64_t i = 0; i < recording.steps; i++ ) {
		if ( !reader.ReadStep( step ) ) {
			return "an accepted tape ends at step " + std::to_string( i ) + " of " + std::to_string( recording.steps );
		}
	}
	return reader.ReadStep( step ) || !reader.IsAtEnd() ? "an accepted tape goes on past its steps" : std::string();
}

}

std::string CheckReplayFile( const uint8_t *data, size_t size ) {
	cRecording recording;
	std::string why;
	if ( !cReplayFile::Decode( data, size, recording, why ) ) {
		if ( why.empty() ) {
			return "a refused replay gives no reason";
		}
		return recording.tape.empty() && recording.checkpoints.empty() ? std::string() : "a refused replay keeps its contents";
	}
	if ( !why.empty() ) {
		return "an accepted replay gives the reason '" + why + "'";
	}
	if ( recording.checkpoints.size() != cRecording::CountCheckpoints( recording.steps ) ) {
		return "an accepted replay of " + std::to_string( recording.steps ) + " steps holds " +
			   std::to_string( recording.checkpoints.size() ) + " checkpoints";
	}
	const std::vector<uint8_t> again = cReplayFile::Encode( recording );
	cRecording reread;
	if ( !cReplayFile::Decode( again.data(), again.size(), reread, why ) || !IsSameRecording( recording, reread ) ) {
		return "an accepted replay written again does not read back the same";
	}
	return FindBrokenTapeRule( recording );
}
