// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cEnetLink is the link to the partner over ENet (UDP): channel 0 reliable and in order, channel 1
// unsequenced. A joiner talks to its host alone: any other machine that connects to it is turned
// away at once. A host listens on one UDP port and keeps exactly one partner: the first connection
// that says something; until then connections wait as candidates for at most CANDIDATE_TIME, so a
// silent one holds no place, and once there is a partner every other is turned away at once, unless
// the partner has been silent for NEWCOMER_SILENCE: then the game hears the newcomer's first packet
// and takes it as the partner come back, or turns it away. A joiner that lost its host connects
// again from the same socket. Peers never throttle the unreliable channel: the inputs repeat
// themselves, and a throttle that fell during a blackout would hold them back after it. Names
// resolve through getaddrinfo; ENet 1.3 speaks IPv4 only,
// so a name is reached at its IPv4 address, and a name with IPv6 addresses alone is refused with
// a line that says so. Allocations stay small whatever arrives: packets over MAX_PACKET bytes and
// more than MAX_WAITING bytes queued for the game are dropped by ENet itself.

#include <cstddef>
#include <cstdint>
#include <string>

#include "net/Link.h"

typedef struct _ENetHost ENetHost;
typedef struct _ENetPeer ENetPeer;

class cEnetLink : public cLink {
public:
	static constexpr size_t	MAX_PACKET = 4096;				// bytes
	static constexpr size_t	MAX_WAITING = 64 * 1024;		// bytes
	static constexpr uint32_t TIMEOUT = 40000;				// msec: the game's own 30 s of grace come first
	static constexpr uint32_t FAREWELL_TIME = 1000;		// msec the link waits for its farewell to go out
	static constexpr uint32_t CANDIDATE_TIME = 5000;	// msec a connection may stay silent at a host
	static constexpr uint32_t NEWCOMER_SILENCE = 1000;	// msec of the partner's silence before a newcomer is heard

						cEnetLink();
						~cEnetLink() override;
						cEnetLink( const cEnetLink & ) = delete;
	cEnetLink &			operator=( const cEnetLink & ) = delete;

	// Listens on the UDP port of every address of this machine; false with why.
	bool				Host( uint16_t port, std::string &why );
	// Starts to connect to a name or an address; false with why when it cannot even start.
	bool				Join( const std::string &name, uint16_t port, std::string &why );

	cEvent				Poll() override;
	void				Send( eChannel channel, const std::vector<uint8_t> &bytes ) override;
	void				Disconnect() override;
	void				TakeNewcomer() override;
	void				Reconnect() override;

private:
	static constexpr uint32_t BUSY = 1;					// the disconnect's data: the host has a partner
	static constexpr uint32_t NOT_HOSTING = 2;			// the disconnect's data: a joiner takes no one

	struct cCandidate {
		ENetPeer *		peer;
		uint32_t		since;			// enet_time_get()'s msec
	};

	bool				CreateHost( bool listening, uint16_t port, std::string &why );
	void				TakeConnection( ENetPeer *peer );
	// A candidate's first packet makes it the partner: CONNECTED now, the packet at the next Poll.
	void				Choose( ENetPeer *peer, const uint8_t *data, size_t size, cEvent &result );
	void				DropCandidate( ENetPeer *peer );
	void				DropSilentCandidates();
	void				Watch( ENetPeer *peer );
	void				TurnAway( ENetPeer *&peer );

	bool				started = false;
	bool				hosting = false;
	ENetHost *			host = nullptr;
	ENetPeer *			partner = nullptr;
	ENetPeer *			leaving = nullptr;
	std::vector<cCandidate>	candidates;
	cCandidate			newcomer = { nullptr, 0 };
	bool				newcomerHeard = false;		// its first packet went to the game at the last Poll
	uint32_t			partnerHeardAt = 0;
	uint32_t			hostAddress = 0;			// a joiner's host, to connect again
	uint16_t			hostPort = 0;
	bool				firstWaiting = false;		// the partner's first packet, for the next Poll
	std::vector<uint8_t>	first;
};
