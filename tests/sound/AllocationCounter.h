// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// Counts the program's C++ allocations: linked into a test program, it replaces the global
// operator new and delete, so that a test can show a step allocates nothing, or nothing large.

#include <cstddef>

class cAllocationCounter {
public:
					cAllocationCounter();		// counts from zero
	size_t			GetCount() const;			// allocations since construction
	size_t			GetLargest() const;			// in bytes, the largest single request since construction

private:
	size_t			countAtStart;
};
