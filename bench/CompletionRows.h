// The words of a large language, and what completing them costs.

#ifndef BENCH_COMPLETIONROWS_H_
#define BENCH_COMPLETIONROWS_H_

#include <string>
#include <vector>

#include "bench/Row.h"

// Word `number`, from 0 to 9999: four syllables, one a digit.
std::string BenchWord(int number);

std::vector<Row> CompletionRows();

#endif  // BENCH_COMPLETIONROWS_H_
