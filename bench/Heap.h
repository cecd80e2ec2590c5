// Counts the allocations of the program, those of operator new included, since it calls malloc.
// Only one thread may allocate at a time.

#ifndef BENCH_HEAP_H_
#define BENCH_HEAP_H_

#include <cstddef>

// The number of calls of malloc, calloc, realloc and the aligned ones so far.
long HeapRequests();

// The most bytes allocated at a time beyond those allocated when the object was made. Making
// another object starts the measurement anew.
class HeapPeak {
 public:
  HeapPeak();
  std::size_t bytes() const;

 private:
  std::size_t level_;
};

#endif  // BENCH_HEAP_H_
