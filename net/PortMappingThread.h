// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// cPortMappingThread runs the host's port mapping (net/PortMapping.h) on a thread of its own, so
// that the frame loop never waits on the router: it asks at once, renews in time, hands every new
// line to the caller's report (on its own thread, outside its lock) and, when it goes, takes the
// opening back and ends its thread before it returns.

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "net/PortMapper.h"
#include "net/PortMapping.h"

class cPortMappingThread {
public:
	typedef std::function<void( const std::string &line )> tReport;

						cPortMappingThread( std::unique_ptr<cPortMapper> mapper, uint16_t port, tReport report );
						~cPortMappingThread();
						cPortMappingThread( const cPortMappingThread & ) = delete;
	cPortMappingThread &operator=( const cPortMappingThread & ) = delete;

	// The last line reported; empty until the router was first asked.
	std::string			GetLine() const;

private:
	void				Run();

	std::unique_ptr<cPortMapper>	mapper;
	cPortMapping					mapping;
	tReport							report;
	mutable std::mutex				guard;
	std::condition_variable			woken;
	bool							stopping = false;
	std::string						line;
	std::thread						thread;
};
