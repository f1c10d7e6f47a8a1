// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cTapeReader decodes a recording's tape step by step, keeping only the running values the
// differences apply to, so that a long recording never unfolds in memory. Check walks a whole tape
// once, repeats counted rather than played, and says why it is refused if it is.

#include <cstddef>
#include <cstdint>
#include <string>

#include "replay/ByteReader.h"
#include "replay/TapeStep.h"

class cTapeReader {
public:
	static const size_t	MAX_READS_PER_STEP = 4096;	// far above what any step of the game reads

						cTapeReader( const uint8_t *data, size_t size );

	// The reads before the first step; call it once, first.
	bool				ReadPreamble( cTapeStep &step );
	// The next step; false at the end of the tape or on a broken one.
	bool				ReadStep( cTapeStep &step );
	bool				IsAtEnd() const { return repeatsLeft == 0 && tape.IsAtEnd(); }

	// Whether the bytes are a whole tape of exactly steps steps; why not, otherwise.
	static bool			Check( const uint8_t *data, size_t size, uint64_t steps, std::string &why );

private:
	bool				ReadReads( cByteReader &bytes, cTapeStep *step );
	bool				ReadRead( cByteReader &bytes, uint8_t kind, uint64_t argument, cTapeStep::cRead &read );
	bool				ReadMouse( cByteReader &bytes, uint64_t mask, cMouseReading &reading );
	bool				ReadStepFrom( cByteReader &bytes, cTapeStep *step );
	bool				ReadRepeat( uint64_t &count );
	static bool			ReadTag( cByteReader &bytes, uint8_t &kind, uint64_t &argument );
	static bool			PeeksStep( const cByteReader &bytes, const uint8_t *data );

	const uint8_t *		data;
	cByteReader			tape;
	size_t				previousStart = 0;		// the last step read from the tape itself, for repeats
	size_t				previousEnd = 0;
	bool				hasPrevious = false;
	uint64_t			repeatsLeft = 0;
	uint32_t			lastTick = 0;
	int64_t				lastCalendar = 0;
	cTapeStep::cRead	lastKeys;
	cMouseReading		lastMouse;
};
