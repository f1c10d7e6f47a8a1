// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cDelayControl follows the line with the input delay during an online game. The round trip comes
// from the acknowledgements the inputs already carry: the time from an own step's first sending to
// the partner's first acknowledgement of it. The delay is the least number of steps that outlasts
// the longest recent round trip with a margin for jitter; it rises at once when steps wait and the
// line asks for more, or by one step when steps keep waiting anyway, and falls one step every
// FALL_TIME once the line has been calm for CALM_TIME, down to what the round trip asks for. The host alone decides; both machines switch at a
// step agreed ahead.

#include <cstdint>
#include <deque>
#include <vector>

class cDelayControl {
public:
	static constexpr int64_t ROUND_TRIP_TIME = 3000;	// msec: the round trips that count
	static constexpr int64_t MARGIN = 20;				// msec for jitter on top of the longest round trip
	static constexpr int64_t WAIT_TIME = 1000;			// msec in which waits are counted
	static constexpr int	RAISE_WAITS = 2;			// waits within WAIT_TIME that raise the delay
	static constexpr int64_t CALM_TIME = 5000;			// msec without a wait before it falls a step
	static constexpr int64_t FALL_TIME = 500;			// msec between falls while the line stays calm
	static constexpr uint64_t LEAD = 8;				// steps ahead a change is agreed, beyond the delay

	// The least delay, in steps, that outlasts a round trip with the margin; at most maxDelay.
	static uint32_t		ForRoundTrip( int64_t roundTripMsec, uint32_t maxDelay );

	explicit			cDelayControl( uint32_t delay, uint32_t maxDelay );

	// Own step sent for the first time at now.
	void				Sent( uint64_t step, int64_t now );
	// The partner holds own steps 0 .. acknowledged - 1.
	void				Acknowledged( uint64_t acknowledged, int64_t now );
	// One step time passed; waited: no step could run in it.
	void				Slot( bool waited, int64_t now );
	// The delay the line asks for now, or the current one; the caller agrees it with the partner
	// and then calls Switched.
	uint32_t			Choose( int64_t now ) const;
	void				Switched( uint32_t delay, int64_t now );

	uint32_t			GetDelay() const { return delay; }
	// msec: the longest round trip that still counts, 0 before the first.
	int64_t				GetRoundTrip() const;

private:
	struct cSample {
		int64_t			at;
		int64_t			value;
	};

	uint32_t			delay;
	uint32_t			maxDelay;
	std::vector<int64_t> sentAt;			// by step, modulo its size
	uint64_t			acknowledged = 0;
	uint64_t			sentEnd = 0;
	std::deque<cSample>	roundTrips;			// within ROUND_TRIP_TIME
	std::deque<int64_t>	waits;				// within WAIT_TIME
	int64_t				calmSince = 0;
};
