// Counts and fails the allocations of this test program.

#ifndef TESTS_SUPPORT_ALLOCATIONS_H_
#define TESTS_SUPPORT_ALLOCATIONS_H_

// The number of allocations of any kind.
long Allocations();
// Makes one of the next calls of new (std::nothrow) return null: the one at `index`, from 0. A
// negative index stops a failure that has not happened yet. Returns whether the failure requested
// before has happened.
bool FailAllocation(int index = 0);
// The same for allocations that are aligned to cache lines.
bool FailAlignedAllocation(int index = 0);
// Makes one of the next allocations of any kind fail.
void FailAnyAllocation(long index);

#endif  // TESTS_SUPPORT_ALLOCATIONS_H_
