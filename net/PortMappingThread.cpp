// SPDX-License-Identifier: GPL-3.0-or-later
#include "net/PortMappingThread.h"

#include <chrono>

namespace {

int64_t GetNow() {
	return std::chrono::duration_cast<std::chrono::milliseconds>( std::chrono::steady_clock::now().time_since_epoch() ).count();
}

}

cPortMappingThread::cPortMappingThread( std::unique_ptr<cPortMapper> mapper, uint16_t port, tReport report )
	: mapper( std::move( mapper ) ), mapping( *this->mapper, port ), report( std::move( report ) ) {
	thread = std::thread( &cPortMappingThread::Run, this );
}

cPortMappingThread::~cPortMappingThread() {
	{
		std::lock_guard<std::mutex> lock( guard );
		stopping = true;
	}
	woken.notify_all();
	thread.join();
}

std::string cPortMappingThread::GetLine() const {
	std::lock_guard<std::mutex> lock( guard );
	return line;
}

// A request under way finishes (within its bound) before the end is noticed. The report is made
// outside the lock, so that it may take locks of its own and call GetLine.
void cPortMappingThread::Run() {
	bool stop = false;
	while ( !stop ) {
		const int64_t next = mapping.Work( GetNow() );
		const std::string said = mapping.GetLine();
		std::unique_lock<std::mutex> lock( guard );
		if ( said != line ) {
			line = said;
			lock.unlock();
			report( said );
			lock.lock();
		}
		stop = woken.wait_for( lock, std::chrono::milliseconds( next - GetNow() ), [this] { return stopping; } );
	}
	mapping.Close();
}
