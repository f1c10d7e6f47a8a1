// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/enet/EnetLink.h"

#include <enet/enet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

namespace {

const size_t PEERS = 8;				// the partner, one leaving, candidates, and room to turn others away
const size_t CHANNELS = 2;

enet_uint8 GetChannelId( cLink::eChannel channel ) {
	return channel == cLink::RELIABLE ? 0 : 1;
}

// The first IPv4 address of a name; false with why.
bool Resolve( const std::string &name, enet_uint32 &address, std::string &why ) {
	addrinfo hints = {};
	hints.ai_family = AF_UNSPEC;
	hints.ai_socktype = SOCK_DGRAM;
	addrinfo *found = nullptr;
	const int error = getaddrinfo( name.c_str(), nullptr, &hints, &found );
	if ( error != 0 ) {
		why = "cannot find " + name + ": " + gai_strerror( error );
		return false;
	}
	bool ipv6 = false;
	bool ipv4 = false;
	for ( const addrinfo *it = found; it != nullptr && !ipv4; it = it->ai_next ) {
		if ( it->ai_family == AF_INET ) {
			address = reinterpret_cast<const sockaddr_in *>( it->ai_addr )->sin_addr.s_addr;
			ipv4 = true;
		}
		ipv6 = ipv6 || it->ai_family == AF_INET6;
	}
	freeaddrinfo( found );
	if ( !ipv4 ) {
		why = name + ( ipv6 ? " has only IPv6 addresses, and online play speaks IPv4 only" : " has no address" );
	}
	return ipv4;
}

}

cEnetLink::cEnetLink() = default;

// What was sent before leaving gets its chance to arrive.
cEnetLink::~cEnetLink() {
	if ( host == nullptr ) {
		return;
	}
	ENetEvent event;
	const enet_uint32 until = enet_time_get() + FAREWELL_TIME;
	while ( leaving != nullptr && enet_time_get() < until && enet_host_service( host, &event, 10 ) >= 0 ) {
		if ( event.type == ENET_EVENT_TYPE_RECEIVE ) {
			enet_packet_destroy( event.packet );
		} else if ( event.type == ENET_EVENT_TYPE_DISCONNECT && event.peer == leaving ) {
			leaving = nullptr;
		}
	}
	enet_host_destroy( host );
	enet_deinitialize();
}

bool cEnetLink::CreateHost( bool listening, uint16_t port, std::string &why ) {
	if ( !started && enet_initialize() != 0 ) {
		why = "cannot start ENet";
		return false;
	}
	started = true;
	ENetAddress address = {};
	address.host = ENET_HOST_ANY;
	address.port = port;
	host = enet_host_create( listening ? &address : nullptr, PEERS, CHANNELS, 0, 0 );
	if ( host == nullptr ) {
		why = listening ? "cannot listen on UDP port " + std::to_string( port ) + " (is another game using it?)"
						: std::string( "cannot open a UDP socket" );
		return false;
	}
	host->maximumPacketSize = MAX_PACKET;
	host->maximumWaitingData = MAX_WAITING;
	return true;
}

std::unique_ptr<cLink> cLink::OpenOnNetwork( bool hosting, const std::string &name, uint16_t port,
											  std::string &why ) {
	auto link = std::make_unique<cEnetLink>();
	if ( !( hosting ? link->Host( port, why ) : link->Join( name, port, why ) ) ) {
		return nullptr;
	}
	return link;
}

bool cEnetLink::Host( uint16_t port, std::string &why ) {
	hosting = true;
	return CreateHost( true, port, why );
}

bool cEnetLink::Join( const std::string &name, uint16_t port, std::string &why ) {
	ENetAddress address = {};
	address.port = port;
	if ( !CreateHost( false, 0, why ) || !Resolve( name, address.host, why ) ) {
		return false;
	}
	hostAddress = address.host;
	hostPort = port;
	partner = enet_host_connect( host, &address, CHANNELS, 0 );
	if ( partner == nullptr ) {
		why = "cannot connect to " + name;
		return false;
	}
	Watch( partner );
	return true;
}

// Once connected: a command sent while connecting would break the connection's own handshake.
void cEnetLink::Watch( ENetPeer *peer ) {
	enet_peer_timeout( peer, 0, TIMEOUT, TIMEOUT );
	if ( peer->state == ENET_PEER_STATE_CONNECTED ) {
		enet_peer_throttle_configure( peer, ENET_PEER_PACKET_THROTTLE_INTERVAL, ENET_PEER_PACKET_THROTTLE_SCALE, 0 );
	}
}

void cEnetLink::TurnAway( ENetPeer *&peer ) {
	if ( peer != nullptr ) {
		enet_peer_disconnect_now( peer, hosting ? BUSY : NOT_HOSTING );
		peer = nullptr;
	}
}

void cEnetLink::TakeNewcomer() {
	if ( newcomer.peer == nullptr || !newcomerHeard ) {
		return;
	}
	if ( partner != nullptr ) {
		enet_peer_reset( partner );
	}
	partner = newcomer.peer;
	partnerHeardAt = enet_time_get();
	newcomer.peer = nullptr;
	newcomerHeard = false;
}

