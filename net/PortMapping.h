// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cPortMapping keeps the host's UDP port open on the home router for as long as the host runs, and
// says in one line how the partner joins, or why the port could not be opened and what to do
// instead. It asks NAT-PMP first, then UPnP; it believes only an opening the router confirmed on an
// outside address that the internet can reach, renews it before its lease runs out and takes back
// at the end only what it opened itself. It runs on whatever thread calls it, at the moments the
// caller's clock gives it, so that the tests drive it on a made-up router and a made-up clock.

#include <cstdint>
#include <string>

#include "net/PortMapper.h"

class cPortMapping {
public:
	static constexpr uint32_t LEASE = 3600;				// seconds asked for
	static constexpr uint32_t SHORTEST_RENEWAL = 30;	// seconds between two renewals, at least
	static constexpr uint32_t LASTING_RENEWAL = 1200;	// seconds: an opening without a lease is asked again
	static constexpr uint32_t RETRY = 300;				// seconds after the router did not open the port
	static constexpr const char *PROGRAM = "kormaveth2d";

	enum eAddressClass { PUBLIC, PRIVATE, SHARED, UNUSABLE };
	enum eState { ASKING, OPENED, NO_ROUTER, REFUSED, SHARED_ADDRESS };

						cPortMapping( cPortMapper &mapper, uint16_t port );

	// Asks the router whatever is due at now (msec on a steady clock): the first opening, a renewal
	// or a new try. Returns the moment of the next.
	int64_t				Work( int64_t now );
	// Takes back the opening this program made, if there is one.
	void				Close();
	eState				GetState() const { return state; }
	// How the partner joins, or what to do instead; empty until the router was first asked.
	const std::string &	GetLine() const { return line; }

	// 100.64.0.0/10 is the providers' shared space; 10/8, 172.16/12 and 192.168/16 are private;
	// what cannot be an outside address at all (0/8, 127/8, 169.254/16, not an IPv4 address) is unusable.
	static eAddressClass ClassifyAddress( const std::string &address );

private:
	struct cOpening {
		bool				held = false;
		cPortMapper::eWay	way = cPortMapper::NAT_PMP;
		uint16_t			outsidePort = 0;
	};

	bool				Ask( cPortMapper::eWay way, std::string &refusal, bool &shared, bool &answered, int64_t now );
	void				Settle( eState settled, const std::string &refusal );
	std::string			MakeJoinLine( const cPortMapper::cAnswer &answer ) const;

	cPortMapper &		mapper;
	uint16_t			port;
	eState				state = ASKING;
	std::string			line;
	cOpening			opening;
	int64_t				due = 0;
};
