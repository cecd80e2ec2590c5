// The allocations of a parser that has warmed up.

#ifndef BENCH_WARMPARSER_H_
#define BENCH_WARMPARSER_H_

// Lets a parser read each of some texts again and again, and prints how often the last time asked
// for memory, which is to be never.
void PrintWarmAllocations();

#endif  // BENCH_WARMPARSER_H_
