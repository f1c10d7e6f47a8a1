// SPDX-License-Identifier: GPL-3.0-or-later
#include "AllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<size_t> allocations { 0 };
std::atomic<size_t> largest { 0 };

}

// Every form is replaced, so that no allocation pairs with a library's own delete.
void *operator new( size_t size ) {
	allocations++;
	size_t seen = largest.load();
	while ( size > seen && !largest.compare_exchange_weak( seen, size ) ) {
	}
	void *memory = std::malloc( size == 0 ? 1 : size );
	if ( memory == nullptr ) {
		throw std::bad_alloc();
	}
	return memory;
}

void *operator new[]( size_t size ) { return operator new( size ); }
void operator delete( void *memory ) noexcept { std::free( memory ); }
void operator delete[]( void *memory ) noexcept { std::free( memory ); }
void operator delete( void *memory, size_t ) noexcept { std::free( memory ); }
void operator delete[]( void *memory, size_t ) noexcept { std::free( memory ); }

cAllocationCounter::cAllocationCounter() : countAtStart( allocations.load() ) { largest = 0; }
size_t cAllocationCounter::GetCount() const { return allocations.load() - countAtStart; }
size_t cAllocationCounter::GetLargest() const { return largest.load(); }
