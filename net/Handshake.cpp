// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/Handshake.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#include "app/Game.h"
#include "log/Log.h"
#include "log/Printable.h"
#include "net/DataHash.h"
#include "net/DelayControl.h"
#include "net/Packet.h"

namespace {

std::string Hex( uint64_t value ) {
	char text[20];
	std::snprintf( text, sizeof( text ), "%016" PRIx64, value );
	return text;
}

}

cHello cHandshake::MakeHello( const std::string &version, const std::string &dataRoot, uint64_t fingerprint,
								uint32_t delay ) {
	cHello hello;
	hello.protocol = PROTOCOL;
	hello.version = version;
	hello.fingerprint = fingerprint;
	hello.delay = delay;
	if ( !HashGameData( dataRoot, hello.dataHash ) ) {
		cLog::Write( ( "Not every file of the game's data under " + dataRoot + " could be read" ).c_str() );
	}
	return hello;
}

std::string cHandshake::Compare( const cHello &own, const cHello &partner ) {
	if ( partner.protocol != own.protocol ) {
		return "Partner speaks online protocol " + std::to_string( partner.protocol ) + ", this is " +
			   std::to_string( own.protocol ) + ": both need the same version";
	}
	if ( partner.version != own.version ) {
		return "Partner runs version " + MakePrintable( partner.version ) + ", this is " + own.version + ": both need the same version";
	}
	if ( partner.dataHash != own.dataHash ) {
		return "Partner has other game data (hash " + Hex( partner.dataHash ) + ", this is " + Hex( own.dataHash ) +
			   "): both need the same resources folder";
	}
	if ( partner.fingerprint != own.fingerprint ) {
		return "Partner's build plays differently (fingerprint " + Hex( partner.fingerprint ) + ", this is " +
			   Hex( own.fingerprint ) + "): both need the same build of the game";
	}
	return std::string();
}

uint32_t cHandshake::ChooseDelay( uint32_t hostAsked, uint32_t partnerAsked, uint32_t roundTripMsec ) {
	if ( hostAsked > 0 || partnerAsked > 0 ) {
		return hostAsked > 0 ? hostAsked : partnerAsked;
	}
	return cDelayControl::ForRoundTrip( roundTripMsec, cPacket::MAX_DELAY );
}
