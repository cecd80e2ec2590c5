// What the program has on the heap. Every allocation of the program is counted, those of operator
// new included, since it asks malloc. Only one thread may allocate at a time.

#ifndef BENCH_HEAP_H_
#define BENCH_HEAP_H_

#include <cstddef>

// How often memory was asked for so far: malloc, calloc, realloc and the aligned ones.
long HeapRequests();

// The most bytes at a time beyond those of the moment when the object was made. The latest one
// counts.
class HeapPeak {
 public:
  HeapPeak();
  std::size_t bytes() const;

 private:
  std::size_t level_;
};

#endif  // BENCH_HEAP_H_
