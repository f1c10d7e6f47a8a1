// SPDX-License-Identifier: GPL-3.0-or-later
// kmvt_stranger PORT SECONDS [--talk | --resume]: nobody's partner, for the online tests. It connects
// to a UDP port of this machine as a joining game would and says nothing, or sends a broken packet
// and a hello (--talk), or claims to be the partner come back with a made-up token (--resume); it
// prints "connected", then "turned away: why" when the other side closes on it, or leaves after
// SECONDS.

#include <chrono>
#include <cstdio>
#include <string>
#include <thread>

#include "net/Link.h"
#include "net/Packet.h"

int main( int argc, char **argv ) {
	std::string why;
	const std::unique_ptr<cLink> link = argc < 3 ? nullptr : cLink::OpenOnNetwork( false, "127.0.0.1", static_cast<uint16_t>( std::stoi( argv[1] ) ), why );
	if ( !link ) {
		std::fprintf( stderr, "usage: kmvt_stranger PORT SECONDS [--talk | --resume] %s\n", why.c_str() );
		return 2;
	}
	const std::string mode = argc > 3 ? argv[3] : "";
	cNetMessage message;
	message.kind = mode == "--resume" ? NET_RESUME : NET_HELLO;
	message.token = 0x5EC2E7;
	message.hello.version = "a stranger";
	const auto until = std::chrono::steady_clock::now() + std::chrono::seconds( std::stoi( argv[2] ) );
	for ( cLink::cEvent event; std::chrono::steady_clock::now() < until; event = link->Poll() ) {
		if ( event.kind == cLink::CONNECTED ) {
			std::printf( "connected\n" );
			if ( !mode.empty() ) {
				link->Send( cLink::UNRELIABLE, { 0xFF, 1, 2, 3 } );
				link->Send( cLink::RELIABLE, cPacket::Write( message ) );
			}
		} else if ( event.kind == cLink::DISCONNECTED ) {
			std::printf( "turned away: %s\n", event.why.c_str() );
			return 0;
		}
		std::this_thread::sleep_for( std::chrono::milliseconds( 5 ) );
	}
	std::printf( "left after %s s\n", argv[2] );
	return 0;
}
