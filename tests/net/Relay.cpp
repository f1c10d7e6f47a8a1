// SPDX-License-Identifier: GPL-3.0-or-later
// kmvt_relay: a UDP forwarder between a joining game and its host on this machine that delays,
// jitters, loses, duplicates and reorders packets on a fixed seed, and counts the bytes each way.
//   kmvt_relay LISTEN_PORT HOST_PORT [--delay=MS] [--jitter=MS] [--loss=PCT] [--duplicate=PCT]
//              [--reorder=PCT] [--seed=N] [--seconds=N] [--idle=SECONDS] [--change-at=SECONDS]
//              [--delay-then=MS] [--blackout-at=SECONDS] [--blackout-for=SECONDS] [--new-port-at=SECONDS]
// --delay is one way; a reordered packet waits a further 2 x jitter. The times of the line's
// changes count from the first packet: the delay becomes --delay-then at --change-at; every packet
// is lost from --blackout-at for --blackout-for seconds; at --new-port-at the relay speaks to the
// host from a new port, as a home router does after a restart. It stops by itself after --seconds
// (300), or --idle seconds (15) without a packet once traffic began (a blackout not counted), and
// prints the bytes and packets each way and the seconds between the first and the last packet.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <queue>
#include <random>
#include <string>
#include <vector>

namespace {

using tClock = std::chrono::steady_clock;

struct cImpairment {
	double delay = 0, jitter = 0, loss = 0, duplicate = 0, reorder = 0, seconds = 300, idle = 15;
	double changeAt = -1, delayThen = 0, blackoutAt = -1, blackoutFor = 0, newPortAt = -1;
	unsigned seed = 1;
};

struct cPacketInFlight {
	tClock::time_point due;
	uint64_t			order;
	int					toHost;			// 1: joiner to host, 0: host to joiner
	std::vector<char>	bytes;
	bool operator<( const cPacketInFlight &other ) const { return due != other.due ? due > other.due : order > other.order; }
};

int OpenSocket( uint16_t port ) {
	const int socketFd = socket( AF_INET, SOCK_DGRAM, 0 );
	sockaddr_in address = {};
	address.sin_family = AF_INET;
	address.sin_addr.s_addr = htonl( INADDR_LOOPBACK );
	address.sin_port = htons( port );
	if ( socketFd < 0 || bind( socketFd, reinterpret_cast<sockaddr *>( &address ), sizeof( address ) ) != 0 ) {
		std::perror( "kmvt_relay: bind" );
		std::exit( 2 );
	}
	return socketFd;
}

bool ReadOption( const char *argument, const char *name, double &value ) {
	const size_t length = std::strlen( name );
	if ( std::strncmp( argument, name, length ) != 0 ) {
		return false;
	}
	value = std::atof( argument + length );
	return true;
}

}

