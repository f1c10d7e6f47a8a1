#pragma once
// Counts the program's C++ allocations (operator new) so that a test can show a step allocates
// nothing, or nothing larger than a given size. Linked into a test program, it replaces the
// global operator new and delete of that program.

#include <cstddef>

class cAllocationCounter {
public:
					cAllocationCounter();		// starts counting from zero

	size_t			GetCount() const;			// allocations since construction
	size_t			GetLargest() const;			// in bytes, the largest single request since construction

private:
	size_t			countAtStart;
};