void cEnetLink::Reconnect() {
	if ( hosting || host == nullptr ) {
		return;
	}
	if ( partner != nullptr ) {
		enet_peer_reset( partner );
	}
	ENetAddress address = {};
	address.host = hostAddress;
	address.port = hostPort;
	partner = enet_host_connect( host, &address, CHANNELS, 0 );
	if ( partner != nullptr ) {
		Watch( partner );
	}
}

cLink::cEvent cEnetLink::Poll() {
	cEvent result;
	if ( firstWaiting ) {
		firstWaiting = false;
		result.kind = RECEIVED;
		result.data.swap( first );
		return result;
	}
	if ( newcomerHeard ) {
		newcomerHeard = false;
		TurnAway( newcomer.peer );
	}
	DropSilentCandidates();
	ENetEvent event;
	while ( host != nullptr && result.kind == NOTHING && enet_host_service( host, &event, 0 ) > 0 ) {
		if ( event.type == ENET_EVENT_TYPE_CONNECT ) {
			if ( !hosting && event.peer == partner ) {
				Watch( partner );
				result.kind = CONNECTED;
			} else {
				TakeConnection( event.peer );
			}
		} else if ( event.type == ENET_EVENT_TYPE_RECEIVE ) {
			if ( event.peer == partner || event.peer == newcomer.peer ) {
				result.kind = RECEIVED;
				result.data.assign( event.packet->data, event.packet->data + event.packet->dataLength );
				result.newcomer = event.peer == newcomer.peer;
				newcomerHeard = result.newcomer;
				partnerHeardAt = result.newcomer ? partnerHeardAt : enet_time_get();
			} else if ( hosting && partner == nullptr ) {
				Choose( event.peer, event.packet->data, event.packet->dataLength, result );
			}
			enet_packet_destroy( event.packet );
		} else if ( event.type == ENET_EVENT_TYPE_DISCONNECT ) {
			DropCandidate( event.peer );
			newcomer.peer = event.peer == newcomer.peer ? nullptr : newcomer.peer;
			if ( event.peer == leaving ) {
				leaving = nullptr;
			} else if ( event.peer == partner ) {
				partner = nullptr;
				result.kind = DISCONNECTED;
				result.refused = !hosting && event.data == BUSY;
				result.why = result.refused ? "the host already has a partner"
											: hosting ? "the connection closed" : "the host did not answer or closed the connection";
			}
		}
	}
	return result;
}

// A joiner turns every connection away; a host keeps it as a candidate while it has no partner,
// and as the newcomer while its partner is silent.
void cEnetLink::TakeConnection( ENetPeer *peer ) {
	const enet_uint32 now = enet_time_get();
	const bool partnerSilent = partner != nullptr && now - partnerHeardAt > NEWCOMER_SILENCE;
	if ( !hosting || ( partner != nullptr && !( partnerSilent && newcomer.peer == nullptr ) ) ) {
		TurnAway( peer );
		return;
	}
	Watch( peer );
	if ( partner != nullptr ) {
		newcomer = { peer, now };
	} else {
		candidates.push_back( { peer, now } );
	}
}

void cEnetLink::Choose( ENetPeer *peer, const uint8_t *data, size_t size, cEvent &result ) {
	bool candidate = false;
	for ( const cCandidate &it : candidates ) {
		candidate = candidate || it.peer == peer;
	}
	if ( !candidate ) {
		return;
	}
	partner = peer;
	partnerHeardAt = enet_time_get();
	for ( const cCandidate &other : candidates ) {
		if ( other.peer != peer ) {
			enet_peer_disconnect_now( other.peer, BUSY );
		}
	}
	candidates.clear();
	result.kind = CONNECTED;
	first.assign( data, data + size );
	firstWaiting = true;
}

void cEnetLink::DropCandidate( ENetPeer *peer ) {
	for ( auto it = candidates.begin(); it != candidates.end(); ++it ) {
		if ( it->peer == peer ) {
			candidates.erase( it );
			return;
		}
	}
}

void cEnetLink::DropSilentCandidates() {
	const enet_uint32 now = enet_time_get();
	if ( newcomer.peer != nullptr && now - newcomer.since > CANDIDATE_TIME ) {
		TurnAway( newcomer.peer );
	}
	while ( !candidates.empty() && now - candidates.front().since > CANDIDATE_TIME ) {
		enet_peer_disconnect_now( candidates.front().peer, 0 );
		candidates.erase( candidates.begin() );
	}
}

void cEnetLink::Send( eChannel channel, const std::vector<uint8_t> &bytes ) {
	if ( partner == nullptr ) {
		return;
	}
	const enet_uint32 flags = channel == RELIABLE ? ENET_PACKET_FLAG_RELIABLE : ENET_PACKET_FLAG_UNSEQUENCED;
	ENetPacket *packet = enet_packet_create( bytes.data(), bytes.size(), flags );
	if ( packet != nullptr && enet_peer_send( partner, GetChannelId( channel ), packet ) != 0 ) {
		enet_packet_destroy( packet );
	}
	enet_host_flush( host );
}

void cEnetLink::Disconnect() {
	if ( partner == nullptr ) {
		return;
	}
	if ( leaving != nullptr ) {
		enet_peer_reset( leaving );
	}
	enet_peer_disconnect_later( partner, 0 );
	enet_host_flush( host );
	leaving = partner;
	partner = nullptr;
}
