// SPDX-License-Identifier: GPL-3.0-or-later
// The host's port mapping on a made-up router and a made-up clock: which answers become which line,
// when the opening is renewed, and what is taken back at the end.

#include <gtest/gtest.h>

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include "net/PortMapping.h"
#include "net/PortMappingThread.h"

namespace {

const uint16_t PORT = 27460;
const int64_t SECOND = 1000;

// Answers each way of asking with the answer set for it, and counts the requests.
class cFakeMapper : public cPortMapper {
public:
	struct cRemoval {
		eWay		way;
		uint16_t	port;
		uint16_t	outsidePort;
	};

	cAnswer				answers[WAYS];
	std::vector<eWay>	asked;
	std::vector<cRemoval> removed;

	cAnswer Open( eWay way, uint16_t port, uint32_t lease ) override {
		EXPECT_EQ( port, PORT );
		EXPECT_EQ( lease, cPortMapping::LEASE );
		asked.push_back( way );
		return answers[way];
	}
	void Remove( eWay way, uint16_t port, uint16_t outsidePort ) override {
		removed.push_back( { way, port, outsidePort } );
	}
};

cPortMapper::cAnswer Opened( const std::string &outside, uint16_t outsidePort, uint32_t lease ) {
	return { true, outside, "192.168.1.5", true, outsidePort, lease, "" };
}

cPortMapper::cAnswer Refused( const std::string &outside, const std::string &why ) {
	return { true, outside, "192.168.1.5", false, 0, 0, why };
}

const cPortMapper::cAnswer SILENT;
const std::string SAME_HOUSE = " (in the same house: kormaveth2d --join 192.168.1.5:27460)";
const std::string BY_HAND = "No router answered to open UDP port 27460: forward it by hand (README, Online)";
const std::string SHARED = "Your provider shares one outside address between customers: no port can be opened here. "
						   "Let your partner host.";

TEST( PortMappingTests, TheRoutersAnswersMakeTheLine ) {
	struct cCase {
		const char *			name;
		cPortMapper::cAnswer	natPmp;
		cPortMapper::cAnswer	upnp;
		cPortMapping::eState	state;
		std::string				line;
		size_t					asked;		// requests made
		size_t					removed;	// openings taken back at once
	};
	const cCase cases[] = {
		{ "NAT-PMP opens", Opened( "11.77.0.1", PORT, 3600 ), SILENT, cPortMapping::OPENED,
		  "Partner joins with: kormaveth2d --join 11.77.0.1:27460" + SAME_HOUSE, 1, 0 },
		{ "NAT-PMP opens another port", Opened( "11.77.0.1", 40001, 3600 ), SILENT, cPortMapping::OPENED,
		  "Partner joins with: kormaveth2d --join 11.77.0.1:40001" + SAME_HOUSE, 1, 0 },
		{ "UPnP opens after NAT-PMP's silence", SILENT, Opened( "198.51.100.9", PORT, 0 ), cPortMapping::OPENED,
		  "Partner joins with: kormaveth2d --join 198.51.100.9:27460" + SAME_HOUSE, 2, 0 },
		{ "UPnP opens after NAT-PMP's refusal", Refused( "11.77.0.1", "NAT-PMP: not allowed" ),
		  Opened( "11.77.0.1", PORT, 3600 ), cPortMapping::OPENED, "Partner joins with: kormaveth2d --join 11.77.0.1:27460" + SAME_HOUSE, 2, 0 },
		{ "nothing answers", SILENT, SILENT, cPortMapping::NO_ROUTER, BY_HAND, 2, 0 },
		{ "refused", Refused( "11.77.0.1", "NAT-PMP: not allowed" ), Refused( "11.77.0.1", "UPnP error 718" ),
		  cPortMapping::REFUSED, "The router refused to open UDP port 27460 (NAT-PMP: not allowed): forward it by hand", 2, 0 },
		{ "refused without a word", SILENT, Refused( "11.77.0.1", "" ), cPortMapping::REFUSED,
		  "The router refused to open UDP port 27460 (no reason given): forward it by hand", 2, 0 },
		{ "opened, not confirmed", SILENT, Refused( "11.77.0.1", "UPnP: the opening did not read back" ), cPortMapping::REFUSED,
		  "The router refused to open UDP port 27460 (UPnP: the opening did not read back): forward it by hand", 2, 0 },
		{ "no outside address", Refused( "", "NAT-PMP: the router has no outside address" ), Refused( "0.0.0.0", "" ),
		  cPortMapping::SHARED_ADDRESS, SHARED, 2, 0 },
		{ "opened on a shared address", Opened( "100.64.3.4", PORT, 3600 ), SILENT, cPortMapping::SHARED_ADDRESS, SHARED, 2, 1 },
		{ "opened behind another router", SILENT, Opened( "10.0.0.7", PORT, 3600 ), cPortMapping::SHARED_ADDRESS, SHARED, 2, 1 },
	};
	for ( const cCase &test : cases ) {
		cFakeMapper mapper;
		mapper.answers[cPortMapper::NAT_PMP] = test.natPmp;
		mapper.answers[cPortMapper::UPNP] = test.upnp;
		cPortMapping mapping( mapper, PORT );
		EXPECT_TRUE( mapping.GetLine().empty() );
		mapping.Work( 0 );
		EXPECT_EQ( mapping.GetState(), test.state ) << test.name;
		EXPECT_EQ( mapping.GetLine(), test.line ) << test.name;
		EXPECT_EQ( mapper.asked.size(), test.asked ) << test.name;
		EXPECT_EQ( mapper.asked[0], cPortMapper::NAT_PMP ) << test.name << ": NAT-PMP is asked first";
		EXPECT_EQ( mapper.removed.size(), test.removed ) << test.name;
	}
}

TEST( PortMappingTests, AnOpeningIsRenewedBeforeItsLeaseRunsOut ) {
	struct cCase {
		cPortMapper::eWay	way;
		uint32_t			lease;		// granted, seconds
		int64_t				renewal;	// seconds after the opening
	};
	const cCase cases[] = {
		{ cPortMapper::NAT_PMP, 3600, 1800 },
		{ cPortMapper::UPNP, 7200, 3600 },
		{ cPortMapper::NAT_PMP, 40, cPortMapping::SHORTEST_RENEWAL },
		{ cPortMapper::UPNP, 0, cPortMapping::LASTING_RENEWAL },
	};
	const int64_t start = 123456;
	for ( const cCase &test : cases ) {
		cFakeMapper mapper;
		mapper.answers[test.way] = Opened( "11.77.0.1", PORT, test.lease );
		cPortMapping mapping( mapper, PORT );
		const int64_t due = mapping.Work( start );
		EXPECT_EQ( due, start + test.renewal * SECOND ) << "lease " << test.lease;
		const size_t asked = mapper.asked.size();
		EXPECT_EQ( mapping.Work( due - 1 ), due );
		EXPECT_EQ( mapper.asked.size(), asked ) << "nothing is asked before the renewal is due";
		mapping.Work( due );
		ASSERT_EQ( mapper.asked.size(), asked + 1 ) << "the renewal asks once, the way that opened the port";
		EXPECT_EQ( mapper.asked.back(), test.way );
		EXPECT_EQ( mapping.GetState(), cPortMapping::OPENED );
	}
}

TEST( PortMappingTests, ARouterThatDidNotOpenIsAskedAgainLater ) {
	cFakeMapper mapper;
	cPortMapping mapping( mapper, PORT );
	const int64_t due = mapping.Work( 5 * SECOND );
	EXPECT_EQ( due, 5 * SECOND + cPortMapping::RETRY * SECOND );
	EXPECT_EQ( mapping.GetLine(), BY_HAND );
	mapper.answers[cPortMapper::UPNP] = Opened( "11.77.0.1", PORT, 3600 );
	mapping.Work( due - 1 );
	EXPECT_EQ( mapping.GetState(), cPortMapping::NO_ROUTER );
	mapping.Work( due );
	EXPECT_EQ( mapping.GetState(), cPortMapping::OPENED );
}

TEST( PortMappingTests, TheEndTakesBackOnlyWhatWasOpened ) {
	struct cCase {
		const char *			name;
		cPortMapper::cAnswer	natPmp;
		cPortMapper::cAnswer	upnp;
		bool					removes;
		cPortMapper::eWay		way;
		uint16_t				outsidePort;
	};
	const cCase cases[] = {
		{ "NAT-PMP's opening", Opened( "11.77.0.1", 40001, 3600 ), SILENT, true, cPortMapper::NAT_PMP, 40001 },
		{ "UPnP's opening", SILENT, Opened( "11.77.0.1", PORT, 3600 ), true, cPortMapper::UPNP, PORT },
		{ "nothing opened", SILENT, SILENT, false, cPortMapper::NAT_PMP, 0 },
		{ "refused", SILENT, Refused( "11.77.0.1", "UPnP error 718" ), false, cPortMapper::NAT_PMP, 0 },
	};
	for ( const cCase &test : cases ) {
		cFakeMapper mapper;
		mapper.answers[cPortMapper::NAT_PMP] = test.natPmp;
		mapper.answers[cPortMapper::UPNP] = test.upnp;
		cPortMapping mapping( mapper, PORT );
		mapping.Work( 0 );
		mapping.Close();
		mapping.Close();
		ASSERT_EQ( mapper.removed.size(), test.removes ? 1u : 0u ) << test.name;
		if ( test.removes ) {
			EXPECT_EQ( mapper.removed[0].way, test.way ) << test.name;
			EXPECT_EQ( mapper.removed[0].port, PORT ) << test.name;
			EXPECT_EQ( mapper.removed[0].outsidePort, test.outsidePort ) << test.name;
		}
	}
}

TEST( PortMappingTests, AddressesFallIntoTheirClasses ) {
	struct cCase {
		const char *				address;
		cPortMapping::eAddressClass	addressClass;
	};
	const cCase cases[] = {
		{ "11.77.0.1", cPortMapping::PUBLIC },			{ "203.0.113.7", cPortMapping::PUBLIC },
		{ "100.63.255.255", cPortMapping::PUBLIC },		{ "100.64.0.0", cPortMapping::SHARED },
		{ "100.127.255.255", cPortMapping::SHARED },	{ "100.128.0.0", cPortMapping::PUBLIC },
		{ "9.255.255.255", cPortMapping::PUBLIC },		{ "10.0.0.1", cPortMapping::PRIVATE },
		{ "10.255.255.255", cPortMapping::PRIVATE },	{ "172.15.255.255", cPortMapping::PUBLIC },
		{ "172.16.0.0", cPortMapping::PRIVATE },		{ "172.31.255.255", cPortMapping::PRIVATE },
		{ "172.32.0.0", cPortMapping::PUBLIC },			{ "192.167.255.255", cPortMapping::PUBLIC },
		{ "192.168.0.0", cPortMapping::PRIVATE },		{ "192.168.255.255", cPortMapping::PRIVATE },
		{ "192.169.0.0", cPortMapping::PUBLIC },		{ "0.0.0.0", cPortMapping::UNUSABLE },
		{ "127.0.0.1", cPortMapping::UNUSABLE },		{ "169.254.10.1", cPortMapping::UNUSABLE },
		{ "", cPortMapping::UNUSABLE },					{ "::1", cPortMapping::UNUSABLE },
		{ "11.77.0", cPortMapping::UNUSABLE },			{ "11.77.0.1 ", cPortMapping::UNUSABLE },
	};
	for ( const cCase &test : cases ) {
		EXPECT_EQ( cPortMapping::ClassifyAddress( test.address ), test.addressClass ) << test.address;
	}
}

// On its own thread: the line reaches the report, and the end takes the opening back before the
// thread is gone.
TEST( PortMappingTests, TheThreadReportsTheLineAndTakesTheOpeningBackAtTheEnd ) {
	struct cWitnessedMapper : cFakeMapper {
		size_t *removals = nullptr;
		void Remove( eWay, uint16_t, uint16_t ) override { ( *removals )++; }
	};
	size_t removals = 0;
	auto mapper = std::make_unique<cWitnessedMapper>();
	mapper->answers[cPortMapper::NAT_PMP] = Opened( "11.77.0.1", PORT, 3600 );
	mapper->removals = &removals;
	std::mutex guard;
	std::condition_variable reported;
	std::vector<std::string> lines;
	{
		cPortMappingThread thread( std::move( mapper ), PORT, [&]( const std::string &line ) {
			std::lock_guard<std::mutex> lock( guard );
			lines.push_back( line );
			reported.notify_all();
		} );
		std::unique_lock<std::mutex> lock( guard );
		reported.wait( lock, [&] { return !lines.empty(); } );
		EXPECT_EQ( thread.GetLine(), lines[0] );
	}
	EXPECT_EQ( lines, std::vector<std::string>( { "Partner joins with: kormaveth2d --join 11.77.0.1:27460" + SAME_HOUSE } ) );
	EXPECT_EQ( removals, 1u );
}

}
