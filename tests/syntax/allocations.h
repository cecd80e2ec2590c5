// Counts and fails the allocations of this test program.

#ifndef TESTS_SYNTAX_ALLOCATIONS_H_
#define TESTS_SYNTAX_ALLOCATIONS_H_

// How many new (std::nothrow) there have been.
long Allocations();
// The next one of them answers null.
void FailNextAllocation();

#endif  // TESTS_SYNTAX_ALLOCATIONS_H_
