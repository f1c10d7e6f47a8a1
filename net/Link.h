// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cLink is the way to the partner's machine, as small as the online game needs it: events polled
// without waiting (a partner connected, bytes received, the partner gone) and bytes sent on one of
// two channels. The reliable channel delivers everything in order (the handshake, the hashes, the
// farewell); the unreliable one may lose, repeat or reorder (the inputs, which repeat themselves).
// ENet is one (net/enet/), an in-memory pair is another (the tests).

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class cLink {
public:
	static constexpr uint16_t DEFAULT_PORT = 27460;		// UDP, the host's

	enum eChannel { RELIABLE, UNRELIABLE };
	enum eEventKind { NOTHING, CONNECTED, RECEIVED, DISCONNECTED };

	struct cEvent {
		eEventKind				kind = NOTHING;
		std::vector<uint8_t>	data;		// RECEIVED
		std::string				why;		// DISCONNECTED
		bool					refused = false;	// DISCONNECTED: the host turned this machine away
		bool					newcomer = false;	// RECEIVED: from a machine that is not the partner
	};

	// The link over the network, made by its backend (ENet's, net/enet/) so that a program that
	// plays online needs none of the backend's headers: a host listening on port, or a partner
	// joining the machine called name at port. Null with why when it cannot even start.
	static std::unique_ptr<cLink> OpenOnNetwork( bool hosting, const std::string &name, uint16_t port,
												  std::string &why );

	virtual				~cLink() = default;
	// The next event, at once; NOTHING when there is none.
	virtual cEvent		Poll() = 0;
	virtual void		Send( eChannel channel, const std::vector<uint8_t> &bytes ) = 0;
	// Leaves the partner once what was sent has gone out; a host goes on listening for another.
	virtual void		Disconnect() = 0;
	// A host whose partner has gone silent hears the first packet of a machine that connects
	// (RECEIVED with newcomer): taken, the newcomer becomes the partner and the old one is left;
	// not taken, or not answered before the next Poll, it is turned away.
	virtual void		TakeNewcomer() {}
	// A joiner that lost its host connects to it again, as a new connection.
	virtual void		Reconnect() {}
};
