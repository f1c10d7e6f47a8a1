// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/InputChecks.h"

#include "net/Packet.h"

namespace {

// The window the packets are read against: the lockstep's at step 228.
const cStepWindow WINDOW = { 100, 356 };

std::string FindBrokenBound( const cNetMessage &message ) {
	const cInputRun &run = message.inputs;
	if ( run.inputs.size() > cPacket::MAX_INPUTS || message.hash.parts.size() > cPacket::MAX_PARTS ) {
		return "an accepted packet holds more than its bounds allow";
	}
	if ( message.kind == NET_INPUTS && ( run.first < WINDOW.low || run.first + run.inputs.size() > WINDOW.high ) ) {
		return "an accepted packet names steps outside the window";
	}
	if ( message.kind == NET_HASH && ( message.hash.step < WINDOW.low || message.hash.step >= WINDOW.high ) ) {
		return "an accepted hash names a step outside the window";
	}
	for ( const cStepInput &input : run.inputs ) {
		if ( input.CountKeys() > cPacket::MAX_KEYS_HELD ) {
			return "an accepted input holds more keys than allowed";
		}
	}
	return std::string();
}

}

std::string CheckNetPacket( const uint8_t *data, size_t size ) {
	cNetMessage message;
	std::string why;
	if ( !cPacket::Read( data, size, WINDOW, message, why ) ) {
		return why.empty() ? "a refused packet gives no reason" : std::string();
	}
	if ( !why.empty() ) {
		return "an accepted packet gives the reason '" + why + "'";
	}
	const std::string broken = FindBrokenBound( message );
	if ( !broken.empty() ) {
		return broken;
	}
	const std::vector<uint8_t> again = cPacket::Write( message );
	cNetMessage reread;
	if ( !cPacket::Read( again.data(), again.size(), WINDOW, reread, why ) || cPacket::Write( reread ) != again ) {
		return "an accepted packet written again does not read back the same: " + why;
	}
	return std::string();
}