int main( int argc, char **argv ) {
	if ( argc < 3 ) {
		std::fprintf( stderr, "usage: kmvt_relay LISTEN_PORT HOST_PORT [--delay=MS] [--jitter=MS] [--loss=PCT] ...\n" );
		return 2;
	}
	cImpairment impairment;
	for ( int i = 3; i < argc; i++ ) {
		double seed = 0;
		const bool known = ReadOption( argv[i], "--delay=", impairment.delay ) || ReadOption( argv[i], "--jitter=", impairment.jitter ) ||
						   ReadOption( argv[i], "--loss=", impairment.loss ) || ReadOption( argv[i], "--duplicate=", impairment.duplicate ) ||
						   ReadOption( argv[i], "--reorder=", impairment.reorder ) || ReadOption( argv[i], "--seconds=", impairment.seconds ) ||
						   ReadOption( argv[i], "--idle=", impairment.idle ) || ReadOption( argv[i], "--seed=", seed ) ||
						   ReadOption( argv[i], "--change-at=", impairment.changeAt ) ||
						   ReadOption( argv[i], "--delay-then=", impairment.delayThen ) ||
						   ReadOption( argv[i], "--blackout-at=", impairment.blackoutAt ) ||
						   ReadOption( argv[i], "--blackout-for=", impairment.blackoutFor ) ||
						   ReadOption( argv[i], "--new-port-at=", impairment.newPortAt );
		impairment.seed = seed > 0 ? static_cast<unsigned>( seed ) : impairment.seed;
		if ( !known ) {
			std::fprintf( stderr, "kmvt_relay: unknown option %s\n", argv[i] );
			return 2;
		}
	}
	const int front = OpenSocket( static_cast<uint16_t>( std::atoi( argv[1] ) ) );
	int back = OpenSocket( 0 );
	bool movedPort = false;
	sockaddr_in host = {};
	host.sin_family = AF_INET;
	host.sin_addr.s_addr = htonl( INADDR_LOOPBACK );
	host.sin_port = htons( static_cast<uint16_t>( std::atoi( argv[2] ) ) );
	sockaddr_in joiner = {};
	bool joined = false;
	std::mt19937 random( impairment.seed );
	std::uniform_real_distribution<double> uniform( 0.0, 100.0 );
	std::priority_queue<cPacketInFlight> inFlight;
	uint64_t order = 0, bytes[2] = {}, packets[2] = {};
	const tClock::time_point start = tClock::now();
	tClock::time_point first = start, last = start;
	const auto elapsed = []( tClock::time_point from ) { return std::chrono::duration<double>( tClock::now() - from ).count(); };
	const auto inBlackout = [&]() {
		const double at = elapsed( first );
		return packets[0] + packets[1] > 0 && at >= impairment.blackoutAt && at < impairment.blackoutAt + impairment.blackoutFor;
	};
	while ( elapsed( start ) < impairment.seconds &&
			( packets[0] + packets[1] == 0 || elapsed( last ) < impairment.idle || inBlackout() ) ) {
		const double traffic = packets[0] + packets[1] > 0 ? elapsed( first ) : 0.0;
		if ( !movedPort && impairment.newPortAt >= 0 && traffic >= impairment.newPortAt ) {
			close( back );
			back = OpenSocket( 0 );
			movedPort = true;
		}
		const double delay = impairment.changeAt >= 0 && traffic >= impairment.changeAt ? impairment.delayThen : impairment.delay;
		pollfd sockets[2] = { { front, POLLIN, 0 }, { back, POLLIN, 0 } };
		poll( sockets, 2, 1 );
		for ( int side = 0; side < 2; side++ ) {
			if ( !( sockets[side].revents & POLLIN ) ) {
				continue;
			}
			char buffer[65536];
			sockaddr_in from = {};
			socklen_t fromSize = sizeof( from );
			const ssize_t size = recvfrom( sockets[side].fd, buffer, sizeof( buffer ), 0, reinterpret_cast<sockaddr *>( &from ), &fromSize );
			if ( size < 0 ) {
				continue;
			}
			const int toHost = side == 0 ? 1 : 0;
			if ( toHost ) {
				joiner = from;
				joined = true;
			}
			first = packets[0] + packets[1] == 0 ? tClock::now() : first;
			last = tClock::now();
			bytes[toHost] += static_cast<uint64_t>( size );
			packets[toHost]++;
			if ( uniform( random ) < impairment.loss || inBlackout() ) {
				continue;
			}
			const int copies = uniform( random ) < impairment.duplicate ? 2 : 1;
			for ( int copy = 0; copy < copies; copy++ ) {
				double wait = delay + ( uniform( random ) / 50.0 - 1.0 ) * impairment.jitter;
				wait += uniform( random ) < impairment.reorder ? 2 * impairment.jitter : 0.0;
				const auto due = tClock::now() + std::chrono::microseconds( static_cast<int64_t>( std::max( 0.0, wait ) * 1000 ) );
				inFlight.push( { due, order++, toHost, std::vector<char>( buffer, buffer + size ) } );
			}
		}
		while ( !inFlight.empty() && inFlight.top().due <= tClock::now() ) {
			const cPacketInFlight &packet = inFlight.top();
			const sockaddr_in &to = packet.toHost ? host : joiner;
			if ( packet.toHost || joined ) {
				sendto( packet.toHost ? back : front, packet.bytes.data(), packet.bytes.size(), 0,
						reinterpret_cast<const sockaddr *>( &to ), sizeof( to ) );
			}
			inFlight.pop();
		}
	}
	const double seconds = std::chrono::duration<double>( last - first ).count();
	std::printf( "relay: %.1f s of traffic; joiner to host %llu bytes in %llu packets (%.0f B/s), host to joiner %llu bytes in "
				 "%llu packets (%.0f B/s)\n", seconds, static_cast<unsigned long long>( bytes[1] ), static_cast<unsigned long long>( packets[1] ),
				 seconds > 0 ? bytes[1] / seconds : 0.0, static_cast<unsigned long long>( bytes[0] ),
				 static_cast<unsigned long long>( packets[0] ), seconds > 0 ? bytes[0] / seconds : 0.0 );
	close( front );
	close( back );
	return 0;
}
