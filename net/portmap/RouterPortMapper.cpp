// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/portmap/RouterPortMapper.h"

#include <arpa/inet.h>
#include <miniupnpc/miniupnpc.h>
#include <miniupnpc/upnpcommands.h>
#include <miniupnpc/upnperrors.h>
#include <natpmp.h>
#include <sys/select.h>
#include <sys/socket.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

const char *const UDP = "UDP";
const unsigned char SEARCH_HOPS = 2;
// The one kind searched for, so that the search costs its time once: routers of later versions
// answer it too.
const char *const ROUTER = "urn:schemas-upnp-org:device:InternetGatewayDevice:1";
const int ONLY_PERMANENT_LEASES = 725;		// the UPnP error of a router that takes no lease time

// The router found by a UPnP search, freed when it goes.
struct cIgd {
	UPNPUrls		urls = {};
	IGDdatas		data = {};
	char			home[64] = {};
	int				found = 0;		// 1 connected, 2 not connected, 3 not a router; 0 nothing

	cIgd() {
		int error = 0;
		UPNPDev *devices = upnpDiscoverDevice( ROUTER, cRouterPortMapper::SEARCH_TIME, nullptr, nullptr,
											   UPNP_LOCAL_PORT_ANY, 0, SEARCH_HOPS, &error );
		if ( devices != nullptr ) {
			found = UPNP_GetValidIGD( devices, &urls, &data, home, sizeof( home ) );
			freeUPNPDevlist( devices );
		}
	}
	~cIgd() {
		if ( found != 0 ) {
			FreeUPNPUrls( &urls );
		}
	}
	bool IsRouter() const { return found == 1 || found == 2; }
};

// Which machine and port the router sends the outside port to; false when it sends it nowhere.
bool GetHolder( const cRouterPortMapper::cUpnpRouter &router, uint16_t outsidePort, std::string &client,
				std::string &clientPort, uint32_t &lease ) {
	char client_[64] = {}, port_[8] = {}, description[80] = {}, enabled[8] = {}, duration[16] = {};
	const std::string number = std::to_string( outsidePort );
	if ( UPNP_GetSpecificPortMappingEntry( router.control.c_str(), router.service.c_str(), number.c_str(), UDP, nullptr,
										   client_, port_, description, enabled, duration ) != UPNPCOMMAND_SUCCESS ) {
		return false;
	}
	client = client_;
	clientPort = port_;
	lease = static_cast<uint32_t>( std::strtoul( duration, nullptr, 10 ) );
	return true;
}

// The port held for this machine's same port.
bool IsOurs( const cRouterPortMapper::cUpnpRouter &router, uint16_t port, uint16_t outsidePort, uint32_t &lease ) {
	std::string client, clientPort;
	return GetHolder( router, outsidePort, client, clientPort, lease ) && client == router.home &&
		   clientPort == std::to_string( port );
}

std::string DescribeUpnpError( int code ) {
	const char *text = strupnperror( code );
	return "UPnP error " + std::to_string( code ) + ( text != nullptr ? std::string( ", " ) + text : std::string() );
}

// Waits for the answer to the NAT-PMP request sent last, repeating it as the library does, until
// the deadline; the library's result.
int ReadNatPmp( natpmp_t &natpmp, natpmpresp_t &response, std::chrono::steady_clock::time_point deadline ) {
	int result = NATPMP_TRYAGAIN;
	while ( result == NATPMP_TRYAGAIN && std::chrono::steady_clock::now() < deadline ) {
		timeval timeout = {};
		getnatpmprequesttimeout( &natpmp, &timeout );
		const auto left = std::chrono::duration_cast<std::chrono::microseconds>( deadline - std::chrono::steady_clock::now() );
		if ( timeout.tv_sec * 1000000 + timeout.tv_usec > left.count() ) {
			timeout.tv_sec = static_cast<time_t>( left.count() / 1000000 );
			timeout.tv_usec = static_cast<suseconds_t>( left.count() % 1000000 );
		}
		fd_set sockets;
		FD_ZERO( &sockets );
		FD_SET( natpmp.s, &sockets );
		select( natpmp.s + 1, &sockets, nullptr, nullptr, &timeout );
		result = readnatpmpresponseorretry( &natpmp, &response );
	}
	return result;
}

// A router that said no, as opposed to silence or no router at all.
bool IsRouterAnswer( int result ) {
	return result == 0 || result == NATPMP_ERR_NOTAUTHORIZED || result == NATPMP_ERR_NETWORKFAILURE ||
		   result == NATPMP_ERR_OUTOFRESOURCES || result == NATPMP_ERR_UNSUPPORTEDOPCODE ||
		   result == NATPMP_ERR_UNSUPPORTEDVERSION || result == NATPMP_ERR_UNDEFINEDERROR;
}

std::string DescribeNatPmpError( int result ) {
	switch ( result ) {
		case NATPMP_ERR_NOTAUTHORIZED:		return "NAT-PMP: not allowed";
		case NATPMP_ERR_NETWORKFAILURE:		return "NAT-PMP: the router has no outside address";
		case NATPMP_ERR_OUTOFRESOURCES:		return "NAT-PMP: the router has no room left";
		case NATPMP_ERR_UNSUPPORTEDOPCODE:	return "NAT-PMP: the router does not open ports";
		default:							return "NAT-PMP error " + std::to_string( result );
	}
}

