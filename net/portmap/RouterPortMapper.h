// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cRouterPortMapper asks the real home router through libnatpmp (NAT-PMP, to the default gateway)
// and miniupnpc (UPnP IGD, found by SSDP on the home network). Every request is bounded: about a
// second for NAT-PMP, and the UPnP search a little longer, the router's own answers being quick. A
// UPnP opening is read back before it counts, and neither way takes back a port that another
// machine holds; the router found at the opening is the one asked to take it back.

#include <string>

#include "net/PortMapper.h"

class cRouterPortMapper : public cPortMapper {
public:
	static constexpr int NAT_PMP_TIME = 1000;		// msec for one NAT-PMP request and its repeats
	static constexpr int SEARCH_TIME = 1500;		// msec the UPnP search waits for routers
	static constexpr const char *DESCRIPTION = "Kormaveth 2D";

	// The UPnP router found last: where its commands go, and this machine's address as it sees it.
	struct cUpnpRouter {
		std::string		control;
		std::string		service;
		std::string		home;
	};

	cAnswer				Open( eWay way, uint16_t port, uint32_t lease ) override;
	void				Remove( eWay way, uint16_t port, uint16_t outsidePort ) override;

private:
	cAnswer				OpenByNatPmp( uint16_t port, uint32_t lease );
	cAnswer				OpenByUpnp( uint16_t port, uint32_t lease );
	int					AddUpnp( uint16_t port, const std::string &lease );

	cUpnpRouter			upnp;
};
