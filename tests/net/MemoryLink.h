// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Two ends of a link in memory, on a clock of whole slots that the test moves on. Each packet of
// the unreliable channel meets the fate the test's rule gives it (its number and the sender):
// delivered after some slots, lost, or delivered twice; reliable packets arrive in order after
// the base delay. The test hands an end the link's own events (a connection, a refusal) at its
// next poll. Nothing is random.

#include <deque>
#include <functional>
#include <memory>

#include "net/Link.h"

struct cFate {
	int					delay = 1;		// slots until it arrives; 0 to lose it
	bool				twice = false;	// a duplicate follows one slot later
};

class cMemoryWire {
public:
	using tRule = std::function<cFate( int end, int number )>;

	explicit			cMemoryWire( tRule rule ) : rule( std::move( rule ) ) {}
	void				Tick() { now++; }
	void				Inject( int side, const cLink::cEvent &event ) { events[side].push_back( event ); }
	int					newcomersTaken[2] = {};

	class cEnd : public cLink {
	public:
		cEnd( cMemoryWire &wire, int side ) : wire( wire ), side( side ) {}
		cEvent Poll() override {
			if ( !wire.events[side].empty() ) {
				const cEvent event = wire.events[side].front();
				wire.events[side].pop_front();
				return event;
			}
			std::deque<cPending> &inbox = wire.inboxes[side];
			for ( auto it = inbox.begin(); it != inbox.end(); ++it ) {
				if ( it->at <= wire.now ) {
					cEvent event;
					event.kind = RECEIVED;
					event.data = it->bytes;
					inbox.erase( it );
					return event;
				}
			}
			return cEvent();
		}
		void Send( eChannel channel, const std::vector<uint8_t> &bytes ) override {
			const cFate fate = channel == RELIABLE ? cFate() : wire.rule( side, sent++ );
			std::deque<cPending> &inbox = wire.inboxes[1 - side];
			if ( fate.delay > 0 ) {
				inbox.push_back( { wire.now + fate.delay, bytes } );
			}
			if ( fate.delay > 0 && fate.twice ) {
				inbox.push_back( { wire.now + fate.delay + 1, bytes } );
			}
		}
		void Disconnect() override {}
		void TakeNewcomer() override { wire.newcomersTaken[side]++; }

	private:
		cMemoryWire &	wire;
		int				side;
		int				sent = 0;
	};

private:
	struct cPending {
		int						at;
		std::vector<uint8_t>	bytes;
	};

	tRule				rule;
	int					now = 0;
	std::deque<cPending> inboxes[2];
	std::deque<cLink::cEvent> events[2];
};
