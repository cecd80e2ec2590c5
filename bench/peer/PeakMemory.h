// The memory that the contenders need, each in a process of its own.

#ifndef BENCH_PEER_PEAKMEMORY_H_
#define BENCH_PEER_PEAKMEMORY_H_

#include <vector>

// Prints the most kilobytes that a process holds at a time that builds the language and reads that
// many lines, beyond what one holds that has the loop do it. To be called while this process is
// small and has one thread.
void PrintPeakMemory(const std::vector<int>& sizes, int lines);

#endif  // BENCH_PEER_PEAKMEMORY_H_
