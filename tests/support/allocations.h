// Counts and fails the allocations of this test program.

#ifndef TESTS_SUPPORT_ALLOCATIONS_H_
#define TESTS_SUPPORT_ALLOCATIONS_H_

// How many allocations of any kind the floors have made.
long Allocations();
// Of the coming new (std::nothrow), the one at `index`, from 0, returns null. A negative index
// stops a failure that has not happened yet. Returns whether the failure requested before has
// happened.
bool FailAllocation(int index = 0);
// The same for what is allocated in cache lines.
bool FailAlignedAllocation(int index = 0);
// Of the coming allocations of any kind, the one at `index` gives nothing.
void FailAnyAllocation(long index);

#endif  // TESTS_SUPPORT_ALLOCATIONS_H_
