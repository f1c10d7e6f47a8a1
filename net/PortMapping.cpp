// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/PortMapping.h"

#include <arpa/inet.h>

#include <algorithm>

namespace {

const int64_t MSEC_PER_SECOND = 1000;

struct cRange {
	uint32_t						first;		// the network, host order
	int								bits;		// its prefix length
	cPortMapping::eAddressClass		addressClass;
};

const cRange RANGES[] = {
	{ 0x0A000000, 8, cPortMapping::PRIVATE },		// 10.0.0.0/8
	{ 0xAC100000, 12, cPortMapping::PRIVATE },		// 172.16.0.0/12
	{ 0xC0A80000, 16, cPortMapping::PRIVATE },		// 192.168.0.0/16
	{ 0x64400000, 10, cPortMapping::SHARED },		// 100.64.0.0/10
	{ 0x00000000, 8, cPortMapping::UNUSABLE },		// 0.0.0.0/8
	{ 0x7F000000, 8, cPortMapping::UNUSABLE },		// 127.0.0.0/8
	{ 0xA9FE0000, 16, cPortMapping::UNUSABLE },		// 169.254.0.0/16
};

}

cPortMapping::cPortMapping( cPortMapper &mapper, uint16_t port ) : mapper( mapper ), port( port ) {}

cPortMapping::eAddressClass cPortMapping::ClassifyAddress( const std::string &address ) {
	in_addr parsed = {};
	if ( inet_pton( AF_INET, address.c_str(), &parsed ) != 1 ) {
		return UNUSABLE;
	}
	const uint32_t value = ntohl( parsed.s_addr );
	for ( const cRange &range : RANGES ) {
		if ( ( value >> ( 32 - range.bits ) ) == ( range.first >> ( 32 - range.bits ) ) ) {
			return range.addressClass;
		}
	}
	return PUBLIC;
}

// The way that worked last is asked first, so that a renewal does not wait on a way that never answers.
int64_t cPortMapping::Work( int64_t now ) {
	if ( now < due ) {
		return due;
	}
	const cPortMapper::eWay first = opening.held ? opening.way : cPortMapper::NAT_PMP;
	std::string refusal;
	bool shared = false;
	bool answered = false;
	for ( int i = 0; i < cPortMapper::WAYS; i++ ) {
		const cPortMapper::eWay way = static_cast<cPortMapper::eWay>( ( first + i ) % cPortMapper::WAYS );
		if ( Ask( way, refusal, shared, answered, now ) ) {
			return due;
		}
	}
	Settle( shared ? SHARED_ADDRESS : answered ? REFUSED : NO_ROUTER, refusal );
	due = now + RETRY * MSEC_PER_SECOND;
	return due;
}

// One way of asking; true when the port is open to the internet. An opening on an outside address
// that the internet cannot reach is no use to anyone: it is taken back at once.
bool cPortMapping::Ask( cPortMapper::eWay way, std::string &refusal, bool &shared, bool &answered, int64_t now ) {
	const cPortMapper::cAnswer answer = mapper.Open( way, port, LEASE );
	if ( !answer.answered ) {
		return false;
	}
	answered = true;
	const bool reachable = ClassifyAddress( answer.outside ) == PUBLIC;
	if ( answer.opened && reachable ) {
		opening = { true, way, answer.outsidePort };
		state = OPENED;
		line = MakeJoinLine( answer );
		const uint32_t renewal = answer.lease == 0 ? LASTING_RENEWAL : std::max( SHORTEST_RENEWAL, answer.lease / 2 );
		due = now + renewal * MSEC_PER_SECOND;
		return true;
	}
	if ( answer.opened ) {
		mapper.Remove( way, port, answer.outsidePort );
	}
	shared = shared || !reachable;
	if ( refusal.empty() ) {
		refusal = answer.refusal.empty() ? "no reason given" : answer.refusal;
	}
	return false;
}

void cPortMapping::Settle( eState settled, const std::string &refusal ) {
	const std::string number = std::to_string( port );
	state = settled;
	switch ( settled ) {
		case NO_ROUTER:
			line = "No router answered to open UDP port " + number + ": forward it by hand (README, Online)";
			break;
		case REFUSED:
			line = "The router refused to open UDP port " + number + " (" + refusal + "): forward it by hand";
			break;
		default:
			line = "Your provider shares one outside address between customers: no port can be opened here. "
				   "Let your partner host.";
			break;
	}
}

// A partner in the same house reaches the host without the router.
std::string cPortMapping::MakeJoinLine( const cPortMapper::cAnswer &answer ) const {
	std::string text = std::string( "Partner joins with: " ) + PROGRAM + " --join " + answer.outside + ":" +
					   std::to_string( answer.outsidePort );
	if ( !answer.home.empty() ) {
		text += " (in the same house: " + std::string( PROGRAM ) + " --join " + answer.home + ":" + std::to_string( port ) + ")";
	}
	return text;
}

void cPortMapping::Close() {
	if ( opening.held ) {
		mapper.Remove( opening.way, port, opening.outsidePort );
		opening.held = false;
	}
}
