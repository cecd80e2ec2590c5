// Counts and fails the allocations of this test program.

#ifndef TESTS_PARSER_ALLOCATIONS_H_
#define TESTS_PARSER_ALLOCATIONS_H_

// How many allocations there have been, of any kind; always 0 under a sanitizer, which brings its
// own allocator.
long Allocations();

// The new (std::nothrow) behind so many more of them answers null, and those behind it are normal
// again.
void FailAllocation(int after = 0);

#endif  // TESTS_PARSER_ALLOCATIONS_H_
