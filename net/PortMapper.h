// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cPortMapper asks the home router to open the host's UDP port to the outside, one way of asking at
// a time: NAT-PMP or UPnP. Each call waits on the router for a bounded time (about two seconds), so
// it runs off the frame loop (net/PortMappingThread.h). The router's libraries live in its backend
// (net/portmap/); cPortMapping decides what to ask and what the answers mean.

#include <cstdint>
#include <memory>
#include <string>

class cPortMapper {
public:
	enum eWay { NAT_PMP, UPNP };
	static constexpr int WAYS = 2;

	// What the router answered to one request. Only a router that answered fills anything in.
	struct cAnswer {
		bool			answered = false;
		std::string		outside;			// the router's outside address as it named it; empty when it named none
		std::string		home;				// this machine's address on the home network
		bool			opened = false;		// the router opened the port and, read back, holds it for this machine
		uint16_t		outsidePort = 0;	// opened: the port on the outside address
		uint32_t		lease = 0;			// opened: seconds it lasts; 0 for as long as the router runs
		std::string		refusal;			// answered, not opened: the router's reason
	};

	// The mapper on the home network, made by its backend so that a program needs none of its
	// headers.
	static std::unique_ptr<cPortMapper> OpenOnNetwork();

	virtual				~cPortMapper() = default;
	// Opens (or renews) UDP port to this machine's same port, for lease seconds.
	virtual cAnswer		Open( eWay way, uint16_t port, uint32_t lease ) = 0;
	// Takes back the opening of port at outsidePort made the same way, if it is still this machine's.
	virtual void		Remove( eWay way, uint16_t port, uint16_t outsidePort ) = 0;
};
