// The allocations of a parser that has read the same texts before.

#ifndef BENCH_WARMPARSER_H_
#define BENCH_WARMPARSER_H_

#include "bench/Results.h"

// Adds the number of allocations for each of some texts, in a parser's bottom frame and in a pushed
// one, and returns their sum.
long AddWarmAllocations(Results& results);

#endif  // BENCH_WARMPARSER_H_
