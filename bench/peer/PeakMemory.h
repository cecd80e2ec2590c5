// The memory that something needs in a process of its own.

#ifndef BENCH_PEER_PEAKMEMORY_H_
#define BENCH_PEER_PEAKMEMORY_H_

#include <functional>

// The most kilobytes that a child process holds at a time while it does the work; -1 when there is
// no such process.
long PeakMemoryOf(const std::function<void()>& work);

#endif  // BENCH_PEER_PEAKMEMORY_H_
