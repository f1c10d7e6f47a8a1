// SPDX-License-Identifier: GPL-3.0-or-later
// kmvt_stranger: a machine that is nobody's partner, for the online tests. It connects to a UDP port
// of this machine as a joining game would, then says nothing, or (--talk) sends a few broken
// packets and a hello as soon as it is connected, or (--resume) claims to be the partner come back
// with a made-up token, and prints how it was received:
//   kmvt_stranger PORT SECONDS [--talk | --resume]
// "connected", then "turned away: why" when the other side closes on it; it leaves after SECONDS.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include "net/Handshake.h"
#include "net/Link.h"
#include "net/Packet.h"

int main( int argc, char **argv ) {
	if ( argc < 3 ) {
		std::fprintf( stderr, "usage: kmvt_stranger PORT SECONDS [--talk]\n" );
		return 2;
	}
	const bool talk = argc > 3 && std::strcmp( argv[3], "--talk" ) == 0;
	const bool resume = argc > 3 && std::strcmp( argv[3], "--resume" ) == 0;
	std::string why;
	const std::unique_ptr<cLink> link =
		cLink::OpenOnNetwork( false, "127.0.0.1", static_cast<uint16_t>( std::atoi( argv[1] ) ), why );
	if ( !link ) {
		std::fprintf( stderr, "kmvt_stranger: %s\n", why.c_str() );
		return 2;
	}
	const auto until = std::chrono::steady_clock::now() + std::chrono::seconds( std::atoi( argv[2] ) );
	while ( std::chrono::steady_clock::now() < until ) {
		const cLink::cEvent event = link->Poll();
		if ( event.kind == cLink::CONNECTED ) {
			std::printf( "connected\n" );
			if ( talk ) {
				link->Send( cLink::UNRELIABLE, { 0xFF, 1, 2, 3 } );
				cNetMessage hello;
				hello.kind = NET_HELLO;
				hello.hello.protocol = cHandshake::PROTOCOL;
				hello.hello.version = "a stranger";
				link->Send( cLink::RELIABLE, cPacket::Write( hello ) );
			} else if ( resume ) {
				cNetMessage back;
				back.kind = NET_RESUME;
				back.token = 0x5EC2E7;
				link->Send( cLink::RELIABLE, cPacket::Write( back ) );
			}
		} else if ( event.kind == cLink::DISCONNECTED ) {
			std::printf( "turned away: %s\n", event.why.c_str() );
			return 0;
		} else if ( event.kind == cLink::NOTHING ) {
			std::this_thread::sleep_for( std::chrono::milliseconds( 5 ) );
		}
	}
	std::printf( "left after %s s\n", argv[2] );
	return 0;
}