// The home address the gateway sees this machine at: the libraries' socket is connected to it.
std::string GetOwnAddress( int socket ) {
	sockaddr_in own = {};
	socklen_t size = sizeof( own );
	char text[INET_ADDRSTRLEN] = {};
	if ( getsockname( socket, reinterpret_cast<sockaddr *>( &own ), &size ) != 0 ||
		 inet_ntop( AF_INET, &own.sin_addr, text, sizeof( text ) ) == nullptr ) {
		return "";
	}
	return text;
}

}

std::unique_ptr<cPortMapper> cPortMapper::OpenOnNetwork() {
	return std::make_unique<cRouterPortMapper>();
}

cPortMapper::cAnswer cRouterPortMapper::Open( eWay way, uint16_t port, uint32_t lease ) {
	return way == NAT_PMP ? OpenByNatPmp( port, lease ) : OpenByUpnp( port, lease );
}

// The public address first: a router without one has nothing to open.
cPortMapper::cAnswer cRouterPortMapper::OpenByNatPmp( uint16_t port, uint32_t lease ) {
	cAnswer answer;
	natpmp_t natpmp;
	if ( initnatpmp( &natpmp, 0, 0 ) != 0 ) {
		return answer;
	}
	const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds( NAT_PMP_TIME );
	natpmpresp_t response = {};
	int result = sendpublicaddressrequest( &natpmp ) < 0 ? NATPMP_ERR_SENDERR : ReadNatPmp( natpmp, response, deadline );
	answer.answered = IsRouterAnswer( result );
	answer.home = GetOwnAddress( natpmp.s );
	if ( result == 0 ) {
		char text[INET_ADDRSTRLEN] = {};
		inet_ntop( AF_INET, &response.pnu.publicaddress.addr, text, sizeof( text ) );
		answer.outside = text;
		result = sendnewportmappingrequest( &natpmp, NATPMP_PROTOCOL_UDP, port, port, lease ) < 0
					 ? NATPMP_ERR_SENDERR : ReadNatPmp( natpmp, response, deadline );
		answer.opened = result == 0 && response.type == NATPMP_RESPTYPE_UDPPORTMAPPING &&
						response.pnu.newportmapping.privateport == port && response.pnu.newportmapping.lifetime > 0;
		answer.outsidePort = response.pnu.newportmapping.mappedpublicport;
		answer.lease = response.pnu.newportmapping.lifetime;
	}
	if ( answer.answered && !answer.opened ) {
		answer.refusal = result == 0 ? "NAT-PMP: the router answered for another port" : DescribeNatPmpError( result );
	}
	closenatpmp( &natpmp );
	return answer;
}

// A port another machine holds stays theirs; the router's word that it opened the port counts only
// once the opening reads back as this machine's.
cPortMapper::cAnswer cRouterPortMapper::OpenByUpnp( uint16_t port, uint32_t lease ) {
	cAnswer answer;
	cIgd igd;
	if ( !igd.IsRouter() ) {
		return answer;
	}
	answer.answered = true;
	upnp = { igd.urls.controlURL, igd.data.first.servicetype, igd.home };
	answer.home = upnp.home;
	char outside[40] = {};
	if ( UPNP_GetExternalIPAddress( upnp.control.c_str(), upnp.service.c_str(), outside ) == UPNPCOMMAND_SUCCESS ) {
		answer.outside = outside;
	}
	const std::string number = std::to_string( port );
	std::string client, clientPort;
	uint32_t held = 0;
	if ( GetHolder( upnp, port, client, clientPort, held ) && client != upnp.home ) {
		answer.refusal = "UDP port " + number + " is open to another machine, " + client;
		return answer;
	}
	int result = AddUpnp( port, std::to_string( lease ) );
	if ( result == ONLY_PERMANENT_LEASES ) {
		result = AddUpnp( port, "0" );
	}
	if ( result != UPNPCOMMAND_SUCCESS ) {
		answer.refusal = DescribeUpnpError( result );
		return answer;
	}
	answer.opened = IsOurs( upnp, port, port, held );
	answer.outsidePort = port;
	answer.lease = held;
	if ( !answer.opened ) {
		answer.refusal = "UPnP: the opening did not read back";
	}
	return answer;
}

int cRouterPortMapper::AddUpnp( uint16_t port, const std::string &lease ) {
	const std::string number = std::to_string( port );
	return UPNP_AddPortMapping( upnp.control.c_str(), upnp.service.c_str(), number.c_str(), number.c_str(),
								upnp.home.c_str(), DESCRIPTION, UDP, nullptr, lease.c_str() );
}

// NAT-PMP takes back only the asking machine's openings; UPnP's is read back first.
void cRouterPortMapper::Remove( eWay way, uint16_t port, uint16_t outsidePort ) {
	if ( way == NAT_PMP ) {
		natpmp_t natpmp;
		if ( initnatpmp( &natpmp, 0, 0 ) == 0 ) {
			natpmpresp_t response = {};
			if ( sendnewportmappingrequest( &natpmp, NATPMP_PROTOCOL_UDP, port, 0, 0 ) >= 0 ) {
				ReadNatPmp( natpmp, response, std::chrono::steady_clock::now() + std::chrono::milliseconds( NAT_PMP_TIME ) );
			}
			closenatpmp( &natpmp );
		}
		return;
	}
	uint32_t lease = 0;
	if ( !upnp.control.empty() && IsOurs( upnp, port, outsidePort, lease ) ) {
		const std::string number = std::to_string( outsidePort );
		UPNP_DeletePortMapping( upnp.control.c_str(), upnp.service.c_str(), number.c_str(), UDP, nullptr );
	}
}
