// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cTapeWriter encodes what crossed from the platform to the game, step by step, as the tape of a
// recording: only what changed since the last read, as differences and small integers, and a run
// of steps that encode to the same bytes (an idle menu, a held key) as one repeat count.

#include <cstdint>
#include <ctime>
#include <vector>

#include "input/InputBackend.h"

class cTapeWriter {
public:
	// What the game read before its first step is the tape's preamble.
	void				BeginStep( bool pause );
	void				PutTick( uint32_t msec );
	void				PutCalendar( std::time_t seconds );
	void				PutKeyboard( bool read, const uint8_t state[256] );
	void				PutMouse( bool read, const cMouseReading &reading );
	// The tape so far, the open step included; writing may go on after it.
	std::vector<uint8_t> GetTape() const;
	uint64_t			GetStepCount() const { return current.steps; }

	// The writer as it is between two steps. The tape only grows at its end, so a mark holds its
	// length and the small state of the open step; Rewind takes back what was written after it.
	struct cMark;
	void				Mark( cMark &mark ) const;
	void				Rewind( const cMark &mark );

private:
	void				PutTag( uint8_t tag, uint64_t argument );
	void				CloseStep();
	static void			PutRepeats( std::vector<uint8_t> &out, uint64_t count );

	// All but the closed steps' bytes.
	struct cState {
		std::vector<uint8_t> open;			// the step being written (or the preamble)
		std::vector<uint8_t> previous;		// the last closed step's bytes
		uint64_t		repeats = 0;		// closed steps equal to previous, not yet written
		uint64_t		steps = 0;
		uint32_t		lastTick = 0;
		int64_t			lastCalendar = 0;
		uint8_t			lastKeys[256] = {};
		cMouseReading	lastMouse;
	};

	std::vector<uint8_t> tape;			// closed steps, their repeats not yet written
	cState				current;

public:
	struct cMark {
		size_t			written = 0;
		cState			state;
	};
};
