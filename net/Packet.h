// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cPacket writes messages as bytes and reads them back from bytes that came from the network and
// may be short, long, hostile or stale. Every read checks the size against a fixed bound, the kind
// against the known kinds, every count against its own bound before anything is kept, and every
// step number against the window of steps the game can use now. Nothing the partner sends decides
// the size of an allocation beyond those bounds.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "net/NetMessage.h"

class cByteReader;
class cByteWriter;

// The step numbers a packet may name: from low to just below high.
struct cStepWindow {
	uint64_t			low = 0;
	uint64_t			high = 0;
};

class cPacket {
public:
	static constexpr size_t	MAX_SIZE = 1200;			// bytes: below the usual path's MTU
	static constexpr size_t	MAX_INPUTS = 40;			// step inputs in one packet: 40 whole ones fit in MAX_SIZE
	static constexpr int	MAX_KEYS_HELD = 16;			// in one step input
	static constexpr size_t	MAX_PARTS = 64;				// of a state hash
	static constexpr size_t	MAX_NAME = 32;				// bytes of a part's name
	static constexpr size_t	MAX_VERSION = 64;			// bytes of a version
	static constexpr uint32_t MAX_DELAY = 40;			// steps
	static constexpr int32_t MAX_POSITION = 1 << 20;	// a mouse coordinate or motion, either way

	static std::vector<uint8_t> Write( const cNetMessage &message );
	// False with why set when the bytes are not one whole, sensible message.
	static bool			Read( const uint8_t *data, size_t size, const cStepWindow &window, cNetMessage &message,
							  std::string &why );

private:
	static void			WriteKeys( cByteWriter &out, const cStepInput &input );
	static void			WriteMouse( cByteWriter &out, const cStepInput &input );
	static bool			ReadKeys( cByteReader &in, cStepInput &input );
	static bool			ReadMouse( cByteReader &in, cStepInput &input );
	static bool			ReadInputs( cByteReader &in, const cStepWindow &window, cInputRun &run );
	static bool			ReadHash( cByteReader &in, const cStepWindow &window, cHashReport &hash );
	static bool			ReadStep( cByteReader &in, const cStepWindow &window, uint64_t &step, const char *what );
};
