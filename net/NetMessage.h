// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cNetMessage is one message between the two machines of an online game, as the packet reader gives
// it and the packet writer takes it. The kinds:
//   HELLO   who this machine is: protocol, game version, data hash, determinism fingerprint, and
//           the input delay it asks for (0: let the host measure)
//   START   from the host: the input delay and the clock's start; the online game begins
//   INPUTS  a run of this machine's step inputs, from the first the partner has not acknowledged,
//           and how many of the partner's steps this machine holds without a gap
//   HASH    the state's hash after a step, with its parts, and their names when they changed
//   PING    a keep-alive and a round-trip probe; PONG answers it with the same time
//   DELAY   from the host: the input delay changes, from a step ahead on
//   RESUME  from a joiner that lost its connection and connects again: the token of the game's
//           START, which proves it is the same partner
//   BYE     this machine leaves: its player closed the game, its game quit after a step, it refused
//           the partner, or it found the two games out of step (at which step, in which part)

#include <cstdint>
#include <string>
#include <vector>

#include "net/StepInput.h"

enum eNetMessage : uint8_t {
	NET_HELLO = 1,
	NET_START,
	NET_INPUTS,
	NET_HASH,
	NET_PING,
	NET_PONG,
	NET_BYE,
	NET_DELAY,
	NET_RESUME,
	NET_MESSAGE_END		// one past the last kind
};

enum eByeReason : uint8_t { BYE_CLOSED, BYE_QUIT, BYE_REFUSED, BYE_OUT_OF_STEP, BYE_REASON_END };

struct cHello {
	uint64_t			protocol = 0;
	std::string			version;
	uint64_t			dataHash = 0;
	uint64_t			fingerprint = 0;
	uint32_t			delay = 0;			// steps asked for with --delay, 0 when not
};

struct cStart {
	uint32_t			delay = 0;			// steps
	uint32_t			startTick = 0;		// msec: the tick count of the first online step
	int64_t				startCalendar = 0;	// seconds: the calendar second of the first online step
	uint64_t			token = 0;			// the partner's proof when it connects again
};

struct cDelayChange {
	uint64_t			step = 0;			// the first step with the new delay
	uint32_t			delay = 0;			// steps
};

struct cInputRun {
	uint64_t			acknowledged = 0;	// the sender holds the receiver's steps 0 .. acknowledged - 1
	uint64_t			first = 0;			// the step of inputs[0]
	std::vector<cStepInput> inputs;
};

struct cHashReport {
	uint64_t			step = 0;			// steps played
	uint64_t			total = 0;
	bool				hasNames = false;	// false: the names of the sender's last report
	std::vector<std::string> names;
	std::vector<uint32_t>	parts;
};

struct cNetMessage {
	eNetMessage			kind = NET_PING;
	cHello				hello;
	cStart				start;
	cInputRun			inputs;
	cHashReport			hash;
	cDelayChange		delayChange;
	uint32_t			time = 0;			// PING, PONG: the sender's msec
	uint64_t			token = 0;			// RESUME
	eByeReason			reason = BYE_CLOSED;
	uint64_t			lastStep = 0;		// BYE_QUIT: the step whose game quit; BYE_OUT_OF_STEP: the hash's step
	std::string			part;				// BYE_OUT_OF_STEP: the first part that differs
};
